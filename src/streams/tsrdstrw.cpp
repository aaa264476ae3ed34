// TSReadStringW: a line or a stretch of a stream as packed values.
#include "frame/trace.hpp"
#include "streams/readline.hpp"

TS_TRACE_UNIT("tsrdstrw");

int32_t TSReadStringW(TSStream* stream, TSLocale* handle, TSChar32* output, int32_t size,
                      uint32_t options)
{
    TS_TRACE(TSReadStringW);
    TSLocale* const locale = tsLocale(handle);
    if (const int32_t error = vlx::readRefusal(*stream, options))
        TS_FAIL(locale->lastError, error, vlx::kReadFailed, "Refused, options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    // Deliberate: a carriage return and line feed end a line only if they are taken away.
    const uint32_t tested = options & TS_EOL_STRIP ? options : options & ~TS_EOL_CRLF;
    const vlx::LineEnds<TSChar32> ends(vlx::eolCharsOf<TSChar32>(tsCodePage(locale->codePage)),
                                       tested);
    const auto read = [=] { return static_cast<TSChar32>(TSReadCharW(stream, locale)); };
    TS_RETURN(readLine(vlx::UnitLine(output, size, options, read), ends, *locale, options));
}
