#include "mapstr/oracle_truncate.hpp"

#include <optional>

#include "mapstr/oracle_mapstr_parts.hpp"

namespace vlx::oracle {

namespace {

constexpr std::uint32_t kStrip = 0x800000;
constexpr std::uint32_t kIgnoreWidth = 0x80000041;

// The bytes that are looked for.
struct Blank {
    unsigned byte = 0;
    Bytes full; // empty if it does not count
};

Blank blankOf(const Locale& locale, std::uint32_t options)
{
    Blank blank;
    blank.byte = (locale.page.sections[0].at(0x110C) & 1) != 0 ? 0x20 : 0x40;
    if ((options & kIgnoreWidth) != kIgnoreWidth)
        return blank;
    const Bytes source = {static_cast<unsigned char>(blank.byte)};
    blank.full.resize(4);
    const Outcome outcome = mapString(locale, {}, blank.full, 4, {Span(source), 0, 1}, kFullWidth);
    blank.full.resize(static_cast<std::size_t>(outcome.result));
    return blank;
}

// A character that the end of the string cuts off is no blank.
bool isFull(const Blank& blank, const Bytes& string, std::ptrdiff_t at, std::ptrdiff_t length)
{
    if (blank.full.empty() || std::ssize(blank.full) != length || at + length > std::ssize(string))
        return false;
    for (std::ptrdiff_t i = 0; i < length; ++i)
        if (string[static_cast<std::size_t>(at + i)] != blank.full[static_cast<std::size_t>(i)])
            return false;
    return true;
}

std::ptrdiff_t bytesOf(const Locale& locale, const Bytes& string, std::int32_t state,
                       std::int32_t size, std::uint32_t options)
{
    if (size <= 0 || (options & kCharCount) == 0)
        return size;
    // More characters than there are bytes are no fewer bytes either.
    const std::ptrdiff_t whole = terminatedLength(Span(string)) + 1;
    const auto count = static_cast<std::int32_t>(std::min<std::ptrdiff_t>(size, whole));
    return charsToBytesWithin(locale.page, Span(string), state, count, whole);
}

// Where the string ends in a locale of longer characters.
std::ptrdiff_t cutOfMulti(const Locale& locale, const Bytes& string, std::ptrdiff_t size,
                          const std::optional<Blank>& blank)
{
    const Span text(string);
    std::ptrdiff_t offset = 0;
    std::ptrdiff_t blankPosition = 0;
    for (;;) {
        const auto n = static_cast<std::ptrdiff_t>(charLength(locale.page, text.at(offset)));
        offset += n;
        if (offset >= size) {
            if (blankPosition == 0)
                return offset - n;
            return blankPosition;
        }
        if (!blank)
            continue;
        const std::ptrdiff_t passed = offset - n;
        if ((n == 1 && text.at(passed) == blank->byte) || isFull(*blank, string, passed, n)) {
            if (blankPosition == 0)
                blankPosition = passed;
        } else if (blankPosition != 0) {
            if (n != 1 || text.at(offset) != 0)
                blankPosition = 0;
        }
    }
}

struct Place {
    std::ptrdiff_t offset = 0;
    std::int32_t state = 0;
};

Place cutOfShifted(const Locale& locale, const Bytes& string, std::int32_t state,
                   std::ptrdiff_t size, const std::optional<Blank>& blank)
{
    const Span text(string);
    std::ptrdiff_t offset = 0;
    std::ptrdiff_t step = stepOf(locale, state);
    std::ptrdiff_t blankPosition = 0;
    std::int32_t blankState = 0;
    for (;;) {
        const unsigned c = text.at(offset);
        if (isShift(locale, c)) {
            if (offset == size - 1)
                break;
            state = stateBehind(locale, c);
            offset += 1;
            step = stepOf(locale, state);
            continue;
        }
        if (blank) {
            if (step == 1 && c == blank->byte) {
                if (blankPosition == 0) {
                    blankPosition = offset;
                    blankState = 0;
                }
            } else if (isFull(*blank, string, offset, step)) {
                if (blankPosition == 0) {
                    blankPosition = offset;
                    blankState = 1;
                }
            } else if (blankPosition != 0 && !(step == 1 && c == 0)) {
                blankPosition = 0;
            }
        }
        if (offset + step >= size)
            break;
        offset += step;
    }
    if (blankPosition != 0)
        return {blankPosition - 1, blankState};
    return {offset, state};
}

} // namespace

Outcome truncate(const Locale& locale, Bytes& string, std::int32_t wanted, std::uint32_t options)
{
    const bool strips = (options & kStrip) != 0;
    std::ptrdiff_t size = bytesOf(locale, string, 0, wanted, options);
    std::ptrdiff_t length = 1;
    if (size < 1) {
        put(string, 0, 0);
    } else {
        const std::ptrdiff_t before = terminatedLength(Span(string));
        if (before < size)
            size = before + 1;
        if (size > before && !strips)
            return {0, 0};
        const std::optional<Blank> blank =
            strips ? std::optional(blankOf(locale, options)) : std::nullopt;
        if (locale.singleByte) {
            while (strips && size > 1 && Span(string).at(size - 2) == blank->byte)
                size -= 1;
            put(string, size - 1, 0);
            length = size;
        } else {
            const std::ptrdiff_t end = cutOfMulti(locale, string, size, blank);
            put(string, end, 0);
            length = end + 1;
        }
    }
    const auto result = static_cast<std::int32_t>(length);
    return {(options & kCharCount) != 0 ? numChars(locale, Span(string), result) : result, 0};
}

Outcome truncateEx(const Locale& locale, Bytes& string, std::int32_t state, std::int32_t wanted,
                   std::uint32_t options)
{
    if (!locale.stateful)
        return truncate(locale, string, wanted, options);
    const bool strips = (options & kStrip) != 0;
    std::ptrdiff_t size = bytesOf(locale, string, state, wanted, options);
    Place cut{0, state};
    if (size > 0) {
        const std::ptrdiff_t length = terminatedLength(Span(string));
        if (length < size)
            size = length + 1;
        if (size > length && !strips)
            return {0, 0};
        const std::optional<Blank> blank =
            strips ? std::optional(blankOf(locale, options)) : std::nullopt;
        cut = cutOfShifted(locale, string, state, size, blank);
    }
    std::ptrdiff_t offset = cut.offset;
    if (cut.state == 1) {
        const auto isShiftIn = [&](std::ptrdiff_t at) {
            return Span(string).at(at) == shiftIn(locale.page);
        };
        bool writes = true;
        if (offset != 0 && isShiftIn(offset - 1)) {
            offset -= 1;
            writes = false;
        } else if (offset > size - 2) {
            offset -= stepOf(locale, 1);
            if (offset <= 0) {
                offset = 0;
            } else if (isShiftIn(offset - 1)) {
                offset -= 1;
                writes = false;
            }
        }
        if (writes) {
            put(string, offset, shiftOut(locale.page));
            offset += 1;
        }
    }
    put(string, offset, 0);
    const auto length = static_cast<std::int32_t>(offset + 1);
    if ((options & kCharCount) != 0)
        return {numCharsEx(locale, Span(string), cut.state, length), 0};
    return {length, 0};
}

} // namespace vlx::oracle
