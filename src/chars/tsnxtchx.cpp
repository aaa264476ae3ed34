// TSNextCharEx: the next character of stateful text.
#include "chars/stepping.hpp"

char* TSNextCharEx(TSLocale* handle, const char* string, int32_t state, int32_t* newState)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    const TSCodePageHeader& page = vlx::pageOf(locale);
    if (!(locale.flags & vlx::kLocaleStateful))
        return vlx::position(string + vlx::charLengthAt(page, string));
    vlx::ShiftCursor cursor{page, string, state};
    cursor.passShift();
    cursor.at += cursor.step();
    cursor.passShift(); // eaten with the character before it
    *newState = cursor.state;
    return vlx::position(cursor.at);
}
