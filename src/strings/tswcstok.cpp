// TSWcstok: the next token of a string of packed values.
#include "frame/trace.hpp"
#include "strings/token.hpp"

TS_TRACE_UNIT("tswcstok");

TSChar32* TSWcstok(TSLocale* handle, TSChar32* string, int32_t* length, const TSChar32* delimiters,
                   int32_t delimiterLength, TSChar32** next)
{
    TS_TRACE(TSWcstok);
    TSLocale* const locale = tsLocale(handle);
    locale->lastError = TS_ERR_NONE;
    *next = nullptr;
    if (!string) {
        *length = 0;
        TS_RETURN(string);
    }
    if (*length < 0)
        *length = vlx::unitsOf(string);
    const vlx::PackedForm form{locale->codePage};
    TS_RETURN(nextToken(form, string, *length, {delimiters, delimiterLength}, *next));
}
