// TSWcscpy: a copy of packed values.
#include "strings/copy.hpp"

TS_TRACE_UNIT("tswcscpy");

int32_t TSWcscpy(TSLocale* handle, TSChar32* destination, int32_t size, const TSChar32* source,
                 int32_t length)
{
    TS_TRACE(TSWcscpy);
    tsLocale(handle)->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::copyUnits(destination, size, source, length));
}
