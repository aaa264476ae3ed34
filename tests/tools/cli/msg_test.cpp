// `vlx msg` and `vlx ids`, on the shipped locale directory.
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using testing::HasSubstr;
using testing::Not;

class Msg : public testing::Test {
  protected:
    Msg()
    {
        source_ = workshop_.file("de.toml", "locale = \"German_Germany.MS1252\"\n[set.2]\n"
                                            "5 = \"Grüße aus Köln\"\n");
        catalog_ = workshop_.path("de.cat");
        const std::string command = std::string(VLX_DATA_COMMAND) + " catalog build " + source_ +
                                    " -o " + catalog_ + " --locale-dir " + VLX_LOCALE;
        EXPECT_EQ(std::system(command.c_str()), 0);
    }

    static Outcome vlx(const std::string& arguments)
    {
        return run(std::string("--locale-dir ") + VLX_LOCALE + " " + arguments);
    }

    Workshop workshop_;
    std::string source_;
    std::string catalog_;
};

TEST_F(Msg, AMessageIsShownInUtf8WhateverTheLocale)
{
    for (const char* const locale : {"German", "English.UTF-8", "German_Germany.IBM273"}) {
        const Outcome outcome = vlx("msg " + catalog_ + " 2 5 --locale " + locale);
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
        EXPECT_EQ(outcome.out, "Grüße aus Köln\n");
    }
}

TEST_F(Msg, RawIsTheCodePageOfTheLocale)
{
    EXPECT_EQ(vlx("msg " + catalog_ + " 2 5 --locale German.MS1252 --raw").out, "Gr\xFC\xDF"
                                                                                "e aus K\xF6ln");
}

TEST_F(Msg, AMissingMessageIsStatus1)
{
    const Outcome outcome = vlx("msg " + catalog_ + " 2 6 --locale German");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.errors, HasSubstr("has no message 6 in set 2"));
}

TEST_F(Msg, ACatalogThatIsNotThereIsStatus2)
{
    const Outcome outcome = vlx("msg " + workshop_.path("none.cat") + " 2 6 --locale German");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("no such catalog was found"));
    EXPECT_EQ(vlx("msg " + source_ + " 2 6 --locale German").status, 2);
}

using Ids = Msg;

TEST_F(Ids, NamesIdsAndAliasesInBothDirections)
{
    EXPECT_EQ(vlx("ids german").out, "language       2  German\n");
    EXPECT_EQ(vlx("ids 930 --type codepage").out, "codepage     930  IBM930\n");
    EXPECT_EQ(vlx("ids CP1252").out, "codepage    1252  MS1252  (alias CP1252)\n");
    EXPECT_EQ(vlx("ids binary").out, "sort           0  Binary\n");
    EXPECT_THAT(vlx("ids 1").out, HasSubstr("language       1  English\n"));
    EXPECT_EQ(vlx("ids 0").out, "sort           0  Binary\n");
}

TEST_F(Ids, APairIsALanguageAndATerritory)
{
    EXPECT_EQ(vlx("ids 18087938").out, // 276 * 65536 + 2
              "language       2  German\nterritory    276  Germany\n");
    const Outcome outcome = vlx("ids 66788 --type codepage"); // 65536 + 1252
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(vlx("ids -- -1").status, 1);
}

TEST_F(Ids, WithoutWordsEverythingIsListed)
{
    const Outcome all = vlx("ids");
    EXPECT_EQ(all.status, 0);
    EXPECT_THAT(all.out, HasSubstr("territory    276  Germany\n"));
    EXPECT_THAT(all.out, HasSubstr("codepage   57352  UTF-8\n"));
    EXPECT_THAT(vlx("ids --type language").out, Not(HasSubstr("codepage")));
}

TEST_F(Ids, AWordThatIsNotListedIsStatus1)
{
    const Outcome outcome = vlx("ids German Klingon");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "language       2  German\n");
    EXPECT_THAT(outcome.errors, HasSubstr("nothing is listed under Klingon"));
}

} // namespace
} // namespace vlx::cli::test
