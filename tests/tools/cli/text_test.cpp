// `vlx format` and `vlx parse`: numbers, money and times of the locales that ship.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

// What a command writes that ends well.
std::string said(const std::string& arguments)
{
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 0) << arguments;
    EXPECT_EQ(outcome.errors, "") << arguments;
    return outcome.out;
}

void expectFailure(const std::string& arguments, const std::string& what)
{
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_THAT(outcome.errors, StartsWith("vlx: ")) << arguments;
    EXPECT_THAT(outcome.errors, HasSubstr(what)) << arguments;
    EXPECT_EQ(outcome.out, "") << arguments;
}

TEST(Format, WritesNumbers)
{
    EXPECT_EQ(said("format --locale German_Germany number 1234567"), "1.234.567\n");
    EXPECT_EQ(said("format --locale English_UnitedStates number 1234567"), "1,234,567\n");
    EXPECT_EQ(said("format --locale German_Germany number -- -1234567"), "-1.234.567\n");
    EXPECT_THAT(said("format --locale German_Germany number 4294967296"),
                StartsWith("4.294.967.296,"));
    EXPECT_THAT(said("format --locale German_Germany number 1234.5"), StartsWith("1.234,5"));
    EXPECT_EQ(json::parse(said("format --json --locale German number 7")),
              (json{{"text", "7"}, {"function", "TSLongToString"}}));
}

TEST(Format, WritesMoney)
{
    EXPECT_THAT(said("format --locale English_UnitedStates money 1234.5"), HasSubstr("$1,234.50"));
    EXPECT_THAT(said("format --locale English_UnitedStates money --international 1234.5"),
                HasSubstr("USD"));
    EXPECT_THAT(said("format --locale German_Germany money -- -1234.5"), HasSubstr("1.234,50"));
}

TEST(Format, WritesTimes)
{
    EXPECT_EQ(said("format --locale German_Germany time 2005-03-07 --pattern '%A, %d. %B %Y'"),
              "Montag, 07. März 2005\n");
    EXPECT_EQ(said("format --locale English time '2005-03-07T13:05:09' --pattern "
                   "'%#I:%M:%S %p, %j'"),
              "1:05:09 PM, 065\n");
    EXPECT_EQ(said("format --locale English time '2005-03-07 13:05' --pattern %H%M%S"), "130500\n");
    EXPECT_NE(said("format --locale Japanese_Japan.IBM930 time"), "\n"); // now
}

TEST(Format, TellsWhatIsWrong)
{
    expectFailure("format --locale German number twelve", "\"twelve\" is no number");
    expectFailure("format --locale German money 1,5", "\"1,5\" is no number");
    expectFailure("format --locale German time 2005-02-29", "\"2005-02-29\" is no time");
    expectFailure("format --locale German time 2005-02-28T24:00", "is no time");
    expectFailure("format --locale German time 2005-02-28 --pattern '%d %Q'",
                  "has a directive that there is none of, behind \"28 \"");
    expectFailure("format --locale German", "subcommand");
    expectFailure("format number 1", "--locale is required");
    expectFailure("format --locale Elvish number 1", "no locale \"Elvish\"");
}

TEST(Format, HasThePatternsInItsHelp)
{
    const std::string help = said("format time --help");
    for (const char* const directive : {"%a %A", "%U %W", "%#x", "%p", "%%"})
        EXPECT_THAT(help, HasSubstr(directive));
    EXPECT_THAT(said("parse time --help"), HasSubstr("%j     day of the year"));
}

TEST(Parse, ReadsNumbers)
{
    EXPECT_EQ(said("parse --locale German_Germany number 1.234,5"), "1234.5\n");
    EXPECT_EQ(said("parse --locale German_Germany number --whole 1.234"), "1234\n");
    EXPECT_EQ(said("parse --locale English number --whole --base 0 0x1F"), "31\n");
    EXPECT_EQ(said("parse --locale English number --map-digits ١٢٣"), "123.0\n");
    EXPECT_EQ(said("parse --locale English_UnitedStates money 1,234.5"), "1234.5\n");
}

TEST(Parse, TellsWhatItDidNotRead)
{
    const Outcome outcome = run("parse --locale English number 12x4");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "12.0\nnot read: \"x4\"\n");
    const Outcome document = run("parse --json --locale English number 12x4");
    EXPECT_EQ(document.status, 1);
    EXPECT_EQ(json::parse(document.out), (json{{"value", 12.0}, {"rest", "x4"}}));
}

TEST(Parse, ReadsTimes)
{
    EXPECT_EQ(said("parse --locale German_Germany time 'Montag, 07. März 2005' --pattern "
                   "'%A, %d. %B %Y'"),
              "year 105\nmonth 2\ndayOfMonth 7\ndayOfWeek 1\n");
    EXPECT_EQ(
        json::parse(said("parse --json --locale English time '1:05 PM' --pattern '%I:%M %p'")),
        (json{{"hours", 13}, {"minutes", 5}, {"rest", ""}}));
}

TEST(Parse, FailsOnWhatDoesNotMatch)
{
    expectFailure("parse --locale English time noon --pattern %H",
                  "\"noon\" does not match the pattern \"%H\"");
    expectFailure("parse --locale English time 7 --pattern %Z", "has a directive that cannot be");
    expectFailure("parse --locale English number --whole --base 1 7", "there is no base 1");
}

} // namespace
} // namespace vlx::cli::test
