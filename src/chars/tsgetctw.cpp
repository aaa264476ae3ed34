// TSGetCharTypeW: what a packed value is.
#include "chars/ctype.hpp"

uint32_t TSGetCharTypeW(TSLocale* handle, TSChar32 value, uint32_t kind)
{
    TSLocale& locale = *tsLocale(handle);
    if (value > 255)
        return vlx::typeField(locale, TSCpCharTypeRecordW(locale.codePage, value)->type, kind);
    return vlx::typeField(locale, vlx::byteType(locale, static_cast<char>(value)), kind);
}
