// TSOpenStream: a stream over a caller's read or write function.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/locale.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsopnstm");

TSStream* TSOpenStream(TSLocale* handle, TSStreamIo io, TSContext context, uint32_t mode)
{
    TS_TRACE(TSOpenStream);
    TSLocale* const locale = tsLocale(handle);
    TSStream* const none = nullptr;
    if (mode != TS_STREAM_READ && mode != TS_STREAM_WRITE)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid mode %#x", mode);
    auto* const stream = static_cast<TSStream*>(vlx::allocate(sizeof(TSStream)));
    if (!stream)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, none, "Unable to allocate %d bytes",
                static_cast<int>(sizeof(TSStream)));
    std::memset(stream, 0, sizeof *stream);
    stream->io = io;
    stream->context = context;
    stream->isWriter = mode == TS_STREAM_WRITE;
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(stream);
}
