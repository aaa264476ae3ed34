// docs/own-data.md does what it says: its files are written, its commands run, and what they print
// is what stands below them.
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

namespace fs = std::filesystem;

// A fenced block, without the indentation of its fence.
struct Block {
    std::string kind;
    std::string text;
};

std::vector<Block> blocksOf(const std::string& path)
{
    std::vector<Block> blocks;
    std::ifstream in(path);
    bool inside = false;
    std::size_t indent = 0;
    for (std::string line; std::getline(in, line);) {
        const std::size_t fence = line.find("```");
        if (fence != std::string::npos && line.find_first_not_of(' ') == fence) {
            if (!inside)
                blocks.push_back({line.substr(fence + 3), {}});
            inside = !inside;
            indent = fence;
        } else if (inside) {
            blocks.back().text += line.substr(std::min(indent, line.size())) + "\n";
        }
    }
    return blocks;
}

// Both streams of the commands, run in the folder as one script.
std::string outputOf(const std::string& script, const fs::path& folder)
{
    const auto folderOf = [](const char* program) { return fs::path(program).parent_path(); };
    std::ofstream(folder / "script") << "cd " << folder << " && PATH=" << folderOf(VLX_COMMAND)
                                     << ":" << folderOf(VLX_DATA_COMMAND) << ":$PATH\n"
                                     << script;
    const std::string command = "LC_ALL=C.UTF-8 sh " + (folder / "script").string() + " 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    char buffer[4096];
    while (const std::size_t count = std::fread(buffer, 1, sizeof buffer, pipe))
        output.append(buffer, count);
    EXPECT_EQ(pclose(pipe), 0) << script;
    return output;
}

// "# data/codepages/NAME.cp: what it is" is the first line of a file, its path first.
fs::path pathIn(const std::string& text)
{
    if (!text.starts_with("# data/"))
        return {};
    return text.substr(2, text.find_first_of(":\n") - 2);
}

void writeSource(const fs::path& path, const std::string& text)
{
    EXPECT_FALSE(fs::exists(path)) << path << " ships";
    std::ofstream(path) << text;
}

TEST(OwnData, IsMadeAsTheDocumentSays)
{
    const Workshop workshop;
    const fs::path folder = workshop.path("");
    fs::copy(VLX_DATA_DIRECTORY, folder / "data", fs::copy_options::recursive);
    fs::copy(VLX_LOCALE, folder / "locale");
    const std::vector<Block> blocks = blocksOf(VLX_DOCS "/own-data.md");
    int scripts = 0;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const auto& [kind, text] = blocks[i];
        if (kind == "alias") {
            std::ofstream(folder / "data/alias.txt", std::ios::app) << text;
        } else if (const fs::path path = pathIn(text); !path.empty()) {
            writeSource(folder / path, text);
        } else if (kind == "sh") {
            const bool printed = i + 1 < blocks.size() && blocks[i + 1].kind == "text";
            EXPECT_EQ(outputOf(text, folder), printed ? blocks[i + 1].text : "") << text;
            ++scripts;
        }
    }
    EXPECT_GE(scripts, 3);
}

} // namespace
} // namespace vlx::cli::test
