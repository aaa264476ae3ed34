// The user's command line: looks at a locale directory, and at text through the eyes of the
// library.
#include <algorithm>
#include <cstdio>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "commands.hpp"
#include "failure.hpp"
#include "format.hpp"
#include "sort.hpp"

namespace vlx::cli {

namespace {

constexpr const char* kFooter = R"(Examples:
  vlx locales
  vlx locales --type codepage --json
  vlx show German_Germany
  vlx show --user --json
  vlx walk --locale Japanese_Japan.MS932 letter.txt
  vlx walk --locale Japanese.IBM930 --limit 20 --backward tape.bin
  iconv -t CP1252 note.txt | vlx walk --locale German -
  vlx conv -f IBM930 -t UTF-8 tape.bin -o tape.txt
  tail -f log.txt | vlx conv -f UTF-8 -t 932
  vlx sort --locale Japanese.IBM930@General tape.bin -o tape.bin
  vlx sort --locale German_Germany.UTF-8 -t ';' -k 3n -k 1,1f accounts.txt
  vlx sort --locale German --explain Muller Müller
  vlx msg payroll 1 12 --locale German
  vlx ids --type codepage CP1252 932
  vlx format --locale German_German-Switzerland money -- -1234.5
  vlx format --locale French_France time --pattern '%#x' 2005-03-07
  vlx parse --locale German_Germany number 1.234,5

Exit status: 0 good; 1 the text has characters that are unmapped, substituted or cut off, or was not
read to its end, or is not in order; 2 failure.)";

struct Options {
    std::string directory;
    LocalesOptions locales;
    ShowOptions show;
    WalkOptions walk;
    ConvOptions conv;
    MessageOptions message;
    IdsOptions ids;
};

// A type of objects by its name.
void addType(CLI::App* command, std::optional<int>& type)
{
    command
        ->add_option_function<std::string>(
            "--type",
            [&type](const std::string& name) {
                const auto* const found =
                    std::find(std::begin(kTypeNames), std::end(kTypeNames), name);
                type = static_cast<int>(found - std::begin(kTypeNames));
            },
            "Only objects of this type")
        ->check(
            CLI::IsMember(std::vector<std::string>(std::begin(kTypeNames), std::end(kTypeNames))));
}

CLI::App* addLocales(CLI::App& app, Options& options)
{
    CLI::App* const command =
        app.add_subcommand("locales", "List what the locale directory holds, by type");
    command->add_flag("--json", options.locales.json, "Write a JSON document");
    addType(command, options.locales.type);
    return command;
}

CLI::App* addShow(CLI::App& app, Options& options)
{
    CLI::App* const command = app.add_subcommand("show", "Show every value of a locale");
    auto* const name = command->add_option("LOCALE", options.show.locale,
                                           "Language[_Territory][.Codepage][@Sort]");
    name->type_name("");
    auto* const user = command->add_flag("--user", options.show.user,
                                         "The user's locale, by TS_LANG or the host's settings");
    name->excludes(user);
    command->add_flag("--object", options.show.object,
                      "The territory's values, without what the host's settings change");
    command->add_flag("--json", options.show.json, "Write a JSON document");
    command->callback([name, user] {
        if (name->count() + user->count() == 0)
            throw CLI::RequiredError("show: LOCALE or --user");
    });
    return command;
}

CLI::App* addWalk(CLI::App& app, Options& options)
{
    CLI::App* const command = app.add_subcommand(
        "walk", "Step through a text and show each character's bytes and values");
    command
        ->add_option("--locale", options.walk.locale,
                     "Locale of the text: Language[_Territory][.Codepage][@Sort]")
        ->required()
        ->type_name("NAME");
    command->add_option("FILE", options.walk.file, "The text, or - for standard input")
        ->required()
        ->type_name("");
    command->add_flag("--json", options.walk.json, "Write a JSON document");
    command
        ->add_option("--limit", options.walk.limit,
                     "Show this many characters; the totals are of the whole text")
        ->check(CLI::Range(0, std::numeric_limits<std::int32_t>::max()))
        ->type_name("N");
    command->add_flag("--backward", options.walk.backward, "Begin at the end and step back");
    return command;
}

CLI::App* addMessage(CLI::App& app, MessageOptions& options)
{
    CLI::App* const command =
        app.add_subcommand("msg", "Show a message of a catalog as a locale gets it");
    command->add_option("CATALOG", options.catalog, "Name or path of the catalog")
        ->required()
        ->type_name("");
    command->add_option("SET", options.set, "Number of the set")->required()->type_name("");
    command->add_option("NUMBER", options.message, "Number of the message")
        ->required()
        ->type_name("");
    command->add_option("--locale", options.locale, "Locale of the reader")
        ->required()
        ->type_name("NAME");
    command->add_flag("--raw", options.raw, "Write it in the locale's code page, not in UTF-8");
    return command;
}

CLI::App* addIds(CLI::App& app, IdsOptions& options)
{
    CLI::App* const command =
        app.add_subcommand("ids", "Show the numeric ids of objects, and their names");
    command->add_option("WORD", options.words, "Ids, names, aliases of code pages; else all")
        ->type_name("");
    addType(command, options.type);
    return command;
}

CLI::App* addConv(CLI::App& app, Options& options)
{
    CLI::App* const command =
        app.add_subcommand("conv", "Convert texts from one code page to another");
    command
        ->add_option("-f,--from", options.conv.from,
                     "Code page of the texts: its name, another name of it, or its id")
        ->required()
        ->type_name("PAGE");
    command->add_option("-t,--to", options.conv.to, "Code page to convert to, named likewise")
        ->required()
        ->type_name("PAGE");
    command
        ->add_option("FILE", options.conv.files,
                     "The texts, each for itself; - or none is standard input")
        ->type_name("");
    command
        ->add_option("-o,--output", options.conv.output,
                     "File to write, replaced once all is converted; else standard output")
        ->type_name("FILE");
    return command;
}

// As in "locales, walk and conv".
std::string commandNames(const CLI::App& app)
{
    const std::vector<const CLI::App*> commands = app.get_subcommands(nullptr);
    std::string names;
    for (const CLI::App* const command : commands) {
        if (!names.empty())
            names += command == commands.back() ? " and " : ", ";
        names += command->get_name();
    }
    return names;
}

std::string parseFailure(const CLI::App* app, const CLI::Error& error)
{
    std::string message = error.what();
    if (app->get_subcommands().empty() && app->remaining_size() > 0)
        message = fmt::format("there is no command \"{}\"; the commands are {}",
                              app->remaining().front(), commandNames(*app));
    return fmt::format("vlx: {}\nvlx: `vlx --help` tells more, as does `vlx walk --help`.\n",
                       message);
}

int run(int argc, char** argv)
{
    Options options;
    CLI::App app{
        "vlx looks at locale data, and at text in any code page, converts and sorts it, through "
        "libvlx.",
        "vlx"};
    app.require_subcommand(1);
    app.set_version_flag("--version", "vlx " VLX_VERSION, "Print the version and leave");
    app.set_help_flag("-h,--help", "Print this help and leave");
    app.add_option("--locale-dir", options.directory,
                   "Locale directory; else TS_LOCALEDIR, else " VLX_LOCALE_DIRECTORY)
        ->type_name("DIR");
    app.fallthrough();
    app.footer(kFooter);
    app.failure_message(parseFailure);
    const CLI::App* const locales = addLocales(app, options);
    const CLI::App* const show = addShow(app, options);
    const CLI::App* const message = addMessage(app, options.message);
    const CLI::App* const ids = addIds(app, options.ids);
    addWalk(app, options);
    const CLI::App* const conv = addConv(app, options);
    const TextCommands text(app);
    const SortCommand sort(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kExitGood : kExitFailed;
    }

    if (conv->parsed())
        return convertTexts(Library(options.directory, Library::BuiltIn::kRefused), options.conv);
    Output output(standardOutput());
    if (sort.parsed())
        return sort.run(Library(options.directory, Library::BuiltIn::kRefused), output);
    const Library library(options.directory);
    if (show->parsed())
        return showLocale(options.show, output);
    if (locales->parsed())
        return listLocales(library, options.locales, output);
    if (message->parsed())
        return printMessage(library, options.message, output);
    if (ids->parsed())
        return printIds(library, options.ids, output);
    if (text.parsed())
        return text.run(output);
    return walkText(library, options.walk, output);
}

} // namespace

} // namespace vlx::cli

int main(int argc, char** argv)
{
    try {
        return vlx::cli::run(argc, argv);
    } catch (const std::bad_alloc&) {
        fmt::print(stderr, "vlx: out of memory; close other programs and try again\n");
        return vlx::cli::kExitFailed;
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        fmt::print(stderr, "vlx: {}\n", failure.what());
        return vlx::cli::kExitFailed;
    }
}
