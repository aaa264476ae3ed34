// TSPutEol: writes line ends.
#include "chars/eol.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsputeol");

char* TSPutEol(TSLocale* handle, char* output, uint32_t options)
{
    TS_TRACE(TSPutEol);
    TSLocale* const locale = tsLocale(handle);
    char* const none = nullptr;
    const uint32_t wanted = vlx::writtenEols(options);
    if (!wanted)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::putEols(output, vlx::eolCharsOf<char>(tsCodePage(locale->codePage)), wanted));
}
