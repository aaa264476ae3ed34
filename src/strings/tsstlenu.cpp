// TSStrlenU: the 16-bit values before the terminator.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"

TS_TRACE_UNIT("tsstlenu");

int32_t TSStrlenU(TSLocale* handle, const TSChar16* string)
{
    TS_TRACE(TSStrlenU);
    tsLocale(handle)->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::unitsOf(string));
}
