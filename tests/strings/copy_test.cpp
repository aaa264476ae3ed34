// What the copy members promise, one by one.
#include "strings/pages.hpp"

namespace vlx::test {
namespace {

class Copy : public StringTest {};

TEST_F(Copy, ALengthOfMinusOneTakesTheTerminatorIfTheSizeLetsIt)
{
    for (TSLocale* locale : all_) {
        Area area;
        EXPECT_EQ(TSStrcpy(locale, area.at(), 10, "abc", -1, 0), 4);
        EXPECT_EQ(area.written(), bytes("abc\0"));
        Area small;
        EXPECT_EQ(TSStrcpy(locale, small.at(), 3, "abc", -1, 0), 3);
        EXPECT_EQ(small.written(), "abc");
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
}

TEST_F(Copy, ALengthEqualToStrlenDoesNotTakeTheTerminator)
{
    for (TSLocale* locale : all_) {
        Area area;
        EXPECT_EQ(TSStrcpy(locale, area.at(), 10, "abc", 3, 0), 3);
        EXPECT_EQ(area.written(), "abc");
    }
}

TEST_F(Copy, EveryNegativeLengthGoesUpToTheTerminator)
{
    Area area;
    EXPECT_EQ(TSStrcpy(&single_, area.at(), 10, "abc", INT32_MIN, 0), 4);
    const TSChar16 text[] = {1, 2, 0};
    TSChar16 output[3] = {};
    EXPECT_EQ(TSStrcpyU(&single_, output, 3, text, -5), 3);
}

TEST_F(Copy, ACharacterThatDoesNotFitWholeIsNotCopied)
{
    Area area;
    EXPECT_EQ(TSStrcpy(&double_, area.at(), 3, "ab\x81\x40", -1, 0), 2);
    EXPECT_EQ(area.written(), "ab");
    EXPECT_EQ(double_.lastError, TS_ERR_NONE);
}

TEST_F(Copy, ACharacterThatTheLengthCutsIsNotCopied)
{
    Area area;
    EXPECT_EQ(TSStrcpy(&double_, area.at(), 10, "ab\x81\x40", 3, 0), 2);
    EXPECT_EQ(area.written(), "ab");
}

TEST_F(Copy, NothingToCopyOrNoSizeGivesNothing)
{
    for (TSLocale* locale : all_) {
        Area area;
        EXPECT_EQ(TSStrcpy(locale, area.at(), 10, "abc", 0, 0), 0);
        EXPECT_EQ(TSStrcpy(locale, area.at(), 0, "abc", -1, 0), 0);
        EXPECT_EQ(TSStrcpy(locale, area.at(), -1, "abc", 3, 0), 0);
        EXPECT_EQ(TSStrcpyEx(locale, area.at(), 0, 0, "abc", 1, -1, 0), 0);
        EXPECT_EQ(TSStrcpyEx(locale, area.at(), 1, -7, "abc", 0, 3, TS_OPT_CHAR_COUNT), 0);
        EXPECT_EQ(area.written(), "");
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
}

TEST_F(Copy, CharactersAreCountedIfAskedFor)
{
    Area area;
    EXPECT_EQ(TSStrcpy(&double_, area.at(), 10, "a\x81\x40\x81\x41", 2, TS_OPT_CHAR_COUNT), 2);
    EXPECT_EQ(area.written(), "a\x81\x40");
    Area small;
    EXPECT_EQ(TSStrcpy(&double_, small.at(), 2, "\x81\x40\x81\x41z", -1, TS_OPT_CHAR_COUNT), 2);
    EXPECT_EQ(small.written(), "\x81\x40\x81\x41");
    Area whole;
    EXPECT_EQ(TSStrcpy(&double_, whole.at(), 10, "\x81\x40z", -1, TS_OPT_CHAR_COUNT), 3);
    EXPECT_EQ(whole.written(), bytes("\x81\x40z\0"));
}

TEST_F(Copy, TheFlagOfTheLocaleDecidesAndNotThePage)
{
    double_.flags = kLocaleSingleByte;
    Area area;
    EXPECT_EQ(TSStrcpy(&double_, area.at(), 3, "ab\x81\x40", -1, 0), 3);
    stateful_.flags = 0;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 0, 3, "abc", 1, -1, 0), 3);
    EXPECT_EQ(area.written(), "abc");
}

TEST_F(Copy, OtherOptionsAreRefused)
{
    const auto accepts = [](std::uint32_t options) { return options == TS_OPT_CHAR_COUNT; };
    forRefusedOptions(accepts, [&](std::uint32_t options) {
        for (TSLocale* locale : all_) {
            Area area;
            EXPECT_EQ(TSStrcpy(locale, area.at(), 9, "abc", -1, options), -1) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            locale->lastError = kUntouchedError;
            EXPECT_EQ(TSStrcpyEx(locale, area.at(), 0, 9, "abc", 0, -1, options), -1) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            EXPECT_EQ(area.written(), "");
        }
    });
}

TEST_F(Copy, RefusedOptionsWithoutALocaleAreTheDefaultLocalesError)
{
    tsDefaultLocale = &double_;
    Area area;
    EXPECT_EQ(TSStrcpy(nullptr, area.at(), 9, "abc", -1, 1), -1);
    EXPECT_EQ(double_.lastError, TS_ERR_ARGUMENT);
    tsDefaultLocale = &stateful_;
    EXPECT_EQ(TSStrcpyEx(nullptr, area.at(), 0, 9, "abc", 0, -1, 1), -1);
    EXPECT_EQ(stateful_.lastError, TS_ERR_ARGUMENT);
}

TEST_F(Copy, NoLocaleIsTheDefaultLocale)
{
    tsDefaultLocale = &stateful_;
    Area area;
    EXPECT_EQ(TSStrcpy(nullptr, area.at(), 9, "ab", -1, 0), 3);
    EXPECT_EQ(TSStrcpyEx(nullptr, area.at(), 0, 9, "ab", 0, -1, 0), 3);
    TSChar16 unicode[2] = {};
    TSChar32 packed[2] = {};
    const TSChar16 unicodeText[] = {'a', 0};
    const TSChar32 packedText[] = {'a', 0};
    EXPECT_EQ(TSStrcpyU(nullptr, unicode, 2, unicodeText, -1), 2);
    EXPECT_EQ(TSWcscpy(nullptr, packed, 2, packedText, -1), 2);
    EXPECT_EQ(stateful_.lastError, TS_ERR_NONE);
}

TEST_F(Copy, UnitsAreCopiedUpToTheSmallerOfLengthAndSize)
{
    const TSChar16 unicodeText[] = {'a', 0xD800, 'c', 0};
    const TSChar32 packedText[] = {'a', 0x8140, 'c', 0};
    TSChar16 unicode[4] = {9, 9, 9, 9};
    TSChar32 packed[4] = {9, 9, 9, 9};
    EXPECT_EQ(TSStrcpyU(&single_, unicode, 2, unicodeText, -1), 2);
    EXPECT_EQ(TSWcscpy(&single_, packed, 4, packedText, 2), 2);
    EXPECT_EQ(unicode[1], 0xD800);
    EXPECT_EQ(unicode[2], 9);
    EXPECT_EQ(packed[1], 0x8140U);
    EXPECT_EQ(packed[2], 9U);
    EXPECT_EQ(TSStrcpyU(&single_, unicode, 4, unicodeText, 0), 0);
    EXPECT_EQ(TSWcscpy(&single_, packed, -1, packedText, -1), 0);
    EXPECT_EQ(single_.lastError, TS_ERR_NONE);
}

TEST_F(Copy, FromTheMultiByteStateIntoTwoBytesOfTheSingleByteStateGivesNothing)
{
    Area area;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 0, 2, "\x42\x43", 1, 2, 0), 0);
    EXPECT_EQ(area.written(), "");
    EXPECT_EQ(stateful_.lastError, TS_ERR_NONE);
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 0, 3, "\x42\x43", 1, 2, 0), 3);
    EXPECT_EQ(area.written(), "\x0E\x42\x43");
}

