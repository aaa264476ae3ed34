// What the stepping functions promise, one by one.
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "chars/situations.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

constexpr std::int32_t kNoState = 77;

class SingleByte : public testing::Test {
  protected:
    PageBuilder page_{PageShape::kSingleByte};
    TSLocale locale_ = localeOn(page_.asciiHalf().build());
};

// 0x81 leads a character of two bytes.
class DoubleByte : public testing::Test {
  protected:
    PageBuilder page_{PageShape::kDoubleByte};
    TSLocale locale_ = localeOn(page_.asciiHalf().map(0x8140, 0x3000).build());
};

// Shift in is 0x0E, shift out 0x0F, and a character of the multi-byte state has two bytes.
class Stateful : public testing::Test {
  protected:
    PageBuilder page_{PageShape::kStateful2};
    TSLocale locale_ = localeOn(page_.build());
    std::int32_t state_ = kNoState;
};

// Deliberate: bytes are compared as signed with shift bytes that are unsigned, so that shift bytes
// of 0x8E and 0x8F are never met. Those in use are below 0x80.
class HighShiftBytes : public testing::Test {
  protected:
    PageBuilder page_{PageShape::kStatefulHigh};
    TSLocale locale_ = localeOn(page_.build());
    std::int32_t state_ = kNoState;
};

TEST_F(SingleByte, PrevCharAtTheStartGoesOneByteBeforeIt)
{
    const char text[] = "xabc";
    const char* const start = text + 1;
    EXPECT_EQ(TSPrevChar(&locale_, start, start, 0), start - 1);
    EXPECT_EQ(TSPrevChar(&locale_, start, start + 2, 0), start + 1);
}

// Long text is counted by blocks where it is ASCII; the blocks must not be seen in the count.
TEST_F(DoubleByte, NumCharsOfLongTextIsThatOfItsSteps)
{
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::string text;
        while (text.size() < 200)
            text += random() % 9 == 0 ? std::string("\x81\x40") : std::string(random() % 12, 'a');
        for (std::int32_t length = 0; length <= static_cast<std::int32_t>(text.size()); ++length) {
            std::int32_t count = 0;
            for (std::int32_t at = 0; at < length; ++count) {
                at += text[static_cast<std::size_t>(at)] == '\x81' ? 2 : 1;
                if (at > length)
                    break;
            }
            ASSERT_EQ(TSNumChars(&locale_, text.c_str(), length, 0), count) << text << length;
        }
    }
}

TEST_F(DoubleByte, NumCharsFollowsALengthTableWhereAsciiBytesLead)
{
    PageBuilder page(PageShape::kDoubleByte);
    page.asciiHalf().map(0x4141, 0x3000);
    TSLocale locale = localeOn(page.build());
    const std::string text(100, 'A');
    const std::int32_t lead = TSByteLength(&locale, text.c_str());
    EXPECT_EQ(TSNumChars(&locale, text.c_str(), -1, 0), 100 / lead);
}

TEST_F(DoubleByte, PrevCharAtTheStartStaysThere)
{
    const char text[] = "\x81\x40";
    EXPECT_EQ(TSPrevChar(&locale_, text, text, 0), text);
}

TEST_F(DoubleByte, PrevCharDoesNotTakeATrailByteForALeadByte)
{
    const char text[] = "a\x81\x81x";
    EXPECT_EQ(TSPrevChar(&locale_, text, text + 3, 0), text + 1);
    EXPECT_EQ(TSPrevChar(&locale_, text, text + 2, 0), text + 1);
    EXPECT_EQ(TSPrevChar(&locale_, text, text + 4, 0), text + 3);
}

TEST_F(DoubleByte, TheFlagOfTheLocaleDecidesAndNotThePage)
{
    locale_.flags = kLocaleSingleByte;
    const char text[] = "\x81\x40\x81\x40";
    EXPECT_EQ(TSPrevChar(&locale_, text, text + 4, 0), text + 3);
    EXPECT_EQ(TSNumChars(&locale_, text, 4, 0), 4);
    EXPECT_EQ(TSMoveStringPointer(&locale_, text, 3, 0), text + 3);
}

TEST_F(Stateful, TheFlagOfTheLocaleDecidesAndNotThePage)
{
    locale_.flags = 0;
    const char text[] = "\x0E\x42\x43\x0F";
    EXPECT_EQ(TSNextCharEx(&locale_, text, 0, &state_), text + 1);
    EXPECT_EQ(state_, kNoState);
    EXPECT_EQ(TSNumCharsEx(&locale_, text, 0, 4, 0), 4);
    char output[2] = {};
    EXPECT_EQ(TSTerminateStringEx(&locale_, output, 1, 0), 0);
}

