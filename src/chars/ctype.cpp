// The ways of the classification functions that few calls take.
#include "chars/ctype.hpp"

namespace vlx {

std::uint32_t anyTypeField(TSLocale& locale, std::uint32_t word, std::uint32_t kind)
{
    const bool known = kind == TS_CT_CLASS || kind == TS_CT_DIRECTION || kind == TS_CT_FORM;
    const std::int32_t code = known ? TS_ERR_NONE : TS_ERR_ARGUMENT;
    if (locale.lastError != code) // a shared record is written only when it changes
        locale.lastError = code;
    if (kind == TS_CT_DIRECTION)
        return word >> 10 & 0xFFF;
    if (kind == TS_CT_FORM)
        return word >> 22;
    // Deliberate: a bad kind is an error and gets the class all the same.
    return word & 0x3FF;
}

std::uint32_t longTypeField(TSLocale& locale, const char* character, std::uint32_t kind)
{
    return typeField(locale, TSCpCharTypeRecord(locale.codePage, character)->type, kind);
}

} // namespace vlx
