// The member of stateful text.
#include "compare/oracle_compare_parts.hpp"

namespace vlx::oracle {

namespace {

std::int32_t adjusted(const Locale& locale, Span bytes, std::int32_t state, std::int32_t length)
{
    std::int32_t offset = 0;
    auto c = static_cast<std::int32_t>(stepOf(locale, state));
    while (offset < length) {
        if (isShift(locale, bytes.at(offset))) {
            c = static_cast<std::int32_t>(stepOf(locale, stateBehind(locale, bytes.at(offset))));
            offset += 1;
            if (offset == length)
                break;
        }
        if (offset + c > length)
            break;
        offset += c;
    }
    return offset;
}

Side shiftedSide(const Locale& locale, const Text& text, std::uint32_t options)
{
    std::int32_t length = text.length;
    if (length < 0)
        length = static_cast<std::int32_t>(terminatedLength(text.bytes));
    else if ((options & kCharCount) != 0)
        length = length > 0 ? charsToBytes(locale.page, text.bytes, text.state, length) : 0;
    else
        length = adjusted(locale, text.bytes, text.state, length);
    static_cast<void>(text.bytes.from(length));
    return {text.bytes, length, text.state, length + (text.length < 0 ? 1 : 0)};
}

// The character at a place; zeros stand for what nobody gave.
Bytes characterOf(const Locale& locale, const Side& side)
{
    Bytes bytes;
    for (std::ptrdiff_t i = 0; i < stepOf(locale, side.state); ++i)
        bytes.push_back(static_cast<unsigned char>(i < side.known ? side.bytes.at(i) : 0));
    return bytes;
}

Bytes shiftedNarrow(const Locale& locale, const Side& side)
{
    Bytes character = characterOf(locale, side);
    if (side.state == 0)
        return character;
    const std::uint32_t value = getWideEx(locale.page, Span(character), 1);
    Bytes image = putWide(unmapValue(locale.page, value));
    return image[0] == 0 ? character : image;
}

bool standsOnShift(const Locale& locale, const Side& side)
{
    return side.length > 0 && isShift(locale, side.bytes.at(0));
}

void passShift(const Locale& locale, Side& side)
{
    side.state = stateBehind(locale, side.bytes.at(0));
    step(side, 1);
}

std::int32_t shiftedWidth(const Locale& locale, Side first, Side second)
{
    while (first.length > 0 && second.length > 0) {
        if (standsOnShift(locale, first)) {
            passShift(locale, first);
            continue;
        }
        if (standsOnShift(locale, second)) {
            passShift(locale, second);
            continue;
        }
        const Bytes one = shiftedNarrow(locale, first);
        const Bytes two = shiftedNarrow(locale, second);
        if (one.size() != two.size())
            return static_cast<std::int32_t>(one.size()) - static_cast<std::int32_t>(two.size());
        const auto count = static_cast<std::int32_t>(one.size());
        if (const std::int32_t result = compareBytes(Span(one), Span(two), count))
            return result;
        for (Side* side : {&first, &second}) {
            const auto c = static_cast<std::int32_t>(stepOf(locale, side->state));
            if (c <= side->length)
                step(*side, c);
            else
                side->length -= c; // behind a character that was cut off nothing is read
        }
    }
    while (standsOnShift(locale, first))
        passShift(locale, first);
    while (standsOnShift(locale, second))
        passShift(locale, second);
    return first.length - second.length;
}

std::int32_t signedByte(unsigned byte)
{
    return byte < 0x80 ? static_cast<std::int32_t>(byte) : static_cast<std::int32_t>(byte) - 256;
}

std::int32_t shiftedCase(const Locale& locale, Side first, Side second)
{
    std::int32_t m = std::min(first.length, second.length);
    auto c1 = static_cast<std::int32_t>(stepOf(locale, first.state));
    const auto c2 = static_cast<std::int32_t>(stepOf(locale, second.state));
    if (c1 != c2 || m < c1)
        return c1 - c2;
    std::int32_t state1 = first.state;
    const auto upper = [&](Side side) {
        if (state1 == 0)
            return areaOf({static_cast<unsigned char>(toUpper(locale.page, side.bytes.at(0)))});
        side.state = state1;
        const Bytes character = characterOf(locale, side);
        return areaOf(mapCharEx(locale.page, Span(character), 4));
    };
    while (m != 0) {
        const unsigned byte1 = first.bytes.at(0);
        const unsigned byte2 = second.bytes.at(0);
        if (isShift(locale, byte1) || isShift(locale, byte2)) {
            if (byte1 != byte2) {
                if (isShift(locale, byte1) && state1 == 1)
                    return -1;
                if (isShift(locale, byte2) && state1 == 1)
                    return 1;
                return signedByte(byte1) - signedByte(byte2);
            }
            state1 = stateBehind(locale, byte1);
            c1 = static_cast<std::int32_t>(stepOf(locale, state1));
            step(first, 1);
            step(second, 1);
            m -= 1;
            if (m == 0)
                break;
        }
        if (const std::int32_t result = compareAreas(upper(first), upper(second)))
            return result;
        if (m < c1) // behind a character that is cut off nothing is read
            break;
        step(first, c1);
        step(second, c1);
        m -= c1;
    }
    return 0;
}

} // namespace

Outcome Comparison::shifted(const Text& text1, const Text& text2, std::uint32_t options) const
{
    if (!locale.stateful)
        return plain(text1, text2, options);
    if ((options & kRefused) != 0)
        return {0, kBadArgument};
    Side first = shiftedSide(locale, text1, options);
    Side second = shiftedSide(locale, text2, options);
    if ((options & kStripBlanks) != 0 && memory) {
        for (Side* side : {&first, &second}) {
            Bytes copy = terminatedCopy(*side);
            const std::int32_t left =
                truncateEx(locale, copy, side->state, side->length + 1, truncation(options))
                    .result -
                1;
            side->length = std::min(side->length, left); // an empty string stays empty
        }
    }
    options &= ~(kStripBlanks | kCharCount);
    for (Side* side : {&first, &second})
        if (standsOnShift(locale, *side))
            passShift(locale, *side);
    if (first.length == 0 || second.length == 0)
        return {first.length - second.length, 0};
    const std::int32_t m = std::min(first.length, second.length);
    std::int32_t result = 0;
    if (options == 0)
        result = compareBytes(first.bytes, second.bytes, m);
    else if (ignoresWidth(options))
        return {shiftedWidth(locale, first, second), 0};
    else if (!language.upper.empty()) {
        if (!memory)
            return {0, kNoMemory};
        return {compareImages(first, second,
                              [&](Bytes& image, const Side& side) {
                                  return mapStringEx(locale, language, image, 0,
                                                     static_cast<std::int32_t>(image.size()),
                                                     {side.bytes, side.state, side.length}, kUpper)
                                      .result;
                              }),
                0};
    } else
        result = shiftedCase(locale, first, second);
    return {result != 0 ? result : first.length - second.length, 0};
}

} // namespace vlx::oracle