TEST_F(Stateful, NextCharExEatsTheShiftBytesOnBothSides)
{
    const char text[] = "\x0E\x42\x43\x0F\x81";
    EXPECT_EQ(TSNextCharEx(&locale_, text, 0, &state_), text + 4);
    EXPECT_EQ(state_, 0);
}

TEST_F(Stateful, PrevCharExStepsBackOverTheShiftOut)
{
    const char text[] = "\x0E\x42\x43\x0F\x81";
    EXPECT_EQ(TSPrevCharEx(&locale_, text, text + 4, 0, &state_, 0), text + 1);
    EXPECT_EQ(state_, 1);
}

TEST_F(Stateful, PrevCharExStepsBackOverTheShiftIn)
{
    const char text[] = "\x81\x0E\x42\x43";
    EXPECT_EQ(TSPrevCharEx(&locale_, text, text + 2, 1, &state_, 0), text);
    EXPECT_EQ(state_, 0);
}

TEST_F(Stateful, PrevCharExStopsAtAShiftInThatIsTheStart)
{
    const char text[] = "\x0E\x42\x43";
    EXPECT_EQ(TSPrevCharEx(&locale_, text, text + 1, 1, &state_, 0), text);
    EXPECT_EQ(state_, 0);
}

TEST_F(Stateful, PrevCharExAtTheStartKeepsTheState)
{
    const char text[] = "\x42\x43";
    EXPECT_EQ(TSPrevCharEx(&locale_, text, text, 1, &state_, 0), text);
    EXPECT_EQ(state_, 1);
}

TEST_F(Stateful, PrevCharExLeavesASecondShiftByteForTheNextCall)
{
    const char text[] = "\x81\x0E\x42\x43\x0F\x82";
    const char* position = TSPrevCharEx(&locale_, text, text + 5, 0, &state_, 0);
    EXPECT_EQ(position, text + 2);
    EXPECT_EQ(state_, 1);
    EXPECT_EQ(TSPrevCharEx(&locale_, text, position, state_, &state_, 0), text);
    EXPECT_EQ(state_, 0);
}

TEST_F(DoubleByte, NumCharsDoesNotCountALeadByteWithoutItsTrailByte)
{
    EXPECT_EQ(TSNumChars(&locale_, "a\x81\x40\x81", 4, 0), 2);
    EXPECT_EQ(TSNumChars(&locale_, "a\x81\x40\x81", -1, 0), 2);
    EXPECT_EQ(TSNumChars(&locale_, "\x81", 1, 0), 0);
    EXPECT_EQ(TSNumChars(&locale_, "abc", 0, 0), 0);
}

TEST_F(Stateful, NumCharsExOfAShiftInAloneIsZero)
{
    EXPECT_EQ(TSNumCharsEx(&locale_, "\x0E", 0, 1, 0), 0);
    EXPECT_EQ(TSNumCharsEx(&locale_, "\x81\x0E", 0, 2, 0), 1);
    EXPECT_EQ(TSNumCharsEx(&locale_, "\x0E\x42\x43\x44", 0, 4, 0), 1);
}

TEST_F(Stateful, TerminateStringExWritesTheShiftOutAlone)
{
    Output output;
    EXPECT_EQ(TSTerminateStringEx(&locale_, output.at(), 1, 0), 1);
    EXPECT_TRUE(output.holds({0x0F}));
    EXPECT_EQ(locale_.lastError, TS_ERR_NONE);
}

TEST_F(Stateful, TerminateStringExWritesBoth)
{
    Output output;
    EXPECT_EQ(TSTerminateStringEx(&locale_, output.at(), 1, TS_OPT_TERMINATE), 2);
    EXPECT_TRUE(output.holds({0x0F, 0x00}));
}

TEST_F(Stateful, TerminateStringExRefusesOtherOptionsAndWritesNothing)
{
    Output output;
    EXPECT_EQ(TSTerminateStringEx(&locale_, output.at(), 1, TS_OPT_CHAR_COUNT), -1);
    EXPECT_EQ(locale_.lastError, TS_ERR_ARGUMENT);
    EXPECT_TRUE(output.holds({}));
}

