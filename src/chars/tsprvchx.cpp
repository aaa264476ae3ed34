// TSPrevCharEx: the character before a position in stateful text.
#include "chars/stepping.hpp"

char* TSPrevCharEx(TSLocale* handle, const char* string, const char* position, int32_t state,
                   int32_t* newState, uint32_t options)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    if (!(locale.flags & vlx::kLocaleStateful))
        return TSPrevChar(handle, string, position, options);
    // The state says in which state the position is, and lengths are fixed in each, so that the
    // walk can go straight back.
    vlx::ShiftCursor cursor{vlx::pageOf(locale), position, state};
    if (cursor.at != string) {
        --cursor.at;
        if (cursor.atShift()) { // before a shift byte the other state holds
            cursor.takeState();
            cursor.state = !cursor.state;
        } else {
            ++cursor.at;
        }
        if (cursor.at != string)
            cursor.at -= cursor.step();
    }
    *newState = cursor.state;
    return vlx::position(cursor.at);
}
