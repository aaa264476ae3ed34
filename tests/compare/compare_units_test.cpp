// TSStrcmpU and TSWcscmp.
#include <bit>
#include <gtest/gtest.h>
#include <vector>

#include "compare/memory.hpp"
#include "mapstr/hand_pages.hpp"
#include "support/recording_services.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kCase = TS_OPT_IGNORE_CASE;
constexpr std::uint32_t kWidth = TS_OPT_IGNORE_WIDTH;
constexpr std::uint32_t kStrip = TS_OPT_STRIP_BLANKS;

using Unicode = std::vector<TSChar16>;
using Packed = std::vector<TSChar32>;

class UnitComparison : public testing::Test {
  protected:
    std::int32_t compare(HandLocale& locale, Unicode first, Unicode second, std::uint32_t options,
                         std::int32_t length1 = -1, std::int32_t length2 = -1)
    {
        return run(TSStrcmpU, locale, std::move(first), std::move(second), options, length1,
                   length2);
    }
    std::int32_t packed(HandLocale& locale, Packed first, Packed second, std::uint32_t options,
                        std::int32_t length1 = -1, std::int32_t length2 = -1)
    {
        return run(TSWcscmp, locale, std::move(first), std::move(second), options, length1,
                   length2);
    }

    WorkingMemory memory_;
    HandLocale latin_{latinPage()};
    HandLocale wide_{widePage()};
    HandLocale paired_{widePage(),
                       {{0xDF, 0, 'S', 'S'}, {0x0131, 0, 0x8140, 0}, {'q', 'r', 'Q', 0}}};

  private:
    template <class Member, class Units>
    std::int32_t run(Member member, HandLocale& locale, Units first, Units second,
                     std::uint32_t options, std::int32_t length1, std::int32_t length2)
    {
        first.push_back(0);
        second.push_back(0);
        locale.record.lastError = kUntouchedError;
        const std::int32_t result =
            member(locale.handle(), first.data(), length1, second.data(), length2, options);
        EXPECT_NE(locale.record.lastError, kUntouchedError);
        EXPECT_TRUE(memory_.allGivenBack());
        return result;
    }
};

TEST_F(UnitComparison, LengthsDecideWhereNothingElseDoes)
{
    EXPECT_EQ(compare(latin_, {}, {}, 0), 0);
    EXPECT_EQ(compare(latin_, {}, {'a', 'b', 'c'}, 0), -3);
    EXPECT_EQ(compare(latin_, {'a', 'b', 'c'}, {'a'}, kCase), 2);
    EXPECT_EQ(packed(latin_, {}, {}, 0), 0);
    EXPECT_EQ(packed(latin_, {}, {'a', 'b', 'c'}, kCase), -3);
    EXPECT_EQ(packed(latin_, {'a', 'b', 'c'}, {'a'}, 0), 2);
}

TEST_F(UnitComparison, ExactComparisonGivesTheDifferenceOfTheUnits)
{
    EXPECT_EQ(compare(latin_, {'a', 0x4E00}, {'a', 0x0041}, 0), 0x4E00 - 0x41);
    EXPECT_EQ(compare(latin_, {0xFFFF}, {1}, 0), 0xFFFE) << "units have no sign";
    EXPECT_EQ(packed(latin_, {'a', 0x8140}, {'a', 0x41}, 0), 0x8140 - 0x41);
    EXPECT_EQ(packed(latin_, {0xFFFFFFFF}, {1}, 0), -2) << "but the difference of words has one";
}

TEST_F(UnitComparison, TheFirstDifferenceCountsWhereverItStands)
{
    for (const std::size_t at : {0u, 1u, 7u, 8u, 15u, 16u, 17u, 99u}) {
        Unicode first(100, 'a');
        Packed wide(100, 'a');
        Unicode other = first;
        Packed otherWide = wide;
        other[at] = 'c';
        otherWide[at] = 'c';
        EXPECT_EQ(compare(latin_, first, other, 0), -2) << at;
        EXPECT_EQ(packed(latin_, otherWide, wide, 0), 2) << at;
    }
}

