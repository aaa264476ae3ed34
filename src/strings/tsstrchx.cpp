// TSStrchrEx: finds a character of stateful text.
#include "strings/find.hpp"

TS_TRACE_UNIT("tsstrchx");

char* TSStrchrEx(TSLocale* handle, const char* string, int32_t state, int32_t length,
                 const char* character, int32_t characterState, int32_t* matchState,
                 uint32_t options)
{
    TS_TRACE(TSStrchrEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStrchr(locale, string, length, character, options));
    char* const none = nullptr;
    if (!vlx::findOptionsAreGood(options))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    length = vlx::findLength(*locale, string, state, length, options);
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    if (vlx::isShiftIn(page, *character) || vlx::isShiftOut(page, *character))
        characterState = vlx::isShiftIn(page, *character++);
    const vlx::ShiftForm form{locale->codePage};
    const auto found = findCharacter(form, {string, string + length, state},
                                     {character, nullptr, characterState}, vlx::wantsLast(options));
    if (found.at && matchState)
        *matchState = found.state;
    TS_RETURN(const_cast<char*>(found.at));
}
