// TSStrcatU: an append of 16-bit values.
#include "strings/copy.hpp"

TS_TRACE_UNIT("tsstrcau");

int32_t TSStrcatU(TSLocale* handle, TSChar16* destination, const TSChar16* source, int32_t length,
                  uint32_t options)
{
    TS_TRACE(TSStrcatU);
    TSLocale* const locale = tsLocale(handle);
    options &= ~TS_OPT_CHAR_COUNT; // these members always count units
    if (options & ~TS_OPT_TERMINATE)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::appendUnits(destination, source, length, options != 0));
}
