// `vlx conv`: what it writes, what it tells of losses, and how it treats its output.
#include <optional>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <iconv.h>

#include "command.hpp"

namespace vlx::cli::test {
namespace {

using namespace std::string_literals;
using testing::HasSubstr;
using testing::Not;

// The conversion of a text, from a file.
Outcome converted(const std::string& from, const std::string& to, const std::string& text)
{
    const Workshop workshop;
    return run("conv -f " + from + " -t " + to + " " + workshop.file("text", text));
}

std::string source(const std::string& name)
{
    return contentOf(VLX_EXAMPLES "/sources/" + name);
}

TEST(Conv, TurnsEachExampleIntoItsSourceAndBack)
{
    constexpr const char* kExamples[][3] = {
        {"MS932", "japanese.ms932.txt", "japanese.txt"},
        {"IBM930", "japanese.ibm930.txt", "japanese-ebcdic.txt"},
        {"MS1252", "german.ms1252.txt", "german.txt"},
        {"UTF-8", "multilingual.utf8.txt", "multilingual.txt"},
    };
    for (const auto& [page, example, text] : kExamples) {
        const Outcome there = run("conv -f "s + page + " -t UTF-8 " + example);
        EXPECT_EQ(there.status, 0);
        EXPECT_EQ(there.out, source(text));
        EXPECT_EQ(there.errors, "");
        const Outcome back = run("conv -f UTF-8 -t "s + page + " sources/" + text);
        EXPECT_EQ(back.status, 0);
        EXPECT_EQ(back.out, contentOf(VLX_EXAMPLES "/"s + example));
    }
}

TEST(Conv, TakesAPageByNameAnotherNameOrId)
{
    const std::string wanted = source("japanese-ebcdic.txt");
    for (const char* const page : {"IBM930", "ibm930", "cp930", "X-IBM930", "930", "00930"})
        for (const char* const utf8 : {"UTF-8", "utf8", "57352"}) {
            const Outcome outcome =
                run("conv -f "s + page + " -t " + utf8 + " japanese.ibm930.txt");
            EXPECT_EQ(outcome.out, wanted) << page << ' ' << utf8 << ' ' << outcome.errors;
        }
}

TEST(Conv, RefusesAPageThatIsNotThere)
{
    for (const char* const page : {"klingon", "931x", "''", "MS1252@BINARY", "70000"}) {
        const Outcome outcome = run("conv -f UTF-8 -t "s + page + " german.ms1252.txt");
        EXPECT_EQ(outcome.status, 2) << page;
        EXPECT_THAT(outcome.errors, HasSubstr("no code page \""));
        EXPECT_EQ(outcome.out, "");
    }
    EXPECT_THAT(run("conv -f UTF-8 -t 70000 </dev/null").errors,
                HasSubstr("`vlx locales --type codepage`"));
    EXPECT_THAT(run("conv -f UTF-8 </dev/null").errors, HasSubstr("--to is required"));
}

// A page with a bad file would be read as US-ASCII by the library.
TEST(Conv, RefusesAPageWhoseFileIsBad)
{
    const Workshop workshop;
    std::filesystem::copy(VLX_LOCALE, workshop.path("locale"));
    workshop.file("locale/cp_01252.nls", "no object");
    const Outcome outcome = run("conv -f 1252 -t UTF-8 german.ms1252.txt",
                                {.localeDirectory = workshop.path("locale")});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("the code page MS1252 could not be loaded (error 11)"));
    EXPECT_EQ(outcome.out, "");
}

TEST(Conv, RefusesToRunOnTheBuiltInPage)
{
    const Outcome outcome =
        run("conv -f US-ASCII -t US-ASCII </dev/null", {.localeDirectory = "/nonexistent"});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.errors, HasSubstr("no good control.nls in /nonexistent"));
}

TEST(Conv, ReadsStandardInputAndSeveralFiles)
{
    const std::string german = source("german.txt");
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 <german.ms1252.txt").out, german);
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 - <german.ms1252.txt").out, german);
    EXPECT_EQ(
        run("conv -f MS1252 -t UTF-8 german.ms1252.txt - german.ms1252.txt <german.ms1252.txt").out,
        german + german + german);
    EXPECT_EQ(run("conv -f MS1252 -t UTF-8 </dev/null").out, "");
}

