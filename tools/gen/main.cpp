// The generator of the library's Unicode tables: readable sources to C++.
#include <exception>
#include <fstream>
#include <iostream>

#include <CLI/CLI.hpp>

#include "sourcefile.hpp"
#include "write.hpp"

namespace {

void write(const std::string& path, const std::string& text, vlx::data::Diagnostics& diagnostics)
{
    std::ofstream out(path, std::ios::binary);
    out << text;
    out.close();
    if (!out)
        diagnostics.push_back({path, 0, "cannot be written"});
}

int run(int argc, char** argv)
{
    using namespace vlx::data;

    CLI::App app{"Generates the Unicode tables of the library."};
    std::string sources;
    std::string output;
    app.add_option("SOURCE_DIR", sources, "data/unicode of the project")->required();
    app.add_option("OUTPUT_DIR", output, "src of the project; has the folders chars and mapping")
        ->required();
    CLI11_PARSE(app, argc, argv);

    Diagnostics diagnostics;
    if (const auto tables = loadUnicodeTables(sources, diagnostics)) {
        write(output + "/chars/unitypes.cpp", typeTableSource(*tables), diagnostics);
        write(output + "/mapping/unitabs.cpp", mappingTableSource(*tables), diagnostics);
    }
    print(diagnostics, std::cerr);
    return hasErrors(diagnostics) ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& failure) {
        std::cerr << "vlx-gen: " << failure.what() << '\n';
        return 1;
    }
}