TEST_F(SingleByte, TerminateStringExWritesNoShiftByte)
{
    Output output;
    EXPECT_EQ(TSTerminateStringEx(&locale_, output.at(), 1, TS_OPT_TERMINATE), 1);
    EXPECT_TRUE(output.holds({0x00}));
}

TEST_F(HighShiftBytes, AreNotRecognisedByFourFunctions)
{
    const char text[] = "x\x8E\x42\x43\x44";
    const char* const in = text + 1;
    EXPECT_EQ(TSByteLengthEx(&locale_, in, 0), 1);
    EXPECT_EQ(TSByteLengthEx(&locale_, "\x8F", 1), 2);
    EXPECT_EQ(TSNextCharEx(&locale_, in, 0, &state_), in + 1);
    EXPECT_EQ(state_, 0);
    EXPECT_EQ(TSPrevCharEx(&locale_, text, in + 1, 1, &state_, 0), text);
    EXPECT_EQ(state_, 1);
    EXPECT_EQ(TSNumCharsEx(&locale_, in, 0, 4, 0), 4);
}

TEST_F(HighShiftBytes, AreRecognisedByGetCharEx)
{
    EXPECT_EQ(TSGetCharEx(&locale_, "\x8E\x42\x43", 0), 0x4243U);
    EXPECT_EQ(TSGetCharEx(&locale_, "\x8F\x42", 1), 0x42U);
}

TEST_F(Stateful, PutCharExWritesTheShiftByteThatTheStateNeeds)
{
    const struct {
        std::int32_t state;
        TSChar32 value;
        oracle::Bytes wanted;
    } cases[] = {
        {0, 0x4243, {0x0E, 0x42, 0x43}}, {1, 0x42, {0x0F, 0x42}}, {0, 0x42, {0x42}},
        {1, 0x4243, {0x42, 0x43}},       {2, 0x42, {0x42}},       {2, 0x4243, {0x42, 0x43}},
    };
    for (const auto& item : cases) {
        Output output;
        TSPutCharEx(&locale_, output.at(), item.state, item.value);
        EXPECT_TRUE(output.holds(item.wanted)) << item.state << ' ' << item.value;
    }
}

TEST_F(DoubleByte, MoveStringPointerStopsAtTheCharacterThatHoldsTheByte)
{
    const char text[] = "a\x81\x40z";
    EXPECT_EQ(TSMoveStringPointer(&locale_, text, 1, 0), text + 1);
    EXPECT_EQ(TSMoveStringPointer(&locale_, text, 2, 0), text + 1);
    EXPECT_EQ(TSMoveStringPointer(&locale_, text, 3, 0), text + 3);
    EXPECT_EQ(TSMoveStringPointer(&locale_, text, 2, TS_OPT_CHAR_COUNT), text + 3);
    EXPECT_EQ(TSMoveStringPointer(&locale_, text, -2, 0), text);
}

TEST_F(SingleByte, MoveStringPointerGoesBackByANegativeOffset)
{
    const char text[] = "abc";
    EXPECT_EQ(TSMoveStringPointer(&locale_, text + 2, -2, 0), text);
    EXPECT_EQ(TSMoveStringPointer(&locale_, text + 2, -2, TS_OPT_CHAR_COUNT), text);
}

TEST_F(Stateful, MoveStringPointerExStopsAtAShiftByteThatIsTheTarget)
{
    const char text[] = "\x0E\x42\x43\x0F\x81";
    EXPECT_EQ(TSMoveStringPointerEx(&locale_, text, 0, 3, &state_, 0), text + 3);
    EXPECT_EQ(state_, 1);
    EXPECT_EQ(TSMoveStringPointerEx(&locale_, text, 0, 4, &state_, 0), text + 4);
    EXPECT_EQ(state_, 0);
    EXPECT_EQ(TSMoveStringPointerEx(&locale_, text, 0, 2, &state_, 0), text + 1);
    EXPECT_EQ(state_, 1);
    EXPECT_EQ(TSMoveStringPointerEx(&locale_, text, 0, 1, &state_, TS_OPT_CHAR_COUNT), text + 4);
    EXPECT_EQ(state_, 0);
}

TEST_F(Stateful, MoveStringPointerExByNothingStoresNoState)
{
    const char text[] = "\x0E\x42\x43";
    EXPECT_EQ(TSMoveStringPointerEx(&locale_, text, 0, 0, &state_, 0), text);
    EXPECT_EQ(state_, kNoState);
}

} // namespace
} // namespace vlx::test
