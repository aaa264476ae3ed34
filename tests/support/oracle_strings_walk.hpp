// What the rules of the string oracle share: shift bytes, lengths of characters and of texts.
#pragma once

#include "support/oracle_strings.hpp"

namespace vlx::oracle {

inline constexpr std::uint32_t kCharCount = 0x4000;
inline constexpr std::uint32_t kTerminate = 0x0008;
inline constexpr std::uint32_t kLastMatch = 0x80000020;
inline constexpr std::int32_t kBadArgument = 2;

// The string operations compare bytes with shift bytes as unsigned.
bool isShift(const Locale& locale, unsigned byte);
std::int32_t stateBehind(const Locale& locale, unsigned shift);

// The length of every character in a state.
std::ptrdiff_t stepOf(const Locale& locale, std::int32_t state);
std::ptrdiff_t tableLength(const Locale& locale, unsigned byte);

// The bytes before the terminator.
std::ptrdiff_t terminatedLength(Span text);

// A length argument as bytes; a negative one stays.
std::ptrdiff_t lengthInBytes(const Locale& locale, const Text& text, std::uint32_t options);

// The number of bytes and the final state of the whole characters, with the shift bytes between
// them, that a budget lets through.
struct Walk {
    std::ptrdiff_t bytes = 0;
    std::int32_t state = 0;
    bool endsOnShift = false; // a last byte of a character is none, whatever its value
};
Walk wholeCharacters(const Locale& locale, Span text, std::ptrdiff_t budget);
Walk wholeCharactersEx(const Locale& locale, Span text, std::int32_t state, std::ptrdiff_t budget);

// TSMoveStringPointerEx to an offset in bytes, where the byte at the offset may not be read. It
// decides nothing: the walk stops there whatever it is.
Stop moveWithin(const Locale& locale, Span text, std::int32_t state, std::ptrdiff_t offset);

// Writes one byte, or throws StrayRead.
void put(Bytes& memory, std::ptrdiff_t position, unsigned byte);

} // namespace vlx::oracle
