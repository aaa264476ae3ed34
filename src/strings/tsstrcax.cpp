// TSStrcatEx: an append of stateful text that brings the states of both together. The caller gives
// the room.
#include "chars/form.hpp"
#include "strings/copy.hpp"

TS_TRACE_UNIT("tsstrcax");

namespace {

bool isShift(const TSCodePageHeader& page, char byte)
{
    return vlx::isShiftIn(page, byte) || vlx::isShiftOut(page, byte);
}

// The part of the source that is appended: its whole characters, without a leading shift byte.
struct Piece {
    const char* begin;
    const char* end;
    int32_t state;    // in which it begins
    int32_t endState; // after it
};

Piece pieceOf(const TSLocale& locale, const char* source, int32_t state, int32_t length,
              bool counted)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    Piece piece{source, source, state, 0};
    if (length < 0) { // a whole string ends in the single-byte state
        piece.end += vlx::unitsOf(source);
    } else {
        if (counted)
            length = TSCpCharsToBytes(locale.codePage, source, state, length);
        const vlx::ShiftForm form{locale.codePage};
        const auto behind = behindWhole(form, {source, source + length, state});
        piece.end = behind.at;
        piece.endState = behind.state;
    }
    if (piece.begin != piece.end && isShift(page, *piece.begin))
        piece.state = vlx::isShiftIn(page, *piece.begin++);
    return piece;
}

} // namespace

int32_t TSStrcatEx(TSLocale* handle, char* destination, int32_t state, const char* source,
                   int32_t sourceState, int32_t length, uint32_t options)
{
    TS_TRACE(TSStrcatEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStrcat(locale, destination, source, length, options));
    if (options & ~(TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    const bool counted = (options & TS_OPT_CHAR_COUNT) != 0;
    const int32_t before = vlx::unitsOf(destination);
    if (length == 0) {
        // Deliberate: bytes count the terminator here, characters do not.
        locale->lastError = TS_ERR_NONE;
        TS_RETURN(counted ? TSNumCharsEx(locale, destination, state, before, 0) : before + 1);
    }
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    const Piece piece = pieceOf(*locale, source, sourceState, length, counted);
    char* at = destination + before;
    const bool wasClosed = before > 0 && vlx::isShiftOut(page, at[-1]);
    if (wasClosed)
        --at;
    if (wasClosed != (piece.state != 0))
        *at++ = static_cast<char>(piece.state ? page.shiftIn : page.shiftOut);
    const auto count = static_cast<std::size_t>(piece.end - piece.begin);
    std::memmove(at, piece.begin, count);
    at += count;

    bool open = piece.endState != 0;
    if (at != destination && isShift(page, at[-1])) {
        --at;
        open = vlx::isShiftOut(page, *at);
    }
    if (length < 0 || (options & TS_OPT_TERMINATE)) {
        if (open)
            *at++ = static_cast<char>(page.shiftOut);
        *at++ = 0;
    }
    const auto total = static_cast<int32_t>(at - destination);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(counted ? TSNumCharsEx(locale, destination, state, total, 0) : total);
}