TEST(Conv, ClosesTheMultiByteStateAtTheEnd)
{
    EXPECT_EQ(converted("UTF-8", "IBM930", "a\u3042").out, "\x62\x0E\x44\x81\x0F");
    EXPECT_EQ(converted("UTF-8", "IBM930", "\u3042\u3042").out, "\x0E\x44\x81\x44\x81\x0F");
    EXPECT_EQ(converted("UTF-8", "IBM930", "a").out, "\x62");
    EXPECT_EQ(converted("UTF-8", "IBM930", "").out, "");
    // The source's own shift bytes do not matter, and neither does one that is missing.
    for (const char* const text : {"\x0E\x44\x81", "\x0E\x44\x81\x0F", "\x0E\x44\x81\x0F\x0E"}) {
        const Outcome outcome = converted("IBM930", "IBM939", text);
        EXPECT_EQ(outcome.out, "\x0E\x44\x81\x0F");
        EXPECT_EQ(outcome.status, 0);
    }
}

TEST(Conv, LeavesTheMultiByteStateBeforeALineEnd)
{
    EXPECT_EQ(converted("UTF-8", "IBM930", "\u3042\n\u3042\r\n\u3042").out,
              "\x0E\x44\x81\x0F\x25\x0E\x44\x81\x0F\x0D\x25\x0E\x44\x81\x0F");
}

// Fields and records of fixed length are closed each for itself, and stand side by side.
TEST(Conv, TakesEveryShiftByteOfSeveral)
{
    const Outcome outcome = converted(
        "IBM930", "UTF-8", "\x0E\x0F\x62\x0E\x44\x81\x0F\x0E\x44\x82\x0F\x0F\x0E\x0F\x62");
    EXPECT_EQ(outcome.out, "a\u3042\u3044a");
    EXPECT_EQ(outcome.status, 0) << outcome.errors;
    EXPECT_EQ(converted("IBM930", "IBM939", "\x0E\x44\x81\x0F\x0E\x44\x82\x0F").out,
              "\x0E\x44\x81\x44\x82\x0F");
}

TEST(Conv, BeginsEachTextInTheSingleByteState)
{
    const Workshop workshop;
    const std::string open = workshop.file("open", "\x0E\x44\x81");
    EXPECT_EQ(run("conv -f IBM930 -t UTF-8 " + open + " " + workshop.file("b", "\x62")).out,
              "\u3042a");
    EXPECT_EQ(run("conv -f IBM930 -t IBM939 " + open + " " + open).out,
              "\x0E\x44\x81\x0F\x0E\x44\x81\x0F");
}

TEST(Conv, TellsWhatHasNoForm)
{
    const Outcome outcome = converted("UTF-8", "MS1252", "a\u3042?\u20AC\u3044");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "a??\x80?");
    EXPECT_THAT(outcome.errors, HasSubstr("offset 1: E3 81 82 (U+3042) has no form in MS1252\n"));
    EXPECT_THAT(outcome.errors, HasSubstr("offset 8: E3 81 84 (U+3044) has no form in MS1252\n"));
    EXPECT_THAT(outcome.errors, HasSubstr("2 characters without a form in MS1252 became 3F\n"));
}

TEST(Conv, TellsWhatIsUndefined)
{
    const Outcome outcome = converted("IBM930", "UTF-8", "\x62\x0E\x44\x81\xFF\xFE\x0F\xFF\xEA");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "a\u3042\uFFFD\u009F\uFFFD");
    EXPECT_THAT(outcome.errors, HasSubstr("offset 4: FF FE is undefined in IBM930\n"));
    EXPECT_THAT(outcome.errors, HasSubstr("offset 8: EA is undefined in IBM930\n"));
    EXPECT_THAT(outcome.errors, HasSubstr("2 characters undefined in IBM930\n"));
    EXPECT_THAT(outcome.errors, Not(HasSubstr("has no form")));
}

TEST(Conv, TellsUtf8ThatIsNone)
{
    struct Case {
        const char* text;
        const char* told;
    };
    constexpr Case kCases[] = {
        {"ab\xC3\x41", "offset 2: C3 41 is undefined in UTF-8"},
        {"\xC1\x81", "offset 0: C1 81 is undefined"},
        {"\xE0\x81\x81", "offset 0: E0 81 81 is undefined"},
        {"\xE3\x41\x81", "offset 0: E3 41 81 is undefined"},
        {"\xE3\x81\x41", "offset 0: E3 81 41 is undefined"},
        {"\x81", "offset 0: 81 is undefined"},
        {"\xF0\x9F\x98\x80", "offset 3: 80 is undefined"},
    };
    for (const Case& one : kCases) {
        const Outcome outcome = converted("UTF-8", "IBM930", one.text);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.errors, HasSubstr(one.told));
    }
    EXPECT_EQ(converted("UTF-8", "UTF-8", "\uFFFD\uFFFD").status, 0) << "U+FFFD itself is good";
    EXPECT_THAT(converted("UTF-8", "IBM930", "\uFFFD").errors,
                HasSubstr("EF BF BD (U+FFFD) has no form in IBM930"));
}

