// TSReadString: a line or a stretch of a stream, in bytes.
#include "frame/trace.hpp"
#include "streams/readline.hpp"

TS_TRACE_UNIT("tsrdstr");

int32_t TSReadString(TSStream* stream, TSLocale* handle, char* output, int32_t size,
                     uint32_t options)
{
    TS_TRACE(TSReadString);
    TSLocale* const locale = tsLocale(handle);
    if (const int32_t error = vlx::readRefusal(*stream, options))
        TS_FAIL(locale->lastError, error, vlx::kReadFailed, "Refused, options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    const vlx::LineEnds<TSChar32> ends(vlx::eolCharsOf<TSChar32>(tsCodePage(locale->codePage)),
                                       options);
    TS_RETURN(
        readLine(vlx::ByteLine(stream, locale, output, -1, size, options), ends, *locale, options));
}
