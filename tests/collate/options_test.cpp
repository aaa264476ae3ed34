// Options of the comparison, blanks at the end, and working memory.
#include <gtest/gtest.h>

#include "collate/hand_sorts.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kCase = TS_OPT_IGNORE_CASE;
constexpr std::uint32_t kWidth = TS_OPT_IGNORE_WIDTH;
constexpr std::uint32_t kStrip = TS_OPT_STRIP_BLANKS;

SortBuilder wideSort()
{
    SortBuilder sort = latinSort();
    sort.letter(0x3000, {0x0111}).letter(0xFF21, {0x3000}).letter(0xFF41, {0x3001});
    sort.letter(0xFF11, {0x3002}).letter(0x2000, {0x0112});
    return sort;
}

class CollationOptions : public testing::Test {
  protected:
    std::int32_t compare(SortLocale& locale, const std::string& first, const std::string& second,
                         std::uint32_t options)
    {
        locale.record.lastError = kUntouchedError;
        const std::int32_t result =
            TSStrcoll(locale.handle(), first.c_str(), -1, second.c_str(), -1, options);
        EXPECT_TRUE(memory_.allGivenBack());
        return result;
    }

    WorkingMemory memory_;
    SortLocale latin_{latinPage(), wideSort()};
    SortLocale wide_{widePage(), wideSort()};
    SortLocale shifted_{shiftPage(), wideSort()};
    SortLocale paired_{latinPage(), wideSort(), {{0xDF, 0, 'S', 'S'}, {'d', 'z', 'D', 0}}};
};

TEST_F(CollationOptions, CaseIsIgnoredByKeysOfUpperCase)
{
    EXPECT_EQ(compare(latin_, "stra\xE4", "STRA\xC4", kCase), 0);
    EXPECT_EQ(compare(latin_, "B", "a", kCase), 0x10) << "the bytes of the weights";
    EXPECT_EQ(compare(latin_, "a", "Ab", kCase), -0x02) << "the separator and the next weight";
    EXPECT_EQ(compare(wide_, "x\x82\x81", "X\x82\x60", kCase), 0);
    EXPECT_EQ(latin_.record.lastError, kUntouchedError);
}

TEST_F(CollationOptions, CaseGoesByThePairsOfTheLanguage)
{
    EXPECT_EQ(compare(paired_,
                      "stra\xDF"
                      "e",
                      "STRASSE", kCase),
              0);
    EXPECT_EQ(compare(paired_, "dz", "D", kCase), 0);
    EXPECT_EQ(compare(paired_, "\xDF\xDF\xDF\xDF", "SSSSSSSS", kCase), 0)
        << "the keys are longer than the strings";
}

TEST_F(CollationOptions, WidthIsIgnoredByKeysOfHalfWidth)
{
    EXPECT_EQ(compare(wide_, "\x82\x60\x82\x50", "A1", kWidth), 0);
    EXPECT_NE(compare(wide_, "\x82\x60\x82\x50", "A1", 0), 0);
    EXPECT_GT(compare(wide_, "\x82\x60", "a", kWidth), 0) << "case still counts";
    EXPECT_LT(compare(latin_, "a", "A", kWidth), 0);
}

TEST_F(CollationOptions, WidthTakesTheBlanksOffBytes)
{
    for (SortLocale* locale : {&latin_, &wide_}) {
        EXPECT_EQ(compare(*locale, "ab  ", "ab", kWidth), 0);
        EXPECT_EQ(locale->record.lastError, TS_ERR_NONE) << "truncation clears it";
        EXPECT_EQ(compare(*locale, "ab", "ab  ", kWidth | kStrip), 0);
        EXPECT_LT(compare(*locale, "ab  ", "ac", kWidth | kStrip), 0) << "nobody refuses them";
        EXPECT_EQ(locale->record.lastError, TS_ERR_NONE);
        EXPECT_NE(compare(*locale, "ab  ", "ab", kCase), 0);
    }
    EXPECT_EQ(compare(wide_, "AB\x81\x40\x81\x40", "AB", kWidth), 0);
}

