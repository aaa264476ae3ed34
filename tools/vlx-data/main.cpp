// The data compiler's command: readable sources to a locale directory, and locale directories to
// readable text.
#include <exception>
#include <iostream>

#include <CLI/CLI.hpp>

#include "build.hpp"
#include "directory.hpp"
#include "sourcefile.hpp"

namespace {

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
    build->add_option("--only", options.only, "compile these objects alone");
    CLI::App* const list = app.add_subcommand("list", "Objects, section sizes, fingerprints");
    list->add_option("DIR", target, "a locale directory")->required();
    CLI::App* const dump = app.add_subcommand("dump", "Print a control or object file as text");
    dump->add_option("FILE", target, "such as control.nls or cp_01252.nls")->required();
    CLI::App* const lint = app.add_subcommand("lint", "Check what the library takes for granted");
    lint->add_option("DIR", target, "a locale directory")->required();
    std::string exceptions;
    lint->add_option("--one-way", exceptions, "a list of characters that are meant to be one way");
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
