// TSTruncateString and TSTruncateStringEx.
#include <gtest/gtest.h>
#include <string>

#include "frame/globals.hpp"
#include "mapstr/hand_pages.hpp"
#include "support/recording_services.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kStrip = TS_TRUNC_STRIP_BLANKS;
constexpr std::uint32_t kStripWide = TS_TRUNC_STRIP_BLANKS | TS_OPT_IGNORE_WIDTH;

struct Cut {
    std::int32_t result;
    std::string string;

    bool operator==(const Cut&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Cut& cut)
{
    return out << cut.result << " \"" << cut.string << '"';
}

// In text: ( enters the multi-byte state, ) leaves it.
std::string shifted(std::string text)
{
    for (char& byte : text)
        byte = byte == '(' ? '\x0E' : byte == ')' ? '\x0F' : byte;
    return text;
}

class Truncation : public testing::Test {
  protected:
    Cut cut(TSLocale* locale, const std::string& text, std::int32_t size, std::uint32_t options)
    {
        return cutEx(locale, text, 0, size, options);
    }
    // Plain where the locale is not stateful.
    Cut cutEx(TSLocale* locale, const std::string& text, std::int32_t state, std::int32_t size,
              std::uint32_t options)
    {
        std::string buffer = shifted(text);
        const std::size_t whole = buffer.size() + 1;
        buffer.resize(whole + 4, '\0');
        buffer[whole] = '#';
        const bool stateful = locale && (locale->flags & kLocaleStateful);
        const std::int32_t result =
            stateful ? TSTruncateStringEx(locale, buffer.data(), state, size, options)
                     : TSTruncateString(locale, buffer.data(), size, options);
        if (whole > 1) {
            EXPECT_EQ(buffer[whole], '#');
        }
        EXPECT_EQ((locale ? locale : tsDefaultLocale)->lastError, TS_ERR_NONE);
        return {result, buffer.substr(0, buffer.find('\0'))};
    }
    // The string that is left and its length with the terminator.
    static Cut left(const std::string& string)
    {
        return {static_cast<std::int32_t>(string.size()) + 1, shifted(string)};
    }
    // What fits and is not stripped.
    static Cut untouched(const std::string& string) { return {0, shifted(string)}; }

