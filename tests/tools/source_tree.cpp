#include "source_tree.hpp"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>

#include "sourcefile.hpp"

namespace fs = std::filesystem;

SourceTree::SourceTree()
{
    std::string pattern = (fs::temp_directory_path() / "vlx-data-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("no temporary directory");
    root_ = pattern;
    fs::copy(VLX_DATA_DIRECTORY "/unicode", root_ / "unicode");
    write("version", "7\n");
    write("alias.txt", "# none\n");
}

SourceTree::~SourceTree()
{
    std::error_code ignored;
    fs::remove_all(root_, ignored);
}

void SourceTree::write(const std::string& name, const std::string& text) const
{
    fs::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name, std::ios::binary) << text;
}

vlx::data::Diagnostics SourceTree::build(const std::string& output) const
{
    vlx::data::Diagnostics diagnostics;
    vlx::data::build({root_.string(), path(output), {}}, diagnostics);
    return diagnostics;
}

std::string smallPage(const std::string& settings, const std::string& rows)
{
    return "id = 9\nname = Small\nfamily = ascii\nmax bytes = 1\nsubstitution = 3F\nlf = 0A\n"
           "cr = 0D\nlineEnd3 = 0A\nlineEnd4 = 0A\n" +
           settings + "[decode]\n00: 0000..000F\n30: 0030..003F\n" + rows;
}

std::string doublePage(const std::string& rows, const std::string& settings)
{
    return "id = 10\nname = Double\nfamily = ascii\nmax bytes = 2\nsubstitution = 3F\nlf = 0A\n"
           "cr = 0D\nlineEnd3 = 0A\nlineEnd4 = 0A\n" +
           settings + "[decode]\n00: 0000..000D\n30: 0030..003F\n8140: 4E00..4E03\n" + rows;
}

std::string contentOf(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

std::string linesOf(const vlx::data::Diagnostics& diagnostics)
{
    std::ostringstream out;
    vlx::data::print(diagnostics, out);
    return out.str();
}
