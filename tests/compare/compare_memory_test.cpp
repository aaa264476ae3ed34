// Comparison without memory: every allocation fails once, and nothing is lost.
#include <gtest/gtest.h>
#include <vector>

#include "compare/memory.hpp"
#include "mapstr/hand_pages.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kCase = TS_OPT_IGNORE_CASE;
constexpr std::uint32_t kStrip = TS_OPT_STRIP_BLANKS;

constexpr TSChar16 kUnicode1[] = {'a', 'b', 0};
constexpr TSChar16 kUnicode2[] = {'A', 'C', 0};
constexpr TSChar32 kPacked1[] = {'a', 'b', 0};
constexpr TSChar32 kPacked2[] = {'A', 'C', 0};

class ComparisonMemory : public testing::Test {
  protected:
    // Calls with the first allocation failing, then the second, until none does.
    template <class Call>
    void expectFailures(HandLocale& locale, std::uint32_t allocations, Call call)
    {
        for (std::uint32_t n = 1; n <= allocations; ++n) {
            Allocator::reset();
            Allocator::failAllocation(Slot::kAllocate, n);
            EXPECT_EQ(call(locale.handle()), 0) << n;
            EXPECT_EQ(locale.record.lastError, TS_ERR_MEMORY) << n;
            EXPECT_FALSE(Allocator::failurePending()) << n;
            EXPECT_TRUE(memory_.allGivenBack()) << n;
        }
        Allocator::reset();
        Allocator::failAllocation(Slot::kAllocate, allocations + 1);
        EXPECT_EQ(call(locale.handle()), -1);
        EXPECT_EQ(locale.record.lastError, TS_ERR_NONE);
        EXPECT_TRUE(Allocator::failurePending());
        EXPECT_TRUE(memory_.allGivenBack());
        EXPECT_EQ(Allocator::calls(Slot::kAllocate), allocations);
        EXPECT_EQ(Allocator::calls(Slot::kFree), allocations);
    }

    WorkingMemory memory_;
    HandLocale latin_{latinPage()};
    HandLocale paired_{latinPage(), {{0xDF, 0, 'S', 'S'}}};
    HandLocale shifted_{shiftPage(), {{0xDF, 0, 'S', 'S'}}};
};

TEST_F(ComparisonMemory, CaseWithPairsTakesTwoBlocksInEveryMember)
{
    expectFailures(paired_, 2,
                   [](TSLocale* locale) { return TSStrcmp(locale, "ab", -1, "AC", -1, kCase); });
    expectFailures(shifted_, 2, [](TSLocale* locale) {
        return TSStrcmpEx(locale, "ab", 0, -1, "AC", 0, -1, kCase);
    });
    expectFailures(paired_, 2, [](TSLocale* locale) {
        return TSStrcmpU(locale, kUnicode1, -1, kUnicode2, -1, kCase);
    });
    expectFailures(paired_, 2, [](TSLocale* locale) {
        return TSWcscmp(locale, kPacked1, -1, kPacked2, -1, kCase);
    });
}

TEST_F(ComparisonMemory, WithoutPairsNothingIsAllocated)
{
    Allocator::reset();
    EXPECT_EQ(TSStrcmp(latin_.handle(), "ab", -1, "AC", -1, kCase), -1);
    EXPECT_EQ(TSStrcmp(paired_.handle(), "ab", -1, "ac", -1, 0), -1);
    EXPECT_EQ(TSStrcmp(paired_.handle(), "ab", -1, "ac", -1, TS_OPT_IGNORE_WIDTH), -1);
    EXPECT_EQ(TSStrcmpU(latin_.handle(), kUnicode1, -1, kUnicode2, -1, kCase), -1);
    EXPECT_EQ(TSWcscmp(latin_.handle(), kPacked1, -1, kPacked2, -1, kCase), -1);
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), 0u);
}

// Without memory for the copy the blanks stay, and that is no error.
TEST_F(ComparisonMemory, WithoutMemoryTheBlanksStay)
{
    Allocator::reset();
    EXPECT_EQ(TSStrcmp(latin_.handle(), "a  ", -1, "a", -1, kStrip), 0);
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), 1u);
    for (HandLocale* locale : {&latin_, &shifted_}) {
        Allocator::reset();
        Allocator::failAllocation(Slot::kAllocate, 1);
        EXPECT_EQ(TSStrcmpEx(locale->handle(), "a  ", 0, -1, "a", 0, -1, kStrip), 2);
        EXPECT_EQ(locale->record.lastError, TS_ERR_NONE);
        EXPECT_FALSE(Allocator::failurePending());
        EXPECT_TRUE(memory_.allGivenBack());
    }
}

// The bytes that each call of the slot asks for.
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

TEST_F(ComparisonMemory, BlocksHaveTheSizesThatTheTextsNeed)
{
    using Bytes = std::vector<std::uint32_t>;
    tsSlots.allocate = askFor;
    const auto asked = [](auto call) {
        askedBytes().clear();
        call();
        return askedBytes();
    };
    EXPECT_EQ(asked([&] { TSStrcmp(latin_.handle(), "abc ", -1, "ab", -1, kStrip); }), Bytes{5});
    EXPECT_EQ(asked([&] { TSStrcmpEx(shifted_.handle(), "a", 0, -1, "ab ", 0, -1, kStrip); }),
              Bytes{4});
    EXPECT_EQ(asked([&] { TSStrcmp(paired_.handle(), "ab", -1, "abc", -1, kCase); }),
              (Bytes{16, 24}));
    EXPECT_EQ(asked([&] { TSStrcmpEx(shifted_.handle(), "ab", 0, -1, "abc", 0, -1, kCase); }),
              (Bytes{16, 24}));
    EXPECT_EQ(asked([&] { TSStrcmpU(paired_.handle(), kUnicode1, 2, kUnicode2, 1, kCase); }),
              (Bytes{8, 4}));
    EXPECT_EQ(asked([&] { TSWcscmp(paired_.handle(), kPacked1, 2, kPacked2, 1, kCase); }),
              (Bytes{16, 8}));
    EXPECT_TRUE(memory_.allGivenBack());
}

TEST_F(ComparisonMemory, AnEmptyImageGivesZeroAndItsBlocksBack)
{
    HandLocale wide(widePage(), {{0xDF, 0, 'S', 'S'}});
    // What is no whole character for mapping has no image: a lead byte at the end of the string.
    EXPECT_EQ(TSStrcmp(wide.handle(), "\x82", -1, "a", -1, kCase), 0);
    EXPECT_EQ(wide.record.lastError, TS_ERR_NONE);
    EXPECT_TRUE(memory_.allGivenBack());
}

} // namespace
} // namespace vlx::test
