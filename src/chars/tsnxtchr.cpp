// TSNextChar: the next character.
#include "chars/stepping.hpp"

char* TSNextChar(TSLocale* handle, const char* string)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    return vlx::position(string + vlx::charLengthAt(vlx::pageOf(locale), string));
}