TEST_F(UnitComparison, NegativeLengthsAreUpToTheTerminator)
{
    for (const std::int32_t length : {-1, -2, INT32_MIN}) {
        EXPECT_EQ(compare(latin_, {'a', 'b'}, {'a', 'b', 'c'}, 0, length, 2), 0);
        EXPECT_EQ(packed(latin_, {'a', 'b'}, {'a', 'b', 'c'}, 0, length, 2), 0);
    }
}

TEST_F(UnitComparison, KnownBitsAreAcceptedAndNoOthers)
{
    for (std::uint32_t bit = 1; bit != 0; bit <<= 1) {
        const bool known = (bit & (kWidth | kStrip | TS_OPT_CHAR_COUNT)) != 0;
        EXPECT_EQ(compare(latin_, {'a'}, {'b'}, bit), known ? -1 : 0) << std::hex << bit;
        EXPECT_EQ(latin_.record.lastError, known ? TS_ERR_NONE : TS_ERR_ARGUMENT);
    }
}

TEST_F(UnitComparison, PackedComparisonTakesCaseAloneAndNoWidth)
{
    for (const std::uint32_t options : {0u, kCase, kStrip, kCase | kStrip})
        for (const std::uint32_t counted : {0u, TS_OPT_CHAR_COUNT}) {
            EXPECT_EQ(packed(latin_, {'a'}, {'b'}, options | counted), -1);
            EXPECT_EQ(latin_.record.lastError, TS_ERR_NONE);
        }
    for (const std::uint32_t options : {kWidth, 0x40u, 0x80000000u, 0x1u, 0x2u, kWidth | kStrip}) {
        EXPECT_EQ(packed(latin_, {'a'}, {'b'}, options), 0) << std::hex << options;
        EXPECT_EQ(latin_.record.lastError, TS_ERR_ARGUMENT) << std::hex << options;
    }
}

TEST_F(UnitComparison, WidthAndCaseGiveASign)
{
    EXPECT_EQ(compare(latin_, {0xFF21, 0x3000}, {'A', ' '}, kWidth), 0);
    EXPECT_EQ(compare(latin_, {0xFF21}, {'F'}, kWidth), -1);
    EXPECT_EQ(compare(latin_, {'a'}, {'A'}, kWidth), 1);
    EXPECT_EQ(compare(latin_, {'a', 0xFF, 0x03C2}, {'A', 0x178, 0x03A3}, kCase), 0);
    EXPECT_EQ(compare(latin_, {'a'}, {'F'}, kCase), -1);
    EXPECT_EQ(compare(latin_, {'z'}, {'B'}, 0x40), 1);
    EXPECT_EQ(compare(latin_, {'a', 'b', 'c'}, {'A'}, kCase), 2);
    EXPECT_EQ(packed(wide_, {'a', 0x8281}, {'A', 0x8260}, kCase), 0);
    EXPECT_EQ(packed(wide_, {0x8281}, {0x8250}, kCase), 1);
    EXPECT_EQ(packed(wide_, {'a'}, {0xFFFFFFFF}, kCase), -1);
    EXPECT_EQ(packed(wide_, {'a', 'b', 'c'}, {'A'}, kCase), 2);
}

TEST_F(UnitComparison, CaseGoesByThePairsOfTheLanguage)
{
    EXPECT_EQ(compare(paired_, {'a', 'q', 'r'}, {'A', 'Q', 'R'}, kCase), -1)
        << "the counts of the images";
    EXPECT_EQ(compare(paired_, {0xDF}, {'S', 'T'}, kCase), -1);
    EXPECT_EQ(compare(paired_, {'a', 0xDF}, {'A', 0xDF}, kCase), 0);
    EXPECT_EQ(compare(paired_, {0x4E00, 'b'}, {0x4D00, 'a'}, kCase), 1);
    EXPECT_EQ(compare(paired_, {0x4E05}, {0x4E01}, kCase), 4) << "the difference of the bytes";
    EXPECT_EQ(packed(paired_, {'a', 0x8281}, {'A', 0x8260}, kCase), 0);
    EXPECT_EQ(packed(paired_, {'q', 'r'}, {'Q', 'x'}, kCase), -1);
}

