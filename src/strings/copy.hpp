// What the members of the copy and the append family share: their options and their room.
#pragma once

#include <algorithm>
#include <cstring>

#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"
#include "strings/whole.hpp"

namespace vlx {

// The bytes that a copy may take: of the string and its terminator, or of the given length, no more
// than the size holds. Both count characters if `counted`.
inline std::int32_t copyBudget(TSLocale* locale, const char* source, std::int32_t state,
                               std::int32_t length, std::int32_t size, bool counted)
{
    const bool terminated = length < 0;
    const std::int32_t whole = terminated ? unitsOf(source) + 1 : 0;
    if (!counted)
        return std::min(terminated ? whole : length, size);
    if (!terminated)
        return TSCpCharsToBytes(locale->codePage, source, state, std::min(length, size));
    const std::int32_t characters = TSNumCharsEx(locale, source, state, whole, 0);
    return TSCpCharsToBytesWithin(locale->codePage, source, state, std::min(characters, size),
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
