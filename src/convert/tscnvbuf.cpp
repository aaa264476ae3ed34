// TSConvertBuffer: converts one slice of a text. What a slice cuts, a character of the input or of
// the output, is kept in the handle for the next call.
#include <algorithm>
#include <cstring>

#include "convert/encode.hpp"
#include "convert/handle.hpp"
#include "convert/source.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT("tscnvbuf");

namespace {

constexpr int32_t kGoesOn = -1; // no result of a call yet

// The two ends of a call, moved as it goes on.
class SliceConversion {
  public:
    SliceConversion(TSConversion& handle, char*& output, int32_t& outputCount, const char*& input,
                    int32_t& inputCount)
        : handle_(handle), source_(handle.sourceLocale->codePage),
          target_(handle.targetLocale->codePage),
          sourceShifts_((handle.sourceLocale->flags & vlx::kLocaleStateful) != 0),
          targetShifts_((handle.targetLocale->flags & vlx::kLocaleStateful) != 0), output_(output),
          outputCount_(outputCount), input_(input), inputCount_(inputCount)
    {
    }

    int32_t run();

  private:
    int32_t drainPending();
    void convertBulk();
    int32_t decodeBulk(TSChar16* values, int32_t room, int32_t bytes);
    int32_t completePartial(TSChar16& value);
    int32_t read(TSChar16& value);
    int32_t readWhole(TSChar16& value);
    int32_t keepPartial();
    int32_t write(TSChar16 value);
    int32_t keepPending(bool shifts, const char* bytes, int32_t length);

    // The length of a character, and its value, by the state of the source.
    int32_t lengthOf(const char* character) const
    {
        const TSCodePageHeader& page = tsCodePage(source_);
        if (sourceShifts_)
            return handle_.sourceState ? page.maxCharBytes : 1;
        return page.charLength[static_cast<std::uint8_t>(*character)];
    }
    TSChar16 valueOf(const char* character, int32_t length) const
    {
        const bool multi = sourceShifts_ ? handle_.sourceState != 0 : length != 1;
        return multi
                   ? TSCpMbToUnicode(source_, character)
                   : TSChar16{tsCodePage(source_).toUnicode[static_cast<std::uint8_t>(*character)]};
    }

    // Deliberate: a character's length is compared with the low 16 bits of the count.
    bool isCutOff(int32_t length) const { return length > (inputCount_ & 0xFFFF); }

    // Steps over a shift byte; false if the input ends with it.
    bool passShift();

    void moveInput(int32_t bytes)
    {
        input_ += bytes;
        inputCount_ -= bytes;
    }
    void putByte(char byte)
    {
        *output_++ = byte;
        --outputCount_;
    }

