// `vlx sort`: the order of lines, in several locales and code pages, and what it does with their
// ends.
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;

// The sort of a text, from a file.
Outcome sorted(const std::string& arguments, const std::string& text)
{
    const Workshop workshop;
    return run("sort --locale " + arguments + " " + workshop.file("text", text));
}

std::string linesOf(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

// UTF-8 in another code page.
std::string inPage(const std::string& page, const std::string& text)
{
    const Workshop workshop;
    return run("conv -f UTF-8 -t " + page + " " + workshop.file("text", text)).out;
}

TEST(Sort, GoesByLetterThenAccentThenCase)
{
    const Outcome outcome =
        sorted("German.UTF-8", linesOf({"Zoo", "äpfel", "zebra", "Apfel", "apfel", "Äpfel", "Maße",
                                        "Masse", "ac", "Oma", "öl", "Ofen"}));
    EXPECT_EQ(outcome.out, linesOf({"ac", "apfel", "Apfel", "äpfel", "Äpfel", "Masse", "Maße",
                                    "Ofen", "öl", "Oma", "zebra", "Zoo"}));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.errors, "");
}

TEST(Sort, FollowsTheSortOfTheLocale)
{
    const std::string text = linesOf({"Öl", "Zoo", "Ärger", "Oslo", "Ål", "Ars"});
    EXPECT_EQ(sorted("German.UTF-8", text).out,
              linesOf({"Ål", "Ärger", "Ars", "Öl", "Oslo", "Zoo"}));
    EXPECT_EQ(sorted("German.UTF-8@Swedish", text).out,
              linesOf({"Ars", "Oslo", "Zoo", "Ål", "Ärger", "Öl"}));
    EXPECT_EQ(sorted("German.UTF-8@GermanPhonebook", linesOf({"Oma", "Öl", "Odem"})).out,
              linesOf({"Odem", "Öl", "Oma"}));
}

TEST(Sort, OrdersJapaneseInEachCodePageTheSame)
{
    const std::string text = linesOf({"テスト", "あさ", "漢字 1", "ｱｻ", "かな", "アサ", "abc"});
    const std::string wanted = linesOf({"abc", "あさ", "アサ", "ｱｻ", "かな", "テスト", "漢字 1"});
    EXPECT_EQ(sorted("Japanese.UTF-8@General", text).out, wanted);
    for (const char* const page : {"MS932", "IBM930", "IBM939"})
        EXPECT_EQ(sorted("Japanese."s + page + "@General", inPage(page, text)).out,
                  inPage(page, wanted))
            << page;
}

TEST(Sort, WithoutASortGoesByBytes)
{
    EXPECT_EQ(sorted("German.MS1252@BINARY", "b\n\xE4\nB\na\n\na\xFF\n").out,
              "\nB\na\na\xFF\nb\n\xE4\n");
    EXPECT_EQ(sorted("Japanese.MS932", "\x83\x41\nz\n\xB1\n").out, "z\n\x83\x41\n\xB1\n");
}

// Record ends stay what they are, and shift bytes are no part of a key.
TEST(Sort, ReadsEachRecordOfEbcdicFromTheSingleByteState)
{
    const std::string second = "\x0E\x44\x82\x0F"; // い
    const std::string first = "\x0E\x44\x81\x0F";  // あ
    EXPECT_EQ(sorted("Japanese.IBM930@General", second + "\x15" + first + "\x25\xC1\x15").out,
              "\xC1\x15" + first + "\x25" + second + "\x15");
    EXPECT_EQ(sorted("German.IBM273", "\xC3\x15\xC1\x25\xC2\x0D\x25").out,
              "\xC1\x25\xC2\x0D\x25\xC3\x15");
    // Of shift bytes side by side the last one counts.
    const std::string split = "\x0E\x44\x81\x0F\x0E\x44\x82\x0F\x25"; // あ, い
    const std::string whole = "\x0E\x44\x81\x44\x82\x0F\x25";
    EXPECT_EQ(sorted("Japanese.IBM930@General -u", split + whole + "\x0F" + split).out, split);
    EXPECT_EQ(sorted("Japanese.IBM930@General -u -k 1.2", whole + split).out, whole);
    EXPECT_EQ(sorted("Japanese.IBM930@BINARY -u", whole + split).out, split + whole);
}

TEST(Sort, EndsALineWhereACharacterOrAStateIsLeftOpen)
{
    EXPECT_EQ(sorted("Japanese.IBM930@General", "\x0E\x44\x82\x25\xC1\x25").out,
              "\xC1\x25\x0E\x44\x82\x25");
    EXPECT_EQ(sorted("Japanese.MS932@General", "b\x83\na\n").out, "a\nb\x83\n");
    EXPECT_EQ(sorted("German.UTF-8", "c\xE3\nb\xE3\x81\na\n").out, "a\nb\xE3\x81\nc\xE3\n");
}

