// TSPutChar: the bytes of a packed value.
#include "chars/stepping.hpp"

int32_t TSPutChar(TSLocale* handle, char* output, TSChar32 value)
{
    vlx::steppingLocale(handle);
    return TSCpPutWide(output, value);
}
