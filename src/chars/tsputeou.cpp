// TSPutEolU: writes line ends as 16-bit values.
#include "chars/eol.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsputeou");

TSChar16* TSPutEolU(TSLocale* handle, TSChar16* output, uint32_t options)
{
    TS_TRACE(TSPutEolU);
    TSLocale* const locale = tsLocale(handle);
    TSChar16* const none = nullptr;
    const uint32_t wanted = vlx::writtenEols(options);
    if (!wanted)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::putEols(output, vlx::kUnicodeEols, wanted));
}
