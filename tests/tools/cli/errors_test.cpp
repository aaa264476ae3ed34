// How the command line fails: status 2, and a message that says what was wrong and what to do.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

void expectFailure(const std::string& arguments, const std::string& what)
{
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_THAT(outcome.errors, StartsWith("vlx: ")) << arguments;
    EXPECT_THAT(outcome.errors, HasSubstr(what)) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
}

TEST(Errors, OfFiles)
{
    expectFailure("walk --locale German.MS1252 no-such-file",
                  "cannot open no-such-file: No such file or directory; give the name of a file");
    expectFailure("walk --locale German.MS1252 .", "cannot read .: Is a directory");
}

TEST(Errors, OfLocaleNames)
{
    expectFailure("walk --locale Elvish german.ms1252.txt",
                  "no locale \"Elvish\" (error 31): its language is not listed; `vlx locales "
                  "--type language` shows those that are");
    expectFailure("walk --locale German_Gondor german.ms1252.txt",
                  "(error 34): its territory is not listed");
    expectFailure("walk --locale German.Runes german.ms1252.txt",
                  "(error 30): its code page is not listed");
    expectFailure("walk --locale German@Runes german.ms1252.txt",
                  "(error 33): its sort is not listed");
}

TEST(Errors, OfOptions)
{
    expectFailure("walk --locale German.MS1252 --sideways german.ms1252.txt", "--sideways");
    expectFailure("walk german.ms1252.txt", "--locale is required");
    expectFailure("walk --locale German", "FILE is required");
    expectFailure("walk --locale German --limit -1 german.ms1252.txt", "not in range 0 to");
    expectFailure("walk --locale German --limit many german.ms1252.txt", "many");
    expectFailure("locales --type weather", "weather not in {language,territory,codepage,sort}");
    expectFailure("frobnicate", "there is no command \"frobnicate\"");
    expectFailure("", "`vlx --help` tells more");
}

TEST(Errors, OfTheOutput)
{
    const Outcome outcome = run("walk --locale German.MS1252 german.ms1252.txt >/dev/full");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("the output could not be written"));
}

TEST(Help, TellsCommandsAndStatuses)
{
    const Outcome help = run("--help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.out, HasSubstr("locales"));
    EXPECT_THAT(help.out, HasSubstr("Exit status: 0 good"));
    EXPECT_EQ(run("--version").out, "vlx " VLX_VERSION "\n");
    EXPECT_THAT(run("walk --help").out, HasSubstr("--backward"));
}

TEST(Walk, IsPlainInAPipe)
{
    EXPECT_THAT(run("walk --locale German.MS1252 japanese.ms932.txt").out, Not(HasSubstr("\033")));
    EXPECT_THAT(onTerminal("walk --locale German.MS1252 japanese.ms932.txt", ""),
                HasSubstr("\033[31munmapped\033[0m"));
}

} // namespace
} // namespace vlx::cli::test
