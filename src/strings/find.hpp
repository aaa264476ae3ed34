// Finding a character in a string: the first one, or the last.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "chars/walk.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"

namespace vlx {

// Options of the family, with the counting of characters taken away.
inline bool findOptionsAreGood(std::uint32_t options)
{
    options &= ~TS_OPT_CHAR_COUNT;
    return options == 0 || options == TS_OPT_LAST_MATCH;
}
inline bool wantsLast(std::uint32_t options)
{
    return (options & ~TS_OPT_CHAR_COUNT) == TS_OPT_LAST_MATCH;
}

// The bytes to search: a negative length takes in the terminator.
inline std::int32_t findLength(const TSLocale& locale, const char* string, std::int32_t state,
                               std::int32_t length, std::uint32_t options)
{
    if (length < 0)
        return unitsOf(string) + 1;
    if (options & TS_OPT_CHAR_COUNT)
        return TSCpCharsToBytes(locale.codePage, string, state, length);
    return length;
}

// Finds a character of the same length and the same bytes as the one at `sought`. A character that
// the end of the text cuts off ends the search. The place found has the state of the match; a null
// one is none.
template <class Form>
Text<Form> findCharacter(const Form& form, Text<Form> text, const Text<Form>& sought, bool last)
{
    const std::int32_t length = form.length(sought);
    Text<Form> found{nullptr, nullptr};
    while (form.settle(text) && form.length(text) <= text.left()) {
        if (form.length(text) == length && std::equal(text.at, text.at + length, sought.at)) {
            found = text;
            if (!last)
                break;
        }
        text.at += form.length(text);
    }
    return found;
}

inline const char* findByte(const char* string, std::int32_t length, char byte, bool last)
{
    if (!last)
        return static_cast<const char*>(std::memchr(string, static_cast<unsigned char>(byte),
                                                    static_cast<std::size_t>(length)));
    for (const char* at = string + length; at != string;)
        if (*--at == byte)
            return at;
    return nullptr;
}

// Finds a character of `length` bytes in a run of such characters.
inline const char* findInRun(const char* begin, const char* end, const char* sought,
                             std::int32_t length, bool last)
{
    if (length == 1)
        return findByte(begin, static_cast<std::int32_t>(end - begin), *sought, last);
    if (length == 2 && !last) {
        std::uint16_t pair;
        std::memcpy(&pair, sought, sizeof pair);
        const char* const at = begin + 2 * findWord(begin, (end - begin) / 2, pair);
        return at == end ? nullptr : at;
    }
    const char* found = nullptr;
    for (const char* at = begin; at != end && (last || !found); at += length)
        if (std::equal(at, at + length, sought))
            found = at;
    return found;
}

// Finds a character of text without shift bytes, as findCharacter does.
inline const char* findInRuns(const TSLocale& locale, const char* string, std::int32_t length,
                              const char* sought, bool last)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    const std::int32_t wanted = page.charLength[static_cast<std::uint8_t>(*sought)];
    const char* found = nullptr;
    walkRuns(page, PlainSet::ofBytes(locale.pageTraits), string, string + length,
             [&](const char* begin, const char* end, std::int32_t lengthOfEach) {
                 if (lengthOfEach == wanted)
                     if (const char* const at = findInRun(begin, end, sought, wanted, last))
                         found = at;
                 return last || !found;
             });
    return found;
}

// The first place of a unit, or the end. memchr is as quick as the machine can be, and looks for
// one byte of the unit; where that byte stands in other units, some words are looked at next.
inline const TSChar16* findFirst(const TSChar16* begin, const TSChar16* end, TSChar16 unit)
{
    constexpr std::ptrdiff_t kSome = 256;
    const int byte = unit & 0xFF ? unit & 0xFF : unit >> 8; // zeros are common
    while (begin != end) {
        const auto* const bytes = reinterpret_cast<const char*>(begin);
        const auto size = static_cast<std::size_t>(end - begin) * sizeof *begin;
        const void* const hit = std::memchr(bytes, byte, size);
        if (!hit)
            return end;
        begin += (static_cast<const char*>(hit) - bytes) / std::ptrdiff_t{sizeof *begin};
        const std::ptrdiff_t some = std::min(end - begin, kSome);
        const std::ptrdiff_t before = findWord(begin, some, unit);
        begin += before;
        if (before < some)
            break;
    }
    return begin;
}
inline const TSChar32* findFirst(const TSChar32* begin, const TSChar32* end, TSChar32 unit)
{
    return std::find(begin, end, unit);
}

// Finds a unit. Deliberate: a negative length takes in the terminator in the search forward alone;
// the search for the last match begins before it.
template <class Unit>
const Unit* findUnit(const Unit* string, std::int32_t length, Unit unit, bool last)
{
    if (last) {
        for (const Unit* at = string + (length < 0 ? unitsOf(string) : length); at != string;)
            if (*--at == unit)
                return at;
        return nullptr;
    }
    if (length < 0) {
        const Unit* at = string;
        while (*at != unit)
            if (*at++ == 0)
                return nullptr;
        return at;
    }
    const Unit* const end = string + length;
    const Unit* const at = findFirst(string, end, unit);
    return at == end ? nullptr : at;
}

} // namespace vlx
