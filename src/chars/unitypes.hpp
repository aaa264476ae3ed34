// The type word of a Unicode value: class in bits 0 to 9, direction in bits 10 to 21, form in bits
// 22 to 31, with the bits that the public header tells. The table is generated.
#pragma once

#include <cstdint>

#include "chars/unipages.hpp"

namespace vlx {

// Told to be hidden, the tables are addressed directly and not through a table of addresses.
#pragma GCC visibility push(hidden)
extern const std::uint32_t uniTypeWords[]; // every word that there is
extern const std::uint8_t uniTypePages[kUniPages];
extern const std::uint8_t uniTypeBlocks[][kUniBlock]; // indices of words
#pragma GCC visibility pop

inline std::uint32_t uniTypeWord(std::uint16_t value)
{
    return uniTypeWords[uniEntry(uniTypePages, uniTypeBlocks, value)];
}

} // namespace vlx