    HandLocale latin_{latinPage()};
    HandLocale wide_{widePage()};
    HandLocale shift_{shiftPage()};
};

TEST_F(Truncation, TheSizeCountsTheTerminator)
{
    EXPECT_EQ(cut(latin_.handle(), "abcdef", 4, 0), left("abc"));
    EXPECT_EQ(cut(wide_.handle(), "abcdef", 4, 0), left("abc"));
    EXPECT_EQ(cut(shift_.handle(), "abcdef", 4, 0), left("abc"));
}

// Deliberate: the result is 0 then.
TEST_F(Truncation, AStringThatFitsStaysAndGivesZero)
{
    for (HandLocale* locale : {&latin_, &wide_, &shift_}) {
        EXPECT_EQ(cut(locale->handle(), "abc", 10, 0), untouched("abc"));
        EXPECT_EQ(cut(locale->handle(), "abc", 4, 0), untouched("abc"));
        EXPECT_EQ(cut(locale->handle(), "abc", 4, TS_OPT_CHAR_COUNT), untouched("abc"));
        EXPECT_EQ(cut(locale->handle(), "ab ", 10, TS_OPT_IGNORE_WIDTH), untouched("ab "));
        EXPECT_EQ(cut(locale->handle(), "", 1, 0), untouched(""));
    }
}

TEST_F(Truncation, EverySizeIsKept)
{
    const std::string text = "abcdef";
    for (HandLocale* locale : {&latin_, &wide_, &shift_})
        for (std::int32_t size = 1; size <= 6; ++size)
            EXPECT_EQ(cut(locale->handle(), text, size, 0),
                      left(text.substr(0, static_cast<std::size_t>(size) - 1)));
}

TEST_F(Truncation, ASizeBelowOneEmptiesTheString)
{
    for (HandLocale* locale : {&latin_, &wide_, &shift_})
        for (const std::int32_t size : {0, -1, INT32_MIN})
            for (const std::uint32_t options : {0u, TS_OPT_CHAR_COUNT, kStrip, kStripWide})
                EXPECT_EQ(cut(locale->handle(), "abc", size, options), left(""));
}

TEST_F(Truncation, BlanksAreStrippedOffAStringThatFits)
{
    for (HandLocale* locale : {&latin_, &wide_}) {
        EXPECT_EQ(cut(locale->handle(), "ab   ", 10, kStrip), left("ab"));
        EXPECT_EQ(cut(locale->handle(), "ab", 10, kStrip), left("ab"));
        EXPECT_EQ(cut(locale->handle(), "ab  c ", 10, kStrip), left("ab  c"));
    }
    EXPECT_EQ(cut(latin_.handle(), "   ", 10, kStrip), left(""));
}

TEST_F(Truncation, BlanksAtTheCutAreStripped)
{
    EXPECT_EQ(cut(latin_.handle(), "ab   cd", 5, kStrip), left("ab"));
    EXPECT_EQ(cut(wide_.handle(), "ab   cd", 5, kStrip), left("ab"));
    EXPECT_EQ(cut(wide_.handle(), "ab   cd", 6, kStrip), left("ab")) << "c reaches the size";
    EXPECT_EQ(cut(latin_.handle(), "ab   cd", 7, kStrip), left("ab   c"));
    EXPECT_EQ(cut(latin_.handle(), "ab   cd", 5, 0), left("ab  "));
}

TEST_F(Truncation, TheBlankIsThatOfTheFamily)
{
    PageBuilder page(PageShape::kSingleByte);
    page.ebcdic().build();
    HandLocale ebcdic(std::move(page));
    EXPECT_EQ(cut(ebcdic.handle(), "ab @@", 10, kStrip), left("ab "));
    EXPECT_EQ(cut(ebcdic.handle(), "ab  ", 10, kStrip), left("ab  "));
}

TEST_F(Truncation, ALeadByteAtTheSizeGoesAsAWholeCharacter)
{
    EXPECT_EQ(cut(wide_.handle(),
                  "a\x82\x60"
                  "b",
                  2, 0),
              left("a"));
    EXPECT_EQ(cut(wide_.handle(),
                  "a\x82\x60"
                  "b",
                  3, 0),
              left("a"));
    EXPECT_EQ(cut(wide_.handle(),
                  "a\x82\x60"
                  "b",
                  4, 0),
              left("a\x82\x60"));
    EXPECT_EQ(cut(wide_.handle(), "\x82\x60", 2, 0), left(""));
}

// Deliberate: one byte at the very end does not keep the blanks before it.
TEST_F(Truncation, BlanksGoWithASingleLastByte)
{
    EXPECT_EQ(cut(wide_.handle(), "ab c", 10, kStrip), left("ab"));
    EXPECT_EQ(cut(wide_.handle(), "ab cd", 10, kStrip), left("ab cd"));
    EXPECT_EQ(cut(wide_.handle(), "ab \x82\x60", 10, kStrip), left("ab \x82\x60"));
    EXPECT_EQ(cut(latin_.handle(), "ab c", 10, kStrip), left("ab c"));
}

// Deliberate: the place of the first byte is none.
TEST_F(Truncation, TheFirstBlankOfAStringStays)
{
    EXPECT_EQ(cut(wide_.handle(), " ", 10, kStrip), left(" "));
    EXPECT_EQ(cut(wide_.handle(), "   ", 10, kStrip), left(" "));
}

TEST_F(Truncation, FullWidthBlanksCountIfWidthIsIgnored)
{
    const std::string text = "ab\x81\x40 \x81\x40";
    EXPECT_EQ(cut(wide_.handle(), text, 10, kStripWide), left("ab"));
    EXPECT_EQ(cut(wide_.handle(), text, 10, kStrip), left(text));
    EXPECT_EQ(cut(wide_.handle(), text, 10, kStrip | TS_OPT_IGNORE_CASE), left(text));
    EXPECT_EQ(cut(wide_.handle(), text + "x\x81\x40", 20, kStripWide), left(text + "x"));
}

TEST_F(Truncation, CharactersCountTheTerminator)
{
    const std::string text = "a\x82\x60"
                             "b\x82\x60";
    EXPECT_EQ(cut(wide_.handle(), text, 3, TS_OPT_CHAR_COUNT), (Cut{3, "a\x82\x60"}));
    EXPECT_EQ(cut(wide_.handle(), text, 1, TS_OPT_CHAR_COUNT), (Cut{1, ""}));
    EXPECT_EQ(cut(wide_.handle(), text, 5, TS_OPT_CHAR_COUNT), untouched(text));
    EXPECT_EQ(cut(wide_.handle(), text, INT32_MAX, TS_OPT_CHAR_COUNT), untouched(text));
    EXPECT_EQ(cut(wide_.handle(), "a ", 5, TS_OPT_CHAR_COUNT | kStrip), (Cut{2, "a"}));
    EXPECT_EQ(cut(latin_.handle(), "abc", 3, TS_OPT_CHAR_COUNT), (Cut{3, "ab"}));
}

TEST_F(Truncation, ANullLocaleIsTheDefaultOne)
{
    tsDefaultLocale = latin_.handle();
    EXPECT_EQ(cut(nullptr, "abc", 2, 0), left("a"));
    tsDefaultLocale = shift_.handle();
    std::string text = "abc";
    EXPECT_EQ(TSTruncateStringEx(nullptr, text.data(), 0, 3, 0), 3);
    tsDefaultLocale = nullptr;
}

TEST_F(Truncation, InAnotherLocaleExIsThePlainMember)
{
    std::string text = "a\x82\x60";
    EXPECT_EQ(TSTruncateStringEx(wide_.handle(), text.data(), 1, 3, 0), 2);
    EXPECT_STREQ(text.c_str(), "a");
}

TEST_F(Truncation, TheMultiByteStateIsClosed)
{
    const std::string text = "a(B`B`)b";
    EXPECT_EQ(cut(shift_.handle(), text, 9, 0), untouched(text));
    EXPECT_EQ(cut(shift_.handle(), text, 8, 0), left("a(B`B`)"));
    EXPECT_EQ(cut(shift_.handle(), text, 7, 0), left("a(B`)")) << "no room to close the second one";
    EXPECT_EQ(cut(shift_.handle(), text, 6, 0), left("a(B`)"));
}

TEST_F(Truncation, ACutBehindAShiftInTakesItBack)
{
    const std::string text = "a(B`B`)b";
    EXPECT_EQ(cut(shift_.handle(), text, 3, 0), left("a"));
    EXPECT_EQ(cut(shift_.handle(), text, 4, 0), left("a"));
    EXPECT_EQ(cut(shift_.handle(), text, 2, 0), left("a"));
}

TEST_F(Truncation, WithoutRoomToCloseTheLastCharacterGoes)
{
    const std::string text = "a(B`B`)b";
    EXPECT_EQ(cut(shift_.handle(), text, 5, 0), left("a")) << "and the shift byte before it";
    EXPECT_EQ(cutEx(shift_.handle(), "B`B`", 1, 3, 0), left(")"));
    EXPECT_EQ(cutEx(shift_.handle(), "B`B`", 1, 4, 0), left("B`)"));
}

// Deliberate: the text is closed whatever the size.
TEST_F(Truncation, ATextOfNothingInTheMultiByteStateTakesTwoBytes)
{
    for (const std::int32_t size : {-1, 0, 1})
        EXPECT_EQ(cutEx(shift_.handle(), "B`", 1, size, 0), left(")"));
    EXPECT_EQ(cutEx(shift_.handle(), "", 1, 0, 0), left(")"));
}

// Deliberate: the byte before the blanks goes with them.
TEST_F(Truncation, ExCutsOneByteBeforeTheBlanks)
{
    EXPECT_EQ(cut(shift_.handle(), "ab cd  ", 10, kStrip), left("ab c"));
    EXPECT_EQ(cut(shift_.handle(), "ab c", 10, kStrip), left("ab c"))
        << "the last byte keeps them here";
    EXPECT_EQ(cut(shift_.handle(), "ab", 10, kStrip), left("ab"));
    EXPECT_EQ(cut(shift_.handle(), "abc  def", 5, 0), left("abc "))
        << "only if they are to be stripped";
}

TEST_F(Truncation, ExStripsFullWidthBlanksInTheirState)
{
    PageBuilder page = shiftPage();
    page.lead(0x41, 2).build();
    HandLocale shift(std::move(page));
    EXPECT_EQ(cut(shift.handle(), "a(B`A@)", 10, kStripWide), left("a(B)"));
    EXPECT_EQ(cut(shift.handle(), "a(B`A@)", 10, kStrip), left("a(B`A@)"));
    EXPECT_EQ(cut(shift.handle(), "ab(A@) ", 10, kStripWide), left("ab)"))
        << "one byte before the blanks stands the shift byte";
}

// Deliberate: the blank is then a byte of the single-byte state.
TEST_F(Truncation, ExFindsNoFullWidthBlankThatTheLengthTableTakesForAByte)
{
    EXPECT_EQ(cut(shift_.handle(), "a(B`A@)", 10, kStripWide), left("a(B`A@)"));
    EXPECT_EQ(cut(shift_.handle(), "bcdA", 10, kStripWide), left("bc)"));
}

TEST_F(Truncation, ExLooksAtTheCharacterThatReachesTheSize)
{
    EXPECT_EQ(cut(shift_.handle(), "abc xyz", 4, kStrip), left("ab"));
    EXPECT_EQ(cut(wide_.handle(), "abc xyz", 4, kStrip), left("abc"));
    EXPECT_EQ(cut(shift_.handle(), "ab xyz", 4, kStrip), left("ab ")) << "x comes behind the blank";
}

TEST_F(Truncation, ExCountsCharactersInTheStateOfTheCut)
{
    EXPECT_EQ(cut(shift_.handle(), "ab(B`B`)cd", 4, TS_OPT_CHAR_COUNT), (Cut{3, shifted("ab(B`)")}))
        << "the cut lies in the multi-byte state, and so the count begins there";
    EXPECT_EQ(cut(shift_.handle(), "abcd", 3, TS_OPT_CHAR_COUNT), (Cut{3, "ab"}));
}

TEST_F(Truncation, TellsItsSteps)
{
    Trace::clear();
    Trace::setMask(0x10);
    cut(wide_.handle(), "ab\x81\x40 ", 10, kStripWide);
    for (const char* text :
         {"Input length = 10", "Full width blank encountered at 2", "Blank position set to 2",
          "Blank encountered at 4", "index set to 2", "Truncated string: ab"})
        EXPECT_TRUE(Trace::printed(text)) << text;
    Trace::clear();
    cut(wide_.handle(), "ab cd", 10, kStrip);
    EXPECT_TRUE(Trace::printed("Blank position reset"));
    Trace::clear();
    cut(latin_.handle(), "ab ", 10, kStrip);
    for (const char* text : {"Single byte code page, string length = 3",
                             "Stripping blank at position 2", "Truncated string: ab"})
        EXPECT_TRUE(Trace::printed(text)) << text;
    Trace::clear();
    cut(shift_.handle(), "ab c ", 10, kStrip);
    for (const char* text : {"Blank encountered at 2", "Setting blank position to 2",
                             "Resetting blank position", "Setting index to 3"})
        EXPECT_TRUE(Trace::printed(text)) << text;
    Trace::setMask(0);
    Trace::clear();
}

} // namespace
} // namespace vlx::test
