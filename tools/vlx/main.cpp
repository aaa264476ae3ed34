// The user's command line: looks at a locale directory, and at text through the eyes of the
// library.
#include <algorithm>
#include <cstdio>
#include <limits>

#include <CLI/CLI.hpp>

#include "commands.hpp"
#include "failure.hpp"
#include "format.hpp"

namespace vlx::cli {

namespace {

constexpr const char* kFooter = R"(Examples:
  vlx locales
  vlx locales --type codepage --json
  vlx walk --locale Japanese_Japan.MS932 letter.txt
  vlx walk --locale Japanese.IBM930 --limit 20 --backward tape.bin
  iconv -t CP1252 note.txt | vlx walk --locale German -
  vlx format --locale German_Switzerland money -- -1234.5
  vlx format --locale French_France time --pattern '%#x' 2005-03-07
  vlx parse --locale German_Germany number 1.234,5

Exit status: 0 good; 1 the text has characters that are unmapped or cut off, or was not read to its
end; 2 failure.)";

struct Options {
    std::string directory;
    LocalesOptions locales;
    WalkOptions walk;
};

CLI::App* addLocales(CLI::App& app, Options& options)
{
    CLI::App* const command =
        app.add_subcommand("locales", "List what the locale directory holds, by type");
    command->add_flag("--json", options.locales.json, "Write a JSON document");
    command
        ->add_option_function<std::string>(
            "--type",
            [&options](const std::string& name) {
                const auto* const found =
                    std::find(std::begin(kTypeNames), std::end(kTypeNames), name);
                options.locales.type = static_cast<int>(found - std::begin(kTypeNames));
            },
            "Only objects of this type")
        ->check(
            CLI::IsMember(std::vector<std::string>(std::begin(kTypeNames), std::end(kTypeNames))));
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

std::string parseFailure(const CLI::App* app, const CLI::Error& error)
{
    std::string message = error.what();
    if (app->get_subcommands().empty() && app->remaining_size() > 0)
        message = fmt::format(
            "there is no command \"{}\"; the commands are locales, walk, format and parse",
            app->remaining().front());
    return fmt::format("vlx: {}\nvlx: `vlx --help` tells more, as does `vlx walk --help`.\n",
                       message);
}

int run(int argc, char** argv)
{
    Options options;
    CLI::App app{"vlx looks at locale data, and at text in any code page, through libvlx.", "vlx"};
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
    addWalk(app, options);
    const TextCommands text(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? kExitGood : kExitFailed;
    }

    const Library library(options.directory);
    Output output(standardOutput());
    if (text.parsed())
        return text.run(output);
    return locales->parsed() ? listLocales(library, options.locales, output)
                             : walkText(library, options.walk, output);
}

} // namespace

} // namespace vlx::cli

int main(int argc, char** argv)
{
    try {
        return vlx::cli::run(argc, argv);
    } catch (const std::exception& failure) {
        std::fflush(stdout);
        fmt::print(stderr, "vlx: {}\n", failure.what());
        return vlx::cli::kExitFailed;
    }
}
