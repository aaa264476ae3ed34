// How a table over all 16-bit Unicode values is kept: pages of 64 values, and a block of 64 entries
// for each page; pages with equal entries share a block. A look-up is two dependent loads, and what
// a text needs of a table fits into a few cache lines.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vlx {

inline constexpr int kUniBlockBits = 6;
inline constexpr std::size_t kUniBlock = std::size_t{1} << kUniBlockBits;
inline constexpr std::size_t kUniPages = 0x10000 >> kUniBlockBits;

template <class Entry>
Entry uniEntry(const std::uint8_t (&pages)[kUniPages], const Entry (*blocks)[kUniBlock],
               std::uint16_t value)
{
    const std::size_t index = value; // wide, so that no instruction is spent on its size
    return blocks[pages[index >> kUniBlockBits]][index % kUniBlock];
}

} // namespace vlx
