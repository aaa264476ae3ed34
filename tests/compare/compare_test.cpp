// TSStrcmp.
#include <gtest/gtest.h>
#include <string>

#include "compare/memory.hpp"
#include "mapstr/hand_pages.hpp"
#include "strings/guarded_area.hpp"
#include "support/recording_services.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kCase = TS_OPT_IGNORE_CASE;
constexpr std::uint32_t kWidth = TS_OPT_IGNORE_WIDTH;
constexpr std::uint32_t kStrip = TS_OPT_STRIP_BLANKS;

constexpr std::uint32_t kKnownBits[] = {0x80000000, TS_OPT_STRIP_BLANKS, TS_OPT_CHAR_COUNT, 0x40,
                                        0x1};

class StringComparison : public testing::Test {
  protected:
    std::int32_t compare(HandLocale& locale, const std::string& first, const std::string& second,
                         std::uint32_t options)
    {
        return compare(locale, first, -1, second, -1, options);
    }
    std::int32_t compare(HandLocale& locale, const std::string& first, std::int32_t length1,
                         const std::string& second, std::int32_t length2, std::uint32_t options)
    {
        locale.record.lastError = kUntouchedError;
        const std::int32_t result =
            TSStrcmp(locale.handle(), first.c_str(), length1, second.c_str(), length2, options);
        EXPECT_NE(locale.record.lastError, kUntouchedError);
        EXPECT_TRUE(memory_.allGivenBack());
        return result;
    }

    WorkingMemory memory_;
    HandLocale latin_{latinPage()};
    HandLocale wide_{widePage()};
    HandLocale paired_{latinPage(), {{0xDF, 0, 'S', 'S'}, {'d', 'z', 'D', 0}}};
};

TEST_F(StringComparison, EmptyStringsAreEqual)
{
    for (const std::uint32_t options : {0u, kCase, kWidth, kStrip}) {
        EXPECT_EQ(compare(latin_, "", "", options), 0);
        EXPECT_EQ(compare(wide_, "", "", options), 0);
        EXPECT_EQ(compare(paired_, "", "", options), 0);
    }
}

TEST_F(StringComparison, AnEmptyStringDiffersByTheOtherLength)
{
    for (HandLocale* locale : {&latin_, &wide_, &paired_}) {
        EXPECT_EQ(compare(*locale, "", "abc", 0), -3);
        EXPECT_EQ(compare(*locale, "abc", "", kCase), 3);
    }
}

TEST_F(StringComparison, TheResultIsADifferenceAndNotASign)
{
    for (HandLocale* locale : {&latin_, &wide_}) {
        EXPECT_EQ(compare(*locale, "abc", "abf", 0), 'c' - 'f');
        EXPECT_EQ(compare(*locale, "ab", "abc", 0), -1);
        EXPECT_EQ(compare(*locale, "ab", "abcde", 0), -3);
        EXPECT_EQ(compare(*locale, "a", "\xFF", 0), 'a' - 0xFF) << "bytes have no sign";
    }
}

TEST_F(StringComparison, TheFirstDifferenceCountsWhereverItStands)
{
    const std::string text(300, 'a');
    for (const std::size_t at : {0u, 1u, 7u, 31u, 32u, 33u, 63u, 64u, 255u, 299u}) {
        std::string other = text;
        other[at] = 'c';
        if (at + 1 < other.size())
            other[at + 1] = 'A'; // behind it nothing matters
        EXPECT_EQ(compare(latin_, text, other, 0), -2) << at;
        EXPECT_EQ(compare(latin_, other, text, kCase), 2) << at;
        EXPECT_EQ(compare(wide_, text, other, kCase), -2) << at;
        EXPECT_EQ(compare(wide_, text, other, kWidth), -2) << at;
    }
    EXPECT_EQ(compare(latin_, text, text, 0), 0);
}

TEST_F(StringComparison, EveryKnownBitIsAcceptedAndNoOther)
{
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1) {
        const bool known =
            std::find(std::begin(kKnownBits), std::end(kKnownBits), bit) != std::end(kKnownBits);
        EXPECT_EQ(compare(latin_, "a", "b", bit), known ? -1 : 0) << std::hex << bit;
        EXPECT_EQ(latin_.record.lastError, known ? TS_ERR_NONE : TS_ERR_ARGUMENT);
        EXPECT_EQ(compare(latin_, "a", "b", bit | kWidth), known ? -1 : 0) << std::hex << bit;
    }
    EXPECT_EQ(compare(latin_, "a", "b", kWidth | kStrip | TS_OPT_CHAR_COUNT), -1);
}

TEST_F(StringComparison, OddOptionsTakeTheRouteOfCase)
{
    for (const std::uint32_t options : {0x40u, 0x80000000u, 0x1u, 0x41u, 0x80000001u, kCase}) {
        EXPECT_EQ(compare(latin_, "aB", "Ab", options), 0) << std::hex << options;
        EXPECT_EQ(compare(wide_, "a\x82\x81", "A\x82\x60", options), 0) << std::hex << options;
    }
}

