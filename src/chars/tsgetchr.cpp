// TSGetChar: the packed value of a character.
#include "chars/stepping.hpp"

TSChar32 TSGetChar(TSLocale* handle, const char* string)
{
    return TSCpGetWide(vlx::steppingLocale(handle).codePage, string);
}
