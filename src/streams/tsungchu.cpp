// TSUngetCharU: pushes a 16-bit value back.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsungchu");

int32_t TSUngetCharU(TSStream* stream, TSLocale* handle, TSChar16 value)
{
    TS_TRACE(TSUngetCharU);
    TSLocale* const locale = tsLocale(handle);
    if (stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, 0, "The stream is a writer");
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    locale->lastError = vlx::pushBack(*stream, bytes, sizeof value);
    if (locale->lastError != TS_ERR_NONE)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "The buffer is full");
    TS_RETURN(1);
}
