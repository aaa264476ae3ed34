// TSStrcmpEx.
#include <gtest/gtest.h>
#include <string>

#include "compare/memory.hpp"
#include "mapstr/hand_pages.hpp"
#include "support/recording_services.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kCase = TS_OPT_IGNORE_CASE;
constexpr std::uint32_t kWidth = TS_OPT_IGNORE_WIDTH;
constexpr std::uint32_t kStrip = TS_OPT_STRIP_BLANKS;

// A string and how it is given; in text ( enters the multi-byte state, ) leaves it.
struct Given {
    Given(const char* content, std::int32_t firstState = 0, std::int32_t given = -1)
        : text(content), state(firstState), length(given)
    {
        for (char& byte : text)
            byte = byte == '(' ? '\x0E' : byte == ')' ? '\x0F' : byte;
    }

    std::string text;
    std::int32_t state;
    std::int32_t length;
};

class ShiftComparison : public testing::Test {
  protected:
    std::int32_t compare(HandLocale& locale, const Given& first, const Given& second,
                         std::uint32_t options)
    {
        locale.record.lastError = kUntouchedError;
        const std::int32_t result =
            TSStrcmpEx(locale.handle(), first.text.c_str(), first.state, first.length,
                       second.text.c_str(), second.state, second.length, options);
        EXPECT_NE(locale.record.lastError, kUntouchedError);
        EXPECT_TRUE(memory_.allGivenBack());
        return result;
    }
    std::int32_t compare(const Given& first, const Given& second, std::uint32_t options)
    {
        return compare(shift_, first, second, options);
    }

    WorkingMemory memory_;
    HandLocale shift_{shiftPage()};
};

TEST_F(ShiftComparison, InAnotherLocaleTheStatesDoNotCount)
{
    HandLocale wide(widePage());
    HandLocale latin(latinPage());
    EXPECT_EQ(compare(wide, {"a\x82\x81", 0}, {"A\x82\x60", 1}, kCase), 0);
    EXPECT_EQ(compare(latin,
                      {"\x0E"
                       "b",
                       1},
                      {"\x0E"
                       "a",
                       0},
                      0),
              1);
    EXPECT_EQ(compare(latin, {"abc", 0, -2}, {"", 1, 0}, 0), 0) << "lengths are the plain ones";
    EXPECT_EQ(compare(latin, {"a"}, {"b"}, 0x2), 0);
    EXPECT_EQ(latin.record.lastError, TS_ERR_ARGUMENT);
}

TEST_F(ShiftComparison, EveryKnownBitIsAcceptedAndNoOther)
{
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1) {
        const bool known = (bit & (kWidth | kStrip | TS_OPT_CHAR_COUNT)) != 0;
        EXPECT_EQ(compare({"a"}, {"b"}, bit), known ? -1 : 0) << std::hex << bit;
        EXPECT_EQ(shift_.record.lastError, known ? TS_ERR_NONE : TS_ERR_ARGUMENT);
    }
}

TEST_F(ShiftComparison, ExactComparisonIsByBytes)
{
    EXPECT_EQ(compare({""}, {""}, 0), 0);
    EXPECT_EQ(compare({""}, {"abc"}, 0), -3);
    EXPECT_EQ(compare({"a(\x42\x81)"}, {"a(\x42\x81)"}, 0), 0);
    EXPECT_EQ(compare({"a(\x42\x81)"}, {"a(B`)"}, 0), 0x81 - 0x60);
    EXPECT_EQ(compare({"ab"}, {"a"}, 0), 1);
}

TEST_F(ShiftComparison, AShiftByteAtTheBeginningSetsTheState)
{
    EXPECT_EQ(compare({"(\x42\x81)"}, {"\x42\x81)", 1}, 0), 0);
    EXPECT_EQ(compare({")a", 1}, {"a"}, kCase), 0);
    EXPECT_EQ(compare({"("}, {""}, 0), 0) << "nothing else is there";
    EXPECT_EQ(compare({"(\x42\x81)"}, {"B`)", 1}, kCase), 0);
}

TEST_F(ShiftComparison, EveryNegativeLengthIsUpToTheTerminator)
{
    for (const std::int32_t length : {-1, -2, INT32_MIN})
        EXPECT_EQ(compare({"abc", 0, length}, {"abc", 0, 3}, 0), 0);
}

