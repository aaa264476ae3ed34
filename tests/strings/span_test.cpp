// What the members that measure a span promise, one by one.
#include "strings/pages.hpp"

namespace vlx::test {
namespace {

class Span : public StringTest {};

TEST_F(Span, EachLengthIsNegativeOnItsOwn)
{
    for (TSLocale* locale : all_) {
        for (const std::int32_t length : {-1, 4}) {
            for (const std::int32_t setLength : {-1, 2}) {
                EXPECT_EQ(TSStrspn(locale, "abac", length, "ab", setLength, 0), 3);
                EXPECT_EQ(TSStrcspn(locale, "xyac", length, "ab", setLength, 0), 2);
                EXPECT_EQ(TSStrspnEx(locale, "abac", 0, length, "ab", 0, setLength, 0), 3);
                EXPECT_EQ(TSStrcspnEx(locale, "xyac", 0, length, "ab", 0, setLength, 0), 2);
                EXPECT_EQ(locale->lastError, TS_ERR_NONE);
                locale->lastError = kUntouchedError;
            }
        }
    }
}

TEST_F(Span, AnEmptySetHasNoMembers)
{
    for (TSLocale* locale : all_) {
        for (const std::int32_t setLength : {-1, 0}) {
            EXPECT_EQ(TSStrspn(locale, "abc", -1, "", setLength, 0), 0);
            EXPECT_EQ(TSStrcspn(locale, "abc", -1, "", setLength, 0), 3);
        }
    }
}

TEST_F(Span, AnEmptyStringHasNoSpan)
{
    for (TSLocale* locale : all_) {
        EXPECT_EQ(TSStrspn(locale, "", -1, "a", -1, 0), 0);
        EXPECT_EQ(TSStrcspn(locale, "", -1, "a", -1, 0), 0);
        EXPECT_EQ(TSStrspn(locale, "a", 0, "a", -1, 0), 0);
        EXPECT_EQ(TSStrcspn(locale, "b", 0, "a", -1, TS_OPT_CHAR_COUNT), 0);
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
}

TEST_F(Span, ATerminatorWithinTheLengthIsACharacterLikeOthers)
{
    EXPECT_EQ(TSStrspn(&single_, "a\0a", 3, "a", 2, 0), 3);
    EXPECT_EQ(TSStrcspn(&double_, "a\0b", 3, "b", -1, 0), 2);
}

TEST_F(Span, ATrailByteIsNoMember)
{
    EXPECT_EQ(TSStrcspn(&double_, "a\x81zz", -1, "z", -1, 0), 3);
    EXPECT_EQ(TSStrspn(&double_, "\x81zz", -1, "\x81z", -1, 0), 2);
    EXPECT_EQ(TSStrspn(&double_, "z", -1, "\x81z", -1, 0), 0);
}

TEST_F(Span, ACharacterThatTheLengthCutsEndsTheSpan)
{
    EXPECT_EQ(TSStrcspn(&double_, "ab\x81\x40", 3, "z", -1, 0), 2);
    EXPECT_EQ(TSStrspn(&double_, "\x81\x40\x81\x40", 3, "\x81\x40", -1, 0), 2);
}

TEST_F(Span, ACharacterOfTheSetThatItsLengthCutsMatchesNoWholeOne)
{
    EXPECT_EQ(TSStrspn(&double_, "\x81\x40", -1, "\x81\x40", 1, 0), 0);
    EXPECT_EQ(TSStrcspn(&double_, "\x81\x40", 2, "a\x81\x40", 2, 0), 2);
}

TEST_F(Span, ACharacterThatTheTerminatorCutsIsAShorterOne)
{
    EXPECT_EQ(TSStrcspn(&double_, "ab\x81", -1, "z", -1, 0), 3);
    EXPECT_EQ(TSStrspn(&double_, "\x81", -1, "\x81", -1, 0), 1);
    EXPECT_EQ(TSStrspn(&double_, "\x81", -1, "\x81\x40", 1, 0), 1);
    EXPECT_EQ(TSStrspn(&double_, "\x81", -1, "\x81\x40", -1, 0), 0);
}

TEST_F(Span, ResultsCountCharactersIfAskedFor)
{
    EXPECT_EQ(TSStrspn(&double_,
                       "\x81\x40"
                       "az",
                       -1, "a\x81\x40", -1, TS_OPT_CHAR_COUNT),
              2);
    EXPECT_EQ(TSStrcspn(&double_,
                        "\x81\x40"
                        "az",
                        -1, "z", -1, TS_OPT_CHAR_COUNT),
              2);
    EXPECT_EQ(TSStrcspnEx(&stateful_, "a\x0E\x42\x43\x0Fz", 0, -1, "z", 0, -1, TS_OPT_CHAR_COUNT),
              2);
}

TEST_F(Span, LengthsCountCharactersIfAskedFor)
{
    EXPECT_EQ(TSStrcspn(&double_, "\x81\x40\x81\x41z", 2, "y", 1, TS_OPT_CHAR_COUNT), 2);
    EXPECT_EQ(TSStrspn(&double_, "\x81\x40\x81\x41z", 3, "\x81\x40\x81\x41z", 2, TS_OPT_CHAR_COUNT),
              2);
    EXPECT_EQ(TSStrspnEx(&stateful_, "\x0E\x42\x43\x44\x45\x0Fz", 0, 2, "\x0E\x42\x43\x44\x45\x0Fz",
                         0, 2, TS_OPT_CHAR_COUNT),
              2);
}

TEST_F(Span, OtherOptionsAreIgnored)
{
    for (int bit = 0; bit < 32; ++bit) {
        const std::uint32_t options = 1U << bit;
        for (TSLocale* locale : all_) {
            EXPECT_EQ(TSStrspn(locale, "ab", -1, "a", -1, options), 1);
            EXPECT_EQ(TSStrcspn(locale, "ab", -1, "b", -1, options), 1);
            EXPECT_EQ(TSStrspnEx(locale, "ab", 0, -1, "a", 0, -1, options), 1);
            EXPECT_EQ(TSStrcspnEx(locale, "ab", 0, -1, "b", 0, -1, options), 1);
            EXPECT_EQ(locale->lastError, TS_ERR_NONE);
        }
    }
}

TEST_F(Span, NoLocaleIsTheDefaultLocale)
{
    tsDefaultLocale = &double_;
    const TSChar16 unicode[] = {'a', 0};
    const TSChar32 packed[] = {'a', 0};
    EXPECT_EQ(TSStrspn(nullptr, "\x81z", -1, "z", -1, 0), 0);
    EXPECT_EQ(TSStrcspn(nullptr, "\x81z", -1, "z", -1, 0), 2);
    EXPECT_EQ(TSStrspnEx(nullptr, "a", 0, -1, "a", 0, -1, 0), 1);
    EXPECT_EQ(TSStrcspnEx(nullptr, "a", 0, -1, "a", 0, -1, 0), 0);
    EXPECT_EQ(TSStrspnU(nullptr, unicode, -1, unicode, -1), 1);
    EXPECT_EQ(TSStrcspnU(nullptr, unicode, -1, unicode, -1), 0);
    EXPECT_EQ(TSWcsspn(nullptr, packed, -1, packed, -1), 1);
    EXPECT_EQ(TSWcscspn(nullptr, packed, -1, packed, -1), 0);
    EXPECT_EQ(double_.lastError, TS_ERR_NONE);
}

TEST_F(Span, UnitsAreComparedAsTheyAre)
{
    const TSChar16 unicode[] = {0xD800, 'a', 'b', 0};
    const TSChar16 unicodeSet[] = {'a', 0xD800, 0};
    const TSChar32 packed[] = {0x8140, 0x40, 'b', 0};
    const TSChar32 packedSet[] = {0x8140, 0x40, 0};
    EXPECT_EQ(TSStrspnU(&single_, unicode, -1, unicodeSet, -1), 2);
    EXPECT_EQ(TSStrspnU(&single_, unicode, -1, unicodeSet, 1), 0);
    EXPECT_EQ(TSStrcspnU(&single_, unicode, 3, unicodeSet, 1), 1);
    EXPECT_EQ(TSWcsspn(&single_, packed, -1, packedSet, -1), 2);
    EXPECT_EQ(TSWcsspn(&single_, packed, 1, packedSet, 2), 1);
    EXPECT_EQ(TSWcscspn(&single_, packed, -1, packedSet + 1, 1), 1);
}

TEST_F(Span, ShiftBytesNeverMatch)
{
    EXPECT_EQ(TSStrspnEx(&stateful_, "\x0E\x42\x43\x0F\x42", 0, -1, "\x42\x0E\x42\x43", 0, -1, 0),
              5);
    EXPECT_EQ(TSStrspnEx(&stateful_, "\x42\x43", 0, -1, "\x42\x43", 1, -1, 0), 0);
    EXPECT_EQ(TSStrspnEx(&stateful_, "\x42\x43", 1, -1, "\x0E\x42\x43", 0, -1, 0), 2);
    EXPECT_EQ(TSStrcspnEx(&stateful_, "ab\x0E\x42\x43", 0, -1, "\x0F\x42\x43", 1, -1, 0), 5);
}

TEST_F(Span, TheShiftBytesBeforeTheCharacterThatEndsASpanAreInIt)
{
    EXPECT_EQ(TSStrspnEx(&stateful_, "a\x0E\x42\x43", 0, -1, "a", 0, -1, 0), 2);
    EXPECT_EQ(TSStrcspnEx(&stateful_, "a\x0E\x42\x43\x0F,", 0, -1, ",", 0, -1, 0), 5);
    EXPECT_EQ(TSStrcspnEx(&stateful_, "\x0E\x42\x43", 0, 3, "\x42\x43", 1, 2, 0), 1);
    EXPECT_EQ(TSStrspnEx(&stateful_, "a\x0F", 0, 2, "a", 0, 1, 0), 2);
}

TEST_F(Span, ACharacterOfTheMultiByteStateIsCutLikeOthers)
{
    EXPECT_EQ(TSStrcspnEx(&stateful_, "\x42\x43\x44", 1, 3, "z", 0, 1, 0), 2);
    EXPECT_EQ(TSStrcspnEx(&stateful_, "\x42\x43\x44", 1, -1, "z", 0, 1, 0), 3);
    EXPECT_EQ(TSStrspnEx(&stateful_, "\x42\x43", 1, 2, "\x42\x43", 1, 1, 0), 0);
}

TEST_F(Span, TheFlagOfTheLocaleDecidesAndNotThePage)
{
    double_.flags = kLocaleSingleByte;
    EXPECT_EQ(TSStrcspn(&double_, "\x81z", -1, "z", -1, 0), 1);
    stateful_.flags = 0;
    EXPECT_EQ(TSStrcspnEx(&stateful_, "\x0E\x42\x43", 0, -1, "\x43", 1, -1, 0), 2);
}

} // namespace
} // namespace vlx::test
