// TSWcsspn: the span of packed values that are in the set.
#include "frame/trace.hpp"
#include "strings/span.hpp"

TS_TRACE_UNIT("tswcsspn");

int32_t TSWcsspn(TSLocale* handle, const TSChar32* string, int32_t length, const TSChar32* set,
                 int32_t setLength)
{
    TS_TRACE(TSWcsspn);
    TSLocale* const locale = tsLocale(handle);
    const vlx::PackedForm form{locale->codePage};
    const int32_t span = spanOf(form, {string, length}, {set, setLength}, true);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(span);
}
