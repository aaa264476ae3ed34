// The form harness: a case is written once, in characters, and runs in every form that text has. A
// character of a case is a letter: an upper-case one is longer than a byte wherever the form has
// such characters, any other one is short.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "support/oracle_strings.hpp"
#include "tessera.h"

namespace vlx::test {

using oracle::Units;

// What a call can be told of a text's length.
enum class Length { kExact, kLonger, kTerminated };
inline constexpr Length kLengths[] = {Length::kExact, Length::kLonger, Length::kTerminated};

// A form of text and its members. Texts are given and returned in the form's units; a call gets
// them terminated, `offset` units behind the start of their memory.
class Form {
  public:
    virtual ~Form() = default;
    virtual const char* name() const = 0;

    // A text from state 0, closed and not terminated; the units before its character `index`.
    virtual Units encode(std::string_view text) const = 0;
    virtual std::int32_t positionOf(std::string_view text, std::size_t index) const = 0;

    // The copy and the append return the destination as it is afterwards, with its fill.
    virtual std::int32_t copy(Units& destination, std::int32_t size, const Units& source,
                              std::int32_t length) = 0;
    virtual std::int32_t append(Units& destination, const Units& source, std::int32_t length,
                                std::uint32_t options) = 0;
    virtual std::int32_t find(const Units& string, std::int32_t length, char character,
                              std::uint32_t options) = 0; // -1 if there is none
    virtual std::int32_t span(const Units& string, std::int32_t length, const Units& set,
                              std::int32_t setLength) = 0;
    virtual std::int32_t spanNot(const Units& string, std::int32_t length, const Units& set,
                                 std::int32_t setLength) = 0;
    // All tokens, one call after the other.
    virtual std::vector<Units> tokens(const Units& string, std::int32_t length,
                                      const Units& delimiters, std::int32_t delimiterLength) = 0;

    // The length to tell of a text that has a terminator behind it.
    static std::int32_t lengthOf(const Units& text, Length length);

    std::size_t offset = 0;
};

// Runs a case in every form, at several start offsets, and tells where it failed.
void inEveryForm(const std::function<void(Form& form)>& check);

} // namespace vlx::test
