// Sections 3 and 4 of a code page object: the arrays that take Unicode to the code page, and the
// entries that lead there.
#pragma once

#include <array>
#include <cstdint>
#include <map>

#include "chars/cpfile.hpp"
#include "codepage_source.hpp"

namespace vlx::data {

struct UnicodePages {
    std::array<TSUnicodePage, 256> entries;
    Bytes section3;
    Bytes section4;
};

// Lays out the pages tightly. Where section 3 would pass its limit, some pages are parted between
// both sections; the sections can still be too large afterwards.
UnicodePages layOutPages(const std::map<std::uint16_t, Packed>& encode, std::uint8_t substitution,
                         int maxBytes);

} // namespace vlx::data
