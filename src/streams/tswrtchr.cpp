// TSWriteChar: writes a character, as its bytes stand.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tswrtchr");

int32_t TSWriteChar(TSStream* stream, TSLocale* handle, const char* character)
{
    TS_TRACE(TSWriteChar);
    TSLocale* const locale = tsLocale(handle);
    if (!stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, 0, "The stream is a reader");
    const int32_t length =
        tsCodePage(locale->codePage).charLength[static_cast<uint8_t>(*character)];
    const int32_t error = vlx::writeBytes(*stream, character, length);
    if (error != TS_ERR_NONE)
        TS_FAIL(locale->lastError, error, 0, "The write failed, error %d", static_cast<int>(error));
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(1);
}
