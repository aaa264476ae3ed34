// The examples are what their sources and their script make, and the first program runs.
#include <cstdlib>

#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

TEST(Examples, AreMadeByTheirScriptByteForByte)
{
    const Workshop workshop;
    const std::string command = "'" VLX_EXAMPLES "/make-examples' '" + workshop.path("") + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    int compared = 0;
    for (const auto& entry : std::filesystem::directory_iterator(workshop.path(""))) {
        const std::string name = entry.path().filename().string();
        EXPECT_EQ(contentOf(entry.path()), contentOf(std::string(VLX_EXAMPLES "/") + name)) << name;
        ++compared;
    }
    EXPECT_EQ(compared, 7);
}

TEST(Examples, FirstProgramWalksItsText)
{
    const Workshop workshop;
    const std::string output = workshop.path("output");
    const std::string command = "TS_LOCALEDIR='" VLX_LOCALE "' '" VLX_HELLO "' >" + output;
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string text = contentOf(output);
    EXPECT_EQ(text.substr(0, text.find('4')), " 0  93 FA  packed 93FA\n"
                                              " 2  96 7B  packed 967B\n ");
    EXPECT_EQ(text.substr(text.rfind('\n', text.size() - 2) + 1), "12 characters\n");
}

// The output was read by somebody who reads German and English, and the Japanese was checked
// against the sources.
TEST(Examples, TheReportsOfThreeOfficesAreTheGoldenOnes)
{
    const Workshop workshop;
    const std::string output = workshop.path("output");
    const std::string command = "NLS1_LOCALEDIR='" VLX_LOCALE "' '" VLX_REPORT "' '" VLX_EXAMPLES
                                "' '" VLX_CATALOGS "' >" +
                                output;
    for (int run = 0; run < 5; ++run) { // two threads: in any order
        ASSERT_EQ(std::system(command.c_str()), 0);
        EXPECT_EQ(contentOf(output), contentOf(VLX_GOLDEN "/report.txt"));
    }
}

} // namespace
} // namespace vlx::cli::test
