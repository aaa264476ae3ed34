// TSCloseStream: the end of a stream. A writer delivers what it holds and leaves the multi-byte
// state.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsclsstm");

int32_t TSCloseStream(TSStream* stream, TSLocale* handle)
{
    TS_TRACE(TSCloseStream);
    TSLocale* const locale = tsLocale(handle);
    locale->lastError = TS_ERR_NONE;
    if (stream->isWriter && (stream->heldCount == 0 || TSFlushStream(stream, locale)) &&
        vlx::isStateful(*locale) && stream->shiftState == 1) {
        char shift = static_cast<char>(tsCodePage(locale->codePage).shiftOut);
        stream->io(stream->context, &shift, 1);
    }
    if (!vlx::release(stream) && locale->lastError == TS_ERR_NONE)
        TS_FAIL(locale->lastError, TS_ERR_FREE, 0, "Unable to free the stream");
    TS_RETURN(locale->lastError == TS_ERR_NONE ? 1 : 0);
}
