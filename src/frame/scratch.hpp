// Working memory of a call, from the allocator slots and back to them at the end of its block.
#pragma once

#include <cstdint>

#include "frame/globals.hpp"

namespace vlx {

class Scratch {
  public:
    // Sizes are worked out in 64 bits; one that the slots cannot take is as good as no memory.
    explicit Scratch(std::uint64_t bytes)
        : memory_(bytes <= UINT32_MAX ? allocate(static_cast<std::uint32_t>(bytes)) : nullptr)
    {
    }
    ~Scratch()
    {
        if (memory_)
            release(memory_);
    }
    Scratch(const Scratch&) = delete;
    Scratch& operator=(const Scratch&) = delete;

    // False if there was no memory.
    explicit operator bool() const { return memory_ != nullptr; }

    template <class Unit>
    Unit* as() const
    {
        return static_cast<Unit*>(memory_);
    }

  private:
    void* const memory_;
};

} // namespace vlx
