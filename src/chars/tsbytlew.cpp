// TSByteLengthW: the number of bytes of a packed value.
#include "chars/stepping.hpp"

int32_t TSByteLengthW(TSLocale* handle, TSChar32 value)
{
    vlx::steppingLocale(handle);
    if (value > 0xFFFFFF)
        return 4;
    if (value & 0xFF0000)
        return 3;
    return value & 0xFF00 ? 2 : 1;
}
