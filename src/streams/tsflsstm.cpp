// TSFlushStream: a writer delivers what it holds, a reader drops it.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsflsstm");

int32_t TSFlushStream(TSStream* stream, TSLocale* handle)
{
    TS_TRACE(TSFlushStream);
    TSLocale* const locale = tsLocale(handle);
    const bool drained = !stream->isWriter || vlx::drainHeld(*stream);
    const int lost = stream->heldCount;
    stream->heldCount = 0;
    if (!drained)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_FLUSH, 0, "The write failed, %d bytes are lost",
                lost);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(1);
}
