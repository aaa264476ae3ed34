// TSStrcpyU: a copy of 16-bit values.
#include "strings/copy.hpp"

TS_TRACE_UNIT("tsstrcpu");

int32_t TSStrcpyU(TSLocale* handle, TSChar16* destination, int32_t size, const TSChar16* source,
                  int32_t length)
{
    TS_TRACE(TSStrcpyU);
    tsLocale(handle)->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::copyUnits(destination, size, source, length));
}