TEST_F(Copy, FromTheSingleByteStateIntoOneByteOfTheMultiByteStateGivesNothing)
{
    Area area;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 1, 1, "ab", 0, -1, 0), 0);
    EXPECT_EQ(area.written(), "");
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 1, 2, "ab", 0, -1, 0), 2);
    EXPECT_EQ(area.written(), "\x0F"
                              "a");
}

TEST_F(Copy, AShiftByteThatTheDestinationHasIsSkipped)
{
    Area area;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 0, 9,
                         "\x0F"
                         "ab",
                         1, 3, 0),
              2);
    EXPECT_EQ(area.written(), "ab");
    Area multi;
    EXPECT_EQ(TSStrcpyEx(&stateful_, multi.at(), 1, 9, "\x0E\x42\x43z", 0, 3, 0), 2);
    EXPECT_EQ(multi.written(), "\x42\x43");
}

TEST_F(Copy, ASkippedShiftByteTakesNoRoom)
{
    Area area;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 0, 2,
                         "\x0F"
                         "abc",
                         1, 4, 0),
              2);
    EXPECT_EQ(area.written(), "ab");
}

TEST_F(Copy, NoCopyEndsOnAShiftByte)
{
    Area area;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 0, 3, "ab\x0E\x42\x43", 0, -1, 0), 2);
    EXPECT_EQ(area.written(), "ab");
    Area cut;
    EXPECT_EQ(TSStrcpyEx(&stateful_, cut.at(), 0, 4, "ab\x0E\x42\x43", 0, -1, 0), 2);
    EXPECT_EQ(cut.written(), "ab");
    Area closed;
    EXPECT_EQ(TSStrcpyEx(&stateful_, closed.at(), 0, 9, "\x0E\x42\x43\x0F", 0, 4, 0), 3);
    EXPECT_EQ(closed.written(), "\x0E\x42\x43");
}