// Deliberate: of equal images of strings that are not equally long the lengths decide.
TEST_F(UnitComparison, EqualImagesOfOtherLengthsAreNotEqual)
{
    EXPECT_EQ(compare(paired_, {0xDF}, {'s', 's'}, kCase), -1);
    EXPECT_EQ(compare(paired_, {'s', 's'}, {0xDF}, kCase), 1);
    EXPECT_EQ(packed(paired_, {'q', 'r'}, {'Q'}, kCase), 1);
}

// Deliberate: the low half of a packed value is compared first.
TEST_F(UnitComparison, TheLowHalfOfAPackedImageCountsFirst)
{
    EXPECT_EQ(packed(paired_, {0x00020001}, {0x00010002}, kCase), -1);
    EXPECT_EQ(packed(wide_, {0x00020001}, {0x00010002}, kCase), 1) << "without pairs it does not";
}

TEST_F(UnitComparison, TheBlankOfUnitsIsTwoStoredBytes)
{
    const TSChar16 blank = std::endian::native == std::endian::little ? 0x2000 : 0x0020;
    EXPECT_EQ(compare(latin_, {'a', blank, blank}, {'a', blank}, kStrip), 0);
    EXPECT_EQ(compare(latin_, {'a', blank}, {'a'}, kStrip), 0);
    EXPECT_EQ(compare(latin_, {'a', blank}, {'a'}, 0), 1);
    if (std::endian::native == std::endian::little) {
        EXPECT_EQ(compare(latin_, {'a', ' '}, {'a'}, kStrip), 1);
    }
}

// Deliberate: a first string of nothing leaves the second one its blanks.
TEST_F(UnitComparison, AStrippedFirstStringLeavesTheSecondOneItsBlanks)
{
    const TSChar16 blank = std::endian::native == std::endian::little ? 0x2000 : 0x0020;
    EXPECT_EQ(compare(latin_, {}, {blank, blank}, kStrip), -2);
    EXPECT_EQ(compare(latin_, {blank}, {blank, blank}, kStrip), -2);
    EXPECT_EQ(compare(latin_, {'a'}, {blank, blank}, kStrip), 1) << "and no further than its start";
}

TEST_F(UnitComparison, TheBlankOfPackedValuesIsThatOfTheFamily)
{
    PageBuilder page(PageShape::kSingleByte);
    page.ebcdic().build();
    HandLocale ebcdic(std::move(page));
    EXPECT_EQ(packed(latin_, {'a', ' ', ' '}, {'a', ' '}, kStrip), 0);
    EXPECT_EQ(packed(latin_, {'a', '@'}, {'a'}, kStrip), 1);
    EXPECT_EQ(packed(ebcdic, {'a', '@', '@'}, {'a'}, kStrip), 0);
    EXPECT_EQ(packed(ebcdic, {'a', ' '}, {'a'}, kStrip), 1);
    EXPECT_EQ(packed(latin_, {' ', ' '}, {}, kStrip), 0);
    EXPECT_EQ(packed(latin_, {}, {' ', ' '}, kStrip), 0) << "each string by itself";
}

TEST_F(UnitComparison, ANullLocaleIsTheDefaultOne)
{
    tsDefaultLocale = latin_.handle();
    EXPECT_EQ(TSStrcmpU(nullptr, Unicode{'a', 0}.data(), 1, Unicode{'B', 0}.data(), 1, kCase), -1);
    EXPECT_EQ(TSWcscmp(nullptr, Packed{'a', 0}.data(), 1, Packed{'B', 0}.data(), 1, kCase), -1);
    tsDefaultLocale = nullptr;
}

TEST_F(UnitComparison, TellsItsStrings)
{
    Trace::clear();
    Trace::setMask(0x10);
    compare(latin_, {'a'}, {'b', 'c'}, kCase);
    EXPECT_TRUE(Trace::printed("options = 80000040"));
    std::vector<std::size_t> sizes;
    for (const TraceRecord& record : Trace::records())
        if (record.kind == TraceKind::kDump)
            sizes.push_back(record.bytes.size());
    EXPECT_EQ(sizes, (std::vector<std::size_t>{2, 4}));
    Trace::setMask(0);
    Trace::clear();
}

} // namespace
} // namespace vlx::test