// Deliberate: no more is copied of the second string than is left of the first one.
TEST_F(CollationOptions, TheSecondStringIsCutToTheLengthOfTheFirst)
{
    EXPECT_EQ(compare(latin_, "ab", "abcd", kWidth), 0);
    EXPECT_EQ(compare(latin_, "ab   ", "abcd", kWidth), 0);
    EXPECT_NE(compare(latin_, "abcd", "ab", kWidth), 0);
    EXPECT_EQ(compare(latin_, "", "abcd", kWidth), 0);
    EXPECT_GT(compare(wide_, "A1", "\x82\x60\x82\x50", kWidth), 0) << "in bytes";
}

// Deliberate: blanks are asked for by the bit of width, and keys do not know the other option.
TEST_F(CollationOptions, StripBlanksAloneIsRefusedForBytes)
{
    for (const std::uint32_t options : {kStrip, kStrip | kCase}) {
        EXPECT_EQ(compare(latin_, "a ", "b", options), 0);
        EXPECT_EQ(latin_.record.lastError, TS_ERR_ARGUMENT);
    }
}

TEST_F(CollationOptions, StripBlanksIsRefusedForStatefulText)
{
    shifted_.record.lastError = kUntouchedError;
    EXPECT_EQ(TSStrcollEx(shifted_.handle(), "a ", 0, -1, "b", 0, -1, kWidth | kStrip), 0);
    EXPECT_EQ(shifted_.record.lastError, TS_ERR_ARGUMENT);
    EXPECT_EQ(TSStrcollEx(shifted_.handle(), "a  ", 0, -1, "a", 0, -1, kWidth), 0)
        << "the blanks of width go all the same";
    EXPECT_LT(TSStrcollEx(shifted_.handle(), "aa", 0, -1, "ab", 0, -1, kWidth), 0);
}

// Deliberate: an empty text that begins in the multi-byte state gets a shift byte, and that counts
// where the second text is cut to the length of the first.
TEST_F(CollationOptions, AnEmptyShiftedTextLeavesAByteOfTheSecond)
{
    const auto compare = [&](std::int32_t state1, const char* second, std::int32_t state2) {
        const std::int32_t result =
            TSStrcollEx(shifted_.handle(), "", state1, -1, second, state2, -1, kWidth);
        EXPECT_EQ(shifted_.record.lastError, TS_ERR_NONE);
        return result;
    };
    EXPECT_EQ(compare(0, "b", 0), 0);
    EXPECT_LT(compare(1, "b", 0), 0);
    EXPECT_EQ(compare(1, "\x0E\x42\x60", 0), 0) << "no whole character";
    EXPECT_EQ(compare(1, "", 1), 0);
}

TEST_F(CollationOptions, UnknownOptionsAreRefused)
{
    const TSChar16 units[] = {'a', 'b', 0};
    const TSChar32 packed[] = {'a', 'b', 0};
    for (const std::uint32_t options : {0x2u, 0x40u, 0x80000000u, 0x80u, 0x10u}) {
        EXPECT_EQ(compare(latin_, "a", "b", options), 0) << std::hex << options;
        EXPECT_EQ(latin_.record.lastError, TS_ERR_ARGUMENT);
        latin_.record.lastError = kUntouchedError;
        EXPECT_EQ(TSStrcollU(latin_.handle(), units, 1, units + 1, 1, options), 0);
        EXPECT_EQ(latin_.record.lastError, TS_ERR_ARGUMENT);
        latin_.record.lastError = kUntouchedError;
        EXPECT_EQ(TSWcscoll(latin_.handle(), packed, 1, packed + 1, 1, options), 0);
        EXPECT_EQ(latin_.record.lastError, TS_ERR_ARGUMENT);
    }
}

TEST_F(CollationOptions, UnitsLoseTheBlankAsItIsStored)
{
    const TSChar16 stored[] = {'a', 0x2000, 0x2000};
    const TSChar16 blank[] = {'a', 0x20};
    EXPECT_EQ(TSStrcollU(latin_.handle(), stored, 3, stored, 1, kStrip), 0);
    EXPECT_EQ(TSStrcollU(latin_.handle(), blank, 2, blank, 1, kStrip), 1);
    EXPECT_EQ(TSStrcollU(latin_.handle(), stored, 3, stored, 1, 0), 1);
}

