// What the stepping functions share.
#pragma once

#include <cstdint>
#include <cstring>

#include "chars/codepage.hpp"
#include "frame/globals.hpp"
#include "locale/locale.hpp"

namespace vlx {

// The locale of a stepping call, with its error cleared.
inline TSLocale& steppingLocale(TSLocale* handle)
{
    TSLocale& locale = *tsLocale(handle);
    if (locale.lastError != TS_ERR_NONE) // a shared record is written only when it changes
        locale.lastError = TS_ERR_NONE;
    return locale;
}

inline const TSCodePageHeader& pageOf(const TSLocale& locale)
{
    return tsCodePage(locale.codePage);
}

inline std::int32_t charLengthAt(const TSCodePageHeader& page, const char* at)
{
    return page.charLength[static_cast<std::uint8_t>(*at)];
}

// A place in stateful text.
//
// Deliberate: these functions compare a byte as a signed value with the unsigned shift bytes, so
// that a shift byte of 0x80 or above is never met. Every shift byte in use is below.
template <class Char>
struct ShiftCursor {
    const TSCodePageHeader& page;
    Char* at;
    std::int32_t state;

    static int signedByte(char byte) { return static_cast<signed char>(byte); }

    bool atShift() const
    {
        const int byte = signedByte(*at);
        return byte == page.shiftIn || byte == page.shiftOut;
    }

    // Takes the state that a shift byte sets, without stepping.
    void takeState()
    {
        if (atShift())
            state = signedByte(*at) == page.shiftIn ? 1 : 0;
    }

    // Steps over one shift byte, if there is one.
    void passShift()
    {
        if (atShift()) {
            takeState();
            ++at;
        }
    }

    std::int32_t step() const { return state ? page.maxCharBytes : 1; }
};

template <class Char>
ShiftCursor(const TSCodePageHeader&, Char*, std::int32_t) -> ShiftCursor<Char>;

// The length of a string, a negative one being up to the terminator.
inline std::int32_t lengthOf(const char* string, std::int32_t length)
{
    return length < 0 ? static_cast<std::int32_t>(std::strlen(string)) : length;
}

// A position in the caller's string; the functions hand it back as they got it, but writable.
inline char* position(const char* at)
{
    return const_cast<char*>(at);
}

} // namespace vlx