TEST_F(StringComparison, WidthComesBeforeCase)
{
    EXPECT_EQ(compare(wide_, "a", "A", kWidth), 'a' - 'A');
    EXPECT_EQ(compare(wide_, "A1 ", "\x82\x60\x82\x50\x81\x40", kWidth), 0);
    EXPECT_EQ(compare(wide_, "A", "\x82\x60", kCase), -1) << "the lengths differ";
    EXPECT_EQ(compare(latin_, "a", "A", kWidth), 'a' - 'A');
}

TEST_F(StringComparison, WidthComparesWhatIsLeft)
{
    EXPECT_EQ(compare(wide_, "A",
                      "\x82\x60"
                      "bc",
                      kWidth),
              -2);
    EXPECT_EQ(compare(wide_, "\x82\x60\x82\x60", "A", kWidth), 2);
    EXPECT_EQ(compare(wide_, "\x82\x81", "\x81\x99", kWidth), -1)
        << "an image of one byte and one of two";
}

// Deliberate: it ends the comparison with 0 if the other image has the same length.
TEST_F(StringComparison, AnImageLongerThanWhatIsLeftEndsTheWidths)
{
    PageBuilder page = widePage();
    page.mapValue(0x8199, 'x').build();
    Section section = page.sections()[0];
    HandLocale wide(std::move(page));
    // The value of the byte z becomes a character of two bytes, which is what z is half of.
    const std::size_t values = get16(section.data(), 0x110E);
    put32(section, values + 4 * 0x00, 0xFFFFFFFF);
    put32(section, values + 4 * 0x82, 'z');
    wide.page.object().sections[0] = section.data();
    EXPECT_EQ(compare(wide, "z", "zb", kWidth), 0);
    EXPECT_EQ(compare(wide, "zbcd", "zbce", kWidth), -1);
}

// A terminated string that ends inside a character is read up to its terminator and no further.
TEST_F(StringComparison, ACutCharacterOfATerminatedStringHasNoOtherWidth)
{
    for (const PageShape shape :
         {PageShape::kDoubleByte, PageShape::kThreeByte, PageShape::kFourByte}) {
        const auto length = static_cast<std::int32_t>(longestCharacter(shape));
        PageBuilder page(shape);
        page.lead(0xE3, longestCharacter(shape)).lead(0xE4, longestCharacter(shape)).build();
        HandLocale locale(std::move(page));
        GuardedArea area1;
        GuardedArea area2;
        const auto compareAtGuard = [&](const std::vector<char>& first,
                                        const std::vector<char>& second) {
            return TSStrcmp(locale.handle(), area1.place(first, GuardedArea::Guard::kAbove), -1,
                            area2.place(second, GuardedArea::Guard::kAbove), -1, kWidth);
        };
        EXPECT_EQ(compareAtGuard({'\xE3', 0}, {'a', 0}), length - 1);
        EXPECT_EQ(compareAtGuard({'a', 0}, {'\xE4', 0}), 1 - length);
        EXPECT_EQ(compareAtGuard({'\xE3', 0}, {'\xE4', 0}), 0) << "images that do not fit";
        EXPECT_EQ(compareAtGuard({'a', '\xE3', 0}, {'a', '\xE4', 'b', 'c', 'd', 0}), 0);
    }
}

TEST_F(StringComparison, CaseGoesByTheTables)
{
    EXPECT_EQ(compare(latin_, "stra\xE4", "STRA\xC4", kCase), 0);
    EXPECT_EQ(compare(latin_, "b", "A", kCase), 1);
    EXPECT_EQ(compare(latin_, "ab", "A", kCase), 1);
    EXPECT_EQ(compare(latin_, "a", "ABCD", kCase), -3);
    EXPECT_EQ(compare(wide_, "x\x82\x81y", "X\x82\x60Y", kCase), 0);
    EXPECT_EQ(compare(wide_, "x\x82\x81", "X\x82\x50", kCase), 0x60 - 0x50);
    EXPECT_EQ(compare(wide_, "ab", "A\x82\x60", kCase), -1) << "the lengths of the characters";
}

TEST_F(StringComparison, CaseGoesByThePairsOfTheLanguage)
{
    EXPECT_EQ(compare(paired_,
                      "stra\xDF"
                      "e",
                      "STRASSE", kCase),
              0);
    EXPECT_EQ(compare(paired_, "dz", "D", kCase), 0);
    EXPECT_EQ(compare(paired_, "\xDF", "ST", kCase), -1);
    EXPECT_EQ(compare(paired_, "\xDF", "s", kCase), 1) << "the counts of the images";
    EXPECT_EQ(compare(paired_, "\xDF", "SS", 0), 0xDF - 'S');
}

