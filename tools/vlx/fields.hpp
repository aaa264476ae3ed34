// Fields of a line, and the pieces that positions in them cut out, in the way of sort(1).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "charwalk.hpp"

namespace vlx::cli {

// A piece of a line: its bytes, and the state in which the first one is read.
struct Slice {
    const char* bytes;
    std::size_t size;
    int state;
};

// A place in a line: a field and a character in it, both from 1. A character behind the end of its
// field is looked for in what follows.
struct FieldPlace {
    std::size_t field = 1;
    std::size_t character = 0; // 0: as an end, the last one of the field
    bool skipsBlanks = false;  // at the beginning of the field
};

struct FieldRange {
    FieldPlace begin;
    std::optional<FieldPlace> end; // the last character; else that of the line
};

class FieldCutter {
  public:
    // Fields stand between characters of these bytes. Without one, each blank behind another
    // character begins a field.
    FieldCutter(TSLocale* locale, std::optional<std::string> separator);

    // Splits a line, which has to stay where it is.
    void split(std::string_view line);

    Slice cut(const FieldRange& range) const;

  private:
    struct Field {
        std::size_t begin; // of its characters
        std::size_t end;
    };

    bool isBlank(const Character& character) const;
    bool isSeparator(const Character& character) const;
    void splitAtSeparators();
    void splitAtBlanks();
    std::size_t beginOf(const FieldPlace& place) const;
    std::size_t endOf(const FieldPlace& place) const;

    TSLocale* const locale_;
    const CharacterWalk walk_;
    const std::optional<std::string> separator_;
    std::array<bool, 256> isBlankByte_{}; // as a character of one byte
    std::string_view line_;
    std::vector<Character> characters_;
    std::vector<Field> fields_;
};

} // namespace vlx::cli
