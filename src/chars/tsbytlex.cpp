// TSByteLengthEx: the length of a character of stateful text.
#include "chars/stepping.hpp"

int32_t TSByteLengthEx(TSLocale* handle, const char* string, int32_t state)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    const TSCodePageHeader& page = vlx::pageOf(locale);
    if (!(locale.flags & vlx::kLocaleStateful))
        return vlx::charLengthAt(page, string);
    vlx::ShiftCursor cursor{page, string, state};
    cursor.takeState(); // the shift byte is not counted
    return cursor.step();
}
