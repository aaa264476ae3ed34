// TSWcscspn: the span of packed values that are not in the set.
#include "frame/trace.hpp"
#include "strings/span.hpp"

TS_TRACE_UNIT("tswcscsp");

int32_t TSWcscspn(TSLocale* handle, const TSChar32* string, int32_t length, const TSChar32* set,
                  int32_t setLength)
{
    TS_TRACE(TSWcscspn);
    TSLocale* const locale = tsLocale(handle);
    const vlx::PackedForm form{locale->codePage};
    const int32_t span = spanOf(form, {string, length}, {set, setLength}, false);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(span);
}
