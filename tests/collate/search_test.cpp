// Search.
#include <gtest/gtest.h>

#include "collate/hand_sorts.hpp"
#include "support/recording_services.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kCase = TS_OPT_IGNORE_CASE;
constexpr std::uint32_t kWidth = TS_OPT_IGNORE_WIDTH;
constexpr std::uint32_t kCount = TS_OPT_CHAR_COUNT;
constexpr std::ptrdiff_t kNone = -1;

SortBuilder wideSort()
{
    SortBuilder sort = latinSort();
    sort.letter(0x3000, {0x0111}).letter(0xFF21, {0x3000}).letter(0xFF41, {0x3001});
    sort.letter(0xFF11, {0x3002});
    return sort;
}

class Search : public testing::Test {
  protected:
    // The place of a match, or kNone.
    static std::ptrdiff_t find(SortLocale& locale, const std::string& text,
                               const std::string& sought, std::uint32_t options = 0,
                               std::int32_t length1 = -1, std::int32_t length2 = -1)
    {
        locale.record.lastError = kUntouchedError;
        const char* const found =
            TSStrstr(locale.handle(), text.c_str(), length1, sought.c_str(), length2, options);
        return found ? found - text.c_str() : kNone;
    }

    std::ptrdiff_t findShifted(const std::string& text, std::int32_t state1,
                               const std::string& sought, std::int32_t state2,
                               std::uint32_t options = 0)
    {
        state_ = 77;
        const char* const found = TSStrstrEx(shifted_.handle(), text.c_str(), state1, -1,
                                             sought.c_str(), state2, -1, &state_, options);
        EXPECT_EQ(shifted_.record.lastError, TS_ERR_NONE);
        return found ? found - text.c_str() : kNone;
    }

    WorkingMemory memory_;
    SortLocale latin_{latinPage(), wideSort()};
    SortLocale wide_{widePage(), wideSort()};
    SortLocale shifted_{shiftPage(), wideSort()};
    std::int32_t state_ = 0;
};

TEST_F(Search, AnEmptyPatternIsFoundAtTheStart)
{
    for (SortLocale* locale : {&latin_, &wide_, &shifted_})
        for (const std::uint32_t options : {0u, kCase, kWidth}) {
            EXPECT_EQ(find(*locale, "abc", "", options), 0);
            EXPECT_EQ(find(*locale, "", "", options), 0);
            EXPECT_EQ(locale->record.lastError, TS_ERR_NONE);
        }
    const TSChar16 units[] = {'a', 0};
    const TSChar32 packed[] = {'a', 0};
    EXPECT_EQ(TSStrstrU(latin_.handle(), units, -1, units + 1, -1, kCase), units);
    EXPECT_EQ(TSWcsstr(latin_.handle(), packed, 0, packed, 0, 0), packed);
    EXPECT_EQ(findShifted("\x0E", 0, "", 0), 0);
}

TEST_F(Search, APatternLongerThanTheStringIsNotFound)
{
    for (SortLocale* locale : {&latin_, &wide_, &shifted_})
        for (const std::uint32_t options : {0u, kCase, kWidth}) {
            EXPECT_EQ(find(*locale, "ab", "abc", options), kNone);
            EXPECT_EQ(locale->record.lastError, TS_ERR_NONE);
        }
}

TEST_F(Search, TheFirstPlaceCounts)
{
    for (SortLocale* locale : {&latin_, &wide_}) {
        EXPECT_EQ(find(*locale, "xabab", "ab"), 1);
        EXPECT_EQ(find(*locale, "aab", "ab"), 1);
        EXPECT_EQ(find(*locale, "xyzab", "ab"), 3);
        EXPECT_EQ(find(*locale, "abc", "bd"), kNone);
        EXPECT_EQ(find(*locale, "abcd", "cd", 0, 3), kNone);
    }
    const TSChar16 units[] = {'x', 'a', 'b', 'a', 'b', 0};
    const TSChar32 packed[] = {'x', 'a', 'b', 'a', 'b', 0};
    EXPECT_EQ(TSStrstrU(latin_.handle(), units, -1, units + 3, -1, 0), units + 1);
    EXPECT_EQ(TSWcsstr(latin_.handle(), packed, -1, packed + 3, -1, 0), packed + 1);
}

