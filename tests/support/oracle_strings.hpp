// The string operations once more, slow and literal: copy, append, find, span, tokens and length,
// one function for each rule, on top of the oracle of the character model. Every read and write is
// checked against the memory that the caller gave.
//
// A `Bytes&` is memory that a call may read and write; it begins at the pointer that the call is
// given. 16-bit and 32-bit text are both `Units` here, since their rules are the same.
#pragma once

#include <optional>
#include <ostream>

#include "support/oracle_chars.hpp"

namespace vlx::oracle {

using Units = std::vector<std::uint32_t>;

// A result and the error code that stands in the locale's record afterwards.
struct Outcome {
    std::int32_t result = 0;
    std::int32_t error = 0;

    bool operator==(const Outcome&) const = default;
};

// Where a character was found, and the state stored, if one was.
struct Found {
    std::optional<std::ptrdiff_t> position;
    std::optional<std::int32_t> state;
    std::int32_t error = 0;

    bool operator==(const Found&) const = default;
};

// What a call for a token returns and stores; `size` is the result of TSStrtokEx alone, `token`
// that of the others. Positions count from the string that the call was given.
struct Token {
    std::optional<std::ptrdiff_t> token;
    std::int32_t size = 0;
    std::int32_t length = 0;
    std::optional<std::ptrdiff_t> next;
    std::optional<std::int32_t> nextState;
    std::int32_t error = 0;

    bool operator==(const Token&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Token& token);

// Which characters a span consists of: those in the set, or those that are not.
enum class Members { kIn, kNotIn };

// A text as the Ex members take it; the plain members leave the state 0.
struct Text {
    Span bytes;
    std::int32_t state = 0;
    std::int32_t length = -1;
};

// The bytes of `count` characters of a text that is known to end at `limit`: nothing is read there
// or behind, and a character that is missing counts as one byte.
std::ptrdiff_t charsToBytesWithin(const Page& page, Span text, std::int32_t state,
                                  std::int32_t count, std::ptrdiff_t limit);

Outcome copy(const Locale& locale, Bytes& destination, std::int32_t size, const Text& source,
             std::uint32_t options);
Outcome copyEx(const Locale& locale, Bytes& destination, std::int32_t state, std::int32_t size,
               const Text& source, std::uint32_t options);
Outcome copyUnits(Units& destination, std::int32_t size, const Units& source, std::int32_t length);

Outcome append(const Locale& locale, Bytes& destination, const Text& source, std::uint32_t options);
Outcome appendEx(const Locale& locale, Bytes& destination, std::int32_t state, const Text& source,
                 std::uint32_t options);
Outcome appendUnits(Units& destination, const Units& source, std::int32_t length,
                    std::uint32_t options);

Found find(const Locale& locale, const Text& string, Span character, std::uint32_t options);
Found findEx(const Locale& locale, const Text& string, Span character, std::int32_t characterState,
             std::uint32_t options);
Found findUnits(const Units& string, std::int32_t length, std::uint32_t value,
                std::uint32_t options);

Outcome span(const Locale& locale, Members members, const Text& string, const Text& set,
             std::uint32_t options);
Outcome spanEx(const Locale& locale, Members members, const Text& string, const Text& set,
               std::uint32_t options);
Outcome spanUnits(Members members, const Units& string, std::int32_t length, const Units& set,
                  std::int32_t setLength);

// A null string has no bytes to give: `string` is null then.
Token token(const Locale& locale, Bytes* string, std::int32_t length, const Text& delimiters,
            std::uint32_t options);
Token tokenEx(const Locale& locale, Bytes& buffer, std::int32_t bufferState, std::int32_t size,
              const Text* string, const Text& delimiters, std::uint32_t options);
Token tokenUnits(Units* string, std::int32_t length, const Units& delimiters,
                 std::int32_t delimiterLength);

std::int32_t lengthUnits(const Units& string);

} // namespace vlx::oracle
