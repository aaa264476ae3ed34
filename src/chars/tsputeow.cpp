// TSPutEolW: writes line ends as packed values.
#include "chars/eol.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsputeow");

TSChar32* TSPutEolW(TSLocale* handle, TSChar32* output, uint32_t options)
{
    TS_TRACE(TSPutEolW);
    TSLocale* const locale = tsLocale(handle);
    TSChar32* const none = nullptr;
    const uint32_t wanted = vlx::writtenEols(options);
    if (!wanted)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(
        vlx::putEols(output, vlx::eolCharsOf<TSChar32>(tsCodePage(locale->codePage)), wanted));
}
