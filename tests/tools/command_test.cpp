// The command as a user runs it: output, error lines and exit codes.
#include <array>
#include <cstdio>
#include <sys/wait.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "source_tree.hpp"

using testing::HasSubstr;

namespace {

struct Outcome {
    int code;
    std::string text; // both streams
};

Outcome run(const std::string& arguments)
{
    const std::string command = std::string(VLX_DATA_COMMAND) + " " + arguments + " 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    Outcome outcome{-1, {}};
    std::array<char, 4096> buffer;
    while (std::size_t count = std::fread(buffer.data(), 1, buffer.size(), pipe))
        outcome.text.append(buffer.data(), count);
    const int status = pclose(pipe);
    outcome.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

TEST(Command, BuildsListsDumpsAndChecks)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    const Outcome built = run("build " + tree.path("") + " -o " + tree.output());
    EXPECT_EQ(built.code, 0);
    EXPECT_EQ(built.text, "");
    EXPECT_THAT(run("list " + tree.output()).text, HasSubstr("codepage       9  Small"));
    EXPECT_THAT(run("dump " + tree.path("out/control.nls")).text, HasSubstr("codepage\t9\tSmall"));
    EXPECT_EQ(run("lint " + tree.output()).code, 0);
}

TEST(Command, EndsWithOneOnErrors)
{
    const SourceTree tree;
    tree.page("A", smallPage("colour = red\n"));
    const Outcome built = run("build " + tree.path("") + " -o " + tree.output());
    EXPECT_EQ(built.code, 1);
    EXPECT_THAT(built.text, HasSubstr("codepages/A.cp:10: unknown key 'colour'\n"));
    EXPECT_EQ(run("lint " + tree.output()).code, 1);
    EXPECT_EQ(run("dump " + tree.path("missing.nls")).code, 1);
    EXPECT_NE(run("").code, 0);
}

TEST(Command, WritesTheVersionOfTheData)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    ASSERT_EQ(linesOf(tree.build()), "");
    EXPECT_THAT(run("dump " + tree.path("out/cp_00009.nls")).text,
                HasSubstr("data version 7, fingerprint "));
}

} // namespace
