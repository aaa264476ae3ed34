// NLS1_TranslateString: each row of its table of sources and targets.
#include "facade/translate_fixture.hpp"

namespace vlx::test {
namespace {

using TranslateKinds = Translate;

TEST_F(TranslateKinds, UnicodeToUnicodeIsACopyWithoutABound)
{
    EXPECT_EQ(run(kRaw, 4, kRaw, raw(u"abcdef")), 12);
    EXPECT_EQ(written(), raw(u"abcdef"));
    EXPECT_EQ(consumed_, 12u);
    EXPECT_EQ(error_, 0u);
    length_ = 3; // characters
    EXPECT_EQ(run(kRaw, 4, kRaw, raw(u"abc"), TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE), 4);
    EXPECT_EQ(written(), raw(u"abc") + std::string(2, '\0'));
}

TEST_F(TranslateKinds, UnicodeToSingleBytesComparesBytesWithBytes)
{
    EXPECT_EQ(run(kLatin, 10, kRaw, raw(u"abcdefgh")), 5);
    EXPECT_EQ(written(), "abcde");
    EXPECT_EQ(error_, 40u);
    EXPECT_EQ(consumed_, 10u);
    EXPECT_EQ(run(kLatin, 16, kRaw, raw(u"abcdefgh")), 8);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(run(kLatin, 10, kRaw, raw(u"abcde   "), NLS1_OPT_BLANKS_MAY_GO), 5);
    EXPECT_EQ(error_, 0u);
}

TEST_F(TranslateKinds, UnicodeToMoreBytes)
{
    EXPECT_EQ(run(kDouble, 9, kRaw, raw(u"a\u5186z")), 4);
    EXPECT_EQ(written(), "a\x8A\x42z");
    EXPECT_EQ(consumed_, 6u);
    EXPECT_EQ(run(kDouble, 2, kRaw, raw(u"a\u5186z")), 1);
    EXPECT_EQ(written(), "a");
    EXPECT_EQ(error_, 40u);
    EXPECT_EQ(consumed_, 2u);
    EXPECT_EQ(run(kShift, 9, kRaw, raw(u"a\u5186z")), 6);
    EXPECT_EQ(written(), "a\x0E\x42\x43\x0Fz");
}

TEST_F(TranslateKinds, SingleBytesToUnicodeTakeHalfTheSize)
{
    EXPECT_EQ(run(kRaw, 10, kUs, "abcdefgh"), 10);
    EXPECT_EQ(written(), raw(u"abcde"));
    EXPECT_EQ(consumed_, 5u);
    EXPECT_EQ(error_, 40u);
    EXPECT_EQ(run(kRaw, 10, kUs, "abcdefgh", TS_OPT_CHAR_COUNT), 8);
    EXPECT_EQ(written(), raw(u"abcdefgh"));
}

TEST_F(TranslateKinds, SingleBytesToSingleBytesGoThroughUnicode)
{
    EXPECT_EQ(run(kLatin, 9, kLatin, "a\xE4\x80"), 3);
    EXPECT_EQ(written(), "a\xE4\x80");
    EXPECT_EQ(run(kUs, 9, kLatin, "a\xE4z"), 3);
    EXPECT_EQ(written().substr(0, 1), "a");
    EXPECT_EQ(error_, 0u); // what has no place gives the page's substitute
}

TEST_F(TranslateKinds, SingleBytesToMoreBytes)
{
    Trace::setMask(TRC1_DETAIL);
    EXPECT_EQ(run(kDouble, 9, kUs, "ab"), 2);
    EXPECT_TRUE(Trace::printed("Source codepage 31 is single byte"));
    EXPECT_TRUE(Trace::printed("Target codepage 32 is not shift sensitive"));
    EXPECT_TRUE(Trace::printed("Process SingleByte Input, Multi-byte output "));
    Trace::clear();
    EXPECT_EQ(run(kShift, 9, kUs, "ab"), 2);
    EXPECT_TRUE(Trace::printed("Target codepage 33 is shift sensitive, Shift-In=0E, Shift-Out=0f"));
    EXPECT_TRUE(Trace::printed("Process SingleByte Input, Extended Multi-byte output "));
}

TEST_F(TranslateKinds, MoreBytesToUnicodeMayStoreOneElementPastTheSize)
{
    EXPECT_EQ(run(kRaw, 2, kDouble, "a\x8A\x42yz"), 4);
    EXPECT_EQ(written(), raw(u"a\u5186y")); // the size counts elements, and is tested behind
    EXPECT_EQ(consumed_, 3u);
    EXPECT_EQ(error_, 40u);
    EXPECT_EQ(run(kRaw, 4, kDouble, "a\x8A\x42yz"), 8);
    EXPECT_EQ(error_, 0u);
}

TEST_F(TranslateKinds, MoreBytesToSingleBytesMayStoreOneBytePastTheSize)
{
    EXPECT_EQ(run(kUs, 2, kDouble, "abcd"), 2);
    EXPECT_EQ(written(), "abc");
    EXPECT_EQ(consumed_, 2u);
    EXPECT_EQ(error_, 40u);
    EXPECT_EQ(run(kUs, 3, kDouble, "abc", TS_OPT_TERMINATE), 3);
    EXPECT_EQ(written(), std::string("ab\0", 3));
}

TEST_F(TranslateKinds, MoreBytesToMoreBytes)
{
    Trace::setMask(TRC1_DETAIL);
    EXPECT_EQ(run(kShift, 20, kDouble, "a\x8A\x42\x8A\x42z"), 8);
    EXPECT_EQ(written(), "a\x0E\x42\x43\x42\x43\x0Fz");
    EXPECT_TRUE(Trace::printed("Source codepage 32 is not shift sensitive"));
    EXPECT_TRUE(Trace::printed("Process multi-byte Input, Extended Multi-byte output "));
    EXPECT_EQ(run(kDouble, 20, kShift, "a\x0E\x42\x43\x42\x43\x0Fz"), 6);
    EXPECT_EQ(written(), "a\x8A\x42\x8A\x42z");
    EXPECT_EQ(consumed_, 8u);
    EXPECT_TRUE(Trace::printed("Source codepage 33 is shift sensitive, Shift-In=0E, Shift-Out=0f"));
    EXPECT_TRUE(Trace::printed("Process Multi-Byte Input, Multi-byte output "));
}

TEST_F(TranslateKinds, ACharacterThatTheInputCutsOffIsDroppedWithoutAnError)
{
    EXPECT_EQ(run(kRaw, 20, kDouble, "a\x8A"), 2);
    EXPECT_EQ(consumed_, 1u);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(run(kRaw, 20, kShift, "\x0E\x42"), 0);
    EXPECT_EQ(consumed_, 1u);
    EXPECT_EQ(error_, 0u);
    length_ = -1; // and then the output has no terminator
    EXPECT_EQ(run(kLatin, 20, kDouble, "a\x8A"), 1);
    EXPECT_EQ(written(), "a");
}

TEST_F(TranslateKinds, HalfAnElementOfUnicodeIsNone)
{
    length_ = 3;
    EXPECT_EQ(run(kLatin, 9, kRaw, raw(u"ab")), 1);
    EXPECT_EQ(consumed_, 2u);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(run(kDouble, 9, kRaw, raw(u"ab")), 1);
    EXPECT_EQ(run(kRaw, 9, kRaw, raw(u"ab")), 2);
    EXPECT_EQ(written(), raw(u"a"));
}

TEST_F(TranslateKinds, ALastCharacterWithoutRoomForItsShiftByteIsTakenBack)
{
    EXPECT_EQ(run(kShift, 5, kRaw, raw(u"\u5186\u5186")), 4);
    EXPECT_EQ(written().substr(0, 4), "\x0E\x42\x43\x0F");
    EXPECT_EQ(error_, 0u); // Deliberate: nothing tells of it
    EXPECT_EQ(consumed_, 4u);
    EXPECT_EQ(run(kShift, 3, kRaw, raw(u"\u5186")), 2); // the shift byte before it stays
    EXPECT_EQ(written().substr(0, 2), "\x0E\x0F");
    EXPECT_EQ(run(kShift, 6, kRaw, raw(u"\u5186\u5186")), 6);
    EXPECT_EQ(written(), "\x0E\x42\x43\x42\x43\x0F");
    length_ = 2; // characters: the bytes written are compared with the size in characters
    EXPECT_EQ(run(kShift, 3, kRaw, raw(u"\u5186\u5186"), TS_OPT_CHAR_COUNT), 1);
}

TEST_F(TranslateKinds, ShiftBytesOfTheSourceThatRepeatAreStates)
{
    EXPECT_EQ(run(kRaw, 20, kShift, "\x0F\x0E\x0E\x42\x43\x0F\x0F\x61\x0E"), 4);
    EXPECT_EQ(written(), raw(u"\u5186a"));
    EXPECT_EQ(consumed_, 9u);
}

} // namespace
} // namespace vlx::test