TEST_F(Search, APatternIsNotFoundInsideACharacter)
{
    SortLocale locale(
        [] {
            PageBuilder page(PageShape::kDoubleByte);
            page.asciiHalf().map(0x8141, 0x3001).map(0x8181, 0x3002).build();
            return page;
        }(),
        wideSort());
    EXPECT_EQ(find(locale, "\x81\x41", "A"), kNone);
    EXPECT_EQ(find(locale,
                   "\x81\x41"
                   "A",
                   "A"),
              2);
    EXPECT_EQ(find(locale, "\x81\x81\x81\x41", "\x81\x41"), 2);
    EXPECT_EQ(find(locale, "a\x81\x81\x81\x81\x81\x41z", "\x81\x81\x41"), kNone);
    const std::string leads(1000, '\x81');
    EXPECT_EQ(find(locale, leads + "\x81\x41", "\x81\x41"), 1000);
    EXPECT_EQ(find(locale, "a" + leads + "\x81\x81\x41", "\x81\x41"), kNone);
    EXPECT_EQ(find(locale, "ab", "\x81"), 0) << "no whole character is found anywhere";
}

TEST_F(Search, CaseInASingleByteLocaleIsAComparisonByCode)
{
    EXPECT_EQ(find(latin_, "xyzAB", "ab", kCase), 3);
    EXPECT_EQ(find(latin_, "stra\xC4", "\xE4", kCase), 4);
    EXPECT_EQ(find(latin_, "xyz", "Q", kCase), kNone);
}

// Deliberate: width is not looked at in a single-byte locale, and case is.
TEST_F(Search, WidthInASingleByteLocaleIgnoresCase)
{
    EXPECT_EQ(find(latin_, "xyzAB", "ab", kWidth), 3);
    EXPECT_EQ(find(latin_, "xyzAB", "ab", kWidth | kCount, 5, 2), 3);
}

// Deliberate: the first character of the string is looked at for every place.
TEST_F(Search, CaseInAMultiByteLocaleLooksAtTheFirstCharacterOfTheString)
{
    EXPECT_EQ(find(wide_, "xAB", "ab", kCase), kNone);
    EXPECT_EQ(find(wide_, "aAB", "ab", kCase), 1);
    EXPECT_EQ(find(wide_, "aXAb", "aB", kCase), 2);
    EXPECT_EQ(find(wide_, "\x82\x81\x82\x60x", "\x82\x60x", kCase), 2);
    EXPECT_EQ(wide_.record.lastError, TS_ERR_NONE);
}

TEST_F(Search, WidthInAMultiByteLocaleIsTriedPlaceByPlace)
{
    EXPECT_EQ(find(wide_, "x1\x82\x60\x82\x50", "A1", kWidth), 2);
    // Deliberate: the comparison cuts the second string to the bytes of the first.
    EXPECT_EQ(find(wide_, "xA1", "\x82\x60\x82\x50", kWidth), kNone);
    EXPECT_EQ(find(wide_, "xA", "A", kWidth), 1);
    EXPECT_EQ(find(wide_, "x\x82\x60", "a", kWidth), kNone) << "case counts";
    EXPECT_EQ(find(wide_, "x\x82\x60z", "A", kWidth | kCount, 3, 1), 1);
    EXPECT_EQ(find(wide_, "x\x82\x60z", "A", kWidth | kCount, 1, 1), kNone);
    EXPECT_EQ(find(wide_, "x\x82\x60z", "A", kWidth | kCount, 3, 0), 0) << "an empty pattern";
}

// Deliberate: but where width is ignored 0 is nothing.
TEST_F(Search, ACountedLengthOfZeroIsTheWholeString)
{
    for (SortLocale* locale : {&latin_, &wide_}) {
        EXPECT_EQ(find(*locale, "xyab", "ab", kCount, 0, 0), 2);
        EXPECT_EQ(find(*locale, "xyab", "ab", kCount, 3, 2), kNone);
        EXPECT_EQ(find(*locale, "xyab", "ab", kCount, 4, 1), 2);
    }
    EXPECT_EQ(find(wide_, "\x82\x81xyab", "ab", kCount, 5, 2), 4);
}

TEST_F(Search, OtherOptionsAreRefused)
{
    const TSChar16 units[] = {'a', 0};
    const TSChar32 packed[] = {'a', 0};
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1) {
        const bool known = (bit & TS_OPT_IGNORE_WIDTH) != 0;
        const auto check = [&](const void* found, std::uint32_t options, bool good) {
            EXPECT_EQ(found != nullptr, good) << std::hex << options;
            EXPECT_EQ(latin_.record.lastError, good ? TS_ERR_NONE : TS_ERR_ARGUMENT) << options;
        };
        check(TSStrstr(latin_.handle(), "a", -1, "a", -1, bit), bit, known || bit == kCount);
        check(TSStrstrU(latin_.handle(), units, -1, units, -1, bit), bit, known);
        check(TSWcsstr(latin_.handle(), packed, -1, packed, -1, bit), bit, known);
    }
}

