// What the conversions of the oracle share: lengths, the walk over bytes, and the output of
// elements.
#pragma once

#include <algorithm>

#include "support/oracle_convert.hpp"
#include "support/oracle_strings_walk.hpp"

namespace vlx::oracle {

inline bool refusesConversion(std::uint32_t options)
{
    options &= ~kCharCount;
    return options != 0 && options != kTerminate;
}

inline std::int64_t sizeOf(const Room& room)
{
    return std::max(room.size, 0);
}

inline std::uint32_t unitAt(const UnitText& text, std::ptrdiff_t position)
{
    if (position < 0 || position >= std::ssize(text.units))
        throw StrayRead();
    return text.units[static_cast<std::size_t>(position)];
}

inline std::ptrdiff_t unitsOf(const UnitText& text)
{
    return text.length < 0 ? lengthUnits(text.units) : text.length;
}

// The bytes of an input; a negative length gives those before the terminator.
inline std::ptrdiff_t bytesOf(const Locale& locale, const Text& input, bool countsCharacters)
{
    if (input.length < 0)
        return terminatedLength(input.bytes);
    return lengthInBytes(locale, input, countsCharacters ? kCharCount : 0);
}

// The walk over bytes. With shift states it reads the shift bytes; else a length comes from the
// table alone.
class ByteWalk {
  public:
    ByteWalk(const Locale& locale, bool withState, const Text& input, std::ptrdiff_t end)
        : locale_(locale), withState_(withState), text_(input.bytes), state_(input.state), end_(end)
    {
    }

    // The next character; none where the walk stops.
    std::optional<Span> next()
    {
        at_ += length_;
        length_ = 0;
        if (at_ >= end_)
            return std::nullopt;
        // One shift byte alone: a second one is read as a character.
        if (withState_ && isShift(locale_, text_.at(at_))) {
            state_ = stateBehind(locale_, text_.at(at_));
            at_ += 1;
            if (at_ >= end_)
                return std::nullopt;
        }
        const std::ptrdiff_t step =
            withState_ ? stepOf(locale_, state_) : tableLength(locale_, text_.at(at_));
        if (at_ + step > end_)
            return std::nullopt;
        length_ = step;
        return text_.from(at_);
    }

    // The character that `next` has found has not been taken.
    void giveBack() { length_ = 0; }

    std::ptrdiff_t length() const { return length_; }
    std::int32_t state() const { return state_; }
    bool readAll() const { return at_ + length_ >= end_; }

    std::uint16_t unicode() const
    {
        const Span character = text_.from(at_);
        if (withState_)
            return unicodeOf(locale_.page, character, state_ != 0 ? length_ : 1);
        const unsigned byte = character.at(0);
        return unicodeOf(locale_.page, character,
                         static_cast<std::ptrdiff_t>(charLength(locale_.page, byte)));
    }

  private:
    const Locale& locale_;
    bool withState_;
    Span text_;
    std::int32_t state_;
    std::ptrdiff_t end_;
    std::ptrdiff_t at_ = 0;
    std::ptrdiff_t length_ = 0;
};

// The members that give 16-bit or 32-bit elements: `next` gives one, or none where the input ends.
template <class Unit, class Next, class ReadAll>
Converted<Unit> toElements(std::int64_t count, bool terminates, bool mark, Next next,
                           ReadAll readAll)
{
    Converted<Unit> converted;
    if (count <= 0)
        return converted;
    if (terminates)
        --count;
    while (std::ssize(converted.written) < count) {
        const std::optional<std::uint32_t> unit = next();
        if (!unit)
            break;
        converted.written.push_back(static_cast<Unit>(*unit));
    }
    if (terminates || (mark && readAll() && std::ssize(converted.written) < count))
        converted.written.push_back(0);
    converted.result = static_cast<std::int32_t>(converted.written.size());
    return converted;
}

// Element for element.
template <class Unit, class Change>
Converted<Unit> eachElement(const Room& room, const UnitText& input, std::uint32_t options,
                            Change change)
{
    if (refusesConversion(options))
        return {-1, kBadArgument, {}};
    if (room.size <= 0)
        return {};
    const std::ptrdiff_t length = unitsOf(input);
    std::ptrdiff_t at = 0;
    return toElements<Unit>(
        sizeOf(room), (options & kTerminate) != 0, input.length < 0,
        [&]() -> std::optional<std::uint32_t> {
            if (at >= length)
                return std::nullopt;
            return change(unitAt(input, at++));
        },
        [&] { return at >= length; });
}

} // namespace vlx::oracle
