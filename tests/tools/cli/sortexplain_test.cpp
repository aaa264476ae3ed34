// `vlx sort --explain`: the elements of two strings, their keys, and where they part.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using namespace std::string_literals;
using testing::EndsWith;
using testing::HasSubstr;

Outcome explained(const std::string& locale, const std::string& arguments)
{
    return run("sort --locale " + locale + " --explain " + arguments);
}

std::string maskedOf(const std::string& locale, const std::string& arguments)
{
    return masked(explained(locale, arguments).out);
}

nlohmann::json documentOf(const std::string& locale, const std::string& arguments)
{
    return nlohmann::json::parse(explained(locale, "--json " + arguments).out);
}

TEST(SortExplain, ShowsElementsKeysAndTheDifference)
{
    const Outcome outcome = explained("German", "öd Od");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(masked(outcome.out), R"(sort General (1)

öd
  ####  ##  ##  ö
  ####  ##  ##  d

Od
  ####  ##  ##  O
  ####  ##  ##  d

Keys
  level 1:  #### ####
  level 1:  #### ####
  level 2:  ##
  level 2:
  level 3:
  level 3:  ##
  level 4:
  level 4:

öd comes after Od: they part at level 2, weight 1, where ö has ## and O has ##
)");
}

TEST(SortExplain, TellsTheLevelThatDecides)
{
    EXPECT_THAT(maskedOf("German", "Haus Hut"),
                EndsWith("Haus comes before Hut: they part at level 1, weight 2, where a has #### "
                         "and u has ####\n"));
    EXPECT_THAT(maskedOf("German", "ab abc"),
                EndsWith("at level 1, weight 3, where ab has no more and c has ####\n"));
    EXPECT_THAT(maskedOf("German", "ab aB"), HasSubstr("they part at level 3, weight 2"));
    EXPECT_THAT(maskedOf("German", "ab ab"),
                EndsWith("ab is equal to ab: their keys are the same\n"));
    EXPECT_THAT(maskedOf("German@IgnorePunctuation", "co-op c-oop"),
                HasSubstr("they part at level 4, weight 1, where -, character 3, has #### and -, "
                          "character 2, has ####"));
    EXPECT_THAT(maskedOf("German", "'' a"), HasSubstr("where \"\" has no more and a has ####"));
}

TEST(SortExplain, ShowsExpansionsAndContractions)
{
    const auto sharp = documentOf("German", "Maße Masse");
    const auto& elements = sharp["first"]["elements"];
    ASSERT_EQ(elements.size(), 5U);
    EXPECT_EQ(elements[2]["characters"], "ß");
    EXPECT_EQ(elements[3]["characters"], "");
    EXPECT_EQ(elements[2]["weights"][0], elements[3]["weights"][0]);
    EXPECT_EQ(sharp["level"], 2);
    EXPECT_EQ(sharp["order"], 1);
    EXPECT_EQ(sharp["comparison"], 1);
    EXPECT_EQ(documentOf("German@Croatian", "ljut luk")["first"]["elements"][0]["characters"],
              "lj");
    EXPECT_EQ(documentOf("German@General", "ljut luk")["first"]["elements"][0]["characters"], "l");
}

// Accents count from the end.
TEST(SortExplain, FollowsTheDirectionOfALevel)
{
    EXPECT_THAT(explained("German@CanadianFrench", "côte coté").out,
                HasSubstr("côte comes before coté: they part at level 2, weight 1, where e has"));
    EXPECT_THAT(explained("German@General", "côte coté").out,
                HasSubstr("côte comes after coté: they part at level 2, weight 2, where ô has"));
}

TEST(SortExplain, TellsWhereAComparisonDisagrees)
{
    EXPECT_THAT(explained("German", "áa $(printf 'a\\314\\201a')").out,
                HasSubstr("A comparison of the texts (TSStrcoll) says: áa comes before"));
    const auto document = documentOf("German", "áa $(printf 'a\\314\\201a')");
    EXPECT_EQ(document["order"], 1);
    EXPECT_EQ(document["comparison"], -1);
}

TEST(SortExplain, FoldsTheStrings)
{
    EXPECT_EQ(documentOf("German", "-f ab AB")["order"], 0);
    EXPECT_EQ(documentOf("German", "-f ab AB")["first"]["elements"][0]["characters"], "A");
    EXPECT_EQ(documentOf("Japanese.UTF-8@General", "-w ａｂ ab")["order"], 0);
    EXPECT_EQ(documentOf("Japanese.UTF-8@General", "ａｂ ab")["order"], 1);
    EXPECT_EQ(explained("German", "-fw ab AB").status, 2);
}

// The elements are those of the keys: of each pair the runs that are shown make the key.
TEST(SortExplain, GoesWithTheOrderOfTheLines)
{
    const Workshop workshop;
    for (const char* const pair : {"Öl Ol", "ab a-b", "ç cz", "Ǆ dž", "æ ae", "Straße Strasse"}) {
        const std::string text(pair);
        const std::size_t blank = text.find(' ');
        const std::string lines = text.substr(0, blank) + '\n' + text.substr(blank + 1) + '\n';
        const int status =
            run("sort -C --locale German.UTF-8 " + workshop.file("text", lines)).status;
        EXPECT_EQ(documentOf("German", pair)["order"] == 1, status == 1) << pair;
    }
}

TEST(SortExplain, WithoutASortShowsBytes)
{
    EXPECT_EQ(explained("German.MS1252@BINARY", "Müller Muller").out,
              "sort Binary (0)\n\nKeys\n  4DFC6C6C6572  Müller\n  4D756C6C6572  Muller\n\nMüller "
              "comes after Muller: they part at byte 2, where Müller has FC and Muller has 75\n");
    EXPECT_EQ(documentOf("Japanese.IBM930", "あ a")["first"]["key"], "0E4481");
}

TEST(SortExplain, IsPlainAsciiWhereThatIsAllThatCanBeRead)
{
    EXPECT_THAT(masked(run("sort --locale German --explain öd Od", {.language = "C"}).out),
                EndsWith("\\u00F6d comes after Od: they part at level 2, weight 1, where \\u00F6 "
                         "has ## and O has ##\n"));
}

TEST(SortExplain, TakesTwoStrings)
{
    for (const char* const arguments : {"a", "a b c", ""}) {
        const Outcome outcome = explained("German", arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.errors, HasSubstr("--explain takes two strings"));
    }
    EXPECT_EQ(explained("German", "-- -a -b").status, 0);
    EXPECT_EQ(explained("German", "a b --key").status, 2);
}

TEST(SortExplain, RefusesADamagedSort)
{
    const Workshop workshop;
    std::filesystem::copy(VLX_LOCALE, workshop.path("locale"));
    std::string object = contentOf(VLX_LOCALE "/so_00001.nls");
    object.resize(object.size() / 2);
    workshop.file("locale/so_00001.nls", object);
    const Outcome outcome =
        run("sort --locale German --explain a b", {.localeDirectory = workshop.path("locale")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("no locale \"German\" (error 11)"));
}

} // namespace
} // namespace vlx::cli::test
