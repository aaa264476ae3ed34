// The allocator slots of a call, without the start of the library.
#pragma once

#include "frame/globals.hpp"
#include "support/allocator.hpp"

namespace vlx::test {

class WorkingMemory {
  public:
    // With `fails` there is none.
    explicit WorkingMemory(bool fails = false) : globals_(tsGlobals), slots_(tsSlots), fails_(fails)
    {
        Allocator::reset();
        tsGlobals = &own_;
        tsSlots = {fails ? nothing : Allocator::allocate, Allocator::free,
                   Allocator::allocateObject, Allocator::freeObject};
    }
    ~WorkingMemory()
    {
        tsGlobals = globals_;
        tsSlots = slots_;
    }
    WorkingMemory(const WorkingMemory&) = delete;
    WorkingMemory& operator=(const WorkingMemory&) = delete;

    bool fails() const { return fails_; }
    bool allGivenBack() const { return Allocator::liveBlocks() == 0 && Allocator::sound(); }

  private:
    static void* nothing(TSContext, std::uint32_t) { return nullptr; }

    TSGlobals own_{};
    TSGlobals* const globals_;
    const TSSlots slots_;
    const bool fails_;
};

} // namespace vlx::test
