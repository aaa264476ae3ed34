// TSPrevChar: the character before a position.
#include "chars/stepping.hpp"

char* TSPrevChar(TSLocale* handle, const char* string, const char* position, uint32_t)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    // Deliberate: a single-byte locale does not look at the start of the string, so a position
    // there gives the address before it.
    if (locale.flags & vlx::kLocaleSingleByte)
        return vlx::position(position - 1);
    // A trail byte can look like a lead byte, so the walk starts over from the start.
    const TSCodePageHeader& page = vlx::pageOf(locale);
    const char* at = string;
    for (int32_t length = vlx::charLengthAt(page, at); position - at > length;
         length = vlx::charLengthAt(page, at))
        at += length;
    return vlx::position(at);
}
