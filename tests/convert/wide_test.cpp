// What the conversions between bytes and packed values of one page promise, one by one.
#include "convert/small_pages.hpp"

namespace vlx::test {
namespace {

class WideConversion : public SmallPages {
  protected:
    Packed toWide(std::int32_t count, const char* input, std::int32_t length, std::uint32_t options)
    {
        Elements<TSChar32> output;
        result_ = TSMbToWide(&onDouble_, output.at(), count, input, length, options);
        EXPECT_EQ(onDouble_.lastError, TS_ERR_NONE);
        return output.written();
    }
    Packed toWideEx(std::int32_t count, const char* input, std::int32_t state, std::int32_t length,
                    std::uint32_t options)
    {
        Elements<TSChar32> output;
        result_ = TSMbToWideEx(&onStateful_, output.at(), count, input, state, length, options);
        EXPECT_EQ(onStateful_.lastError, TS_ERR_NONE);
        return output.written();
    }

    std::int32_t result_ = 0;
};

TEST_F(WideConversion, MbToWideConvertsTheTerminatorOfATerminatedInput)
{
    EXPECT_EQ(toWide(9, "a\x81\x40", -1, 0), (Packed{'a', 0x8140, 0}));
    EXPECT_EQ(result_, 3);
    EXPECT_EQ(toWide(2, "a\x81\x40", -1, 0), (Packed{'a', 0x8140}));
    EXPECT_EQ(result_, 2);
    EXPECT_EQ(toWide(9, "a\x81\x40", 3, 0), (Packed{'a', 0x8140}));
    // The terminator is the trail byte of a lead byte at the end.
    EXPECT_EQ(toWide(9, "a\x81", -1, 0), (Packed{'a', 0x8100}));
}

TEST_F(WideConversion, MbToWideGivesNothingForNothing)
{
    EXPECT_EQ(toWide(0, "abc", 3, 0), Packed{});
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(toWide(9, "abc", 0, 0), Packed{});
    EXPECT_EQ(result_, 0);
    EXPECT_EQ(toWide(-1, "abc", -1, 0), Packed{});
    EXPECT_EQ(result_, 0);
}

TEST_F(WideConversion, MbToWideDropsACharacterThatTheLengthCuts)
{
    EXPECT_EQ(toWide(9, "a\x81\x40", 2, 0), (Packed{'a'}));
    EXPECT_EQ(toWideEx(9, "\x0E\x42\x43\x42", 0, 4, 0), (Packed{0x4243}));
}

TEST_F(WideConversion, MbToWideActsOnOneOptionAndRefusesNone)
{
    EXPECT_EQ(toWide(9, "\x81\x40z", 2, TS_OPT_CHAR_COUNT), (Packed{0x8140, 'z'}));
    for (const std::uint32_t options : {1U, 8U, 0x4008U, 0x4001U, 0xFFFFFFFFU}) {
        EXPECT_EQ(toWide(9, "\x81\x40z", 2, options), (Packed{0x8140})) << options;
        EXPECT_EQ(toWideEx(9, "\x0E\x42\x43\x0Fz", 0, 3, options), (Packed{0x4243})) << options;
    }
    EXPECT_EQ(toWideEx(9, "\x0E\x42\x43\x0Fz!", 0, 2, TS_OPT_CHAR_COUNT), (Packed{0x4243, 'z'}));
}

TEST_F(WideConversion, MbToWideExReadsShiftBytesAndGivesNone)
{
    EXPECT_EQ(toWideEx(9, "a\x0E\x42\x43\x0Fz", 0, -1, 0), (Packed{'a', 0x4243, 'z', 0}));
    EXPECT_EQ(toWideEx(9, "\x42\x43\x0F", 1, -1, 0), (Packed{0x4243, 0}));
    // The terminator alone is no whole character of the multi-byte state.
    EXPECT_EQ(toWideEx(9, "\x42\x43", 1, -1, 0), (Packed{0x4243}));
}

TEST_F(WideConversion, WideToMbConvertsTheTerminatorOfATerminatedInput)
{
    const Packed text{'a', 0x8140, 0, 'x'};
    EXPECT_TRUE(gave(TSWideToMb(&onDouble_, at(), 9, text.data(), -1, 0), 4, {'a', 0x81, 0x40, 0},
                     onDouble_));
    EXPECT_TRUE(
        gave(TSWideToMb(&onDouble_, at(), 3, text.data(), -1, 0), 3, {'a', 0x81, 0x40}, onDouble_));
    EXPECT_TRUE(gave(TSWideToMb(&onDouble_, at(), 2, text.data(), -1, 0), 1, {'a'}, onDouble_));
    EXPECT_TRUE(gave(TSWideToMb(&onDouble_, at(), 9, text.data(), 0, 0), 0, {}, onDouble_));
    EXPECT_TRUE(gave(TSWideToMb(&onDouble_, at(), 0, text.data(), 2, 0), 0, {}, onDouble_));
    EXPECT_TRUE(gave(TSWideToMb(&onDouble_, at(), -4, text.data(), 2, 0), 0, {}, onDouble_));
}

// Deliberate: in characters one value more than the size is written, and not counted.
TEST_F(WideConversion, WideToMbInCharactersWritesOneMoreThanItsSize)
{
    const Packed text{'a', 0x8140, 0x8141, 'z', 0};
    EXPECT_TRUE(gave(TSWideToMb(&onDouble_, at(), 2, text.data(), 4, TS_OPT_CHAR_COUNT), 2,
                     {'a', 0x81, 0x40, 0x81, 0x41}, onDouble_));
    EXPECT_TRUE(gave(TSWideToMb(&onDouble_, at(), 4, text.data(), 4, TS_OPT_CHAR_COUNT), 4,
                     {'a', 0x81, 0x40, 0x81, 0x41, 'z'}, onDouble_));
    EXPECT_TRUE(gave(TSWideToMb(&onDouble_, at(), 4, text.data(), -1, TS_OPT_CHAR_COUNT), 4,
                     {'a', 0x81, 0x40, 0x81, 0x41, 'z', 0}, onDouble_));
    EXPECT_TRUE(
        gave(TSWideToMb(&onDouble_, at(), 0, text.data(), 4, TS_OPT_CHAR_COUNT), 0, {}, onDouble_));
    const Packed wide{0x4243, 'a', 'b', 'c'};
    EXPECT_TRUE(gave(TSWideToMbEx(&onStateful_, at(), 0, 1, wide.data(), 4, TS_OPT_CHAR_COUNT), 1,
                     {0x0E, 0x42, 0x43, 0x0F, 'a'}, onStateful_));
}

TEST_F(WideConversion, WideToMbGivesEachValueOnePlaceInASingleBytePage)
{
    const Packed text{'a', 0x8140, 'b', 0x424344, 0};
    EXPECT_TRUE(
        gave(TSWideToMb(&onSingle_, at(), 3, text.data(), 4, 0), 3, {'a', 0x81, 'b'}, onSingle_));
    EXPECT_TRUE(
        gave(TSWideToMb(&onSingle_, at(), 2, text.data(), 2, 0), 2, {'a', 0x81}, onSingle_));
    EXPECT_TRUE(gave(TSWideToMb(&onSingle_, at(), 9, text.data(), -1, 0), 5,
                     {'a', 0x81, 'b', 0x42, 0, 0x44}, onSingle_));
    EXPECT_TRUE(gave(TSWideToMb(&onSingle_, at(), 3, text.data(), 4, TS_OPT_CHAR_COUNT), 3,
                     {'a', 0x81, 'b'}, onSingle_));
}

TEST_F(WideConversion, WideToMbExWritesShiftBytesAndClosesNothing)
{
    const Packed text{'a', 0x4243, 0x4244, 'z', 0x4243, 0};
    const auto write = [&](std::int32_t state, std::int32_t size, std::int32_t count) {
        return TSWideToMbEx(&onStateful_, at(), state, size, text.data(), count, 0);
    };
    EXPECT_TRUE(gave(write(0, 12, 5), 11,
                     {'a', 0x0E, 0x42, 0x43, 0x42, 0x44, 0x0F, 'z', 0x0E, 0x42, 0x43},
                     onStateful_));
    EXPECT_TRUE(gave(write(1, 3, 2), 2, {0x0F, 'a'}, onStateful_));
    EXPECT_TRUE(gave(write(0, 3, 2), 1, {'a'}, onStateful_));
    EXPECT_TRUE(gave(write(0, 13, -1), 13,
                     {'a', 0x0E, 0x42, 0x43, 0x42, 0x44, 0x0F, 'z', 0x0E, 0x42, 0x43, 0x0F, 0},
                     onStateful_));
}

TEST_F(WideConversion, WideToMbRefusesOtherOptions)
{
    const Packed text{'a', 0};
    for (const std::uint32_t options : {1U, 8U, 0x4008U, 0x80000000U}) {
        onDouble_.lastError = onStateful_.lastError = kUntouchedError;
        EXPECT_EQ(TSWideToMb(&onDouble_, at(), 9, text.data(), 1, options), -1) << options;
        EXPECT_EQ(onDouble_.lastError, TS_ERR_ARGUMENT);
        EXPECT_EQ(TSWideToMbEx(&onStateful_, at(), 0, 9, text.data(), 1, options), -1) << options;
        EXPECT_EQ(onStateful_.lastError, TS_ERR_ARGUMENT);
    }
    EXPECT_TRUE(output_.holds({}));
}

TEST_F(WideConversion, ExMembersAreThePlainOnesInOtherPages)
{
    const Packed text{'a', 0x8140, 0};
    EXPECT_TRUE(gave(TSWideToMbEx(&onDouble_, at(), 1, 9, text.data(), -1, 0), 4,
                     {'a', 0x81, 0x40, 0}, onDouble_));
    Elements<TSChar32> output;
    EXPECT_EQ(TSMbToWideEx(&onDouble_, output.at(), 9, "a\x81\x40", 1, -1, 0), 3);
    EXPECT_EQ(output.written(), text);
}

TEST_F(WideConversion, TakesTheDefaultLocaleForNull)
{
    tsDefaultLocale = &onDouble_;
    const Packed text{0x8140, 0};
    Elements<TSChar32> output;
    EXPECT_EQ(TSMbToWide(nullptr, output.at(), 9, "\x81\x40", 2, 0), 1);
    EXPECT_EQ(TSMbToWideEx(nullptr, output.at() + 1, 9, "\x81\x41", 0, 2, 0), 1);
    EXPECT_EQ(output.written(), (Packed{0x8140, 0x8141}));
    EXPECT_TRUE(gave(TSWideToMb(nullptr, at(), 9, text.data(), 1, 0), 2, {0x81, 0x40}, onDouble_));
    EXPECT_TRUE(
        gave(TSWideToMbEx(nullptr, at(), 0, 9, text.data(), 1, 0), 2, {0x81, 0x40}, onDouble_));
}

} // namespace
} // namespace vlx::test