// Deliberate: the blank is its own wide form, so that every character counts as one.
TEST_F(CollationOptions, UnitsOfAnyWidthAreStrippedToNothing)
{
    const TSChar16 first[] = {'a', 'b'};
    EXPECT_EQ(TSStrcollU(latin_.handle(), first, 1, first + 1, 1, kStrip | kWidth), 0);
    EXPECT_EQ(latin_.record.lastError, TS_ERR_NONE);
    EXPECT_NE(TSStrcollU(latin_.handle(), first, 1, first + 1, 1, kWidth), 0);
}

TEST_F(CollationOptions, PackedValuesLoseTheBlankOfTheirFamily)
{
    const TSChar32 blanks[] = {'a', 0x20, 0x20};
    EXPECT_EQ(TSWcscoll(latin_.handle(), blanks, 3, blanks, 1, kStrip), 0);
    EXPECT_EQ(TSWcscoll(latin_.handle(), blanks, 3, blanks, 1, 0), 1);
    // With two blanks, a value that is not the wide one goes, too.
    const TSChar32 wide[] = {'a', 0x8140, 'b'};
    EXPECT_EQ(TSWcscoll(wide_.handle(), wide, 3, wide, 2, kStrip | kWidth), 0);
    const TSChar32 letters[] = {'a', 'b'};
    EXPECT_EQ(TSWcscoll(wide_.handle(), letters, 1, letters + 1, 1, kStrip | kWidth), 0);
}

TEST_F(CollationOptions, ShortStringsNeedNoMemory)
{
    const TSChar16 units[16] = {'a'};
    const TSChar32 packed[16] = {'a'};
    const std::string text(16, 'a');
    for (const std::int32_t length : {7, 8}) {
        Allocator::reset();
        TSStrcoll(latin_.handle(), text.data(), length, text.data(), 8, 0);
        TSStrcollEx(shifted_.handle(), text.data(), 0, length, text.data(), 0, 8, 0);
        TSStrcollU(latin_.handle(), units, length, units, 8, 0);
        EXPECT_EQ(Allocator::calls(Slot::kAllocate), length == 7 ? 0u : 3u);
    }
    Allocator::reset();
    TSWcscoll(latin_.handle(), packed, 0, packed, 0, 0);
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), 1u) << "packed text always takes memory";
    EXPECT_TRUE(memory_.allGivenBack());
}

// A comparison with its first allocation failing, then its second, until none does.
template <class Call>
void expectFailures(const WorkingMemory& memory, SortLocale& locale, std::uint32_t allocations,
                    Call call)
{
    for (std::uint32_t n = 1; n <= allocations; ++n) {
        Allocator::reset();
        Allocator::failAllocation(Slot::kAllocate, n);
        EXPECT_EQ(call(locale.handle()), 0) << n;
        EXPECT_EQ(locale.record.lastError, TS_ERR_MEMORY) << n;
        EXPECT_TRUE(memory.allGivenBack()) << n;
    }
    Allocator::reset();
    EXPECT_LT(call(locale.handle()), 0);
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), allocations);
    EXPECT_TRUE(memory.allGivenBack());
}

TEST_F(CollationOptions, WithoutMemoryStringsReadAsEqual)
{
    const std::string first(20, 'a');
    const std::string second(20, 'b');
    const auto units1 = SortedLatin::unitsOf<TSChar16>(first);
    const auto units2 = SortedLatin::unitsOf<TSChar16>(second);
    const auto packed1 = SortedLatin::unitsOf<TSChar32>(first);
    const auto packed2 = SortedLatin::unitsOf<TSChar32>(second);
    for (const std::uint32_t options : {0u, kCase}) {
        const std::uint32_t allocations = options == 0 ? 1 : 3;
        expectFailures(memory_, latin_, allocations, [&](TSLocale* locale) {
            return TSStrcoll(locale, first.c_str(), -1, second.c_str(), -1, options);
        });
        expectFailures(memory_, shifted_, allocations, [&](TSLocale* locale) {
            return TSStrcollEx(locale, first.c_str(), 0, -1, second.c_str(), 0, -1, options);
        });
        expectFailures(memory_, latin_, allocations, [&](TSLocale* locale) {
            return TSStrcollU(locale, units1.data(), -1, units2.data(), -1, options);
        });
        expectFailures(memory_, latin_, allocations, [&](TSLocale* locale) {
            return TSWcscoll(locale, packed1.data(), -1, packed2.data(), -1, options);
        });
    }
}

