// Copy and append.
#include "support/oracle_strings_walk.hpp"

#include <algorithm>

namespace vlx::oracle {

namespace {

void copyBytes(Bytes& destination, std::ptrdiff_t at, Span source, std::ptrdiff_t count)
{
    for (std::ptrdiff_t i = 0; i < count; ++i)
        put(destination, at + i, source.at(i));
}

// The bytes that the smaller of length and size lets a copy take; what is known to end with a
// terminator is not read behind it.
std::ptrdiff_t copyBudget(const Locale& locale, const Text& source, std::int32_t size,
                          std::uint32_t options)
{
    if (options != kCharCount) {
        if (source.length < 0)
            return std::min<std::ptrdiff_t>(terminatedLength(source.bytes) + 1, size);
        return std::min(source.length, size);
    }
    if (source.length >= 0)
        return charsToBytes(locale.page, source.bytes, source.state, std::min(source.length, size));
    const std::ptrdiff_t all = terminatedLength(source.bytes) + 1;
    const auto bytes = static_cast<std::int32_t>(all);
    const std::int32_t characters = numCharsEx(locale, source.bytes, source.state, bytes);
    return std::min(all, charsToBytesWithin(locale.page, source.bytes, source.state,
                                            std::min(characters, size), all));
}

// How the states of source and destination are brought together: the shift byte to write, or the
// one of the source that is skipped.
struct Junction {
    bool fits = true;
    std::optional<unsigned> written;
    bool skipped = false;
    std::int32_t state = 0; // of the source behind it
};

Junction joinStates(const Locale& locale, std::int32_t destinationState, std::int32_t size,
                    const Text& source)
{
    Junction junction;
    junction.state = source.state;
    if (destinationState == 0 && source.state != 0) {
        if (source.bytes.at(0) == shiftOut(locale.page)) {
            junction.skipped = true;
            junction.state = 0;
        } else {
            junction.written = shiftIn(locale.page);
            junction.fits = size >= stepOf(locale, 1) + 1;
        }
    }
    if (destinationState != 0 && source.state == 0) {
        if (source.bytes.at(0) == shiftIn(locale.page)) {
            junction.skipped = true;
            junction.state = 1;
        } else {
            junction.written = shiftOut(locale.page);
            junction.fits = size >= 2;
        }
    }
    return junction;
}

std::int32_t bytesOrCharacters(const Locale& locale, Span text, std::int32_t state,
                               std::ptrdiff_t bytes, std::uint32_t options)
{
    const auto length = static_cast<std::int32_t>(bytes);
    return (options & kCharCount) != 0 ? numCharsEx(locale, text, state, length) : length;
}

} // namespace

Outcome copy(const Locale& locale, Bytes& destination, std::int32_t size, const Text& source,
             std::uint32_t options)
{
    if (options != 0 && options != kCharCount)
        return {-1, kBadArgument};
    if (source.length == 0 || size <= 0)
        return {0, 0};
    // The plain member has no states, so that its characters are counted by the length table.
    Locale plain = locale;
    plain.stateful = false;
    const std::ptrdiff_t budget =
        copyBudget(plain, {source.bytes, 0, source.length}, size, options);
    const std::ptrdiff_t taken = wholeCharacters(locale, source.bytes, budget).bytes;
    copyBytes(destination, 0, source.bytes, taken);
    return {bytesOrCharacters(plain, source.bytes, 0, taken, options), 0};
}

Outcome copyEx(const Locale& locale, Bytes& destination, std::int32_t state, std::int32_t size,
               const Text& source, std::uint32_t options)
{
    if (!locale.stateful)
        return copy(locale, destination, size, source, options);
    if (options != 0 && options != kCharCount)
        return {-1, kBadArgument};
    if (source.length == 0 || size <= 0)
        return {0, 0};
    std::ptrdiff_t budget = copyBudget(locale, source, size, options);
    std::ptrdiff_t length = source.length < 0 ? terminatedLength(source.bytes) + 1 : source.length;
    std::ptrdiff_t room = size;
    const Junction junction = joinStates(locale, state, size, source);
    if (!junction.fits)
        return {0, 0};
    Span rest = source.bytes;
    if (junction.skipped) {
        rest = rest.from(1);
        length -= 1;
        budget -= 1;
    }
    if (junction.written)
        room -= 1;
    if (options != kCharCount)
        budget = std::min(length, room);
    const Walk walk = wholeCharactersEx(locale, rest, junction.state, budget);
    const std::ptrdiff_t taken = walk.endsOnShift ? walk.bytes - 1 : walk.bytes;
    if (junction.written)
        put(destination, 0, *junction.written);
    copyBytes(destination, junction.written ? 1 : 0, rest, taken);
    if (options == kCharCount)
        return {bytesOrCharacters(locale, rest, junction.state, taken, options), 0};
    return {static_cast<std::int32_t>(taken + (junction.written ? 1 : 0)), 0};
}

Outcome append(const Locale& locale, Bytes& destination, const Text& source, std::uint32_t options)
{
    if ((options & ~(kCharCount | kTerminate)) != 0)
        return {-1, kBadArgument};
    Locale plain = locale;
    plain.stateful = false;
    std::ptrdiff_t total = terminatedLength(Span(destination));
    if (source.length == 0) {
        if ((options & kCharCount) == 0)
            total += 1;
        return {bytesOrCharacters(plain, Span(destination), 0, total, options), 0};
    }
    std::ptrdiff_t taken;
    if (source.length < 0) {
        taken = terminatedLength(source.bytes);
        options |= kTerminate;
    } else {
        const std::ptrdiff_t bytes =
            lengthInBytes(locale, {source.bytes, 0, source.length}, options);
        taken = wholeCharacters(locale, source.bytes, bytes).bytes;
    }
    copyBytes(destination, total, source.bytes, taken);
    total += taken;
    if ((options & kTerminate) != 0)
        put(destination, total++, 0);
    return {bytesOrCharacters(plain, Span(destination), 0, total, options), 0};
}

Outcome appendEx(const Locale& locale, Bytes& destination, std::int32_t state, const Text& source,
                 std::uint32_t options)
{
    if (!locale.stateful)
        return append(locale, destination, source, options);
    if ((options & ~(kCharCount | kTerminate)) != 0)
        return {-1, kBadArgument};
    const Span whole(destination);
    std::ptrdiff_t total = terminatedLength(whole);
    if (source.length == 0) {
        if ((options & kCharCount) == 0)
            total += 1;
        return {bytesOrCharacters(locale, whole, state, total, options), 0};
    }
    std::int32_t endState = 0;
    if (total > 0 && whole.at(total - 1) == shiftOut(locale.page)) {
        total -= 1;
        endState = 1;
    }
    Walk taken;
    if (source.length < 0) {
        taken.bytes = terminatedLength(source.bytes);
        options |= kTerminate;
    } else {
        taken = wholeCharactersEx(locale, source.bytes, source.state,
                                  lengthInBytes(locale, source, options));
    }
    Span rest = source.bytes;
    std::int32_t startState = source.state;
    if (taken.bytes > 0 && isShift(locale, rest.at(0))) {
        startState = stateBehind(locale, rest.at(0));
        rest = rest.from(1);
        taken.bytes -= 1;
    }
    if (endState != startState)
        put(destination, total++, startState != 0 ? shiftIn(locale.page) : shiftOut(locale.page));
    copyBytes(destination, total, rest, taken.bytes);
    total += taken.bytes;
    std::int32_t openState = taken.state;
    if (total > 0 && isShift(locale, whole.at(total - 1))) {
        openState = whole.at(total - 1) == shiftOut(locale.page) ? 1 : 0;
        total -= 1;
    }
    if ((options & kTerminate) != 0) {
        if (openState != 0)
            put(destination, total++, shiftOut(locale.page));
        put(destination, total++, 0);
    }
    return {bytesOrCharacters(locale, whole, state, total, options), 0};
}

} // namespace vlx::oracle
