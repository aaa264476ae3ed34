// TSWriteCharU: writes a 16-bit value, in the byte order of the machine.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tswrtchu");

int32_t TSWriteCharU(TSStream* stream, TSLocale* handle, TSChar16 value)
{
    TS_TRACE(TSWriteCharU);
    TSLocale* const locale = tsLocale(handle);
    if (!stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, 0, "The stream is a reader");
    char bytes[sizeof value];
    std::memcpy(bytes, &value, sizeof value);
    const int32_t error = vlx::writeBytes(*stream, bytes, sizeof value);
    if (error != TS_ERR_NONE)
        TS_FAIL(locale->lastError, error, 0, "The write failed, error %d", static_cast<int>(error));
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(1);
}