TEST_F(Search, UnitsAreComparedByCollationPlaceByPlace)
{
    const TSChar16 units[] = {'x', 'A', 'B', 0};
    const TSChar16 sought[] = {'a', 'b', 0};
    EXPECT_EQ(TSStrstrU(latin_.handle(), units, -1, sought, -1, kCase), units + 1);
    EXPECT_EQ(TSStrstrU(latin_.handle(), units, -1, sought, -1, 0), nullptr);
    EXPECT_EQ(latin_.record.lastError, TS_ERR_NONE);
    // Deliberate: stray options fail in the collation, and a failure reads as a match.
    EXPECT_EQ(TSStrstrU(latin_.handle(), units, -1, sought, -1, 0x40), units);
    EXPECT_EQ(latin_.record.lastError, TS_ERR_NONE);
}

// Deliberate: with an option it is the head of the string that is compared.
TEST_F(Search, PackedValuesAreFoundAtTheHeadAlone)
{
    const TSChar32 text[] = {'x', 'A', 'B', 0};
    const TSChar32 sought[] = {'a', 'b', 0};
    EXPECT_EQ(TSWcsstr(latin_.handle(), text, -1, sought, -1, kCase), nullptr);
    EXPECT_EQ(TSWcsstr(latin_.handle(), text + 1, -1, sought, -1, kCase), text + 1);
    EXPECT_EQ(TSWcsstr(latin_.handle(), text + 1, -1, sought, -1, 0), nullptr);
}

TEST_F(Search, AFailedComparisonIsAMatch)
{
    const std::string text = "a" + std::string(40, 'x');
    const std::string sought = "A" + std::string(30, 'y');
    EXPECT_EQ(find(wide_, text, sought, kCase), kNone);
    Allocator::failAllocation(Slot::kAllocate, 1);
    EXPECT_EQ(find(wide_, text, sought, kCase), 0);
    EXPECT_EQ(wide_.record.lastError, TS_ERR_NONE);
    EXPECT_FALSE(Allocator::failurePending());
}

TEST_F(Search, StatefulTextIsSearchedWithItsShiftBytes)
{
    EXPECT_EQ(findShifted("ab\x0E\x42\x81\x42\x60\x0F"
                          "c",
                          0, "\x42\x60", 1),
              5);
    EXPECT_EQ(state_, 1);
    EXPECT_EQ(findShifted("ab\x0E\x42\x81\x0F"
                          "c",
                          0, "c", 0),
              6);
    EXPECT_EQ(state_, 0);
    EXPECT_EQ(findShifted("ab\x0E\x42\x81\x0F"
                          "c",
                          0, "\x0E\x42\x81\x0F", 0),
              3)
        << "without the shift bytes at its ends";
    EXPECT_EQ(findShifted("\x42\x42\x81", 1, "\x42\x81", 1), kNone) << "not inside a character";
    EXPECT_EQ(findShifted("ab", 0, "\x0E\x0F", 0), 0) << "shift bytes alone are nothing";
    // Deliberate: the states are not compared.
    EXPECT_EQ(findShifted("xB\x81", 0, "\x42\x81", 1), 1);
}

TEST_F(Search, AShiftByteAtTheLastPlaceEndsTheSearch)
{
    const char text[] = "ab\x0F"
                        "c";
    for (const std::uint32_t options : {0u, kCase}) {
        EXPECT_EQ(TSStrstrEx(shifted_.handle(), text, 0, 3, "c", 0, 1, &state_, options), nullptr);
        EXPECT_EQ(TSStrstrEx(shifted_.handle(), text, 0, 4, "c", 0, 1, &state_, options), text + 3);
    }
}

TEST_F(Search, StatefulTextIsSearchedByCollation)
{
    EXPECT_EQ(findShifted("xAB", 0, "ab", 0, kCase), 1);
    EXPECT_EQ(findShifted("x\x0E\x42\x60\x0F", 0, "\x0E\x42\x81\x0F", 0, kCase), 2);
    EXPECT_EQ(findShifted("x\x0E\x42\x60\x0F", 0, "A", 0, kWidth), 2);
    EXPECT_EQ(state_, 1);
    EXPECT_EQ(findShifted("xyz", 0, "\x0E\x42\x60", 0, kWidth), kNone);
    EXPECT_EQ(state_, 0);
}

TEST_F(Search, ALocaleWithoutStatesLeavesTheStateAlone)
{
    std::int32_t state = 77;
    EXPECT_NE(TSStrstrEx(wide_.handle(), "ab", 1, -1, "b", 1, -1, &state, 0), nullptr);
    EXPECT_EQ(state, 77);
}

TEST_F(Search, TheLengthsOfWidthAreTraced)
{
    Trace::clear();
    Trace::setMask(0x08);
    findShifted("x\x0E\x42\x60\x0F", 0, "A", 0, kWidth);
    Trace::setMask(0);
    bool told = false;
    for (const TraceRecord& record : Trace::records())
        told = told || record.text == "len1 = 2, len2 = 1";
    EXPECT_TRUE(told);
    Trace::clear();
}

} // namespace
} // namespace vlx::test
