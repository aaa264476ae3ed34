// TSGetCharTypeEx: what a character of stateful text is.
#include "chars/ctype.hpp"
#include "chars/form.hpp"

uint32_t TSGetCharTypeEx(TSLocale* handle, const char* character, int32_t state, uint32_t kind)
{
    TSLocale& locale = *tsLocale(handle);
    if ((locale.flags & vlx::kLocaleSingleByte) || !(locale.flags & vlx::kLocaleStateful))
        return vlx::plainTypeField(locale, character, kind);
    const TSCodePageHeader& page = vlx::pageOf(locale);
    if (vlx::isShiftOut(page, *character)) {
        state = 0;
        ++character;
    } else if (vlx::isShiftIn(page, *character)) {
        state = 1;
        ++character;
    }
    return state ? vlx::longTypeField(locale, character, kind)
                 : vlx::typeField(locale, vlx::byteType(locale, *character), kind);
}
