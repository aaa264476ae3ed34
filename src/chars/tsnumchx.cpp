// TSNumCharsEx: the number of characters of a stateful string.
#include "chars/stepping.hpp"

int32_t TSNumCharsEx(TSLocale* handle, const char* string, int32_t state, int32_t length,
                     uint32_t options)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    if (!(locale.flags & vlx::kLocaleStateful))
        return TSNumChars(handle, string, length, options);
    const char* const end = string + vlx::lengthOf(string, length);
    vlx::ShiftCursor cursor{vlx::pageOf(locale), string, state};
    int32_t count = 0;
    while (cursor.at < end) {
        cursor.passShift();
        if (cursor.at == end || cursor.step() > end - cursor.at)
            break;
        cursor.at += cursor.step();
        ++count;
    }
    return count;
}
