// TSPutCharEx: the bytes of a packed value, behind the shift byte that they need.
#include "chars/stepping.hpp"

int32_t TSPutCharEx(TSLocale* handle, char* output, int32_t state, TSChar32 value)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    if (!(locale.flags & vlx::kLocaleStateful))
        return TSCpPutWide(output, value);
    const TSCodePageHeader& page = vlx::pageOf(locale);
    const char* const begin = output;
    if (value > 0xFF && state == 0)
        *output++ = static_cast<char>(page.shiftIn);
    else if (value <= 0xFF && state == 1)
        *output++ = static_cast<char>(page.shiftOut);
    return static_cast<int32_t>(output - begin) + TSCpPutWide(output, value);
}
