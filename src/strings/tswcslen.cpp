// TSWcslen: the packed values before the terminator.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"

TS_TRACE_UNIT("tswcslen");

int32_t TSWcslen(TSLocale* handle, const TSChar32* string)
{
    TS_TRACE(TSWcslen);
    tsLocale(handle)->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::unitsOf(string));
}
