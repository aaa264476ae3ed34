// The characters that the library itself writes and expects in numbers, money and times.
#pragma once

#include <cstdint>
#include <type_traits>

#include "chars/codepage.hpp"
#include "locale/locale.hpp"

namespace vlx {

struct Signs {
    std::uint8_t zero;
    std::uint8_t plus;
    std::uint8_t minus;
    std::uint8_t blank;
    std::uint8_t open; // parentheses
    std::uint8_t close;
    std::uint8_t listSeparator; // of group sizes
    std::uint8_t mark;          // of a directive in a time pattern
};

inline constexpr Signs kAsciiSigns{0x30, 0x2B, 0x2D, 0x20, 0x28, 0x29, 0x3B, 0x25};
inline constexpr Signs kEbcdicSigns{0xF0, 0x4E, 0x60, 0x40, 0x4D, 0x5D, 0x5E, 0x6C};

inline bool isAsciiBased(const TSLocale& locale)
{
    return (tsCodePage(locale.codePage).cpFlags & kAsciiFamily) != 0;
}

inline const Signs& signsOf(const TSLocale& locale)
{
    return isAsciiBased(locale) ? kAsciiSigns : kEbcdicSigns;
}

// A unit as a number that is not negative.
template <class Unit>
constexpr std::uint32_t valueOf(Unit unit)
{
    return static_cast<std::make_unsigned_t<Unit>>(unit);
}

} // namespace vlx
