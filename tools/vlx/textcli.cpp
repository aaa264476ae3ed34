// The command line of `vlx format` and `vlx parse`, and their help.
#include "format.hpp"

#include <algorithm>
#include <iterator>

namespace vlx::cli {

namespace {

constexpr const char* kFormatPatterns = R"(Patterns are text with directives:
  %a %A  name of the day, short and full      %H  hour, 00 to 23
  %b %B  name of the month, short and full    %I  hour, 01 to 12
  %d     day of the month                     %M  minute
  %m     month, 01 to 12                      %S  second
  %y %Y  year, two and four digits            %p  half of the day
  %j     day of the year, from 000            %w  day of the week, Sunday is 0
  %U %W  week of the year, from Sunday and from Monday
  %x     the locale's date                    %X  the locale's time
  %c     both                                 %%  a percent sign
A # behind the percent sign leaves leading zeros out, and makes the date of %#x and %#c the long
one. %x, %X and %c belong at the start of a pattern: they are written over the text before them.)";

constexpr const char* kParsePatterns = R"(Patterns are text that has to match, and directives:
  %a %A  name of the day, short and full      %H  hour, up to 23
  %b %B  name of the month, short and full    %I  hour, up to 12
  %d     day of the month                     %M  minute
  %m     month, up to 12                      %S  second
  %y     year, two digits, as it stands       %p  half of the day
  %Y     year, four digits                    %w  day of the week, Sunday is 0
  %j     day of the year                      %%  a percent sign
  %x     the locale's date, %#x the long one  %X  the locale's time
  %c     both, one character apart
Fields are shown as the library has them: the year less 1900, months from 0. Text and pattern may
each end before the other.)";

constexpr const char* kNumberNote =
    "A whole number of 32 bits is written without a point, any other with the locale's digits.";

void addLocale(CLI::App* command, std::string& locale)
{
    command
        ->add_option("--locale", locale,
                     "Locale of the text: Language[_Territory][.Codepage][@Sort]")
        ->required()
        ->type_name("NAME");
}

template <class Options>
void addCommon(CLI::App* command, Options& options)
{
    command->add_flag("--json", options.json, "Write a JSON document");
    command->add_flag("--object", options.ofObject,
                      "Use the values of the locale's objects, whatever was changed");
}

} // namespace

TextCommands::TextCommands(CLI::App& app)
{
    addFormat(app);
    addParse(app);
}

void TextCommands::addFormat(CLI::App& app)
{
    CLI::App* const format =
        app.add_subcommand("format", "Write a number, an amount of money or a time");
    format->require_subcommand(1);
    format->fallthrough();
    addLocale(format, format_.locale);
    addCommon(format, format_);

    formatNumber_ = format->add_subcommand("number", "Write a number");
    formatNumber_->add_option("VALUE", format_.value, "The number, such as -1234.5")
        ->required()
        ->type_name("");
    formatNumber_->footer(kNumberNote);

    formatMoney_ = format->add_subcommand("money", "Write an amount of money");
    formatMoney_->add_option("VALUE", format_.value, "The amount, such as -1234.5")
        ->required()
        ->type_name("");
    formatMoney_->add_flag("--international", format_.international,
                           "With the international symbol and its digits");

    formatTime_ = format->add_subcommand("time", "Write a time by a pattern");
    formatTime_
        ->add_option("TIME", format_.time, "As 2005-03-07T13:05:09 or 2005-03-07; now if not given")
        ->type_name("");
    formatTime_->add_option("--pattern", format_.pattern, "How to write it")
        ->default_val("%c")
        ->type_name("PATTERN");
    formatTime_->footer(kFormatPatterns);
    for (CLI::App* const command : {formatNumber_, formatMoney_, formatTime_})
        command->fallthrough();
}

void TextCommands::addParse(CLI::App& app)
{
    CLI::App* const parse =
        app.add_subcommand("parse", "Read a number, an amount of money or a time");
    parse->require_subcommand(1);
    parse->fallthrough();
    addLocale(parse, parse_.locale);
    addCommon(parse, parse_);

    parseNumber_ = parse->add_subcommand("number", "Read a number");
    parseMoney_ =
        parse->add_subcommand("money", "Read a number with the monetary separators and signs");
    for (CLI::App* const command : {parseNumber_, parseMoney_}) {
        command->add_option("TEXT", parse_.text, "The text")->required()->type_name("");
        command->add_flag("--whole", parse_.whole, "A whole number of 32 bits");
        command->add_option("--base", parse_.base, "Base of a whole number: 2 to 36, 0 to guess")
            ->default_val(10)
            ->type_name("N");
        command->add_flag("--map-digits", parse_.mapsDigits, "Read the digits of every script");
    }

    parseTime_ = parse->add_subcommand("time", "Read a time by a pattern");
    parseTime_->add_option("TEXT", parse_.text, "The text")->required()->type_name("");
    parseTime_->add_option("--pattern", parse_.pattern, "How to read it")
        ->default_val("%c")
        ->type_name("PATTERN");
    parseTime_->footer(kParsePatterns);
    for (CLI::App* const command : {parseNumber_, parseMoney_, parseTime_})
        command->fallthrough();
}

bool TextCommands::parsed() const
{
    const CLI::App* const commands[] = {formatNumber_, formatMoney_, formatTime_,
                                        parseNumber_,  parseMoney_,  parseTime_};
    return std::any_of(std::begin(commands), std::end(commands),
                       [](const CLI::App* command) { return command->parsed(); });
}

int TextCommands::run(Output& output) const
{
    if (formatNumber_->parsed())
        return formatNumber(format_, output);
    if (formatMoney_->parsed())
        return formatMoney(format_, output);
    if (formatTime_->parsed())
        return formatTime(format_, output);
    if (parseTime_->parsed())
        return parseTime(parse_, output);
    return parseNumber(parse_, parseMoney_->parsed(), output);
}

} // namespace vlx::cli
