// TSUngetCharW: pushes a packed value back.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsungchw");

int32_t TSUngetCharW(TSStream* stream, TSLocale* handle, TSChar32 value)
{
    TS_TRACE(TSUngetCharW);
    TSLocale* const locale = tsLocale(handle);
    if (stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, 0, "The stream is a writer");
    char bytes[4];
    const int32_t length = TSCpPutWide(bytes, value);
    locale->lastError =
        vlx::isStateful(*locale)
            ? vlx::pushBackShifted(*stream, tsCodePage(locale->codePage), bytes, length)
            : vlx::pushBack(*stream, bytes, length);
    if (locale->lastError != TS_ERR_NONE)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "The buffer is full");
    TS_RETURN(1);
}
