// NLS1_TranslateString: arguments, options, and what it gives back.
#include <cstring>

#include "facade/translate_fixture.hpp"

namespace vlx::test {
namespace {

TEST_F(Translate, AnUnknownPageIsTheObjectManagersCodeAndLeavesTheCount)
{
    Trace::setMask(TRC1_ERRORS);
    EXPECT_EQ(run(kLatin, 5, 77, "ab"), -1);
    EXPECT_EQ(error_, 37u);
    EXPECT_EQ(consumed_, kUntouched);
    EXPECT_TRUE(Trace::printed("Unable to locate codepage 77"));
    EXPECT_EQ(run(78, 5, kLatin, "ab"), -1);
    EXPECT_EQ(error_, 37u);
    EXPECT_EQ(run(78, 5, 77, "ab"), -1);
    EXPECT_EQ(error_, 37u);
    EXPECT_TRUE(Trace::printed("Unable to locate codepage 78"));
}

TEST_F(Translate, TheErrorOfTheTargetsLookupComesLast)
{
    // The file of the target is gone and the manager strict: 1000, which is 30 here.
    MemoryHost::erase("/loc/cp_00030.nls");
    objectManager()->strict = true;
    EXPECT_EQ(run(kLatin, 5, 77, "ab"), -1);
    EXPECT_EQ(error_, 30u);
    EXPECT_EQ(run(77, 5, kLatin, "ab"), -1);
    EXPECT_EQ(error_, 37u);
}

TEST_F(Translate, NullTextsThatAreNeededAre2)
{
    char output[4];
    for (const std::int32_t length : {2, -1}) {
        EXPECT_EQ(
            NLS1_TranslateString(kLatin, output, 4, kUs, nullptr, length, &consumed_, 0, &error_),
            -1);
        EXPECT_EQ(error_, 2u);
        EXPECT_EQ(consumed_, kUntouched);
    }
    EXPECT_EQ(
        NLS1_TranslateString(kLatin, nullptr, 4, kUs, "ab", 2, nullptr, TS_OPT_TERMINATE, &error_),
        -1);
    EXPECT_EQ(error_, 2u);
    EXPECT_EQ(NLS1_TranslateString(kLatin, nullptr, 0, kUs, nullptr, 2, &consumed_, 0, &error_), 0);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(NLS1_TranslateString(kLatin, output, 4, kUs, nullptr, 0, &consumed_, 0, &error_), 0);
    EXPECT_EQ(error_, 0u);
    for (const std::uint32_t source : {kRaw, kUs, kDouble, kShift}) { // nor is a length measured
        EXPECT_EQ(NLS1_TranslateString(kLatin, nullptr, 0, source, nullptr, 2, &consumed_,
                                       TS_OPT_CHAR_COUNT, &error_),
                  0);
        EXPECT_EQ(error_, 0u);
        EXPECT_EQ(consumed_, 0u);
    }
}

TEST_F(Translate, IdsCountByTheirLow16Bits)
{
    EXPECT_EQ(run(0x10000 + kLatin, 5, 0xABCD0000 + kUs, "ab"), 2);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(written(), "ab");
}

TEST_F(Translate, NullPlacesForCountAndErrorAreFine)
{
    char output[4];
    EXPECT_EQ(NLS1_TranslateString(kLatin, output, 4, kUs, "ab", 2, nullptr, 0, nullptr), 2);
    EXPECT_EQ(NLS1_TranslateString(kLatin, output, 4, 77, "ab", 2, nullptr, 0, nullptr), -1);
}

TEST_F(Translate, OtherOptionsAre2)
{
    for (const std::uint32_t options : {1u, 2u, 4u, 0x10u, 0x80000000u, 9u}) {
        EXPECT_EQ(run(kLatin, 5, kUs, "ab", options), -1);
        EXPECT_EQ(error_, 2u);
        EXPECT_EQ(consumed_, 0u);
        EXPECT_EQ(run(kLatin, 5, kUs, "ab", options | TS_OPT_CHAR_COUNT), 0);
        EXPECT_EQ(error_, 2u);
        EXPECT_EQ(consumed_, 0u);
    }
}

TEST_F(Translate, AnEmptyInputOrNoRoomIsATerminatorAtMost)
{
    EXPECT_EQ(run(kLatin, 5, kUs, ""), 0);
    EXPECT_EQ(written(), "");
    EXPECT_EQ(run(kLatin, 5, kUs, "", TS_OPT_TERMINATE), 1);
    EXPECT_EQ(written(), std::string(1, '\0'));
    EXPECT_EQ(consumed_, 0u);
    EXPECT_EQ(run(kLatin, 5, kUs, "", TS_OPT_TERMINATE | TS_OPT_CHAR_COUNT), 1);
    EXPECT_EQ(consumed_, 1u);
    EXPECT_EQ(run(kRaw, 5, kUs, "", TS_OPT_TERMINATE), 1); // one byte here, too
    EXPECT_EQ(written(), std::string(1, '\0'));
    EXPECT_EQ(run(kLatin, 0, kUs, "ab", TS_OPT_TERMINATE), 0);
    EXPECT_EQ(written(), "");
    EXPECT_EQ(error_, 0u);
}

TEST_F(Translate, ANegativeSizeHasNoRoomForAnything)
{
    for (const std::uint32_t options : {0u, TS_OPT_TERMINATE, NLS1_OPT_PAD_BLANKS}) {
        EXPECT_EQ(run(kLatin, -1, kUs, "ab", options), 0);
        EXPECT_EQ(error_, 40u);
        EXPECT_EQ(run(kShift, INT32_MIN, kUs, "ab", options), 0);
        EXPECT_EQ(error_, 40u);
        EXPECT_EQ(written(), "");
        EXPECT_EQ(run(kLatin, -1, kUs, "", options), 0);
        EXPECT_EQ(written(), "");
    }
}

TEST_F(Translate, ATargetOfUnicodeNeedsRoomForAnElement)
{
    for (const std::uint32_t options : {0u, TS_OPT_CHAR_COUNT}) {
        EXPECT_EQ(run(kRaw, 1, kUs, "ab", options), -1);
        EXPECT_EQ(error_, 40u);
        EXPECT_EQ(consumed_, kUntouched);
        EXPECT_EQ(run(kRaw, -5, kUs, "ab", options), -1);
        EXPECT_EQ(written(), "");
    }
}

TEST_F(Translate, ATerminatedInputGivesATerminatorIfThereIsRoom)
{
    Trace::setMask(TRC1_DETAIL);
    length_ = -1;
    EXPECT_EQ(run(kLatin, 3, kUs, "ab"), 3);
    EXPECT_TRUE(Trace::printed("Source length = 2"));
    EXPECT_EQ(written(), std::string("ab\0", 3));
    EXPECT_EQ(consumed_, 2u);
    EXPECT_EQ(run(kLatin, 2, kUs, "ab"), 2);
    EXPECT_EQ(written(), "ab");
    EXPECT_EQ(run(kRaw, 6, kUs, "ab"), 6);
    EXPECT_EQ(written(), raw(u"ab") + std::string(2, '\0'));
    EXPECT_EQ(run(kRaw, 5, kUs, "ab"), 4); // the terminator needs two bytes
    EXPECT_EQ(written(), raw(u"ab"));
    EXPECT_EQ(run(kLatin, 3, kUs, "", 0), 1); // an empty one, too
    EXPECT_EQ(written(), std::string(1, '\0'));
}

TEST_F(Translate, ATerminatorHasRoomOfItsOwn)
{
    EXPECT_EQ(run(kLatin, 3, kUs, "abc", TS_OPT_TERMINATE), 3);
    EXPECT_EQ(written(), std::string("ab\0", 3));
    EXPECT_EQ(error_, 40u);
    EXPECT_EQ(consumed_, 2u);
    EXPECT_EQ(run(kLatin, 4, kUs, "abc", TS_OPT_TERMINATE), 4);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(run(kLatin, 1, kUs, "abc", TS_OPT_TERMINATE), 1);
    EXPECT_EQ(written(), std::string(1, '\0'));
    EXPECT_EQ(run(kRaw, 6, kUs, "abc", TS_OPT_TERMINATE), 6);
    EXPECT_EQ(written(), raw(u"ab") + std::string(2, '\0'));
    EXPECT_EQ(run(kRaw, 3, kUs, "abc", TS_OPT_TERMINATE | TS_OPT_CHAR_COUNT), 3);
    EXPECT_EQ(written(), raw(u"ab") + std::string(2, '\0'));
}

TEST_F(Translate, BlanksAtTheEndMayGo)
{
    EXPECT_EQ(run(kLatin, 2, kUs, "ab  ", NLS1_OPT_BLANKS_MAY_GO), 2);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(consumed_, 2u);
    EXPECT_EQ(run(kLatin, 2, kUs, "abc ", NLS1_OPT_BLANKS_MAY_GO), 2);
    EXPECT_EQ(error_, 40u);
    EXPECT_EQ(run(kLatin, 2, kUs, "ab  "), 2);
    EXPECT_EQ(error_, 40u);
    EXPECT_EQ(run(kDouble, 2, kDouble, "ab  ", NLS1_OPT_BLANKS_MAY_GO), 2);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(run(kDouble, 2, kRaw, raw(u"ab  "), NLS1_OPT_BLANKS_MAY_GO), 2);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(run(kDouble, 2, kRaw, raw(u"ab c"), NLS1_OPT_BLANKS_MAY_GO), 2);
    EXPECT_EQ(error_, 40u);
}

TEST_F(Translate, BlanksOfAStatefulSourceMayGoInTheSingleByteStateAlone)
{
    EXPECT_EQ(run(kLatin, 1, kShift, "a  ", NLS1_OPT_BLANKS_MAY_GO), 1);
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(run(kLatin, 1, kShift, "a\x0E\x20\x20", NLS1_OPT_BLANKS_MAY_GO), 1);
    EXPECT_EQ(error_, 40u);
}

TEST_F(Translate, UnusedRoomIsPadded)
{
    EXPECT_EQ(run(kLatin, 5, kUs, "ab", NLS1_OPT_PAD_BLANKS), 5);
    EXPECT_EQ(written(), "ab   ");
    EXPECT_EQ(run(kLatin, 5, kUs, "ab", NLS1_OPT_PAD_BLANKS | TS_OPT_TERMINATE), 5);
    EXPECT_EQ(written(), std::string("ab  \0", 5));
    EXPECT_EQ(run(kLatin, 5, kUs, "ab", NLS1_OPT_PAD_BLANKS | TS_OPT_CHAR_COUNT), 5);
    EXPECT_EQ(consumed_, 5u);
    EXPECT_EQ(run(kShift, 8, kRaw, raw(u"\u5186"), NLS1_OPT_PAD_BLANKS), 8);
    EXPECT_EQ(written(), "\x0E\x42\x43\x0F    ");
}

TEST_F(Translate, PaddingOfUnicodeCanTakeTwiceTheSize)
{
    EXPECT_EQ(run(kRaw, 6, kRaw, raw(u"ab"), NLS1_OPT_PAD_BLANKS), 6);
    EXPECT_EQ(written(), raw(u"ab    "));
}

TEST_F(Translate, CharactersAreCounted)
{
    length_ = 3; // characters
    EXPECT_EQ(run(kDouble, 2, kRaw, raw(u"a\u5186z"), TS_OPT_CHAR_COUNT), 2);
    EXPECT_EQ(written(), "a\x8A\x42");
    EXPECT_EQ(consumed_, 2u);
    EXPECT_EQ(error_, 40u);
    length_ = 2;
    EXPECT_EQ(run(kRaw, 9, kDouble, "a\x8A\x42z", TS_OPT_CHAR_COUNT), 2);
    EXPECT_EQ(written(), raw(u"a\u5186"));
    EXPECT_EQ(error_, 0u);
    EXPECT_EQ(run(kUs, 9, kRaw, raw(u"abc"), TS_OPT_CHAR_COUNT), 2);
    EXPECT_EQ(written(), "ab");
}

TEST_F(Translate, TheThreadHasItsLocaleAfterACall)
{
    Trace::setMask(TRC1_FLOW);
    run(kLatin, 2, kUs, "ab");
    EXPECT_EQ(Trace::count("NLS1_GetThreadLocale", TraceKind::kEntry), 1);
}

} // namespace
} // namespace vlx::test
