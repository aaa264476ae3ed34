// The command as a user runs it: output, error lines and exit codes.
#include <array>
#include <cstdio>
#include <filesystem>
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

// What --only compiles, and what stays, is what a whole build makes of it.
TEST(Command, CompilesASingleObjectWithoutTheRest)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.page("B", doublePage());
    ASSERT_EQ(linesOf(tree.build()), "");
    const std::string before = contentOf(tree.path("out/cp_00009.nls"));
    const auto timeOfOther = [&] {
        return std::filesystem::last_write_time(tree.path("out/cp_00010.nls"));
    };
    const auto other = timeOfOther();
    tree.page("A", smallPage("", "40: 0040..004F\n"));
    const Outcome built = run("build " + tree.path("") + " -o " + tree.output() + " --only Small");
    EXPECT_EQ(built.code, 0) << built.text;
    EXPECT_NE(contentOf(tree.path("out/cp_00009.nls")), before);
    EXPECT_EQ(timeOfOther(), other);
    EXPECT_THAT(run("list " + tree.output()).text, HasSubstr("codepage      10  Double"));
    EXPECT_EQ(run("lint " + tree.output()).code, 0);
    ASSERT_EQ(linesOf(tree.build("whole")), "");
    for (const char* const file : {"control.nls", "cp_00009.nls", "cp_00010.nls", "alias.txt"})
        EXPECT_EQ(contentOf(tree.path(std::string("out/") + file)),
                  contentOf(tree.path(std::string("whole/") + file)))
            << file;
}

TEST(Command, CompilesASingleObjectIntoAnEmptyDirectory)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.page("B", doublePage());
    EXPECT_EQ(run("build " + tree.path("") + " -o " + tree.output() + " --only Double").code, 0);
    EXPECT_EQ(run("dump " + tree.path("out/control.nls")).text.find("Small"), std::string::npos);
    EXPECT_EQ(run("lint " + tree.output()).code, 0);
}

TEST(Command, KeepsADirectoryThatCannotBeRead)
{
    const SourceTree tree;
    tree.page("A", smallPage());
    tree.write("out/control.nls", "no container");
    EXPECT_EQ(run("build " + tree.path("") + " -o " + tree.output() + " --only Small").code, 1);
    EXPECT_EQ(contentOf(tree.path("out/control.nls")), "no container");
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
