// What the classification functions share: where the type word of a character stands, and the field
// of it that a call asks for. They are small accessors and are not traced.
#pragma once

#include <cstdint>

#include "chars/stepping.hpp"

namespace vlx {

// The field of a type word that `kind` names, with the error of the call.
std::uint32_t anyTypeField(TSLocale& locale, std::uint32_t word, std::uint32_t kind);

// The same, with one test for what nearly all calls are: one for the class, behind no failure.
inline std::uint32_t typeField(TSLocale& locale, std::uint32_t word, std::uint32_t kind)
{
    if (((kind ^ TS_CT_CLASS) | static_cast<std::uint32_t>(locale.lastError)) == 0) [[likely]]
        return word & 0x3FF;
    return anyTypeField(locale, word, kind);
}

inline std::uint32_t byteType(const TSLocale& locale, char byte)
{
    return pageOf(locale).charType[static_cast<std::uint8_t>(byte)];
}

// The field of a character longer than one byte; out of line, so that the way of a single byte
// needs no stack.
std::uint32_t longTypeField(TSLocale& locale, const char* character, std::uint32_t kind);

// The field of a character of text without shift bytes.
inline std::uint32_t plainTypeField(TSLocale& locale, const char* character, std::uint32_t kind)
{
    if ((locale.flags & kLocaleSingleByte) || charLengthAt(pageOf(locale), character) == 1)
        return typeField(locale, byteType(locale, *character), kind);
    return longTypeField(locale, character, kind);
}

} // namespace vlx