    TSConversion& handle_;
    const TSObject* const source_;
    const TSObject* const target_;
    const bool sourceShifts_;
    const bool targetShifts_;
    char*& output_;
    int32_t& outputCount_;
    const char*& input_;
    int32_t& inputCount_;
};

int32_t SliceConversion::run()
{
    inputCount_ = std::max(inputCount_, 0);
    int32_t result = drainPending();
    if (result != kGoesOn)
        return result;
    TSChar16 value = 0;
    result = handle_.partialCount ? completePartial(value) : read(value);
    while (result == kGoesOn) {
        result = write(value);
        if (result == kGoesOn) {
            convertBulk();
            result = read(value);
        }
    }
    return result;
}

// Converts characters that are whole and surely fit.
void SliceConversion::convertBulk()
{
    constexpr int32_t kValues = 512;
    constexpr int32_t kWorthIt = 16;
    TSChar16 values[kValues];
    for (;;) {
        const int32_t room = std::min(outputCount_ / vlx::kMostBytes, kValues);
        // Of more than the low 16 bits of the count, the rest is another call's.
        const int32_t bytes = inputCount_ & 0xFFFF;
        if (room < kWorthIt || bytes < kWorthIt)
            return;
        const int32_t count = decodeBulk(values, room, bytes);
        if (count == 0)
            return;
        int32_t state = handle_.targetState;
        char* const end = output_ + outputCount_;
        const int32_t done = vlx::encode({target_, handle_.targetLocale->pageTraits, targetShifts_},
                                         values, count, output_, end, state);
        outputCount_ = static_cast<int32_t>(end - output_);
        handle_.targetState = static_cast<uint8_t>(state);
        for (int32_t i = done; i < count; ++i)
            write(values[i]);
    }
}

// Reads from the next bytes of the input, which are offered without its last few: they may have to
// be kept.
int32_t SliceConversion::decodeBulk(TSChar16* values, int32_t room, int32_t bytes)
{
    const char* const begin = input_;
    const char* const end = begin + bytes - TSConversion::kMaxChar;
    const TSLocale& locale = *handle_.sourceLocale;
    int32_t count = 0;
    if (sourceShifts_) {
        int32_t state = handle_.sourceState;
        count = vlx::decodeShifted(source_, input_, end, state, values, room);
        handle_.sourceState = static_cast<uint8_t>(state);
    } else if (locale.flags & vlx::kLocaleSingleByte) {
        count = vlx::decodeSingle(source_, locale.pageTraits, input_, end, values, room);
    } else {
        count = vlx::decodeMulti(source_, locale.pageTraits, input_, end, values, room);
    }
    inputCount_ -= static_cast<int32_t>(input_ - begin);
    return count;
}

int32_t SliceConversion::drainPending()
{
    if (handle_.pendingCount == 0)
        return kGoesOn;
    if (outputCount_ <= 0)
        return TS_ERR_OUTPUT_FULL;
    const int32_t copied = std::min<int32_t>(outputCount_, handle_.pendingCount);
    std::memcpy(output_, handle_.pendingOutput, static_cast<std::size_t>(copied));
    output_ += copied;
    outputCount_ -= copied;
    handle_.pendingCount = static_cast<std::uint8_t>(handle_.pendingCount - copied);
    if (handle_.pendingCount == 0)
        return kGoesOn;
    // Deliberate: the bytes moved down are what is left less what was copied, so that some may come
    // a second time; callers that drain byte by byte depend on the counts.
    const int32_t moved = handle_.pendingCount - copied;
    if (moved > 0)
        std::memmove(handle_.pendingOutput, handle_.pendingOutput + copied,
                     static_cast<std::size_t>(moved));
    return TS_ERR_OUTPUT_FULL;
}

// Takes the bytes that a character of the slice before still lacks.
int32_t SliceConversion::completePartial(TSChar16& value)
{
    auto* const partial = reinterpret_cast<char*>(handle_.partialChar);
    const int32_t length = lengthOf(partial);
    const int32_t missing = std::max(length - handle_.partialCount, 0);
    const bool complete = !isCutOff(missing);
    const int32_t room = TSConversion::kMaxChar - handle_.partialCount;
    const int32_t copied = std::min(complete ? missing : inputCount_ & 0xFFFF, room);
    std::memcpy(partial + handle_.partialCount, input_, static_cast<std::size_t>(copied));
    if (!complete) {
        handle_.partialCount = static_cast<std::uint8_t>(handle_.partialCount + copied);
        moveInput(inputCount_);
        return TS_ERR_PARTIAL_CHAR;
    }
    moveInput(copied);
    handle_.partialCount = 0;
    value = valueOf(partial, length);
    return kGoesOn;
}

int32_t SliceConversion::read(TSChar16& value)
{
    if (inputCount_ <= 0)
        return TS_ERR_NONE;
    if (sourceShifts_ && !passShift())
        return TS_ERR_NONE;
    return readWhole(value);
}

int32_t SliceConversion::readWhole(TSChar16& value)
{
    const int32_t length = lengthOf(input_);
    if (isCutOff(length))
        return keepPartial();
    value = valueOf(input_, length);
    moveInput(length);
    return kGoesOn;
}

bool SliceConversion::passShift()
{
    const TSCodePageHeader& page = tsCodePage(source_);
    if (vlx::isShiftIn(page, *input_) || vlx::isShiftOut(page, *input_)) {
        handle_.sourceState = vlx::isShiftIn(page, *input_);
        moveInput(1);
    }
    return inputCount_ > 0;
}

// The input ends inside a character: what there is of it is kept.
int32_t SliceConversion::keepPartial()
{
    const int32_t kept = std::min(inputCount_ & 0xFFFF, TSConversion::kMaxChar - 1);
    std::memcpy(handle_.partialChar, input_, static_cast<std::size_t>(kept));
    handle_.partialCount = static_cast<std::uint8_t>(kept);
    moveInput(inputCount_);
    return TS_ERR_PARTIAL_CHAR;
}

int32_t SliceConversion::write(TSChar16 value)
{
    char bytes[4];
    const int32_t length = TSCpUnicodeToMb(target_, value, bytes);
    const bool multi = length > 1;
    const bool shifts = targetShifts_ && multi != (handle_.targetState != 0);
    if (shifts)
        handle_.targetState = multi;
    if (length + (shifts ? 1 : 0) > outputCount_)
        return keepPending(shifts, bytes, length);
    if (shifts)
        putByte(
            static_cast<char>(multi ? tsCodePage(target_).shiftIn : tsCodePage(target_).shiftOut));
    std::memcpy(output_, bytes, static_cast<std::size_t>(length));
    output_ += length;
    outputCount_ -= length;
    return kGoesOn;
}

// The output is full: what does not fit of a character is kept. Its state has moved already.
int32_t SliceConversion::keepPending(bool shifts, const char* bytes, int32_t length)
{
    const auto put = [this](char byte) {
        if (outputCount_ > 0)
            putByte(byte);
        else
            handle_.pendingOutput[handle_.pendingCount++] = static_cast<std::uint8_t>(byte);
    };
    if (shifts)
        put(static_cast<char>(handle_.targetState ? tsCodePage(target_).shiftIn
                                                  : tsCodePage(target_).shiftOut));
    for (int32_t i = 0; i < length; ++i)
        put(bytes[i]);
    return TS_ERR_OUTPUT_FULL;
}

} // namespace

int32_t TSConvertBuffer(TSConversion* conversion, char** output, int32_t* outputCount,
                        const char** input, int32_t* inputCount)
{
    TS_TRACE(TSConvertBuffer);
    TS_RETURN(SliceConversion(*conversion, *output, *outputCount, *input, *inputCount).run());
}
