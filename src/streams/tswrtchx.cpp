// TSWriteCharEx: writes a character of a state, with the shift byte that leads to it.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tswrtchx");

namespace {

// Writes a shift byte if the state changes, and a character; gives the error.
int32_t writeShifted(TSStream& stream, const TSCodePageHeader& page, const char* character,
                     uint8_t state)
{
    char bytes[5]; // the shift byte, due or not, and the character
    const int32_t end = 1 + (state ? page.maxCharBytes : 1);
    bytes[0] = static_cast<char>(state ? page.shiftIn : page.shiftOut);
    std::memcpy(bytes + 1, character, static_cast<std::size_t>(end - 1));
    int32_t done = stream.shiftState == state ? 1 : 0;
    if (vlx::drainHeld(stream)) {
        if (done == 0 && vlx::offer(stream, bytes, 1) == 1) {
            stream.shiftState = state;
            done = 1;
        }
        if (done == 1)
            done += vlx::offer(stream, bytes + 1, end - 1);
        if (done == end)
            return TS_ERR_NONE;
    }
    const int32_t error = vlx::holdBytes(stream, bytes + done, end - done);
    if (error == TS_ERR_STREAM_HELD) // with the shift byte, if it was due
        stream.shiftState = state;
    return error;
}

} // namespace

int32_t TSWriteCharEx(TSStream* stream, TSLocale* handle, const char* character, int32_t state)
{
    TS_TRACE(TSWriteCharEx);
    TSLocale* const locale = tsLocale(handle);
    if (!vlx::isStateful(*locale))
        TS_RETURN(TSWriteChar(stream, locale, character));
    if (!stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, 0, "The stream is a reader");
    const int32_t error =
        writeShifted(*stream, tsCodePage(locale->codePage), character, state != 0);
    if (error != TS_ERR_NONE)
        TS_FAIL(locale->lastError, error, 0, "The write failed, error %d", static_cast<int>(error));
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(1);
}
