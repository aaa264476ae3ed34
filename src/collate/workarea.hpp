// Memory for the streams or the keys of two strings.
#pragma once

#include <optional>

#include "collate/streams.hpp"
#include "frame/scratch.hpp"

namespace vlx {

class WorkArea {
  public:
    static constexpr std::uint64_t kOnStack = 256;

    // Strings of so many units. Small ones take no memory of the allocator, if that is allowed.
    WorkArea(std::int32_t units1, std::int32_t units2, bool mayUseStack = true)
        : size1_(bytesFor(units1)), size2_(bytesFor(units2))
    {
        const std::uint64_t total = size1_ + size2_;
        if (total <= kOnStack && mayUseStack)
            first_ = stack_;
        else if (total <= INT32_MAX)
            first_ = block_.emplace(total).as<std::uint8_t>();
    }

    // False if there was no memory.
    explicit operator bool() const { return first_ != nullptr; }

    std::uint8_t* first() const { return first_; }
    std::uint8_t* second() const { return first_ + size1_; }
    std::int32_t size1() const { return static_cast<std::int32_t>(size1_); }
    std::int32_t size2() const { return static_cast<std::int32_t>(size2_); }

  private:
    static std::uint64_t bytesFor(std::int32_t units)
    {
        return TSSortStreams::bytesFor(static_cast<std::uint64_t>(units));
    }

    const std::uint64_t size1_;
    const std::uint64_t size2_;
    alignas(8) std::uint8_t stack_[kOnStack];
    std::optional<Scratch> block_;
    std::uint8_t* first_ = nullptr;
};

} // namespace vlx
