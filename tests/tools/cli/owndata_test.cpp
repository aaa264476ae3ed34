// The examples of docs/own-data.md, run as they stand: sources are written where the page says,
// commands go through a shell, and what they print is what the page shows.
#include <array>
#include <cstdio>
#include <filesystem>
#include <sstream>
#include <vector>

#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

namespace fs = std::filesystem;

// A block of the page, with the last `data/...` that is named before it.
struct Block {
    std::string kind; // "sh", "text", "toml"
    std::string file;
    std::string text;
};

// The blocks below a heading of the second level.
std::vector<Block> blocksOf(const std::string& heading)
{
    std::istringstream page(contentOf(VLX_DOCS "/own-data.md"));
    std::vector<Block> blocks;
    bool inSection = false;
    bool inBlock = false;
    std::string file;
    for (std::string line; std::getline(page, line);) {
        if (!inBlock && line.starts_with("## "))
            inSection = line == "## " + heading;
        if (!inSection)
            continue;
        if (line.starts_with("```")) {
            inBlock = !inBlock;
            if (inBlock)
                blocks.push_back({line.substr(3), file, ""});
        } else if (inBlock) {
            blocks.back().text += line + "\n";
        } else if (const std::size_t at = line.rfind("`data/"); at != std::string::npos) {
            file = line.substr(at + 1, line.find('`', at + 1) - at - 1);
        }
    }
    EXPECT_FALSE(inBlock);
    return blocks;
}

// What the commands print, on either stream. They stop at the first that fails.
std::string printed(const Workshop& workshop, const std::string& commands)
{
    const std::string bin = fs::path(VLX_COMMAND).parent_path().string();
    const std::string script = workshop.file("script", "set -e\n" + commands);
    const std::string command = "cd '" + workshop.path("") +
                                "' && env -u TS_LANG LC_ALL=C.UTF-8 PATH='" + bin +
                                "':\"$PATH\" sh script 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    std::string output;
    std::array<char, 4096> piece;
    while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), pipe))
        output.append(piece.data(), count);
    EXPECT_EQ(pclose(pipe), 0) << commands << output;
    return output;
}

void runSection(const std::string& heading)
{
    const Workshop workshop;
    fs::copy(VLX_DATA_DIRECTORY, workshop.path("data"), fs::copy_options::recursive);
    fs::copy(VLX_LOCALE, workshop.path("locale"), fs::copy_options::recursive);
    const std::vector<Block> blocks = blocksOf(heading);
    EXPECT_GE(blocks.size(), 4U) << heading;
    std::string output;
    for (const Block& block : blocks) {
        SCOPED_TRACE(block.text);
        if (block.kind == "sh") {
            EXPECT_EQ(output, "") << "the page does not show what the commands print";
            output = printed(workshop, block.text);
        } else if (block.kind == "text") {
            EXPECT_EQ(output, block.text);
            output.clear();
        } else {
            ASSERT_NE(block.file, "");
            workshop.file(block.file, block.text);
        }
    }
    EXPECT_EQ(output, "");
}

TEST(OwnData, TerritoryOfThePageIsMadeAndUsed)
{
    runSection("A territory of one's own");
}

} // namespace
} // namespace vlx::cli::test
