// TSTerminateStringEx: the end of a stateful text.
#include "chars/stepping.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tstermsx");

int32_t TSTerminateStringEx(TSLocale* handle, char* output, int32_t state, uint32_t options)
{
    TS_TRACE(TSTerminateStringEx);
    TSLocale& locale = vlx::steppingLocale(handle);
    if (options & ~TS_OPT_TERMINATE)
        TS_FAIL(locale.lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    int32_t written = 0;
    if ((locale.flags & vlx::kLocaleStateful) && state == 1)
        output[written++] = static_cast<char>(vlx::pageOf(locale).shiftOut);
    if (options & TS_OPT_TERMINATE)
        output[written++] = 0;
    TS_RETURN(written);
}
