// The importers' command. It is run by hand when sources are to be made anew.
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "import.hpp"

namespace {

int run(int argc, char** argv)
{
    CLI::App app{"Makes the readable sources of locale objects from public data."};
    app.require_subcommand(1);

    vlx::import::Options pages;
    CLI::App* const codePages = app.add_subcommand("codepages", "Code pages, from ICU and glibc");
    codePages->add_option("-o,--output", pages.outputDirectory, "data/codepages")->required();

    vlx::import::Options tables;
    CLI::App* const characters =
        app.add_subcommand("characters", "Characters younger than Unicode 2.0, from ICU");
    characters->add_option("-o,--output", tables.outputDirectory, "data/unicode")->required();

    vlx::import::CldrOptions texts;
    CLI::App* const cldr = app.add_subcommand("cldr", "Languages and territories, from CLDR");
    cldr->add_option("--cldr", texts.cldrDirectory, "the CLDR directory")->capture_default_str();
    cldr->add_option("--glibc", texts.glibcDirectory, "the locale sources of glibc")
        ->capture_default_str();
    cldr->add_option("-o,--output", texts.outputDirectory, "data")->required();
    vlx::import::CldrOptions orders;
    CLI::App* const sorts = app.add_subcommand("sorts", "The root order and its rules, from CLDR");
    sorts->add_option("--cldr", orders.cldrDirectory, "the CLDR directory")->capture_default_str();
    sorts->add_option("-o,--output", orders.outputDirectory, "data")->required();
    CLI11_PARSE(app, argc, argv);

    const bool good = codePages->parsed()    ? vlx::import::importCodePages(pages)
                      : characters->parsed() ? vlx::import::importCharacters(tables)
                      : cldr->parsed()       ? vlx::import::importCldr(texts)
                                             : vlx::import::importSorts(orders);
    return good ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "vlx-import: " << failure.what() << '\n';
        return 1;
    }
}