TEST_F(ShiftComparison, ACharacterThatTheLengthCutsOffDoesNotCount)
{
    for (const std::uint32_t options : {0u, kCase, kWidth})
        EXPECT_EQ(compare({"a(\x42\x81\x42\x81", 0, 5}, {"a(\x42\x81", 0, 4}, options), 0);
    EXPECT_EQ(compare({"a(B", 0, 3}, {"a", 0, 1}, 0), 1) << "a shift byte at the end counts";
    EXPECT_EQ(compare({"a(B", 0, 3}, {"a", 0, 1}, kWidth), 0) << "but not by width";
}

TEST_F(ShiftComparison, CountedLengthsAreCharacters)
{
    EXPECT_EQ(compare({"a(\x42\x81)b", 0, 2}, {"a(\x42\x81)c", 0, 2}, TS_OPT_CHAR_COUNT), 0);
    EXPECT_EQ(compare({"a(\x42\x81)b", 0, 3}, {"a(\x42\x81)c", 0, 3}, TS_OPT_CHAR_COUNT), -1);
    EXPECT_EQ(compare({"\x42\x81)b", 1, 2}, {"B`)B", 1, -1}, TS_OPT_CHAR_COUNT | kCase), 0);
    EXPECT_EQ(compare({"a", 0, 0}, {"", 0, 0}, TS_OPT_CHAR_COUNT), 0);
}

TEST_F(ShiftComparison, CaseFollowsTheState)
{
    EXPECT_EQ(compare({"ab(\x42\x81)c"}, {"AB(B`)C"}, kCase), 0);
    EXPECT_EQ(compare({"a(\x42\x81)"}, {"A(BP)"}, kCase), 0x60 - 0x50);
    EXPECT_EQ(compare({"a(\x42\x81)x"}, {"A(B`)"}, kCase), 1);
    EXPECT_EQ(compare({"a"}, {"\x42\x81", 1}, kCase), -1) << "the lengths of the characters";
}

// Deliberate: in the multi-byte state the text that leaves it comes first.
TEST_F(ShiftComparison, AShiftByteInOneTextDecides)
{
    EXPECT_EQ(compare({"\x42\x81)a", 1}, {"\x42\x81\x42\x81", 1}, kCase), -1);
    EXPECT_EQ(compare({"\x42\x81\x42\x81", 1}, {"\x42\x81)a", 1}, kCase), 1);
    EXPECT_EQ(compare({"a(\x42\x81)"}, {"ab"}, kCase), 0x0E - 'b');
    EXPECT_EQ(compare({"()"}, {"(\x42\x81\x42\x81"}, kCase), -3)
        << "but not where less than a character is left";
    EXPECT_EQ(compare({"a\xE4"}, {"a(\x42\x81)"}, kCase), -0x1C - 0x0E) << "bytes have a sign";
}

TEST_F(ShiftComparison, CaseGoesByThePairsOfTheLanguage)
{
    PageBuilder page = shiftPage();
    page.map(0xDF, 0xDF).build();
    HandLocale paired(std::move(page), {{0xDF, 0, 'S', 'S'}});
    EXPECT_EQ(compare(paired, {"\xDF(\x42\x81)"}, {"ss(B`)"}, kCase), 0);
    EXPECT_EQ(compare(paired, {"\xDF"}, {"s"}, kCase), 1);
    EXPECT_EQ(compare(paired, {"\x42\x81", 1}, {"(B`)"}, kCase), 0);
}

TEST_F(ShiftComparison, WidthGoesByHalfWidthForms)
{
    EXPECT_EQ(compare({"A1"}, {"(B`BP)"}, kWidth), 0);
    EXPECT_EQ(compare({"A(BP)"}, {"(B`)1"}, kWidth), 0);
    EXPECT_EQ(compare({"a"}, {"(B`)"}, kWidth), 'a' - 'A');
    EXPECT_EQ(compare({"(CC)"}, {"x"}, kWidth), 1) << "an image of two bytes and one of one";
    EXPECT_EQ(compare({"A"}, {"(B`BP)"}, kWidth), -3) << "what is left, with its )";
    EXPECT_EQ(compare({"A"}, {"(B`)"}, kWidth), 0) << "a shift byte at the end is no rest";
}

