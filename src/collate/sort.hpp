// The content of a sort object: section 1, its only one. It takes a 16-bit Unicode value to one or
// two collation elements of four weights. Offsets count bytes from the first byte of the content;
// the three tables stand in any order behind the header.
//
// Readers search both lists from the front. Lists in strictly ascending order are searched faster,
// and a sort whose elements are all forward is compared faster.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/endian.hpp"

// How the characters of one high byte get their weights.
struct TSSortPage {
    std::uint8_t pageFlags;     // vlx::SortPageFlag bits
    std::uint8_t pageDirection; // of characters whose weight comes by rule, see vlx::forwardBit
    vlx::Le16 pageBase; // by rule: the weight of low byte 0; else the index of its TSSortChar
};
static_assert(sizeof(TSSortPage) == 4 && offsetof(TSSortPage, pageBase) == 2);

struct TSSortData {
    std::uint8_t defaultWeight2; // dropped from the end of the level's run in keys
    std::uint8_t defaultWeight3;
    vlx::Le16 expansionCount;
    vlx::Le16 contractionCount; // 0: no character looks ahead
    TSSortPage sortPages[256];  // by high byte
    vlx::Le16 charTableOffset;
    vlx::Le16 expansionTableOffset;
    vlx::Le16 contractionTableOffset;
};
static_assert(sizeof(TSSortData) == 1036);
static_assert(offsetof(TSSortData, expansionCount) == 2);
static_assert(offsetof(TSSortData, contractionCount) == 4);
static_assert(offsetof(TSSortData, sortPages) == 6);
static_assert(offsetof(TSSortData, charTableOffset) == 1030);
static_assert(offsetof(TSSortData, expansionTableOffset) == 1032);
static_assert(offsetof(TSSortData, contractionTableOffset) == 1034);

// A character of a table page: one element.
struct TSSortChar {
    vlx::Le16 weight1; // of a special character: the level 4 weight
    std::uint8_t weight2;
    std::uint8_t weight3;
    vlx::Le16 sortBits; // see vlx::SortBit; bits 9 to 0 are not read
};
static_assert(sizeof(TSSortChar) == 6 && offsetof(TSSortChar, weight2) == 2);
static_assert(offsetof(TSSortChar, weight3) == 3 && offsetof(TSSortChar, sortBits) == 4);

// The two elements of a character whose TSSortChar has kSortExpansion; its directions stand there.
struct TSSortExpansion {
    vlx::Le16 character;
    vlx::Le16 weight1;
    std::uint8_t weight2;
    std::uint8_t weight3;
    vlx::Le16 secondWeight1;
    std::uint8_t secondWeight2;
    std::uint8_t secondWeight3;
    std::uint8_t reserved[4];
};
static_assert(sizeof(TSSortExpansion) == 14 && offsetof(TSSortExpansion, weight1) == 2);
static_assert(offsetof(TSSortExpansion, weight2) == 4 && offsetof(TSSortExpansion, weight3) == 5);
static_assert(offsetof(TSSortExpansion, secondWeight1) == 6);
static_assert(offsetof(TSSortExpansion, secondWeight2) == 8);
static_assert(offsetof(TSSortExpansion, secondWeight3) == 9);

// The one element of a pair of characters.
struct TSSortContraction {
    vlx::Le16 first;
    vlx::Le16 second;
    vlx::Le16 weight1; // of a special pair: the level 4 weight
    std::uint8_t weight2;
    std::uint8_t weight3;
    vlx::Le16 sortBits; // kSortSpecial and the directions
};
static_assert(sizeof(TSSortContraction) == 10 && offsetof(TSSortContraction, weight1) == 4);
static_assert(offsetof(TSSortContraction, weight2) == 6);
static_assert(offsetof(TSSortContraction, weight3) == 7);
static_assert(offsetof(TSSortContraction, sortBits) == 8);

namespace vlx {

// Bits of TSSortPage::pageFlags, tested in this order. A page with none of them has table records.
enum SortPageFlag : std::uint8_t {
    kPageWithoutWeights = 0x01,
    kPageLevel1 = 0x02, // level 1 weight by rule: pageBase plus the low byte
    kPageLevel4 = 0x04, // level 4 weight by rule
};
inline constexpr std::uint8_t kPageFlags = kPageWithoutWeights | kPageLevel1 | kPageLevel4;

// Bits of `sortBits`, tested in this order.
enum SortBit : std::uint16_t {
    kSortExpansion = 0x4000, // the weights stand in a TSSortExpansion
    kSortSpecial = 0x8000,   // a level 4 weight and no other
};

// Each level of an element has a direction of its own: four bits, level 1 the highest one. A set
// bit is forward.
inline constexpr int kSortLevels = 4;
inline constexpr std::uint8_t kAllForward = 0xF;
inline constexpr int kDirectionShift = 10; // of the directions in `sortBits`

constexpr std::uint8_t forwardBit(int level) // 1 to 4
{
    return static_cast<std::uint8_t>(1 << (kSortLevels - level));
}
constexpr std::uint8_t directionsOf(std::uint16_t sortBits)
{
    return sortBits >> kDirectionShift & kAllForward;
}
constexpr std::uint16_t sortBitsOf(std::uint8_t directions)
{
    return static_cast<std::uint16_t>(directions << kDirectionShift);
}

inline bool isTablePage(const TSSortPage& page)
{
    return (page.pageFlags & kPageFlags) == 0;
}

// What the order of contractions is told by.
inline std::uint32_t contractionKey(const TSSortContraction& contraction)
{
    return std::uint32_t{contraction.first} << 16 | contraction.second;
}

// The tables of a content.
template <class Record>
const Record* sortTable(const TSSortData& data, std::uint16_t offset)
{
    return reinterpret_cast<const Record*>(reinterpret_cast<const std::uint8_t*>(&data) + offset);
}
inline const TSSortChar* sortChars(const TSSortData& data)
{
    return sortTable<TSSortChar>(data, data.charTableOffset);
}
inline const TSSortExpansion* sortExpansions(const TSSortData& data)
{
    return sortTable<TSSortExpansion>(data, data.expansionTableOffset);
}
inline const TSSortContraction* sortContractions(const TSSortData& data)
{
    return sortTable<TSSortContraction>(data, data.contractionTableOffset);
}

} // namespace vlx
