// `vlx show`, on the locale directory of the build.
#include <regex>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

json shown(const std::string& arguments)
{
    const Outcome outcome = run("show --json " + arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    return json::parse(outcome.out)["items"];
}

json valueOf(const json& items, int item)
{
    return items.at(static_cast<std::size_t>(item) - 1)["value"];
}

TEST(Show, HasEveryItemOfThePublicHeaderByItsNameAndNumber)
{
    const json items = shown("German_Germany");
    const std::string header = contentOf(VLX_INCLUDE "/tsconst.h");
    const std::regex definition("#define (TS_LI_\\w+) (\\d+)");
    std::size_t count = 0;
    for (std::sregex_iterator at(header.begin(), header.end(), definition), end; at != end; ++at) {
        ASSERT_LT(count, items.size());
        EXPECT_EQ(items[count]["name"], (*at)[1].str());
        EXPECT_EQ(items[count]["item"], std::stoi((*at)[2]));
        EXPECT_FALSE(items[count]["value"].is_null()) << (*at)[1];
        ++count;
    }
    EXPECT_EQ(count, 88u);
    EXPECT_EQ(items.size(), 88u);
}

TEST(Show, HasNumbersAndTextsOfTheLocale)
{
    const json items = shown("German_Germany.MS1252@BINARY");
    EXPECT_EQ(valueOf(items, 5), 276);
    EXPECT_EQ(valueOf(items, 12), "Binary");
    EXPECT_EQ(valueOf(items, 17), "Montag");
    EXPECT_EQ(valueOf(items, 32), "M\xC3\xA4rz");
    EXPECT_EQ(valueOf(items, 42), "");
    EXPECT_EQ(valueOf(items, 59), ",");
    EXPECT_EQ(valueOf(items, 63), 2);
    EXPECT_EQ(valueOf(items, 64), "\xE2\x82\xAC");
    EXPECT_EQ(valueOf(items, 86), 1);
    EXPECT_EQ(valueOf(items, 88), "German_Germany.MS1252@Binary");
}

TEST(Show, IsATableForAReader)
{
    const Outcome outcome = run("show German_Germany.MS1252@BINARY");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_THAT(outcome.out, HasSubstr("Objects\n   1  LANGUAGE_ID                2\n"));
    EXPECT_THAT(outcome.out,
                HasSubstr("\n\nMonths\n  30  MONTH_1                    \"Januar\"\n"));
    EXPECT_THAT(outcome.out, HasSubstr("\"M\xC3\xA4rz\""));
    EXPECT_THAT(outcome.out, Not(HasSubstr("\033")));
    EXPECT_THAT(onTerminal("show German", ""), HasSubstr("\033["));
}

TEST(Show, WritesCharactersThatDoNotShowByTheirNumbers)
{
    const Outcome outcome = run("show German_Germany.MS1252", {.language = "C"});
    EXPECT_THAT(outcome.out, HasSubstr("\"M\\u00E4rz\""));
    EXPECT_THAT(outcome.out, HasSubstr("CURRENCY_SYMBOL            \"\\u20AC\""));
}

TEST(Show, OfTheUserIsTheHostsLocaleWithItsSettings)
{
    const json items = shown("--user"); // by LC_ALL, C.UTF-8
    EXPECT_EQ(valueOf(items, 6), "UnitedStates");
    EXPECT_EQ(valueOf(items, 80), "%m/%d/%y");
}

TEST(Show, OfTheUserIsTheVariablesLocaleIfItIsSet)
{
    const Outcome outcome =
        run("show --user", {.language = "C.UTF-8 TS_LANG=German_Germany.MS1252@BINARY"});
    EXPECT_THAT(outcome.out, HasSubstr("\"German_Germany.MS1252@Binary\"\n"));
    EXPECT_THAT(outcome.out, HasSubstr("DATE_FORMAT                \"%d.%m.%y\"\n"));
}

TEST(Show, OfObjectsLeavesTheHostsSettingsOut)
{
    const json items = shown("--user --object");
    EXPECT_EQ(valueOf(items, 80), "%#m/%#d/%y");
}

TEST(Show, NeedsOneLocale)
{
    const Outcome none = run("show");
    EXPECT_EQ(none.status, 2);
    EXPECT_THAT(none.errors, HasSubstr("show: LOCALE or --user is required"));
    const Outcome both = run("show --user German");
    EXPECT_EQ(both.status, 2);
    EXPECT_THAT(both.errors, HasSubstr("LOCALE excludes --user"));
    const Outcome unlisted = run("show Klingon");
    EXPECT_EQ(unlisted.status, 2);
    EXPECT_EQ(unlisted.out, "");
    EXPECT_THAT(unlisted.errors, HasSubstr("its language is not listed"));
}

} // namespace
} // namespace vlx::cli::test
