#include "support/allocator.hpp"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <mutex>
#include <set>

#include "support/poison.hpp"

namespace vlx::test {

namespace {

constexpr std::size_t kGuardSize = 32; // keeps the alignment of the block
constexpr std::uint8_t kGuardByte = 0xFD;
constexpr std::uint8_t kFreshByte = 0xCD;
constexpr std::size_t kSlots = 4;

struct Block {
    std::size_t size;
    int era; // a reset begins a new one
};

struct State {
    std::mutex lock;
    int era = 0;
    std::map<void*, Block> blocks;
    std::set<void*> freed; // and not allocated again
    std::array<std::uint32_t, kSlots> calls{};
    std::array<std::uint32_t, kSlots> failing{};
    std::uint32_t failingAllocation = 0;
    std::uint32_t failingFree = 0;
    TSContext firstContext = 0;
    TSContext lastContext = 0;
    bool anyCall = false;
    bool sameContext = true;
    std::vector<std::string> complaints;
};

State& state()
{
    // Never destroyed, since the library may free at the end of the process.
    static State& only = *new State;
    return only;
}

// The state for one call.
struct Locked {
    State& all = state();
    std::lock_guard<std::mutex> guard{all.lock};
};

bool isFree(Slot slot)
{
    return slot == Slot::kFree || slot == Slot::kFreeObject;
}

// Counts down an order; true if it is due.
bool due(std::uint32_t& order)
{
    return order != 0 && --order == 0;
}

// Counts a call; true if it is to fail. Both orders count, whichever of them is due.
bool enter(State& all, Slot slot, TSContext context)
{
    const auto index = static_cast<std::size_t>(slot);
    ++all.calls[index];
    if (!all.anyCall)
        all.firstContext = context;
    all.anyCall = true;
    all.sameContext = all.sameContext && context == all.firstContext;
    all.lastContext = context;
    const bool bySlot = due(all.failing[index]);
    const bool byKind = due(isFree(slot) ? all.failingFree : all.failingAllocation);
    return bySlot || byKind;
}

std::uint8_t* frontOf(void* memory)
{
    return static_cast<std::uint8_t*>(memory) - kGuardSize;
}

void guard(std::uint8_t* bytes)
{
    std::memset(bytes, kGuardByte, kGuardSize);
    poison(bytes, kGuardSize);
}

// The guard stays open if `keep` is false, since the memory goes back.
bool intact(std::uint8_t* bytes, bool keep)
{
    unpoison(bytes, kGuardSize);
    const bool untouched = std::all_of(bytes, bytes + kGuardSize,
                                       [](std::uint8_t byte) { return byte == kGuardByte; });
    if (keep)
        poison(bytes, kGuardSize);
    return untouched;
}

void inspect(State& all, void* memory, const Block& block, bool keep)
{
    if (!intact(frontOf(memory), keep))
        all.complaints.push_back("a write before a block of " + std::to_string(block.size));
    if (!intact(static_cast<std::uint8_t*>(memory) + block.size, keep))
        all.complaints.push_back("a write behind a block of " + std::to_string(block.size));
}

void* allocateThrough(Slot slot, TSContext context, std::uint32_t bytes)
{
    Locked locked;
    State& all = locked.all;
    if (enter(all, slot, context))
        return nullptr;
    auto* const front = static_cast<std::uint8_t*>(::operator new(bytes + 2 * kGuardSize));
    void* const memory = front + kGuardSize;
    guard(front);
    std::memset(memory, kFreshByte, bytes);
    guard(front + kGuardSize + bytes);
    all.blocks[memory] = {bytes, all.era};
    all.freed.erase(memory);
    return memory;
}

std::int32_t freeThrough(Slot slot, TSContext context, void* memory)
{
    Locked locked;
    State& all = locked.all;
    if (enter(all, slot, context))
        return 0;
    if (!memory)
        return 1;
    const auto found = all.blocks.find(memory);
    if (found == all.blocks.end()) {
        all.complaints.push_back(all.freed.contains(memory) ? "a block freed twice"
                                                            : "a foreign pointer freed");
        return 0;
    }
    inspect(all, memory, found->second, false);
    all.blocks.erase(found);
    all.freed.insert(memory);
    ::operator delete(frontOf(memory));
    return 1;
}

} // namespace

void* Allocator::allocate(TSContext context, std::uint32_t bytes)
{
    return allocateThrough(Slot::kAllocate, context, bytes);
}

std::int32_t Allocator::free(TSContext context, void* memory)
{
    return freeThrough(Slot::kFree, context, memory);
}

void* Allocator::allocateObject(TSContext context, std::uint32_t bytes)
{
    return allocateThrough(Slot::kAllocateObject, context, bytes);
}

std::int32_t Allocator::freeObject(TSContext context, void* memory)
{
    return freeThrough(Slot::kFreeObject, context, memory);
}

void Allocator::reset()
{
    Locked locked;
    State& all = locked.all;
    ++all.era;
    all.calls.fill(0);
    all.failing.fill(0);
    all.failingAllocation = 0;
    all.failingFree = 0;
    all.lastContext = 0;
    all.anyCall = false;
    all.sameContext = true;
    all.complaints.clear();
}

void Allocator::failAllocation(std::uint32_t n)
{
    Locked().all.failingAllocation = n;
}

void Allocator::failAllocation(Slot slot, std::uint32_t n)
{
    Locked().all.failing[static_cast<std::size_t>(slot)] = n;
}

void Allocator::failFree(std::uint32_t n)
{
    Locked().all.failingFree = n;
}

void Allocator::failFree(Slot slot, std::uint32_t n)
{
    failAllocation(slot, n);
}

bool Allocator::failurePending()
{
    Locked locked;
    const State& all = locked.all;
    return all.failingAllocation != 0 || all.failingFree != 0 ||
           std::ranges::any_of(all.failing, [](std::uint32_t order) { return order != 0; });
}

int Allocator::liveBlocks()
{
    Locked locked;
    return static_cast<int>(std::ranges::count_if(
        locked.all.blocks, [&](const auto& entry) { return entry.second.era == locked.all.era; }));
}

std::size_t Allocator::liveBytes()
{
    Locked locked;
    std::size_t bytes = 0;
    for (const auto& [memory, block] : locked.all.blocks)
        if (block.era == locked.all.era)
            bytes += block.size;
    return bytes;
}

std::uint32_t Allocator::calls(Slot slot)
{
    return Locked().all.calls[static_cast<std::size_t>(slot)];
}

TSContext Allocator::lastContext()
{
    return Locked().all.lastContext;
}

bool Allocator::sameContext()
{
    return Locked().all.sameContext;
}

std::vector<std::string> Allocator::complaints()
{
    return Locked().all.complaints;
}

bool Allocator::sound()
{
    Locked locked;
    for (const auto& [memory, block] : locked.all.blocks)
        inspect(locked.all, memory, block, true);
    return locked.all.complaints.empty();
}

} // namespace vlx::test
