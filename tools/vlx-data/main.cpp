// The data compiler's command: readable sources to a locale directory, and locale directories to
// readable text.
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "build.hpp"
#include "directory.hpp"
#include "messages_command.hpp"
#include "sourcefile.hpp"

namespace {

// The commands that work on message catalogs.
struct CatalogCommands {
    explicit CatalogCommands(CLI::App& app)
    {
        catalog = app.add_subcommand("catalog", "Compile message catalogs, and look at them");
        catalog->require_subcommand(1);
        build = catalog->add_subcommand("build", "Compile a source (.toml) or a .po file");
        build->add_option("SOURCE", options.files, "the source")->required()->expected(1);
        build->add_option("-o,--output", options.output, "the catalog")->required();
        build->add_option("--order", options.order, "the byte order; this machine's if not told")
            ->check(CLI::IsMember({"little", "big"}));
        build->add_option("--locale", options.locale, "the locale, in place of the source's");
        build->add_option("--set", options.contexts, "CONTEXT=NUMBER: a context of a .po file");
        dump = catalog->add_subcommand("dump", "Print a catalog as its source");
        dump->add_option("FILE", options.files, "a catalog")->required()->expected(1);
        lint = catalog->add_subcommand(
            "lint", "Check catalogs or sources, and compare all languages with the first");
        lint->add_option("FILE", options.files, "catalogs or sources")->required();
        lint->add_option("--locale", options.locale, "the locale, in place of the sources'");
        lint->add_option("--set", options.contexts, "CONTEXT=NUMBER: a context of a .po file");
        for (CLI::App* const command : {build, dump, lint})
            command
                ->add_option("--locale-dir", options.localeDirectory,
                             "the compiled locale directory with the code pages")
                ->required();
    }

    bool parsed() const { return catalog->parsed(); }

    void run(vlx::data::Diagnostics& diagnostics) const
    {
        if (build->parsed())
            vlx::data::buildCatalog(options, diagnostics);
        else if (dump->parsed())
            vlx::data::dumpCatalog(options, std::cout, diagnostics);
        else
            vlx::data::lintCatalogs(options, diagnostics);
    }

    vlx::data::CatalogOptions options;
    CLI::App* catalog;
    CLI::App* build;
    CLI::App* dump;
    CLI::App* lint;
};

int run(int argc, char** argv)
{
    using namespace vlx::data;

    CLI::App app{"Compiles the sources of locale objects, and reads locale directories back."};
    app.require_subcommand(1);
    BuildOptions options;
    std::string target;

    CLI::App* const build = app.add_subcommand("build", "Compile a source directory");
    build->add_option("SOURCE_DIR", options.sourceDirectory, "the sources")->required();
    build->add_option("-o,--output", options.outputDirectory, "the locale directory")->required();
    build->add_option("--only", options.only,
                      "compile these objects alone, and add them to what the directory has");
    CLI::App* const list = app.add_subcommand("list", "Objects, section sizes, fingerprints");
    list->add_option("DIR", target, "a locale directory")->required();
    CLI::App* const dump = app.add_subcommand("dump", "Print a control or object file as text");
    dump->add_option("FILE", target, "such as control.nls or cp_01252.nls")->required();
    CLI::App* const lint = app.add_subcommand("lint", "Check what the library takes for granted");
    lint->add_option("DIR", target, "a locale directory")->required();
    std::string exceptions;
    lint->add_option("--one-way", exceptions, "a list of characters that are meant to be one way");
    const CatalogCommands catalogs(app);
    CLI11_PARSE(app, argc, argv);

    Diagnostics diagnostics;
    if (build->parsed())
        vlx::data::build(options, diagnostics);
    else if (list->parsed())
        listDirectory(target, std::cout, diagnostics);
    else if (dump->parsed())
        dumpFile(target, std::cout, diagnostics);
    else if (lint->parsed())
        lintDirectory(target, exceptions, diagnostics);
    else if (catalogs.parsed())
        catalogs.run(diagnostics);
    print(diagnostics, std::cerr);
    return hasErrors(diagnostics) ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "vlx-data: " << failure.what() << '\n';
        return 1;
    }
}
