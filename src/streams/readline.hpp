// Reading a line or a stretch: one walk over the characters of a stream, with an output for bytes
// and one for arrays.
#pragma once

#include <cstdint>

#include "chars/eol.hpp"
#include "streams/stream.hpp"

namespace vlx {

inline constexpr std::uint32_t kReadOptions =
    kAllEols | TS_EOL_STRIP | TS_OPT_TERMINATE | TS_OPT_CHAR_COUNT;

// Results of a read without a count.
inline constexpr std::int32_t kReadEnded = -1;
inline constexpr std::int32_t kReadFailed = -2;

// The error of a call that reads nothing.
inline std::int32_t readRefusal(const TSStream& stream, std::uint32_t options)
{
    if (stream.isWriter)
        return TS_ERR_STREAM_DIRECTION;
    return options & ~kReadOptions ? TS_ERR_ARGUMENT : TS_ERR_NONE;
}

// Tells, character by character, where a line ends.
template <class Unit>
class LineEnds {
  public:
    LineEnds(const EolChars<Unit>& chars, std::uint32_t options) : chars_(chars), options_(options)
    {
    }

    // The characters of the line end that this one completes; 0 if the line goes on.
    std::int32_t behind(Unit unit)
    {
        const bool completes = afterReturn_ && unit == chars_.lineFeed && wants(TS_EOL_CRLF);
        afterReturn_ = unit == chars_.carriageReturn;
        if (completes)
            return 2;
        return (wants(TS_EOL_LF) && unit == chars_.lineFeed) ||
               (wants(TS_EOL_3) && unit == chars_.third) ||
               (wants(TS_EOL_4) && unit == chars_.fourth);
    }

  private:
    bool wants(std::uint32_t mask) const { return (options_ & mask) != 0; }

    const EolChars<Unit> chars_;
    const std::uint32_t options_;
    bool afterReturn_ = false;
};

// A line in bytes. Its room counts bytes, or characters if `TS_OPT_CHAR_COUNT` is given.
class ByteLine {
  public:
    using Value = TSChar32;

    // `state` is that of the output, or -1 where it takes no shift bytes.
    ByteLine(TSStream* stream, TSLocale* locale, char* output, std::int32_t state,
             std::int32_t size, std::uint32_t options)
        : stream_(stream), locale_(locale), page_(tsCodePage(locale->codePage)), output_(output),
          state_(state), room_(options & TS_OPT_TERMINATE ? size - 1 : size),
          counted_((options & TS_OPT_CHAR_COUNT) != 0)
    {
    }

    bool hasRoom() const { return room_ > 0; }
    std::int32_t count() const { return counted_ ? characters_ : written_; }

    bool read(Value& value)
    {
        const std::int32_t read = TSReadCharW(stream_, locale_);
        value = static_cast<Value>(read);
        return read != -1;
    }

    // False if the character does not fit; it is pushed back then.
    bool store(Value value)
    {
        char bytes[5];
        std::int32_t length = 0;
        const bool multi = value > 0xFF;
        const bool shifts = state_ >= 0 && multi != (state_ != 0);
        if (shifts)
            bytes[length++] = static_cast<char>(multi ? page_.shiftIn : page_.shiftOut);
        const std::int32_t valueLength = TSCpPutWide(bytes + length, value);
        length += valueLength;
        if (!counted_ && length > room_) {
            TSUngetCharW(stream_, locale_, value);
            return false;
        }
        if (shifts)
            state_ = multi;
        last_ = value;
        lastLength_ = valueLength;
        for (std::int32_t i = 0; i < length; ++i)
            output_[written_++] = bytes[i];
        room_ -= counted_ ? 1 : length;
        ++characters_;
        return true;
    }

    void takeBack(std::int32_t lineEnd)
    {
        written_ -= lineEnd;
        characters_ -= lineEnd;
    }

    // Writes no terminator if there is no room to leave the multi-byte state.
    void terminate()
    {
        if (state_ == 1 && !leaveMultiByte())
            return;
        output_[written_++] = 0;
        ++characters_;
    }

  private:
    bool leaveMultiByte()
    {
        if (!counted_ && room_ <= 0) {
            if (written_ < page_.maxCharBytes)
                return false;
            written_ -= lastLength_;
            TSUngetCharW(stream_, locale_, last_);
        }
        if (written_ > 0 && isShiftIn(page_, output_[written_ - 1]))
            --written_; // it has become pointless
        else
            output_[written_++] = static_cast<char>(page_.shiftOut);
        return true;
    }

    TSStream* const stream_;
    TSLocale* const locale_;
    const TSCodePageHeader& page_;
    char* const output_;
    std::int32_t state_;
    std::int32_t room_;
    const bool counted_;
    std::int32_t written_ = 0;
    std::int32_t characters_ = 0;
    TSChar32 last_ = 0;
    std::int32_t lastLength_ = 0; // bytes of the last character, without a shift byte
};

// A line in an array. `Read` is the function that gives its elements, one of them for none.
template <class Unit, class Read>
class UnitLine {
  public:
    using Value = Unit;

    UnitLine(Unit* output, std::int32_t size, std::uint32_t options, const Read& read)
        : output_(output), room_(options & TS_OPT_TERMINATE ? size - 1 : size), read_(read)
    {
    }

    bool hasRoom() const { return count_ < room_; }
    std::int32_t count() const { return count_; }
    bool read(Value& value)
    {
        value = read_();
        return value != static_cast<Unit>(-1);
    }
    bool store(Value value)
    {
        output_[count_++] = value;
        return true;
    }
    void takeBack(std::int32_t lineEnd) { count_ -= lineEnd; }
    void terminate() { output_[count_++] = 0; }

  private:
    Unit* const output_;
    const std::int32_t room_;
    const Read read_;
    std::int32_t count_ = 0;
};

// Reads up to a line end, the end of the data or of the room, and gives the result of the call. A
// failure behind the first character gives what there is, without a terminator.
template <class Line, class Ends>
std::int32_t readLine(Line line, Ends ends, const TSLocale& locale, std::uint32_t options)
{
    while (line.hasRoom()) {
        typename Line::Value value;
        if (!line.read(value)) {
            const bool failed = locale.lastError != TS_ERR_NONE;
            if (line.count() == 0)
                return failed ? kReadFailed : kReadEnded;
            if (failed)
                return line.count();
            break;
        }
        if (!line.store(value))
            break;
        if (const std::int32_t lineEnd = ends.behind(value)) {
            if (options & TS_EOL_STRIP)
                line.takeBack(lineEnd);
            break;
        }
    }
    if (options & TS_OPT_TERMINATE)
        line.terminate();
    return line.count();
}

} // namespace vlx