TEST_F(CollationOptions, WithoutMemoryForACopyTheBlanksStay)
{
    const std::string first = std::string(256, 'a') + "  ";
    const std::string second(256, 'a');
    EXPECT_EQ(compare(latin_, first, second, kWidth), 0);
    Allocator::failAllocation(Slot::kAllocate, 1);
    EXPECT_GT(compare(latin_, first, second, kWidth), 0);
    EXPECT_EQ(latin_.record.lastError, kUntouchedError);
    EXPECT_FALSE(Allocator::failurePending());
}

TEST_F(CollationOptions, CopiesOfShortStringsTakeNoMemory)
{
    const std::string text(300, 'a');
    const auto callsOf = [&](std::int32_t length) {
        Allocator::reset();
        EXPECT_GT(TSStrcoll(latin_.handle(), text.data(), length, text.data(), 1, kWidth), 0);
        return Allocator::calls(Slot::kAllocate);
    };
    const auto callsOfEx = [&](std::int32_t length) {
        Allocator::reset();
        EXPECT_GT(TSStrcollEx(shifted_.handle(), text.data(), 0, length, text.data(), 0, 1, kWidth),
                  1);
        return Allocator::calls(Slot::kAllocate);
    };
    EXPECT_EQ(callsOf(256), callsOf(255) + 1);
    EXPECT_EQ(callsOf(257), callsOf(256));
    EXPECT_EQ(callsOfEx(256), callsOfEx(255)) << "a byte more than without states";
    EXPECT_EQ(callsOfEx(257), callsOfEx(256) + 1);
}

std::vector<std::uint32_t>& askedBytes()
{
    static std::vector<std::uint32_t> asked;
    return asked;
}

void* askFor(TSContext context, std::uint32_t bytes)
{
    askedBytes().push_back(bytes);
    return Allocator::allocate(context, bytes);
}

TEST_F(CollationOptions, BlocksHaveTheSizesThatTheTextsNeed)
{
    using Bytes = std::vector<std::uint32_t>;
    tsSlots.allocate = askFor;
    const std::string text(300, 'a');
    const TSChar16 units[16] = {'a'};
    const TSChar32 packed[16] = {'a'};
    const auto asked = [](auto call) {
        askedBytes().clear();
        call();
        return askedBytes();
    };
    EXPECT_EQ(asked([&] { TSStrcoll(latin_.handle(), text.data(), 9, text.data(), 7, 0); }),
              Bytes{148 + 116});
    EXPECT_EQ(asked([&] { TSStrcollU(latin_.handle(), units, 9, units, 7, 0); }), Bytes{148 + 116});
    EXPECT_EQ(asked([&] { TSWcscoll(latin_.handle(), packed, 1, packed, 0, 0); }), Bytes{20 + 4});
    EXPECT_EQ(asked([&] { TSStrcoll(latin_.handle(), text.data(), 9, text.data(), 7, kCase); }),
              (Bytes{148 + 116, 36, 28}))
        << "the streams of a key are built where it goes";
    EXPECT_EQ(asked([&] { TSStrcoll(latin_.handle(), text.data(), 260, text.data(), 1, kWidth); }),
              (Bytes{261, 4164 + 20, 1040, 4}))
        << "the copy without its blanks";
    EXPECT_TRUE(memory_.allGivenBack());
}

TEST_F(CollationOptions, ANeedBeyondWhatCanBeToldIsNoMemory)
{
    latin_.record.lastError = kUntouchedError;
    // The length is a lie, but nothing is read before the memory is there.
    EXPECT_EQ(TSStrcoll(latin_.handle(), "a", 0x08000000, "b", 1, 0), 0);
    EXPECT_EQ(latin_.record.lastError, TS_ERR_MEMORY);
    latin_.record.lastError = kUntouchedError;
    char key[4];
    EXPECT_EQ(TSStrxfrm(latin_.handle(), key, sizeof key, "a", 0x7FFFFFFF, 0), -1);
    EXPECT_EQ(latin_.record.lastError, TS_ERR_MEMORY);
}

} // namespace
} // namespace vlx::test
