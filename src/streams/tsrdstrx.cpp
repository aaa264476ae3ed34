// TSReadStringEx: a line or a stretch of a stream, in bytes with shift states.
#include "frame/trace.hpp"
#include "streams/readline.hpp"

TS_TRACE_UNIT("tsrdstrx");

int32_t TSReadStringEx(TSStream* stream, TSLocale* handle, char* output, int32_t state,
                       int32_t size, uint32_t options)
{
    TS_TRACE(TSReadStringEx);
    TSLocale* const locale = tsLocale(handle);
    if (!vlx::isStateful(*locale))
        TS_RETURN(TSReadString(stream, locale, output, size, options));
    if (const int32_t error = vlx::readRefusal(*stream, options))
        TS_FAIL(locale->lastError, error, vlx::kReadFailed, "Refused, options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    const vlx::LineEnds<TSChar32> ends(vlx::eolCharsOf<TSChar32>(tsCodePage(locale->codePage)),
                                       options);
    TS_RETURN(readLine(vlx::ByteLine(stream, locale, output, state != 0, size, options), ends,
                       *locale, options));
}
