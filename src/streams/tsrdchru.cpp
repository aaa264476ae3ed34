// TSReadCharU: the next 16-bit value of a stream, in the byte order of the machine.
#include "frame/scratch.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsrdchru");

namespace {

constexpr int32_t kSize = sizeof(TSChar16);

// Takes a value from the held bytes, with a byte behind a single one; gives the error.
int32_t takeHeld(TSStream& stream, char* bytes)
{
    if (stream.heldCount == 1) {
        const int32_t got = stream.io(stream.context, stream.buffer + 1, 1);
        if (got > 1)
            return TS_ERR_STREAM_COUNT;
        if (got != 1)
            return got == -1 ? TS_ERR_STREAM_CUT : TS_ERR_STREAM_READ;
        stream.heldCount = kSize;
    }
    std::memcpy(bytes, stream.buffer, kSize);
    vlx::dropHeld(stream, kSize);
    return TS_ERR_NONE;
}

// Reads a value; `got` counts its bytes, and is -1 at the end of the data. Gives the error.
int32_t readFresh(TSStream& stream, char* bytes, int32_t& got)
{
    got = stream.io(stream.context, bytes, kSize);
    if (got == kSize || got == -1)
        return TS_ERR_NONE;
    if (got != 1)
        return TS_ERR_STREAM_COUNT;
    stream.buffer[0] = bytes[0];
    stream.heldCount = 1;
    return TS_ERR_STREAM_READ;
}

} // namespace

TSChar16 TSReadCharU(TSStream* stream, TSLocale* handle)
{
    TS_TRACE(TSReadCharU);
    TSLocale* const locale = tsLocale(handle);
    TSChar16 value = 0xFFFF;
    if (stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, value, "The stream is a writer");
    const vlx::Scratch area(kSize);
    if (!area)
        TS_FAIL(locale->lastError, TS_ERR_MEMORY, value, "Unable to allocate %d bytes", kSize);
    int32_t got = kSize;
    locale->lastError = stream->heldCount > 0 ? takeHeld(*stream, area.as<char>())
                                              : readFresh(*stream, area.as<char>(), got);
    if (locale->lastError != TS_ERR_NONE)
        TS_PRINT(TRC1_ERRORS, "No whole value, error %d", static_cast<int>(locale->lastError));
    else if (got == kSize)
        std::memcpy(&value, area.as<char>(), kSize);
    TS_RETURN(value);
}
