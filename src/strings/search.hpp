// Finding a string in another one. Every place is tried in turn.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "chars/form.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"

namespace vlx {

// The options of a search. Any of the bits that they know, alone or together, is accepted.
struct SearchOptions {
    explicit SearchOptions(std::uint32_t options) : all(options) {}

    bool isGood() const { return (all & ~TS_OPT_IGNORE_WIDTH) == 0; }
    bool isExact() const { return all == 0; }
    bool counts() const { return (all & TS_OPT_CHAR_COUNT) != 0; }
    bool ignoresWidth() const { return (all & TS_OPT_IGNORE_WIDTH) == TS_OPT_IGNORE_WIDTH; }
    bool hasCaseBits() const { return (all & TS_OPT_IGNORE_CASE) == TS_OPT_IGNORE_CASE; }

    SearchOptions withoutCount() const { return SearchOptions(all & ~TS_OPT_CHAR_COUNT); }

    std::uint32_t all;
};

// One of the strings of a search: its length in whatever unit the search goes by, and the end of
// what can be read of it.
template <class Unit>
struct SearchText {
    std::int32_t left(const Unit* at) const { return static_cast<std::int32_t>(end - at); }

    const Unit* string;
    std::int32_t length;
    const Unit* end;
};

// The bytes of a number of characters, as far as the text goes.
inline std::int32_t bytesWithin(const TSLocale& locale, const char* string, std::int32_t state,
                                std::int32_t count, std::int32_t limit)
{
    return std::min(TSCpCharsToBytesWithin(locale.codePage, string, state, count, limit), limit);
}

// The first place from `at` to `last` that has the same `count` units as `sought`; null if none
// has.
inline const char* findSame(const char* at, const char* last, const char* sought,
                            std::int32_t count)
{
    const auto size = static_cast<std::size_t>(count);
    while (at <= last) {
        at = static_cast<const char*>(std::memchr(at, static_cast<unsigned char>(*sought),
                                                  static_cast<std::size_t>(last - at) + 1));
        if (!at || std::memcmp(at, sought, size) == 0)
            return at;
        ++at;
    }
    return nullptr;
}

template <class Unit>
const Unit* findSame(const Unit* at, const Unit* last, const Unit* sought, std::int32_t count)
{
    for (; at <= last; ++at)
        if (*at == *sought && std::equal(sought, sought + count, at))
            return at;
    return nullptr;
}

// The first place from `at` to `last` for which `isMatch` holds; null if there is none.
template <class Unit, class IsMatch>
const Unit* findPlace(const Unit* at, const Unit* last, const IsMatch& isMatch)
{
    for (; at <= last; ++at)
        if (isMatch(at))
            return at;
    return nullptr;
}

} // namespace vlx