TEST_F(ShiftComparison, TrailingBlanksDoNotCountIfStripped)
{
    // Deliberate: truncation takes the byte before the blanks, too.
    EXPECT_EQ(compare({"ab  "}, {"a"}, kStrip), 0);
    EXPECT_EQ(compare({"ab  "}, {"ab"}, kStrip), -1);
    EXPECT_EQ(compare({"ab  "}, {"ab "}, kStrip), 0);
    EXPECT_EQ(compare({"ab"}, {"ab"}, kStrip), 0);
}

TEST_F(ShiftComparison, AnEmptyTextStaysEmptyWhenItIsStripped)
{
    for (const std::int32_t state : {0, 1}) {
        EXPECT_EQ(compare({"", state}, {"", 0}, kStrip), 0);
        EXPECT_EQ(compare({"x", state, 0}, {"", 1}, kStrip), 0);
    }
}

// A text that ends inside a character is read no further than it can be.
TEST_F(ShiftComparison, ACutCharacterOfATerminatedTextIsRead)
{
    EXPECT_EQ(compare({"\x42\x81\x42", 1}, {"\x42\x81\x42", 1}, kWidth), 0);
    EXPECT_EQ(compare({"\x42\x81\x42", 1}, {"\x42\x81\x42", 1}, kCase), 0);
    EXPECT_EQ(compare({"B", 1}, {"B`", 1}, kWidth), 1)
        << "one has an image of two bytes, the other one of one";
    EXPECT_EQ(compare({"\x42\x81\x42", 1}, {"\x42\x81", 1}, kCase), 1);
}

// Case looks at such a character as a whole, too, and at nothing behind it.
TEST_F(ShiftComparison, ACutCharacterDecidesWithoutCase)
{
    EXPECT_EQ(compare({"B`B", 1}, {"B`C", 1}, kCase), -1);
    EXPECT_EQ(compare({"B`B", 1}, {"B`B`", 1}, kCase), -0x60) << "the first one ends with zeros";
    EXPECT_EQ(compare({"B`)(B", 1}, {"B`)(C", 1}, kCase), -1);
    // Closing the text takes the last byte of its last character.
    EXPECT_EQ(compare({"B`B`", 1}, {"B`BP", 1}, kCase | kStrip), 0x60 - 0x50);
    EXPECT_EQ(compare({"B`B`", 1}, {"B`B\x81", 1}, kCase | kStrip), 0) << "they differ in case";
    EXPECT_EQ(compare({"B`B`", 1}, {"B`C`", 1}, kStrip), -1);
    EXPECT_EQ(compare({"B`B`", 1}, {"B`BP", 1}, kWidth | kStrip), 0x60 - 0x50);
}

// Deliberate: the state of the first text is that of both, which differ at their beginnings where
// characters are one byte long in either state.
TEST_F(ShiftComparison, CaseGoesByTheStateOfTheFirstText)
{
    PageBuilder page = latinPage();
    page.shifts(0x0E, 0x0F).build();
    Section header = page.sections()[0];
    header[0x110C] |= kStateful;
    page.object().sections[0] = header.data();
    HandLocale narrow(std::move(page));
    narrow.record.flags |= kLocaleStateful;
    const auto compareCase = [&](std::int32_t state1, std::int32_t state2, const char* second) {
        return TSStrcmpEx(narrow.handle(), "a", state1, -1, second, state2, -1, kCase);
    };
    EXPECT_EQ(compareCase(0, 0, "A"), 0);
    EXPECT_EQ(compareCase(1, 1, "A"), 'a' - 'A') << "no character of the state has a case";
    EXPECT_EQ(compareCase(0, 1, "A"), 0);
    EXPECT_EQ(compareCase(0, 1, "a"), 0);
    EXPECT_EQ(compareCase(1, 0, "A"), 'a' - 'A');
    EXPECT_EQ(compareCase(1, 0, "a"), 0);
}

TEST_F(ShiftComparison, TellsItsSteps)
{
    Trace::clear();
    Trace::setMask(0x18);
    compare({"(B`)"}, {"a"}, kWidth);
    EXPECT_TRUE(Trace::printed("Options = 80000041"));
    EXPECT_TRUE(Trace::printed("len1 = 3, str1state = 1, len2 = 1, str2state = 0"));
    EXPECT_TRUE(Trace::printed("Strings are unequal: len1 = 1, len2 = 1"));
    EXPECT_EQ(Trace::count("TSStrcmpEx", TraceKind::kDump), 4);
    Trace::setMask(0);
    Trace::clear();
}

} // namespace
} // namespace vlx::test
