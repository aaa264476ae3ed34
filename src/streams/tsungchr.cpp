// TSUngetChar: pushes a character back, as its bytes stand.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsungchr");

int32_t TSUngetChar(TSStream* stream, TSLocale* handle, const char* character)
{
    TS_TRACE(TSUngetChar);
    TSLocale* const locale = tsLocale(handle);
    if (stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, 0, "The stream is a writer");
    const int32_t length =
        tsCodePage(locale->codePage).charLength[static_cast<uint8_t>(*character)];
    locale->lastError = vlx::pushBack(*stream, character, length);
    if (locale->lastError != TS_ERR_NONE)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "The buffer is full");
    TS_RETURN(1);
}
