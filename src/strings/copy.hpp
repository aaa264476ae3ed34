// What the members of the copy and the append family share: their options and their room.
#pragma once

#include <algorithm>
#include <cstring>

#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"
#include "strings/whole.hpp"

namespace vlx {

// How much of a source a copy may take: its bytes, before the room is looked at, and in a copy that
// counts characters the bytes of as many as the size allows. A negative length takes the terminator
// along. `countOf` counts the characters of so many bytes of the source.
template <class CountOf>
std::int32_t copyLength(const TSLocale& locale, const char* source, std::int32_t state,
                        std::int32_t length, std::int32_t size, bool counted,
                        const CountOf& countOf)
{
    const bool terminated = length < 0;
    const std::int32_t whole = terminated ? unitsOf(source) + 1 : 0;
    if (!counted)
        return terminated ? whole : length;
    if (!terminated)
        return TSCpCharsToBytes(locale.codePage, source, state, std::min(length, size));
    const std::int32_t characters = std::min(countOf(whole), size);
    return std::min(TSCpCharsToBytesWithin(locale.codePage, source, state, characters, whole),
                    whole);
}

// Copies 16-bit or 32-bit units and gives their number. The two may overlap.
template <class Unit>
std::int32_t copyUnits(Unit* destination, std::int32_t size, const Unit* source,
                       std::int32_t length)
{
    const std::int32_t count = std::min(length < 0 ? unitsOf(source) + 1 : length, size);
    if (count <= 0)
        return 0;
    std::memmove(destination, source, static_cast<std::size_t>(count) * sizeof(Unit));
    return count;
}

// Appends 16-bit or 32-bit units and gives the length of the destination, its terminator included
// if one is there or was written.
template <class Unit>
std::int32_t appendUnits(Unit* destination, const Unit* source, std::int32_t length, bool terminate)
{
    const std::int32_t before = unitsOf(destination);
    if (length == 0)
        return before + 1;
    const std::int32_t count = length < 0 ? unitsOf(source) : length;
    std::memmove(destination + before, source, static_cast<std::size_t>(count) * sizeof(Unit));
    if (!terminate && length > 0)
        return before + count;
    destination[before + count] = 0;
    return before + count + 1;
}

} // namespace vlx
