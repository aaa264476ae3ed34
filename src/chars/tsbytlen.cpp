// TSByteLength: the length of a character.
#include "chars/stepping.hpp"

int32_t TSByteLength(TSLocale* handle, const char* string)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    return vlx::charLengthAt(vlx::pageOf(locale), string);
}
