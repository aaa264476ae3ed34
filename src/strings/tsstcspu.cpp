// TSStrcspnU: the span of 16-bit values that are not in the set.
#include "frame/trace.hpp"
#include "strings/span.hpp"

TS_TRACE_UNIT("tsstcspu");

int32_t TSStrcspnU(TSLocale* handle, const TSChar16* string, int32_t length, const TSChar16* set,
                   int32_t setLength)
{
    TS_TRACE(TSStrcspnU);
    TSLocale* const locale = tsLocale(handle);
    const vlx::UnicodeForm form{locale->codePage};
    const int32_t span = spanOf(form, {string, length}, {set, setLength}, false);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(span);
}
