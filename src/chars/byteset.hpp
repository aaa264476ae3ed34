// Sets of bytes that are looked up sixteen at a time, on processors that can.
#pragma once

#include <cstdint>

#include "tessera.h"

namespace vlx {

// A set of bytes by their halves: which upper halves a byte with some lower half has.
class ByteSet {
  public:
    // `has` tells of each byte whether it is in the set.
    explicit ByteSet(const bool (&has)[0x100]);

    // From this length on making a set is worth it.
    static constexpr std::int32_t kWorthIt = 512;

    // The units at the start of a text that are in the set, as far as whole blocks of them are;
    // 0 where the processor cannot. Values above 0xFF are in no set.
    std::int32_t blocksIn(const std::uint8_t* bytes, std::int32_t length) const;
    std::int32_t blocksIn(const TSChar16* units, std::int32_t length) const;

  private:
    static constexpr int kRows = 16;

    std::uint8_t below_[kRows] = {}; // of bytes below 0x80, by their lower halves
    std::uint8_t above_[kRows] = {}; // of the others
};

} // namespace vlx
