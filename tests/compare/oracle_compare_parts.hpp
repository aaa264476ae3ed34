// What the rules of the comparison oracle share.
#pragma once

#include <algorithm>

#include "compare/oracle_compare.hpp"
#include "mapstr/oracle_mapstr_parts.hpp"
#include "mapstr/oracle_truncate.hpp"

namespace vlx::oracle {

inline constexpr std::uint32_t kStripBlanks = 0x00200000;
inline constexpr std::uint32_t kIgnoreWidth = 0x80000041;
inline constexpr std::uint32_t kRefused = 0x7FDFBFBE;
inline constexpr std::uint32_t kTruncateBlanks = 0x800000;
inline constexpr std::int32_t kNoMemory = 20;

// A string with its length in bytes; positions count from its first byte.
struct Side {
    Span bytes;
    std::int32_t length = 0;
    std::int32_t state = 0;
    std::int32_t known = 0; // bytes that are there, whatever the length becomes
};

using Area = std::array<unsigned char, 4>;

inline Area areaOf(const Bytes& bytes)
{
    Area area{};
    std::copy_n(bytes.begin(), std::min<std::size_t>(bytes.size(), area.size()), area.begin());
    return area;
}

inline std::int32_t compareAreas(const Area& first, const Area& second)
{
    for (std::size_t i = 0; i < first.size(); ++i)
        if (first[i] != second[i])
            return first[i] - second[i];
    return 0;
}

inline std::int32_t compareBytes(Span first, Span second, std::int32_t count)
{
    for (std::int32_t i = 0; i < count; ++i)
        if (first.at(i) != second.at(i))
            return static_cast<std::int32_t>(first.at(i)) - static_cast<std::int32_t>(second.at(i));
    return 0;
}

inline bool ignoresWidth(std::uint32_t options)
{
    return (options & kIgnoreWidth) == kIgnoreWidth;
}

// A copy of a string with a zero behind it, and room for a shift byte.
inline Bytes terminatedCopy(const Side& side)
{
    Bytes copy;
    for (std::int32_t i = 0; i < side.length; ++i)
        copy.push_back(static_cast<unsigned char>(side.bytes.at(i)));
    copy.push_back(0);
    copy.push_back(0);
    return copy;
}

inline std::uint32_t truncation(std::uint32_t options)
{
    return kTruncateBlanks | (ignoresWidth(options) ? kIgnoreWidth : 0);
}

inline void step(Side& side, std::int32_t count)
{
    side.bytes = side.bytes.from(count);
    side.length -= count;
    side.known -= count;
}

// What two images in upper case give, each in a block of eight times the string's length.
template <class Map>
std::int32_t compareImages(const Side& first, const Side& second, Map map)
{
    Bytes one(static_cast<std::size_t>(first.length) * 8);
    Bytes two(static_cast<std::size_t>(second.length) * 8);
    const std::int32_t k1 = map(one, first);
    const std::int32_t k2 = map(two, second);
    if (k1 <= 0 || k2 <= 0)
        return 0;
    const std::int32_t result = compareBytes(Span(one), Span(two), std::min(k1, k2));
    return result != 0 ? result : k1 - k2;
}

} // namespace vlx::oracle
