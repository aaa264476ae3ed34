// TSStrchr: finds a character.
#include "strings/find.hpp"

TS_TRACE_UNIT("tsstrchr");

char* TSStrchr(TSLocale* handle, const char* string, int32_t length, const char* character,
               uint32_t options)
{
    TS_TRACE(TSStrchr);
    TSLocale* const locale = tsLocale(handle);
    char* const none = nullptr;
    if (!vlx::findOptionsAreGood(options))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    const bool last = vlx::wantsLast(options);
    length = vlx::findLength(*locale, string, 0, length, options);
    if (locale->flags & vlx::kLocaleSingleByte)
        TS_RETURN(const_cast<char*>(vlx::findByte(string, length, *character, last)));
    TS_RETURN(const_cast<char*>(vlx::findInRuns(*locale, string, length, character, last)));
}