TEST(Conv, TellsACharacterThatTheEndCutsOff)
{
    const Outcome outcome = converted("MS932", "UTF-8", "a\x82\xA0\x82");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "a\u3042");
    EXPECT_THAT(outcome.errors,
                HasSubstr("offset 3: 82 is left out: the end cuts the character off"));
    EXPECT_THAT(converted("IBM930", "UTF-8", "\x62\x0E\x44").errors, HasSubstr("offset 2: 44 is"));
}

TEST(Conv, TellsTheFirstLossesAndCountsAll)
{
    std::string text(70000, 'a'); // more than one slice
    for (int i = 0; i < 4000; ++i)
        text += "\u3042b";
    const Outcome outcome = converted("UTF-8", "MS1252", text);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("offset 70000: E3"));
    EXPECT_THAT(outcome.errors, HasSubstr("offset 70016: E3"));
    EXPECT_THAT(outcome.errors, Not(HasSubstr("offset 70020")));
    EXPECT_THAT(outcome.errors, HasSubstr("4000 characters without a form in MS1252 became 3F"));
}

TEST(Conv, FindsNoLossInTheSubstituteItself)
{
    for (const char* const page : {"MS1252", "MS932", "IBM930", "IBM037"}) {
        const Outcome outcome = converted("UTF-8", page, std::string(50000, '?') + "/o_%\n");
        EXPECT_EQ(outcome.status, 0) << outcome.errors;
    }
}

// What iconv makes of a whole text; nothing where it gives up.
std::optional<std::string> byIconv(const char* to, const char* from, std::string text)
{
    const iconv_t handle = iconv_open(to, from);
    std::string out(8 * text.size() + 16, '\0');
    char* input = text.data();
    char* output = out.data();
    std::size_t left = text.size();
    std::size_t room = out.size();
    const bool good = iconv(handle, &input, &left, &output, &room) == 0 &&
                      iconv(handle, nullptr, nullptr, &output, &room) == 0;
    iconv_close(handle);
    out.resize(out.size() - room);
    return good ? std::optional(out) : std::nullopt;
}

// Long texts, so that every kind of character falls on the end of a slice.
TEST(Conv, MakesOfLongTextsWhatIconvMakes)
{
    struct Pair {
        const char* page;
        const char* iconv;
        const char* source;
    };
    constexpr Pair kPairs[] = {{"MS932", "CP932", "japanese.txt"},
                               {"IBM930", "IBM930", "japanese-ebcdic.txt"},
                               {"MS1252", "CP1252", "german.txt"}};
    std::minstd_rand random(5); // NOLINT: the same texts in each run
    for (const Pair& pair : kPairs) {
        const std::string piece = source(pair.source);
        std::string text;
        while (text.size() < 200000) {
            text.append(random() % 7, 'x');
            text += piece;
        }
        const auto wanted = byIconv(pair.iconv, "UTF-8", text);
        ASSERT_TRUE(wanted);
        const Outcome there = converted("UTF-8", pair.page, text);
        EXPECT_EQ(there.status, 0) << there.errors;
        EXPECT_EQ(there.out, *wanted) << pair.page;
        EXPECT_EQ(converted(pair.page, "UTF-8", *wanted).out, text) << pair.page;
    }
}

// Any bytes, in one piece from a file and in small ones through a pipe.
TEST(Conv, GivesTheSameHoweverTheTextArrives)
{
    const Workshop workshop;
    std::minstd_rand random(930); // NOLINT: the same bytes in each run
    for (int round = 0; round < 4; ++round) {
        std::string bytes(3000, '\0');
        for (char& byte : bytes)
            byte = static_cast<char>(random() % 5 == 0 ? 0x0E + random() % 2 : random() >> 8);
        const std::string file = workshop.file("random", bytes);
        for (const char* const pages : {"-f IBM930 -t UTF-8", "-f MS932 -t IBM939",
                                        "-f UTF-8 -t MS950", "-f IBM037 -t IBM930"}) {
            const Outcome whole = run("conv "s + pages + " <" + file);
            const Outcome pieces =
                run("conv "s + pages, {.input = "dd status=none bs=7 if=" + file});
            EXPECT_EQ(whole.status, 1);
            EXPECT_EQ(pieces.status, whole.status);
            EXPECT_EQ(pieces.out, whole.out) << pages;
            EXPECT_EQ(pieces.errors, whole.errors);
        }
    }
}

} // namespace
} // namespace vlx::cli::test
