// The conversions to bytes of another code page.
#include "support/oracle_convert_walk.hpp"

namespace vlx::oracle {

namespace {

// The output of the members that write bytes.
class ByteOutput {
  public:
    ByteOutput(const Locale& target, bool withState, const Room& room, std::uint32_t options)
        : target_(target), withState_(withState), state_(room.state), size_(sizeOf(room)),
          inCharacters_((options & kCharCount) != 0), terminates_((options & kTerminate) != 0)
    {
    }

    // An input or an output of nothing.
    ToBytes nothing()
    {
        const std::int64_t size = size_;
        if (!terminates_ || size == 0)
            return {};
        if (withState_ && state_ == 1) {
            if (size < 2 && !inCharacters_)
                return {};
            put(shiftOut(target_.page));
        }
        put(0);
        return {inCharacters_ ? 1 : static_cast<std::int32_t>(length_), 0, memory_};
    }

    void reserveTerminator()
    {
        if (terminates_)
            --size_;
    }

    // Writes one character; false if it would not fit.
    bool add(std::uint16_t value)
    {
        const Bytes bytes = unicodeToMb(target_.page, value);
        ++count_;
        std::optional<unsigned> shift;
        std::int32_t newState = state_;
        if (withState_ && bytes.size() == 1 && state_ == 1) {
            shift = shiftOut(target_.page);
            newState = 0;
        } else if (withState_ && bytes.size() > 1 && state_ == 0) {
            shift = shiftIn(target_.page);
            newState = 1;
        }
        if (inCharacters_ ? count_ > size_ : length_ + std::ssize(bytes) + (shift ? 1 : 0) > size_)
            return false;
        if (shift)
            put(*shift);
        state_ = newState;
        for (const unsigned char byte : bytes)
            put(byte);
        return true;
    }

    // The end of the walk; `mark` asks for a terminator if there is room.
    ToBytes finish(bool mark, bool readAll)
    {
        if (inCharacters_) {
            if (count_ > size_)
                --count_;
            const Bytes written(memory_.begin(), memory_.begin() + length_);
            size_ = charsToBytesWithin(target_.page, Span(written), withState_ ? state_ : 0,
                                       static_cast<std::int32_t>(size_), length_);
        }
        if (terminates_ || (mark && readAll && length_ < size_))
            terminate();
        return {static_cast<std::int32_t>(inCharacters_ ? count_ : length_), 0, memory_};
    }

  private:
    void put(unsigned byte)
    {
        memory_.resize(std::max(memory_.size(), static_cast<std::size_t>(length_) + 1));
        memory_[static_cast<std::size_t>(length_)] = static_cast<unsigned char>(byte);
        ++length_;
    }

    void terminate()
    {
        if (withState_ && state_ == 1 && !close())
            return;
        put(0);
        ++count_;
    }

    // Leaves the multi-byte state; false if there is no room for it.
    bool close()
    {
        const auto longest = static_cast<std::ptrdiff_t>(maxCharBytes(target_.page));
        if (inCharacters_)
            ++size_;
        if (length_ > size_ - (terminates_ ? 1 : 2)) {
            if (length_ < longest)
                return false;
            length_ -= longest;
        }
        if (length_ > 0 && memory_[static_cast<std::size_t>(length_ - 1)] == shiftIn(target_.page))
            --length_;
        else
            put(shiftOut(target_.page));
        return true;
    }

    const Locale& target_;
    bool withState_;
    std::int32_t state_;
    std::int64_t size_;
    bool inCharacters_;
    bool terminates_;
    Bytes memory_;
    std::ptrdiff_t length_ = 0;
    std::int64_t count_ = 0;
};

ToBytes bytesToBytes(const Locale& target, bool targetHasState, const Room& room,
                     const Locale& source, bool sourceHasState, const Text& input,
                     std::uint32_t options)
{
    if (refusesConversion(options))
        return {-1, kBadArgument, {}};
    ByteOutput output(target, targetHasState, room, options);
    if (input.length == 0 || room.size <= 0)
        return output.nothing();
    const std::ptrdiff_t end = bytesOf(source, input, (options & kCharCount) != 0);
    output.reserveTerminator();
    ByteWalk walk(source, sourceHasState, input, end);
    while (walk.next()) {
        if (!output.add(walk.unicode())) {
            walk.giveBack();
            break;
        }
    }
    return output.finish(input.length < 0, walk.readAll());
}

ToBytes unicodeToBytes(const Locale& locale, bool withState, const Room& room,
                       const UnitText& input, std::uint32_t options)
{
    if (refusesConversion(options))
        return {-1, kBadArgument, {}};
    ByteOutput output(locale, withState, room, options);
    if (input.length == 0 || room.size <= 0)
        return output.nothing();
    const std::ptrdiff_t length = unitsOf(input);
    output.reserveTerminator();
    std::ptrdiff_t at = 0;
    while (at < length && output.add(static_cast<std::uint16_t>(unitAt(input, at))))
        ++at;
    return output.finish(input.length < 0, at >= length);
}

} // namespace

ToBytes convertString(const Locale& target, const Room& room, const Locale& source,
                      const Text& input, std::uint32_t options)
{
    return bytesToBytes(target, false, {0, room.size}, source, false,
                        {input.bytes, 0, input.length}, options);
}

ToBytes convertStringEx(const Locale& target, const Room& room, const Locale& source,
                        const Text& input, std::uint32_t options)
{
    return bytesToBytes(target, target.stateful, room, source, source.stateful, input, options);
}

ToBytes unicodeToString(const Locale& locale, const Room& room, const UnitText& input,
                        std::uint32_t options)
{
    if (!locale.singleByte)
        return unicodeToBytes(locale, false, {0, room.size}, input, options);
    return eachElement<unsigned char>(room, input, options, [&](std::uint32_t value) {
        return unicodeToMb(locale.page, static_cast<std::uint16_t>(value)).at(0);
    });
}

ToBytes unicodeToStringEx(const Locale& locale, const Room& room, const UnitText& input,
                          std::uint32_t options)
{
    if (!locale.stateful)
        return unicodeToString(locale, room, input, options);
    return unicodeToBytes(locale, true, room, input, options);
}

} // namespace vlx::oracle