TEST_F(Copy, ATrailByteIsNoShiftByte)
{
    Area area;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 1, 9, "\x42\x0F", 1, 2, 0), 2);
    EXPECT_EQ(area.written(), "\x42\x0F");
}

TEST_F(Copy, TheTerminatorIsCopiedAlongBehindAShiftByte)
{
    Area area;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 0, 9, "\x0E\x42\x43\x0F", 0, -1, 0), 5);
    EXPECT_EQ(area.written(), bytes("\x0E\x42\x43\x0F\0"));
}

TEST_F(Copy, AWrittenShiftByteCountsAsAByteAndNotAsACharacter)
{
    Area area;
    EXPECT_EQ(TSStrcpyEx(&stateful_, area.at(), 0, 9, "\x42\x43\x44\x45", 1, 4, 0), 5);
    EXPECT_EQ(area.written(), "\x0E\x42\x43\x44\x45");
    Area counted;
    EXPECT_EQ(
        TSStrcpyEx(&stateful_, counted.at(), 0, 9, "\x42\x43\x44\x45", 1, 1, TS_OPT_CHAR_COUNT), 1);
    EXPECT_EQ(counted.written(), "\x0E\x42\x43");
}

// Two shift bytes in a row are counted in one way and measured in another; the terminator bounds
// both.
TEST_F(Copy, NothingBehindTheTerminatorIsReadForTheSakeOfCharacters)
{
    const char text[] = "\x42\x0F\x0E\x43\0xyz";
    for (std::int32_t size = 1; size < 12; ++size) {
        Area area;
        TSStrcpyEx(&stateful_, area.at(), 0, size, text, 0, -1, TS_OPT_CHAR_COUNT);
        ASSERT_LE(area.written().size(), 5U) << size;
        Area plain;
        TSStrcpy(&stateful_, plain.at(), size, text, -1, TS_OPT_CHAR_COUNT);
        ASSERT_LE(plain.written().size(), 5U) << size;
    }
}

} // namespace
} // namespace vlx::test
