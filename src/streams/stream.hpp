// A stream over a caller's read or write function: its record, and how its bytes move.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "chars/form.hpp"
#include "tessera.h"

struct TSStream {
    static constexpr std::int32_t kMostHeld = 80;

    TSStreamIo io;
    TSContext context;
    std::uint8_t isWriter;
    std::uint8_t shiftState;  // of the bytes that were read or written
    std::uint8_t bufferState; // in which the held bytes are to be read
    std::uint16_t heldCount;
    // A reader holds characters that were pushed back, or a part of one that was cut off; a writer
    // holds bytes that `io` did not take.
    char buffer[kMostHeld + 2];
};

namespace vlx {

inline bool isStateful(const TSLocale& locale)
{
    return (locale.flags & kLocaleStateful) != 0;
}

inline bool canHold(const TSStream& stream, std::int32_t bytes)
{
    return stream.heldCount + bytes <= TSStream::kMostHeld;
}

// Drops the first held bytes.
inline void dropHeld(TSStream& stream, std::int32_t bytes)
{
    stream.heldCount = static_cast<std::uint16_t>(stream.heldCount - bytes);
    std::memmove(stream.buffer, stream.buffer + bytes, stream.heldCount);
}

// What ended the reading of several bytes.
enum class ReadEnd : std::uint8_t { kComplete, kEndOfData, kFailed, kSenseless };

// Reads into the buffer until it has `wanted` bytes, `have` of which are there. Short reads go on.
inline ReadEnd fillBuffer(TSStream& stream, std::int32_t& have, std::int32_t wanted)
{
    while (have < wanted) {
        const std::int32_t asked = wanted - have;
        const std::int32_t got = stream.io(stream.context, stream.buffer + have, asked);
        if (got > asked)
            return ReadEnd::kSenseless;
        if (got < 0)
            return got == -1 ? ReadEnd::kEndOfData : ReadEnd::kFailed;
        have += got;
    }
    return ReadEnd::kComplete;
}

// The error of a character that could not be read to its end.
inline std::int32_t errorOf(ReadEnd end)
{
    switch (end) {
    case ReadEnd::kEndOfData:
        return TS_ERR_STREAM_CUT;
    case ReadEnd::kFailed:
        return TS_ERR_STREAM_READ;
    default:
        return TS_ERR_STREAM_COUNT;
    }
}

// Puts bytes in front of what a reader holds; gives the error.
inline std::int32_t pushBack(TSStream& stream, const char* bytes, std::int32_t count)
{
    if (!canHold(stream, count))
        return TS_ERR_BUFFER;
    std::memmove(stream.buffer + count, stream.buffer, stream.heldCount);
    std::memcpy(stream.buffer, bytes, static_cast<std::size_t>(count));
    stream.heldCount = static_cast<std::uint16_t>(stream.heldCount + count);
    return TS_ERR_NONE;
}

// The same for one character of a stateful page, with the shift byte that has to stand between it
// and held bytes of the other state.
inline std::int32_t pushBackShifted(TSStream& stream, const TSCodePageHeader& page,
                                    const char* character, std::int32_t length)
{
    char bytes[5];
    std::memcpy(bytes, character, static_cast<std::size_t>(length));
    const bool multi = length > 1;
    std::int32_t count = length;
    if (stream.heldCount > 0 && multi != (stream.bufferState != 0))
        bytes[count++] = static_cast<char>(multi ? page.shiftOut : page.shiftIn);
    const std::int32_t error = pushBack(stream, bytes, count);
    if (error == TS_ERR_NONE)
        stream.bufferState = multi;
    return error;
}

// Offers bytes to a writer's `io` until it has taken all or fails; gives how many it took.
// Deliberate: a result of 0 is a short write, however often it comes.
inline std::int32_t offer(const TSStream& stream, const char* bytes, std::int32_t count)
{
    std::int32_t taken = 0;
    while (taken < count) {
        const std::int32_t left = count - taken;
        const std::int32_t done = stream.io(stream.context, const_cast<char*>(bytes) + taken, left);
        if (done < 0)
            break;
        taken += std::min(done, left);
    }
    return taken;
}

// Offers what a writer holds; true if all of it went.
inline bool drainHeld(TSStream& stream)
{
    dropHeld(stream, offer(stream, stream.buffer, stream.heldCount));
    return stream.heldCount == 0;
}

// Keeps bytes that could not be written, for a later write or flush; gives the error.
inline std::int32_t holdBytes(TSStream& stream, const char* bytes, std::int32_t count)
{
    if (!canHold(stream, count))
        return TS_ERR_BUFFER;
    std::memcpy(stream.buffer + stream.heldCount, bytes, static_cast<std::size_t>(count));
    stream.heldCount = static_cast<std::uint16_t>(stream.heldCount + count);
    return TS_ERR_STREAM_HELD;
}

// Writes bytes behind what is held; gives the error.
inline std::int32_t writeBytes(TSStream& stream, const char* bytes, std::int32_t count)
{
    const std::int32_t taken = drainHeld(stream) ? offer(stream, bytes, count) : 0;
    return taken == count ? TS_ERR_NONE : holdBytes(stream, bytes + taken, count - taken);
}

} // namespace vlx
