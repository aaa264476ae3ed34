// TSMoveStringPointer: the character that holds an offset.
#include "chars/stepping.hpp"

char* TSMoveStringPointer(TSLocale* handle, const char* string, int32_t offset, uint32_t options)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    if ((options & TS_OPT_CHAR_COUNT) && offset > 0)
        offset = TSCpCharsToBytes(locale.codePage, string, 0, offset);
    if (offset == 0 || (locale.flags & vlx::kLocaleSingleByte))
        return vlx::position(string + offset);
    if (offset < 0)
        return vlx::position(string);
    const TSCodePageHeader& page = vlx::pageOf(locale);
    int32_t at = 0;
    while (at < offset) {
        const int32_t length = vlx::charLengthAt(page, string + at);
        if (length > offset - at)
            break;
        at += length;
    }
    return vlx::position(string + at);
}
