// TSReadCharW: the packed value of the next character of a stream.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsrdchrw");

namespace {

// A reader in a locale; each of its functions gives the error of the call.
class CharacterReader {
  public:
    CharacterReader(TSStream& stream, const TSLocale& locale)
        : stream_(stream), object_(locale.codePage), page_(tsCodePage(locale.codePage)),
          stateful_(vlx::isStateful(locale))
    {
    }

    int32_t read() { return stream_.heldCount == 0 ? readFresh() : readHeld(); }

    int32_t value = -1; // nothing was read

  private:
    int32_t readFresh();
    int32_t readHeld();
    int32_t keepPartial(vlx::ReadEnd end, int32_t have);

    int32_t lengthIn(int32_t state) const
    {
        if (stateful_)
            return state ? page_.maxCharBytes : 1;
        return page_.charLength[static_cast<uint8_t>(stream_.buffer[0])];
    }
    void takeValue(int32_t state)
    {
        value = static_cast<int32_t>(stateful_ ? TSCpGetWideEx(object_, stream_.buffer, state)
                                               : TSCpGetWide(object_, stream_.buffer));
    }

    // Sets a state from a shift byte; false if the byte is none.
    bool passShift(char byte, uint8_t& state) const
    {
        if (!stateful_ || !(vlx::isShiftOut(page_, byte) || vlx::isShiftIn(page_, byte)))
            return false;
        state = !vlx::isShiftOut(page_, byte);
        return true;
    }

    TSStream& stream_;
    const TSObject* const object_;
    const TSCodePageHeader& page_;
    const bool stateful_;
};

int32_t CharacterReader::readFresh()
{
    const int32_t got = stream_.io(stream_.context, stream_.buffer, 1);
    if (got == -1)
        return TS_ERR_NONE;
    if (got != 1)
        return TS_ERR_STREAM_COUNT;
    // The character's first byte takes the place of a shift byte.
    int32_t have = passShift(stream_.buffer[0], stream_.shiftState) ? 0 : 1;
    const vlx::ReadEnd end =
        vlx::fillBuffer(stream_, have, lengthIn(stateful_ ? stream_.shiftState : 0));
    if (end != vlx::ReadEnd::kComplete)
        return keepPartial(end, have);
    takeValue(stream_.shiftState);
    return TS_ERR_NONE;
}

// The data ended or failed inside a character: what there is of it is held.
int32_t CharacterReader::keepPartial(vlx::ReadEnd end, int32_t have)
{
    stream_.heldCount = static_cast<uint16_t>(have);
    stream_.bufferState = have > 0 ? stream_.shiftState : 0;
    if (have > 0)
        return vlx::errorOf(end);
    // Only a shift byte was read. One that enters the single-byte state may end the data.
    if (end != vlx::ReadEnd::kEndOfData)
        return TS_ERR_STREAM_COUNT;
    return stream_.shiftState ? TS_ERR_STREAM_CUT : TS_ERR_NONE;
}

int32_t CharacterReader::readHeld()
{
    const int32_t length = lengthIn(stream_.bufferState);
    int32_t have = stream_.heldCount;
    const vlx::ReadEnd end = vlx::fillBuffer(stream_, have, length);
    stream_.heldCount = static_cast<uint16_t>(have);
    if (end != vlx::ReadEnd::kComplete)
        return vlx::errorOf(end);
    takeValue(stream_.bufferState);
    const bool shifts = have > length && passShift(stream_.buffer[length], stream_.bufferState);
    vlx::dropHeld(stream_, shifts ? length + 1 : length);
    return TS_ERR_NONE;
}

} // namespace

int32_t TSReadCharW(TSStream* stream, TSLocale* handle)
{
    TS_TRACE(TSReadCharW);
    TSLocale* const locale = tsLocale(handle);
    if (stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, -1, "The stream is a writer");
    CharacterReader reader(*stream, *locale);
    locale->lastError = reader.read();
    if (locale->lastError != TS_ERR_NONE)
        TS_PRINT(TRC1_ERRORS, "No whole character, error %d", static_cast<int>(locale->lastError));
    TS_RETURN(reader.value);
}
