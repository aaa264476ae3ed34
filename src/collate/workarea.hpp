// Memory for the streams or the keys of two strings.
#pragma once

#include <optional>

#include "collate/streams.hpp"
#include "frame/scratch.hpp"
#include "host/host.hpp"

namespace vlx {

class WorkArea {
  public:
    static constexpr std::uint64_t kOnStack = 256;

    // Strings of so many units. Small ones take no memory of the allocator, if that is allowed.
    WorkArea(std::int32_t units1, std::int32_t units2, bool mayUseStack = true)
        : size1_(bytesFor(units1)), size2_(bytesFor(units2)),
          usesStack_(size1_ + size2_ <= kOnStack && mayUseStack)
    {
    }

    // Whether nobody can tell if memory was taken that is not needed in the end. Slots of the
    // caller's own see each call, and each failure of theirs has to be told.
    bool canWait() const
    {
        return usesStack_ || (canBeTold() && tsSlots.allocate == host::allocate);
    }

    // Takes the memory; false if there is none.
    bool take()
    {
        if (usesStack_)
            first_ = stack_;
        else if (canBeTold())
            first_ = block_.emplace(size1_ + size2_).as<std::uint8_t>();
        return first_ != nullptr;
    }
    bool isTaken() const { return first_ != nullptr; }

    std::uint8_t* first() const { return first_; }
    std::uint8_t* second() const { return first_ + size1_; }
    std::int32_t size1() const { return static_cast<std::int32_t>(size1_); }
    std::int32_t size2() const { return static_cast<std::int32_t>(size2_); }

  private:
    static std::uint64_t bytesFor(std::int32_t units)
    {
        return TSSortStreams::bytesFor(static_cast<std::uint64_t>(units));
    }

    bool canBeTold() const { return size1_ + size2_ <= INT32_MAX; }

    const std::uint64_t size1_;
    const std::uint64_t size2_;
    const bool usesStack_;
    alignas(8) std::uint8_t stack_[kOnStack];
    std::optional<Scratch> block_;
    std::uint8_t* first_ = nullptr;
};

} // namespace vlx
