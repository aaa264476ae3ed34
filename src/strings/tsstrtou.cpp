// TSStrtokU: the next token of a string of 16-bit values.
#include "frame/trace.hpp"
#include "strings/token.hpp"

TS_TRACE_UNIT("tsstrtou");

TSChar16* TSStrtokU(TSLocale* handle, TSChar16* string, int32_t* length, const TSChar16* delimiters,
                    int32_t delimiterLength, TSChar16** next)
{
    TS_TRACE(TSStrtokU);
    TSLocale* const locale = tsLocale(handle);
    locale->lastError = TS_ERR_NONE;
    *next = nullptr;
    if (!string) {
        *length = 0;
        TS_RETURN(string);
    }
    if (*length < 0)
        *length = vlx::unitsOf(string);
    const vlx::UnicodeForm form{locale->codePage};
    TS_RETURN(nextToken(form, string, *length, {delimiters, delimiterLength}, *next));
}
