// TSStrspnU: the span of 16-bit values that are in the set.
#include "frame/trace.hpp"
#include "strings/span.hpp"

TS_TRACE_UNIT("tsstrspu");

int32_t TSStrspnU(TSLocale* handle, const TSChar16* string, int32_t length, const TSChar16* set,
                  int32_t setLength)
{
    TS_TRACE(TSStrspnU);
    TSLocale* const locale = tsLocale(handle);
    const vlx::UnicodeForm form{locale->codePage};
    const int32_t span = spanOf(form, {string, length}, {set, setLength}, true);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(span);
}
