// Collation, sort keys and search once more, slow and literal: one function for each rule, on top
// of the oracles of mapping and of comparison by code. Sort objects are read from their bytes.
#pragma once

#include <functional>

#include "compare/oracle_compare.hpp"

namespace vlx::oracle {

struct SortElement {
    unsigned weight1 = 0;
    unsigned weight2 = 0;
    unsigned weight3 = 0;
    unsigned weight4 = 0;
};

struct Lookup {
    int count = 0;
    SortElement first;
    SortElement second;
    unsigned directions = 0;
};

// A sort object, by the bytes of its content.
class SortObject {
  public:
    explicit SortObject(Span content) : content_(content) {}

    unsigned default2() const { return content_.at(0); }
    unsigned default3() const { return content_.at(1); }
    unsigned contractions() const { return word(4); }
    Lookup character(unsigned value) const;
    Lookup pair(unsigned first, unsigned second) const;

  private:
    unsigned word(std::ptrdiff_t offset) const;

    Span content_;
};

// Where a text is read: the place, what the rules take for the remaining length, the position
// counter, the value that is pending, and the state.
struct Cursor {
    std::ptrdiff_t place = 0;
    std::int32_t remaining = 0;
    unsigned position = 0;
    unsigned pending = 0xFFFF;
    std::int32_t state = 0;
};

// Gives the next elements of one of the two texts.
using Next = std::function<Lookup(Cursor&)>;

// The route without options.
std::int32_t compareElements(const Next& next1, Cursor cursor1, const Next& next2, Cursor cursor2);

// The key of Unicode values.
Bytes buildKey(const SortObject& sort, const std::vector<std::uint16_t>& values);

inline constexpr std::int32_t kUntouched = 4711; // the error code before a call

// A buffer of a key, and the distance of its address from the aligned one before it.
struct KeyBuffer {
    Bytes bytes;
    unsigned past = 0;
};

// `sort` is null for the binary sort; `memory` is false where every allocation fails.
struct Collation {
    const Locale& locale;
    const Language& language;
    const SortObject* sort;
    bool memory = true;

    Outcome plain(const Text& text1, const Text& text2, std::uint32_t options) const;
    Outcome shifted(const Text& text1, const Text& text2, std::uint32_t options) const;
    Outcome units(const Units& first, std::int32_t length1, const Units& second,
                  std::int32_t length2, std::uint32_t options) const;
    Outcome packed(const Units& first, std::int32_t length1, const Units& second,
                   std::int32_t length2, std::uint32_t options) const;

    Outcome plainKey(KeyBuffer& buffer, const Text& text, std::uint32_t options) const;
    Outcome shiftedKey(KeyBuffer& buffer, const Text& text, std::uint32_t options) const;
    Outcome unitsKey(KeyBuffer& buffer, const Units& text, std::int32_t length,
                     std::uint32_t options) const;
    Outcome packedKey(KeyBuffer& buffer, const Units& text, std::int32_t length,
                      std::uint32_t options) const;

    Found plainSearch(const Text& text, const Text& sought, std::uint32_t options) const;
    Found shiftedSearch(const Text& text, const Text& sought, std::uint32_t options) const;
    Found unitsSearch(const Units& text, std::int32_t length1, const Units& sought,
                      std::int32_t length2, std::uint32_t options) const;
    Found packedSearch(const Units& text, std::int32_t length1, const Units& sought,
                       std::int32_t length2, std::uint32_t options) const;
};

} // namespace vlx::oracle
