// What the append members promise, one by one.
#include "strings/pages.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kBoth = TS_OPT_TERMINATE | TS_OPT_CHAR_COUNT;

class Append : public StringTest {};

TEST_F(Append, NothingReturnsTheLengthPlusOneAndWritesNothing)
{
    for (TSLocale* locale : all_) {
        Area area(bytes("abc\0"));
        EXPECT_EQ(TSStrcat(locale, area.at(), "x", 0, 0), 4);
        EXPECT_EQ(TSStrcat(locale, area.at(), "x", 0, TS_OPT_TERMINATE), 4);
        EXPECT_EQ(TSStrcatEx(locale, area.at(), 0, "x", 1, 0, 0), 4);
        EXPECT_EQ(area.written(), bytes("abc\0"));
        EXPECT_EQ(locale->lastError, TS_ERR_NONE);
    }
}

// Deliberate: in bytes the terminator counts, in characters it does not.
TEST_F(Append, NothingReturnsTheCharactersWithoutTheTerminator)
{
    Area area(bytes("a\x81\x40\0"));
    EXPECT_EQ(TSStrcat(&double_, area.at(), "x", 0, TS_OPT_CHAR_COUNT), 2);
    Area stateful(bytes("a\x0E\x42\x43\x0F\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, stateful.at(), 0, "x", 0, 0, TS_OPT_CHAR_COUNT), 2);
    EXPECT_EQ(TSStrcatEx(&stateful_, stateful.at(), 0, "x", 0, 0, 0), 6);
}

TEST_F(Append, ALengthWritesNoTerminatorUnlessItIsAskedFor)
{
    for (TSLocale* locale : all_) {
        Area area(bytes("ab\0"));
        EXPECT_EQ(TSStrcat(locale, area.at(), "cdef", 2, 0), 4);
        EXPECT_EQ(area.written(), "abcd");
        Area terminated(bytes("ab\0"));
        EXPECT_EQ(TSStrcat(locale, terminated.at(), "cdef", 2, TS_OPT_TERMINATE), 5);
        EXPECT_EQ(terminated.written(), bytes("abcd\0"));
    }
}

TEST_F(Append, ANegativeLengthForcesTheTerminator)
{
    for (TSLocale* locale : all_) {
        Area area(bytes("ab\0"));
        EXPECT_EQ(TSStrcat(locale, area.at(), "cd", -1, 0), 5);
        EXPECT_EQ(area.written(), bytes("abcd\0"));
        Area other(bytes("ab\0"));
        EXPECT_EQ(TSStrcatEx(locale, other.at(), 0, "cd", 0, -9, 0), 5);
        EXPECT_EQ(other.written(), bytes("abcd\0"));
    }
}

TEST_F(Append, TheTerminatorCountsAsACharacterToo)
{
    Area area(bytes("\x81\x40\0"));
    EXPECT_EQ(TSStrcat(&double_, area.at(), "\x81\x41z", 1, kBoth), 3);
    EXPECT_EQ(area.written(), bytes("\x81\x40\x81\x41\0"));
    Area stateful(bytes("a\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, stateful.at(), 0, "\x0E\x42\x43\x0F", 0, -1, kBoth), 3);
    EXPECT_EQ(stateful.written(), bytes("a\x0E\x42\x43\x0F\0"));
}

TEST_F(Append, ACharacterThatTheLengthCutsIsLeftOut)
{
    Area area(bytes("a\0"));
    EXPECT_EQ(TSStrcat(&double_, area.at(), "b\x81\x40", 2, TS_OPT_TERMINATE), 3);
    EXPECT_EQ(area.written(), bytes("ab\0"));
    Area stateful(bytes("a\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, stateful.at(), 0, "\x42\x43\x44\x45", 1, 3, TS_OPT_TERMINATE),
              6);
    EXPECT_EQ(stateful.written(), bytes("a\x0E\x42\x43\x0F\0"));
}

TEST_F(Append, OtherOptionsAreRefused)
{
    const auto accepts = [](std::uint32_t options) { return (options & ~kBoth) == 0; };
    const TSChar16 unicodeText[] = {'a', 0};
    const TSChar32 packedText[] = {'a', 0};
    forRefusedOptions(accepts, [&](std::uint32_t options) {
        for (TSLocale* locale : all_) {
            Area area(bytes("ab\0"));
            TSChar16 unicode[4] = {};
            TSChar32 packed[4] = {};
            EXPECT_EQ(TSStrcat(locale, area.at(), "c", -1, options), -1) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            locale->lastError = kUntouchedError;
            EXPECT_EQ(TSStrcatEx(locale, area.at(), 0, "c", 0, -1, options), -1) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            locale->lastError = kUntouchedError;
            EXPECT_EQ(TSStrcatU(locale, unicode, unicodeText, -1, options), -1) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            locale->lastError = kUntouchedError;
            EXPECT_EQ(TSWcscat(locale, packed, packedText, -1, options), -1) << options;
            EXPECT_EQ(locale->lastError, TS_ERR_ARGUMENT);
            EXPECT_EQ(area.written(), bytes("ab\0"));
            EXPECT_EQ(unicode[0], 0);
            EXPECT_EQ(packed[0], 0U);
        }
    });
}

TEST_F(Append, EveryAcceptedOptionIsAccepted)
{
    const TSChar16 unicodeText[] = {'a', 0};
    const TSChar32 packedText[] = {'a', 0};
    for (const std::uint32_t options : {0U, TS_OPT_TERMINATE, TS_OPT_CHAR_COUNT, kBoth}) {
        const std::int32_t wanted = (options & TS_OPT_TERMINATE) != 0 ? 2 : 1;
        for (TSLocale* locale : all_) {
            Area area(bytes("\0"));
            TSChar16 unicode[4] = {};
            TSChar32 packed[4] = {};
            EXPECT_EQ(TSStrcat(locale, area.at(), "a", 1, options), wanted);
            Area other(bytes("\0"));
            EXPECT_EQ(TSStrcatEx(locale, other.at(), 0, "a", 0, 1, options), wanted);
            EXPECT_EQ(TSStrcatU(locale, unicode, unicodeText, 1, options), wanted);
            EXPECT_EQ(TSWcscat(locale, packed, packedText, 1, options), wanted);
            EXPECT_EQ(locale->lastError, TS_ERR_NONE);
        }
    }
}

TEST_F(Append, NoLocaleIsTheDefaultLocale)
{
    tsDefaultLocale = &double_;
    const TSChar16 unicodeText[] = {'a', 0};
    const TSChar32 packedText[] = {'a', 0};
    Area area(bytes("a\0"));
    TSChar16 unicode[4] = {};
    TSChar32 packed[4] = {};
    EXPECT_EQ(TSStrcat(nullptr, area.at(), "b", -1, 0), 3);
    EXPECT_EQ(TSStrcatEx(nullptr, area.at(), 0, "b", 0, -1, 0), 4);
    EXPECT_EQ(TSStrcatU(nullptr, unicode, unicodeText, -1, 0), 2);
    EXPECT_EQ(TSWcscat(nullptr, packed, packedText, -1, 0), 2);
    EXPECT_EQ(double_.lastError, TS_ERR_NONE);
    EXPECT_EQ(TSStrcat(nullptr, area.at(), "b", -1, 1), -1);
    EXPECT_EQ(double_.lastError, TS_ERR_ARGUMENT);
}

TEST_F(Append, TheShiftOutBetweenTwoTextsOfTheMultiByteStateGoes)
{
    Area area(bytes("\x0E\x42\x43\x0F\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, area.at(), 0, "\x0E\x44\x45\x0F", 0, -1, 0), 7);
    EXPECT_EQ(area.written(), bytes("\x0E\x42\x43\x44\x45\x0F\0"));
    Area other(bytes("\x0E\x42\x43\x0F\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, other.at(), 0, "\x44\x45", 1, 2, TS_OPT_TERMINATE), 7);
    EXPECT_EQ(other.written(), bytes("\x0E\x42\x43\x44\x45\x0F\0"));
}

TEST_F(Append, AShiftByteIsWrittenWhereTheStatesDiffer)
{
    Area area(bytes("a\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, area.at(), 0, "\x42\x43", 1, 2, 0), 4);
    EXPECT_EQ(area.written(), "a\x0E\x42\x43");
    Area closed(bytes("\x0E\x42\x43\x0F\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, closed.at(), 0, "ab", 0, 2, 0), 6);
    EXPECT_EQ(closed.written(), "\x0E\x42\x43\x0F"
                                "ab");
}

TEST_F(Append, ALeadingShiftByteOfTheSourceIsNotCopied)
{
    Area area(bytes("a\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, area.at(), 0,
                         "\x0F"
                         "b",
                         1, 2, TS_OPT_TERMINATE),
              3);
    EXPECT_EQ(area.written(), bytes("ab\0"));
}

// Deliberate: a dropped shift out is written again where the text is closed, a shift in is not.
TEST_F(Append, AShiftByteAtTheEndIsDropped)
{
    Area area(bytes("a\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, area.at(), 0, "\x0E\x42\x43\x0F", 0, 4, 0), 4);
    EXPECT_EQ(area.written().substr(0, 4), "a\x0E\x42\x43");
    Area closed(bytes("a\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, closed.at(), 0, "\x0E\x42\x43\x0F", 0, 4, TS_OPT_TERMINATE),
              6);
    EXPECT_EQ(closed.written(), bytes("a\x0E\x42\x43\x0F\0"));
    Area open(bytes("a\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, open.at(), 0, "b\x0E", 0, 2, TS_OPT_TERMINATE), 3);
    EXPECT_EQ(open.written(), bytes("ab\0"));
}

// Deliberate: a source of unknown length counts as closed, even if it is not.
TEST_F(Append, AnOpenSourceOfNegativeLengthStaysOpen)
{
    Area area(bytes("a\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, area.at(), 0, "\x0E\x42\x43", 0, -1, 0), 5);
    EXPECT_EQ(area.written(), bytes("a\x0E\x42\x43\0"));
}

// The byte before an empty destination is a shift out, and decides nothing.
TEST_F(Append, TheByteBeforeAnEmptyDestinationDecidesNothing)
{
    Area area(bytes("\x0F\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, area.at() + 1, 0, "\x42\x43", 1, 2, TS_OPT_TERMINATE), 5);
    EXPECT_EQ(area.written(), bytes("\x0F\x0E\x42\x43\x0F\0"));
}

TEST_F(Append, TheStateOfTheDestinationIsTheOneItsCharactersAreCountedIn)
{
    Area area(bytes("\x42\x43\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, area.at(), 1, "ab", 0, 2, TS_OPT_CHAR_COUNT), 2);
    Area single(bytes("\x42\x43\0"));
    EXPECT_EQ(TSStrcatEx(&stateful_, single.at(), 0, "ab", 0, 2, TS_OPT_CHAR_COUNT), 4);
}

} // namespace
} // namespace vlx::test
