// TSWcscat: an append of packed values.
#include "strings/copy.hpp"

TS_TRACE_UNIT("tswcscat");

int32_t TSWcscat(TSLocale* handle, TSChar32* destination, const TSChar32* source, int32_t length,
                 uint32_t options)
{
    TS_TRACE(TSWcscat);
    TSLocale* const locale = tsLocale(handle);
    options &= ~TS_OPT_CHAR_COUNT; // these members always count units
    if (options & ~TS_OPT_TERMINATE)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::appendUnits(destination, source, length, options != 0));
}
