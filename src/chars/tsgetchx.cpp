// TSGetCharEx: the packed value of a character of stateful text.
#include "chars/form.hpp"
#include "chars/stepping.hpp"

TSChar32 TSGetCharEx(TSLocale* handle, const char* string, int32_t state)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    if (!(locale.flags & vlx::kLocaleStateful))
        return TSCpGetWide(locale.codePage, string);
    // Deliberate: unlike its siblings this one meets shift bytes of 0x80 and above.
    const TSCodePageHeader& page = vlx::pageOf(locale);
    if (vlx::isShiftOut(page, *string)) {
        state = 0;
        ++string;
    } else if (vlx::isShiftIn(page, *string)) {
        state = 1;
        ++string;
    }
    return TSCpGetWideEx(locale.codePage, string, state);
}
