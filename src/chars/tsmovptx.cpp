// TSMoveStringPointerEx: the character of stateful text that holds an offset.
#include "chars/stepping.hpp"

char* TSMoveStringPointerEx(TSLocale* handle, const char* string, int32_t state, int32_t offset,
                            int32_t* newState, uint32_t options)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    if (!(locale.flags & vlx::kLocaleStateful))
        return TSMoveStringPointer(handle, string, offset, options);
    if ((options & TS_OPT_CHAR_COUNT) && offset > 0)
        offset = TSCpCharsToBytes(locale.codePage, string, state, offset);
    if (offset == 0)
        return vlx::position(string);
    vlx::ShiftCursor cursor{vlx::pageOf(locale), string, state};
    const auto left = [&] { return string + offset - cursor.at; };
    while (left() != 0) {
        cursor.passShift(); // a negative offset passes one too
        if (cursor.step() > left())
            break;
        cursor.at += cursor.step();
    }
    *newState = cursor.state;
    return vlx::position(cursor.at);
}