TEST_F(StringComparison, ACharacterThatTheLengthCutsOffDoesNotCount)
{
    for (const std::uint32_t options : {0u, kCase, kWidth}) {
        EXPECT_EQ(compare(wide_, "ab\x82\x81", 3, "ab", 2, options), 0);
        EXPECT_EQ(compare(wide_, "ab\x82\x81", 4, "ab", 2, options), 2);
        EXPECT_EQ(compare(wide_, "\x82\x81", 1, "", 0, options), 0);
    }
    EXPECT_EQ(compare(wide_, "ab\x82", -1, "ab", -1, 0), 1) << "a terminated string counts whole";
}

// Deliberate: of the negative lengths -1 alone is up to the terminator.
TEST_F(StringComparison, OtherNegativeLengthsAreNothing)
{
    for (HandLocale* locale : {&latin_, &wide_})
        for (const std::int32_t length : {-2, -100, INT32_MIN}) {
            EXPECT_EQ(compare(*locale, "abc", length, "", 0, 0), 0);
            EXPECT_EQ(compare(*locale, "abc", length, "ab", -1, kCase), -2);
            EXPECT_EQ(compare(*locale, "abc", length, "ab", 2, TS_OPT_CHAR_COUNT), -2);
        }
}

TEST_F(StringComparison, CountedLengthsAreCharacters)
{
    EXPECT_EQ(compare(wide_,
                      "a\x82\x81"
                      "b",
                      2,
                      "a\x82\x81"
                      "c",
                      2, TS_OPT_CHAR_COUNT),
              0);
    EXPECT_EQ(compare(wide_,
                      "a\x82\x81"
                      "b",
                      3,
                      "a\x82\x81"
                      "c",
                      3, TS_OPT_CHAR_COUNT),
              -1);
    EXPECT_EQ(compare(wide_, "a\x82\x81", 2, "a", 1, TS_OPT_CHAR_COUNT | kCase), 2);
    EXPECT_EQ(compare(wide_, "a\x82\x81", -1, "a\x82\x81", 2, TS_OPT_CHAR_COUNT), 0);
}

TEST_F(StringComparison, TrailingBlanksDoNotCountIfStripped)
{
    for (HandLocale* locale : {&latin_, &wide_, &paired_}) {
        EXPECT_EQ(compare(*locale, "a  ", "a", kStrip), 0);
        EXPECT_EQ(compare(*locale, "a", "a ", kStrip | kCase), 0);
        EXPECT_EQ(compare(*locale, "a  ", "a", 0), 2);
        EXPECT_EQ(compare(*locale, "a  xx", 3, "a", 1, kStrip), 0);
    }
    EXPECT_EQ(compare(latin_, "a b ", "a b", kStrip), 0);
    EXPECT_EQ(compare(wide_, "a bc ", "a bc", kStrip), 0);
    EXPECT_EQ(compare(wide_, "a b", "a", kStrip), 0) << "truncation takes a single last byte, too";
    EXPECT_EQ(compare(wide_, "A\x81\x40", "A", kStrip | kWidth), 0);
    EXPECT_EQ(compare(wide_, "A\x81\x40", "A", kStrip), 2);
}

// Deliberate: the copy that is truncated ends with its first zero.
TEST_F(StringComparison, StrippingEndsATextWithItsFirstZero)
{
    const std::string first("ab\0xy", 5);
    EXPECT_EQ(compare(latin_, first, 5, "ab", 2, 0), 3);
    EXPECT_EQ(compare(latin_, first, 5, "ab", 2, kStrip), 0);
}

TEST_F(StringComparison, ANullLocaleIsTheDefaultOne)
{
    tsDefaultLocale = latin_.handle();
    EXPECT_EQ(TSStrcmp(nullptr, "a", -1, "B", -1, kCase), -1);
    EXPECT_EQ(latin_.record.lastError, TS_ERR_NONE);
    EXPECT_EQ(TSStrcmp(nullptr, "a", -1, "B", -1, 0x2), 0);
    EXPECT_EQ(latin_.record.lastError, TS_ERR_ARGUMENT);
    tsDefaultLocale = nullptr;
}

TEST_F(StringComparison, DumpsWhatItCompares)
{
    Trace::clear();
    Trace::setMask(0x10);
    compare(latin_, "abc ", "ab", kStrip);
    Trace::setMask(0);
    std::vector<std::string> dumps;
    for (const TraceRecord& record : Trace::records())
        if (record.kind == TraceKind::kDump)
            dumps.push_back(record.label + "=" +
                            std::string(record.bytes.begin(), record.bytes.end()));
    EXPECT_EQ(dumps, (std::vector<std::string>{"String1=abc", "String2=ab"}));
    Trace::clear();
}

} // namespace
} // namespace vlx::test