TEST(Sort, GivesTheLastLineAnEnd)
{
    EXPECT_EQ(sorted("German.UTF-8", "b\na").out, "a\nb\n");
    EXPECT_EQ(sorted("German.UTF-8", "b\r\na").out, "a\r\nb\r\n");
    EXPECT_EQ(sorted("German.UTF-8", "a").out, "a\n");
    EXPECT_EQ(sorted("German.IBM273", "\xC2\x15\xC1").out, "\xC1\x15\xC2\x15");
    EXPECT_EQ(sorted("German.IBM273", "\xC1").out, "\xC1\x25");
    EXPECT_EQ(sorted("Japanese.IBM930@General", "\xC1\x15\x0E\x44\x81").out,
              "\xC1\x15\x0E\x44\x81\x0F\x15");
}

TEST(Sort, LeavesLineEndsOutOfKeys)
{
    EXPECT_EQ(sorted("German.UTF-8 -u", "b\r\nb\na\r\n").out, "a\r\nb\r\n");
    EXPECT_EQ(sorted("German.UTF-8@BINARY", "ab\na\r\n\r\n").out, "\r\na\r\nab\n");
    EXPECT_EQ(sorted("German.UTF-8@BINARY", "a\rb\na\n").out, "a\na\rb\n") << "a lone return";
}

TEST(Sort, KeepsBytesOfAllKinds)
{
    const std::string text = "b\0b\na\0\na\n\0\n"s;
    EXPECT_EQ(sorted("German.MS1252@BINARY", text).out, "\0\na\na\0\nb\0b\n"s);
    EXPECT_EQ(sorted("German.MS1252", "\x81z\n\x81y\n").out, "\x81y\n\x81z\n") << "undefined";
}

TEST(Sort, OfNothingIsNothing)
{
    const Outcome outcome = sorted("German.UTF-8", "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out + outcome.errors, "");
    EXPECT_EQ(sorted("German.UTF-8 -S 1b", "").status, 0);
    EXPECT_EQ(sorted("German.UTF-8", "b\n\n\na\n").out, "\n\na\nb\n");
    EXPECT_EQ(sorted("German.UTF-8 -c", "").status, 0);
}

TEST(Sort, TakesSeveralTextsTogether)
{
    const Workshop workshop;
    const std::string one = workshop.file("one", "d\nb"); // no end
    const std::string other = workshop.file("other", "c\na\n");
    EXPECT_EQ(run("sort --locale German.UTF-8 " + one + " " + other).out, "a\nb\nc\nd\n");
    EXPECT_EQ(run("sort --locale German.UTF-8 " + one + " - <" + other).out, "a\nb\nc\nd\n");
    EXPECT_EQ(run("sort --locale German.UTF-8 <" + other).out, "a\nc\n");
}

TEST(Sort, LeavesLinesOfOneKeyAsTheyCame)
{
    const std::string text = "b 2\na 1\nb 1\na 2\n";
    EXPECT_EQ(sorted("German.UTF-8 -k 1,1", text).out, "a 1\na 2\nb 2\nb 1\n");
    EXPECT_EQ(sorted("German.UTF-8 -k 1,1 -r", text).out, "b 2\nb 1\na 1\na 2\n");
    EXPECT_EQ(sorted("German.UTF-8 -k 1,1 -u", text).out, "a 1\nb 2\n");
    EXPECT_EQ(sorted("German.UTF-8 -k 1,1 -ru", text).out, "b 2\na 1\n");
}

TEST(Sort, TurnsTheOrderRound)
{
    const std::string text = linesOf({"", "a", "ab", "abc", "ä", "b"});
    EXPECT_EQ(sorted("German.UTF-8", text).out, linesOf({"", "a", "ä", "ab", "abc", "b"}));
    EXPECT_EQ(sorted("German.UTF-8 -r", text).out, linesOf({"b", "abc", "ab", "ä", "a", ""}));
}

TEST(Sort, IgnoresCaseOrWidth)
{
    const std::string text = linesOf({"Abc", "ABC", "abc", "ＡＢＣ", "ａｂｃ"});
    EXPECT_EQ(sorted("Japanese.UTF-8@General --ignore-case -u", text).out,
              linesOf({"Abc", "ＡＢＣ"}));
    EXPECT_EQ(sorted("Japanese.UTF-8@General --ignore-width -u", text).out,
              linesOf({"abc", "Abc", "ABC"}));
    const Outcome both = sorted("Japanese.UTF-8@General --ignore-width --ignore-case", text);
    EXPECT_EQ(both.status, 2);
    EXPECT_THAT(both.errors, HasSubstr("case and width cannot be ignored together"));
}

TEST(SortCheck, TellsTheFirstLineThatIsOutOfOrder)
{
    EXPECT_EQ(sorted("German.UTF-8 -c", "a\nä\nb\n").status, 0);
    EXPECT_EQ(sorted("German.UTF-8 -c", "a\na\n").status, 0);
    const Outcome outcome = sorted("German.UTF-8 -c", "a\nb\nä\na\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.errors, HasSubstr("text:3: out of order: ä\n"));
    EXPECT_EQ(sorted("German.UTF-8 -C", "b\na\n").errors, "");
    EXPECT_EQ(sorted("German.UTF-8 -C", "b\na\n").status, 1);
    EXPECT_EQ(sorted("German.UTF-8 -cr", "b\na\n").status, 0);
}

TEST(SortCheck, WithUniqueRefusesALineOfTheSameKey)
{
    const Outcome outcome = sorted("German.UTF-8 -cuf", "a\nA\n");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("text:2: equal to the line before: A"));
    EXPECT_EQ(sorted("German.UTF-8 -cu", "\n").status, 0);
    EXPECT_EQ(sorted("German.UTF-8 -cu", "\n\n").status, 1);
}

TEST(SortCheck, WritesADocument)
{
    const auto bad = nlohmann::json::parse(sorted("German.UTF-8 -C --json", "ö\nb\n").out);
    EXPECT_EQ(bad["inOrder"], false);
    EXPECT_EQ(bad["line"], 2);
    EXPECT_EQ(bad["text"], "b");
    EXPECT_EQ(bad["before"], "ö");
    const auto good = nlohmann::json::parse(sorted("German.UTF-8 -c --json", "b\nö\n").out);
    EXPECT_EQ(good["inOrder"], true);
    EXPECT_EQ(good["lines"], 2);
}

// A sorted text is in order by its keys, also where a comparison would say otherwise.
TEST(SortCheck, GoesByTheOrderOfTheSort)
{
    const std::string text = linesOf({"a-b", "ac", "ab", "co-op", "coop", "CO-OP", "a\u0301b", "áb",
                                      "æ", "ae", "aß", "ass", "-", "--", "_"});
    for (const char* const sort : {"General", "IgnorePunctuation", "CanadianFrench", "Thai"}) {
        const std::string locale = "German.UTF-8@"s + sort;
        EXPECT_EQ(sorted(locale + " -c", sorted(locale, text).out).status, 0) << sort;
    }
}

TEST(SortCheck, ChecksOneText)
{
    const Outcome outcome = run("sort --locale German.UTF-8 -c - -");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("-c checks one text"));
}

