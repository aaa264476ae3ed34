// The command line of `vlx sort`, and its help.
#include "failure.hpp"
#include "sort.hpp"

namespace vlx::cli {

namespace {

constexpr const char* kFooter =
    R"(Lines are ordered by their keys (TSStrxfrm), the bytes that a database with stored keys compares, and
lines of one key stay in the order in which they came. A comparison of two texts (TSStrcoll) can put
texts with combining marks or special characters differently; --explain tells.

A line end is a line feed, with or without a carriage return, or another record end of the code page,
such as 15 and 25 of EBCDIC. Each line begins in the single-byte state. Lines come out byte for
byte; where the last one has no end it gets one.

A key of -k is F[.C][bfnrw][,F[.C][bfnrw]]: from a character C of a field F to another, or to the end
of the line; without C, the first one and the last one of the field. Fields stand between the
characters of -t, or begin with the blanks behind other characters. Letters:
  b  characters are counted from the first that is no blank
  f  ignore case      w  ignore width
  n  numbers, with the separators of the locale
  r  reverse
A key without letters takes those options that are given beside -k. Where keys are equal, the next one
decides. Case and width cannot be ignored together.

Past the memory of -S the lines go to temporary files without names in TMPDIR, and are merged. A line
is held in memory whole, however long it is.

Exit status: 0 good; 1 with -c or -C, the lines are not in order; 2 failure.)";

} // namespace

SortCommand::SortCommand(CLI::App& app)
    : command_(app.add_subcommand("sort", "Sort the lines of texts by the order of a locale"))
{
    command_
        ->add_option("--locale", options_.locale,
                     "Locale of the texts and their order: Language[_Territory][.Codepage][@Sort]")
        ->required()
        ->type_name("NAME");
    command_
        ->add_option("FILE", options_.files,
                     "The texts, taken together; - or none is standard input")
        ->type_name("");
    command_
        ->add_option("-o,--output", options_.output,
                     "File to write, replaced once all is sorted; may be one of the texts")
        ->type_name("FILE");
    addOrder();
    addModes();
    command_->footer(kFooter);
}

void SortCommand::addOrder()
{
    command_->add_option("-k,--key-field", options_.keys, "Sort by a part of the line; see below")
        ->allow_extra_args(false)
        ->type_name("KEY");
    command_
        ->add_option("-t,--field-separator", options_.separator,
                     "Character between fields, or \\t; else they begin with blanks")
        ->type_name("SEP");
    command_->add_flag("-b,--ignore-leading-blanks", options_.skipsBlanks,
                       "Skip blanks before a line or field");
    command_->add_flag("-f,--ignore-case", options_.ignoresCase, "Ignore case");
    command_->add_flag("-w,--ignore-width", options_.ignoresWidth,
                       "Take full-width and half-width characters for the same");
    command_->add_flag("-n,--numeric", options_.numeric,
                       "Sort by numbers as the locale writes them");
    command_->add_flag("-r,--reverse", options_.reversed, "Sort the other way round");
    command_->add_flag("-u,--unique", options_.unique, "Of the lines of one key, keep the first");
}

void SortCommand::addModes()
{
    command_
        ->add_option("-S,--buffer-size", options_.memory,
                     "Memory for lines and keys: KiB, or with b, K, M, G, T")
        ->type_name("SIZE")
        ->capture_default_str();
    command_
        ->add_option("-T,--temporary-directory", options_.directory,
                     "Directory of temporary files; else TMPDIR, else /tmp")
        ->type_name("DIR");
    auto* const check = command_->add_flag("-c,--check", options_.checks,
                                           "Tell the first line that is out of order; no sort");
    auto* const quiet =
        command_->add_flag("-C,--check-quiet", options_.checksQuietly, "The same without a word");
    auto* const key = command_->add_flag(
        "--key", options_.showsKeys, "Show the key of each line as hex, level | level; no sort");
    auto* const explain = command_->add_flag(
        "--explain", options_.explains,
        "Show the collation elements of two strings A B, in place of texts, and where they part");
    command_->add_flag("--json", options_.json, "Write a JSON document, with -c, --key, --explain");
    for (auto* const mode : {check, quiet, key})
        explain->excludes(mode);
    key->excludes(check)->excludes(quiet);
}

int SortCommand::run(const Library& library, Output& output) const
{
    const LocaleHandle locale = openLocale(options_.locale);
    const bool sorts =
        !options_.explains && !options_.checks && !options_.checksQuietly && !options_.showsKeys;
    if (!sorts && options_.output != "-")
        throw Failure("-o takes sorted lines; redirect what -c, --key and --explain show");
    if (options_.explains)
        return explainPair(library, locale.get(), options_, output);
    if (options_.checks || options_.checksQuietly)
        return checkOrder(locale.get(), options_, output);
    if (options_.showsKeys)
        return showKeys(locale.get(), options_, output);
    if (options_.json)
        throw Failure("sorted lines are no JSON document; --json goes with -c, --key or --explain");
    return sortTexts(locale.get(), options_);
}

} // namespace vlx::cli
