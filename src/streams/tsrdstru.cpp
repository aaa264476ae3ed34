// TSReadStringU: a line or a stretch of a stream of 16-bit values.
#include "frame/trace.hpp"
#include "streams/readline.hpp"

TS_TRACE_UNIT("tsrdstru");

int32_t TSReadStringU(TSStream* stream, TSLocale* handle, TSChar16* output, int32_t size,
                      uint32_t options)
{
    TS_TRACE(TSReadStringU);
    TSLocale* const locale = tsLocale(handle);
    if (const int32_t error = vlx::readRefusal(*stream, options))
        TS_FAIL(locale->lastError, error, vlx::kReadFailed, "Refused, options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    const auto read = [=] { return TSReadCharU(stream, locale); };
    TS_RETURN(readLine(vlx::UnitLine(output, size, options, read),
                       vlx::LineEnds(vlx::kUnicodeEols, options), *locale, options));
}
