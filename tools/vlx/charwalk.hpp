// The whole characters of a text that comes in pieces.
#pragma once

#include <array>
#include <cstdint>

#include "tessera.h"
#include "walker.hpp"

namespace vlx::cli {

// A character: its bytes, and the state in which they are read.
struct Character {
    const char* bytes;
    int size;
    int state;
};

class CharacterWalk {
  public:
    explicit CharacterWalk(TSLocale* locale);

    const PageFacts& page() const { return facts_; }
    bool isUtf8() const { return utf8_; }
    int state() const { return state_; }

    // Goes from `begin`, in the state reached, to the end of the last whole character, and gives
    // that place. A shift byte belongs to the character behind it. Between two shift bytes the walk
    // stops, too: the library would take the second one for a character.
    const char* passWhole(const char* begin, const char* end);

    // Whether the last walk met UTF-8 that is none: a wrong continuation byte, or a form that is
    // not the shortest. The library reads such bytes by rule.
    bool malformed() const { return malformed_; }

    // The next whole character from `at` on, which moves behind it, as does the state; its size is
    // 0 if there is none.
    Character next(const char*& at, const char* end, int& state) const;

  private:
    const char* passShifted(const char* at, const char* end);
    const char* passPlain(const char* at, const char* end);

    int lengthOf(char byte) const { return lengths_[static_cast<std::uint8_t>(byte)]; }
    bool isShift(char byte) const { return facts_.isShift(static_cast<std::uint8_t>(byte)); }

    PageFacts facts_;
    std::array<std::uint8_t, 256> lengths_{};
    bool asciiIsSingle_ = true; // the bytes below 0x80 are characters of one byte
    bool utf8_ = false;
    int state_ = 0;
    bool malformed_ = false;
};

} // namespace vlx::cli