TEST(SortKey, ShowsTheLevelsApart)
{
    EXPECT_EQ(masked(sorted("German.UTF-8 --key", "Äb\n\nab\n").out),
              "#### #### | ## | ## | \tÄb\n |  |  | \t\n#### #### |  |  | \tab\n");
    EXPECT_EQ(masked(sorted("German.UTF-8@IgnorePunctuation --key", "a-b\n-\n").out),
              "#### #### |  |  | ####:####\ta-b\n |  |  | ####\t-\n");
    EXPECT_EQ(sorted("German.MS1252@BINARY --key", "a\xFC\n").out, "61FC\taü\n");
}

// The key is that of the library, with the zero bytes between the levels.
TEST(SortKey, ShowsAllOfTheKey)
{
    const auto key = nlohmann::json::parse(
        sorted("German.UTF-8@CanadianFrench --key --json", "Côté!\n").out)[0]["keys"][0];
    std::string whole;
    for (const std::string level : key["levels"])
        whole += (whole.empty() ? "" : "00") + level;
    whole.erase(std::remove_if(whole.begin(), whole.end(),
                               [](char sign) { return sign == ' ' || sign == ':'; }),
                whole.end());
    EXPECT_EQ(whole, key["key"]);
}

TEST(SortKey, ShowsThePartsOfAKey)
{
    const Outcome outcome = sorted("German.UTF-8 --key -t ';' -k 2n -k 1,1f", "x;-1,5\n");
    EXPECT_EQ(masked(outcome.out), "4007FFFFFFFFFFFF\t#### |  | ## | \tx;-1,5\n");
    EXPECT_EQ(outcome.status, 0);
}

TEST(SortKey, WritesADocument)
{
    const auto document =
        nlohmann::json::parse(sorted("German.IBM273 --key --json", "\xC0\x15\x40\xC1\x25").out);
    ASSERT_EQ(document.size(), 2U);
    EXPECT_EQ(document[0]["text"], "ä");
    EXPECT_EQ(document[0]["keys"][0]["levels"].size(), 4U);
    EXPECT_NE(document[0]["keys"][0]["levels"][1], "");
    EXPECT_EQ(document[1]["line"], 2);
    EXPECT_EQ(nlohmann::json::parse(sorted("German.UTF-8 --key --json", "").out).size(), 0U);
}

} // namespace
} // namespace vlx::cli::test
