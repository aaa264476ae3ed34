// The test allocators see what they are there to see.
#include "support/allocator.hpp"

#include <gtest/gtest.h>

#include "support/poison.hpp"

namespace vlx::test {
namespace {

class AllocatorTest : public testing::Test {
  protected:
    AllocatorTest() { Allocator::reset(); }

    // Writes past the sanitizer, as a program without it would.
    static void scribble(std::uint8_t* byte)
    {
        unpoison(byte, 1);
        *byte = 0;
    }
};

TEST_F(AllocatorTest, GivesMemoryThatIsNotZero)
{
    auto* const bytes = static_cast<std::uint8_t*>(Allocator::allocate(0, 100));
    for (int at = 0; at != 100; ++at)
        EXPECT_NE(bytes[at], 0);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(bytes) % 16, 0u);
    EXPECT_NE(Allocator::free(0, bytes), 0);
    EXPECT_TRUE(Allocator::sound());
}

TEST_F(AllocatorTest, BlocksMayGoBackThroughTheOtherPair)
{
    void* const one = Allocator::allocate(0, 10);
    void* const other = Allocator::allocateObject(0, 20);
    EXPECT_EQ(Allocator::liveBlocks(), 2);
    EXPECT_EQ(Allocator::liveBytes(), 30u);
    EXPECT_NE(Allocator::freeObject(0, one), 0);
    EXPECT_NE(Allocator::free(0, other), 0);
    EXPECT_EQ(Allocator::liveBlocks(), 0);
    for (const Slot slot : {Slot::kAllocate, Slot::kFree, Slot::kAllocateObject, Slot::kFreeObject})
        EXPECT_EQ(Allocator::calls(slot), 1u);
    EXPECT_TRUE(Allocator::sound());
}

TEST_F(AllocatorTest, FailsTheOrderedAllocationOnce)
{
    Allocator::failAllocation(2);
    void* const first = Allocator::allocate(0, 1);
    EXPECT_TRUE(Allocator::failurePending());
    EXPECT_EQ(Allocator::allocateObject(0, 1), nullptr);
    EXPECT_FALSE(Allocator::failurePending());
    Allocator::failAllocation(Slot::kAllocateObject, 1);
    void* const second = Allocator::allocate(0, 1);
    EXPECT_EQ(Allocator::allocateObject(0, 1), nullptr);
    void* const third = Allocator::allocateObject(0, 1);
    EXPECT_TRUE(first && second && third);
    for (void* const block : {first, second, third})
        EXPECT_NE(Allocator::free(0, block), 0);
}

TEST_F(AllocatorTest, AFailedFreeKeepsTheBlockOut)
{
    void* const block = Allocator::allocate(0, 1);
    Allocator::failFree(1);
    EXPECT_EQ(Allocator::freeObject(0, block), 0);
    Allocator::failFree(Slot::kFree, 1);
    EXPECT_EQ(Allocator::free(0, block), 0);
    EXPECT_EQ(Allocator::liveBlocks(), 1);
    EXPECT_NE(Allocator::free(0, block), 0);
    EXPECT_TRUE(Allocator::sound());
}

TEST_F(AllocatorTest, SeesWritesOverTheEnds)
{
    auto* const bytes = static_cast<std::uint8_t*>(Allocator::allocate(0, 13));
    scribble(bytes + 13);
    EXPECT_FALSE(Allocator::sound());
    Allocator::reset();
    EXPECT_NE(Allocator::free(0, bytes), 0);
    EXPECT_EQ(Allocator::complaints(), std::vector<std::string>{"a write behind a block of 13"});
    Allocator::reset();
    auto* const more = static_cast<std::uint8_t*>(Allocator::allocate(0, 13));
    scribble(more - 1);
    EXPECT_NE(Allocator::free(0, more), 0);
    EXPECT_EQ(Allocator::complaints(), std::vector<std::string>{"a write before a block of 13"});
}

TEST_F(AllocatorTest, SeesDoubleFreesAndForeignPointers)
{
    void* const block = Allocator::allocate(0, 1);
    EXPECT_NE(Allocator::free(0, block), 0);
    EXPECT_EQ(Allocator::free(0, block), 0);
    int foreign = 0;
    EXPECT_EQ(Allocator::freeObject(0, &foreign), 0);
    EXPECT_EQ(Allocator::complaints(),
              (std::vector<std::string>{"a block freed twice", "a foreign pointer freed"}));
    EXPECT_FALSE(Allocator::sound());
}

TEST_F(AllocatorTest, RemembersTheContext)
{
    void* const block = Allocator::allocate(17, 1);
    EXPECT_EQ(Allocator::lastContext(), 17u);
    EXPECT_TRUE(Allocator::sameContext());
    EXPECT_NE(Allocator::free(18, block), 0);
    EXPECT_EQ(Allocator::lastContext(), 18u);
    EXPECT_FALSE(Allocator::sameContext());
}

} // namespace
} // namespace vlx::test
