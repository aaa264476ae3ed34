// Where a conversion writes bytes, and how it ends them.
#pragma once

#include <cstdint>
#include <cstring>

#include "chars/form.hpp"
#include "convert/encode.hpp"
#include "convert/source.hpp"
#include "frame/globals.hpp"
#include "strings/length.hpp"

namespace vlx {

// What a conversion was asked for, with TS_OPT_CHAR_COUNT taken apart.
struct ConversionOptions {
    explicit ConversionOptions(std::uint32_t options)
        : counted((options & TS_OPT_CHAR_COUNT) != 0), rest(options & ~TS_OPT_CHAR_COUNT)
    {
    }

    bool good() const { return rest == 0 || rest == TS_OPT_TERMINATE; }
    bool terminate() const { return rest == TS_OPT_TERMINATE; }

    const bool counted; // lengths and results count characters
    const std::uint32_t rest;
};

// The bytes of an input that is not empty: a positive length in characters is turned into bytes, a
// negative one is up to the terminator.
inline std::int32_t inputBytes(const TSLocale& locale, const char* input, std::int32_t state,
                               std::int32_t length, bool counted)
{
    if (length < 0)
        return unitsOf(input);
    return counted && length > 0 ? TSCpCharsToBytes(locale.codePage, input, state, length) : length;
}

// Bytes of a locale's code page, stopped before the first character that would not fit. The size is
// in bytes, or in characters if `counted`.
class ByteOutput {
  public:
    // `state` is -1 where the output takes no shift bytes.
    ByteOutput(const TSLocale& locale, char* output, std::int32_t state, std::int32_t size,
               const ConversionOptions& options)
        : object_(locale.codePage), traits_(locale.pageTraits), output_(output),
          stateful_(state >= 0), state_(stateful_ ? state : 0),
          size_(options.terminate() ? size - 1 : size), counted_(options.counted),
          terminate_(options.terminate())
    {
    }

    // Writes the character of a value; false, and nothing, if it does not fit.
    bool put(TSChar16 value)
    {
        char bytes[4];
        return putBytes(bytes, TSCpUnicodeToMb(object_, value, bytes));
    }

    // Writes the characters of values while they fit, and gives their number.
    std::int32_t put(const TSChar16* values, std::int32_t count)
    {
        std::int32_t done = 0;
        if (!counted_) {
            char* at = output_ + written_;
            done =
                encode({object_, traits_, stateful_}, values, count, at, output_ + size_, state_);
            written_ = static_cast<std::int32_t>(at - output_);
        }
        while (done < count && put(values[done]))
            ++done;
        return done;
    }

    // Writes one byte for each of some values, and gives their number.
    std::int32_t putSingle(const TSChar16* values, std::int32_t count)
    {
        if (counted_)
            return 0;
        char* at = output_ + written_;
        const std::int32_t done =
            encodeSingle(object_, traits_, values, count, at, output_ + size_);
        written_ += done;
        return done;
    }

    bool putBytes(const char* bytes, std::int32_t length)
    {
        const bool multi = length > 1;
        const bool shifts = stateful_ && (multi ? state_ == 0 : state_ == 1);
        ++count_;
        if (counted_ ? count_ > size_ : written_ + length + (shifts ? 1 : 0) > size_)
            return false;
        if (shifts) {
            const TSCodePageHeader& page = tsCodePage(object_);
            output_[written_++] = static_cast<char>(multi ? page.shiftIn : page.shiftOut);
            state_ = multi;
        }
        for (std::int32_t i = 0; i < length; ++i)
            output_[written_++] = bytes[i];
        return true;
    }

    // Ends the text: with a terminator if it was asked for, or if `ifRoom` and there is room, and
    // before it with the shift byte that leaves the multi-byte state. Gives the result of the call.
    std::int32_t finish(bool ifRoom)
    {
        if (counted_) {
            if (count_ > size_)
                --count_; // of the character that did not fit
            size_ = TSCpCharsToBytesWithin(object_, output_, state_,
                                           static_cast<std::int32_t>(size_), written_);
        }
        if ((terminate_ || (ifRoom && written_ < size_)) && close()) {
            output_[written_++] = 0;
            ++count_;
        }
        return result();
    }

    // The result without an end.
    std::int32_t result() const { return counted_ ? count_ : written_; }

  private:
    // Leaves the multi-byte state. Where there is no room for the shift byte the last character is
    // taken back; false if there is none.
    bool close()
    {
        if (!stateful_ || state_ != 1)
            return true;
        const TSCodePageHeader& page = tsCodePage(object_);
        if (counted_)
            ++size_;
        if (written_ > size_ - (terminate_ ? 1 : 2)) {
            if (written_ < page.maxCharBytes)
                return false;
            written_ -= page.maxCharBytes;
        }
        if (written_ > 0 && isShiftIn(page, output_[written_ - 1]))
            --written_; // it has become pointless
        else
            output_[written_++] = static_cast<char>(page.shiftOut);
        return true;
    }

    const TSObject* const object_;
    const unsigned traits_;
    char* const output_;
    const bool stateful_;
    std::int32_t state_;
    std::int64_t size_; // wide, since it may grow by one
    const bool counted_;
    const bool terminate_;
    std::int32_t written_ = 0;
    std::int32_t count_ = 0;
};

// Moves all values of a source to an output and ends it.
template <class Source>
std::int32_t convertTo(ByteOutput output, Source source, bool terminateIfRoom)
{
    constexpr std::int32_t kValues = 512;
    TSChar16 values[kValues];
    std::int32_t count = 0;
    std::int32_t done = 0;
    do {
        count = readValues(source, values, kValues);
        done = output.put(values, count);
    } while (count == kValues && done == count);
    return output.finish(terminateIfRoom && done == count && source.whole());
}

// The same for 16-bit text, which is its own values.
inline std::int32_t convertTo(ByteOutput output, const UnicodeSource& source, bool terminateIfRoom)
{
    const auto count = static_cast<std::int32_t>(source.end - source.at);
    return output.finish(output.put(source.at, count) == count && terminateIfRoom);
}

// An empty text in plain bytes: a terminator where it was asked for. Gives the result.
inline std::int32_t emptyText(char* output, std::int32_t size, bool terminate)
{
    if (!terminate || size <= 0)
        return 0;
    *output = 0;
    return 1;
}

} // namespace vlx
