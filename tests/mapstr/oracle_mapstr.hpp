// String mapping once more, slow and literal: one function for each member, on top of the oracles
// of the character model and of the string operations. Every read and write is checked against the
// memory that the caller gave.
#pragma once

#include <array>

#include "support/oracle_strings.hpp"

namespace vlx::oracle {

// The pairs of a language: first, second, and their results.
struct Language {
    using Pair = std::array<std::uint16_t, 4>;

    std::vector<Pair> upper;
    std::vector<Pair> lower;
};

inline constexpr std::uint32_t kFullWidth = 0x80000021;
inline constexpr std::uint32_t kHalfWidth = 0x80000022;
inline constexpr std::uint32_t kLower = 0x80000024;
inline constexpr std::uint32_t kUpper = 0x80000025;
inline constexpr std::uint32_t kMapDigits = 0x00000010;

// What a mapping reads of a page.
unsigned toLower(const Page& page, unsigned byte);
unsigned toUpper(const Page& page, unsigned byte);
std::uint32_t mapValue(const Page& page, std::uint32_t character); // of one byte, too
std::uint32_t unmapValue(const Page& page, std::uint32_t value);

Outcome mapString(const Locale& locale, const Language& language, Bytes& destination,
                  std::int32_t size, const Text& source, std::uint32_t mapping);
Outcome mapStringEx(const Locale& locale, const Language& language, Bytes& destination,
                    std::int32_t state, std::int32_t size, const Text& source,
                    std::uint32_t mapping);
Outcome mapStringU(const Language& language, Units& destination, std::int32_t size,
                   const Units& source, std::int32_t length, std::uint32_t mapping);
Outcome mapStringW(const Locale& locale, const Language& language, Units& destination,
                   std::int32_t size, const Units& source, std::int32_t length,
                   std::uint32_t mapping);

} // namespace vlx::oracle
