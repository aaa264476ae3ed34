// TSNumChars: the number of characters of a string.
#include "chars/stepping.hpp"

int32_t TSNumChars(TSLocale* handle, const char* string, int32_t length, uint32_t)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    length = vlx::lengthOf(string, length);
    if (locale.flags & vlx::kLocaleSingleByte)
        return length;
    const TSCodePageHeader& page = vlx::pageOf(locale);
    int32_t count = 0;
    for (int32_t offset = 0; offset < length; ++count) {
        const int32_t step = vlx::charLengthAt(page, string + offset);
        if (step > length - offset) // cut off by the length
            break;
        offset += step;
    }
    return count;
}
