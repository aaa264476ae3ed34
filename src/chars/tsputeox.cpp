// TSPutEolEx: writes line ends into stateful text, in the single-byte state.
#include "chars/eol.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsputeox");

char* TSPutEolEx(TSLocale* handle, char* output, int32_t state, int32_t* newState, uint32_t options)
{
    TS_TRACE(TSPutEolEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSPutEol(locale, output, options));
    char* const none = nullptr;
    if (newState)
        *newState = 0;
    const uint32_t wanted = vlx::writtenEols(options);
    if (!wanted)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    if (state == 1)
        *output++ = static_cast<char>(page.shiftOut);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(vlx::putEols(output, vlx::eolCharsOf<char>(page), wanted));
}
