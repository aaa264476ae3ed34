// Two pairs of allocation functions for TSInit that watch their blocks: every block stands between
// guards, is filled with a pattern and never zero, and a chosen call fails.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tessera.h"

namespace vlx::test {

enum class Slot : std::uint8_t { kAllocate, kFree, kAllocateObject, kFreeObject };

struct Allocator {
    // The four functions. A block may come from one pair and go back through the other.
    static void* allocate(TSContext context, std::uint32_t bytes);
    static std::int32_t free(TSContext context, void* memory);
    static void* allocateObject(TSContext context, std::uint32_t bytes);
    static std::int32_t freeObject(TSContext context, void* memory);

    // Forgets counts, complaints and pending failures. Blocks that are out stay valid and can be
    // given back, but aren't counted any more.
    static void reset();

    // The nth allocation from now fails once, of either allocate function or of one of them; 0
    // takes the order back.
    static void failAllocation(std::uint32_t n);
    static void failAllocation(Slot slot, std::uint32_t n);

    // The nth free from now fails once, through either free function or one of them: it answers 0
    // and the block stays out.
    static void failFree(std::uint32_t n);
    static void failFree(Slot slot, std::uint32_t n);

    // True if an ordered failure has not come yet.
    static bool failurePending();

    // Blocks and bytes that are out since the reset, of both pairs together.
    static int liveBlocks();
    static std::size_t liveBytes();

    // Calls of a slot since the reset, failed ones included.
    static std::uint32_t calls(Slot slot);

    // The context word of the last call, and whether all calls since the reset had the same.
    static TSContext lastContext();
    static bool sameContext();

    // What went wrong since the reset: writes over a block's ends, double frees, foreign pointers.
    static std::vector<std::string> complaints();

    // Looks at the guards of all blocks that are out, too; true if nothing ever went wrong.
    static bool sound();
};

} // namespace vlx::test
