#include "support/oracle_chars.hpp"

namespace vlx::oracle {

namespace {

constexpr std::uint32_t kCharCount = 0x4000;
constexpr std::uint32_t kTerminate = 0x0008;
constexpr std::int32_t kBadArgument = 2;

// Deliberate: the stepping functions read a byte as signed and a shift byte as unsigned, so a shift
// byte of 0x80 or above is never met.
bool equalsAsSigned(unsigned byte, unsigned shift)
{
    const int asSigned = byte < 0x80 ? static_cast<int>(byte) : static_cast<int>(byte) - 256;
    return asSigned == static_cast<int>(shift);
}

// The two questions that most functions ask of a byte, with the comparison that they use.
bool entersMultiByte(const Locale& locale, unsigned byte)
{
    return equalsAsSigned(byte, shiftIn(locale.page));
}

bool leavesMultiByte(const Locale& locale, unsigned byte)
{
    return equalsAsSigned(byte, shiftOut(locale.page));
}

std::ptrdiff_t stepOf(const Locale& locale, std::int32_t state)
{
    return state != 0 ? static_cast<std::ptrdiff_t>(maxCharBytes(locale.page)) : 1;
}

std::ptrdiff_t lengthAt(const Locale& locale, Span text, std::ptrdiff_t position)
{
    return static_cast<std::ptrdiff_t>(charLength(locale.page, text.at(position)));
}

std::int32_t terminatedLength(Span text)
{
    std::int32_t length = 0;
    while (text.at(length) != 0)
        ++length;
    return length;
}

} // namespace

std::int32_t byteLength(const Locale& locale, Span text)
{
    return static_cast<std::int32_t>(charLength(locale.page, text.at(0)));
}

std::int32_t byteLengthEx(const Locale& locale, Span text, std::int32_t state)
{
    if (!locale.stateful)
        return byteLength(locale, text);
    if (leavesMultiByte(locale, text.at(0)))
        state = 0;
    else if (entersMultiByte(locale, text.at(0)))
        state = 1;
    return static_cast<std::int32_t>(stepOf(locale, state));
}

std::int32_t byteLengthW(std::uint32_t value)
{
    if (value > 0xFFFFFF)
        return 4;
    if ((value & 0xFF0000) != 0)
        return 3;
    if ((value & 0xFF00) != 0)
        return 2;
    return 1;
}

std::uint32_t getChar(const Locale& locale, Span text)
{
    return getWide(locale.page, text);
}

std::uint32_t getCharEx(const Locale& locale, Span text, std::int32_t state)
{
    if (!locale.stateful)
        return getWide(locale.page, text);
    // Here the bytes are compared as unsigned.
    std::ptrdiff_t start = 0;
    if (text.at(0) == shiftOut(locale.page)) {
        state = 0;
        start = 1;
    } else if (text.at(0) == shiftIn(locale.page)) {
        state = 1;
        start = 1;
    }
    return getWideEx(locale.page, text.from(start), state);
}

Bytes putChar(std::uint32_t value)
{
    return putWide(value);
}

Bytes putCharEx(const Locale& locale, std::int32_t state, std::uint32_t value)
{
    Bytes bytes;
    if (locale.stateful) {
        if (value > 255 && state == 0)
            bytes.push_back(static_cast<unsigned char>(shiftIn(locale.page)));
        if (value < 256 && state == 1)
            bytes.push_back(static_cast<unsigned char>(shiftOut(locale.page)));
    }
    for (const unsigned char byte : putWide(value))
        bytes.push_back(byte);
    return bytes;
}

std::ptrdiff_t nextChar(const Locale& locale, Span text)
{
    return lengthAt(locale, text, 0);
}

Stop nextCharEx(const Locale& locale, Span text, std::int32_t state)
{
    if (!locale.stateful)
        return {nextChar(locale, text), std::nullopt};
    std::ptrdiff_t position = 0;
    if (entersMultiByte(locale, text.at(position))) {
        state = 1;
        position += 1;
    } else if (leavesMultiByte(locale, text.at(position))) {
        state = 0;
        position += 1;
    }
    position += stepOf(locale, state);
    if (entersMultiByte(locale, text.at(position))) {
        state = 1;
        position += 1;
    } else if (leavesMultiByte(locale, text.at(position))) {
        state = 0;
        position += 1;
    }
    return {position, state};
}

std::ptrdiff_t prevChar(const Locale& locale, Span text, std::ptrdiff_t position)
{
    if (locale.singleByte)
        return position - 1;
    std::ptrdiff_t reached = 0;
    while (reached + lengthAt(locale, text, reached) < position)
        reached += lengthAt(locale, text, reached);
    return reached;
}

Stop prevCharEx(const Locale& locale, Span text, std::ptrdiff_t position, std::int32_t state)
{
    if (!locale.stateful)
        return {prevChar(locale, text, position), std::nullopt};
    if (position != 0) {
        if (leavesMultiByte(locale, text.at(position - 1))) {
            state = 1;
            position -= 1;
        } else if (entersMultiByte(locale, text.at(position - 1))) {
            state = 0;
            position -= 1;
        }
        if (position != 0)
            position -= stepOf(locale, state);
    }
    return {position, state};
}

std::int32_t numChars(const Locale& locale, Span text, std::int32_t length)
{
    if (length == 0)
        return 0;
    if (length < 0)
        length = terminatedLength(text);
    if (locale.singleByte)
        return length;
    std::int32_t count = 0;
    std::ptrdiff_t offset = 0;
    while (offset < length && offset + lengthAt(locale, text, offset) <= length) {
        offset += lengthAt(locale, text, offset);
        ++count;
    }
    return count;
}

std::int32_t numCharsEx(const Locale& locale, Span text, std::int32_t state, std::int32_t length)
{
    if (!locale.stateful)
        return numChars(locale, text, length);
    if (length == 0)
        return 0;
    if (length < 0)
        length = terminatedLength(text);
    std::int32_t count = 0;
    std::ptrdiff_t offset = 0;
    std::ptrdiff_t step = stepOf(locale, state);
    while (offset < length) {
        const unsigned byte = text.at(offset);
        if (entersMultiByte(locale, byte) || leavesMultiByte(locale, byte)) {
            offset += 1;
            if (offset >= length)
                break;
            step = stepOf(locale, leavesMultiByte(locale, byte) ? 0 : 1);
        }
        if (offset + step > length)
            break;
        offset += step;
        ++count;
    }
    return count;
}

std::ptrdiff_t moveStringPointer(const Locale& locale, Span text, std::int32_t offset,
                                 std::uint32_t options)
{
    if ((options & kCharCount) != 0 && offset > 0)
        offset = charsToBytes(locale.page, text, 0, offset);
    if (offset == 0)
        return 0;
    if (locale.singleByte)
        return offset;
    if (offset < 0)
        return 0;
    std::ptrdiff_t position = 0;
    while (position + lengthAt(locale, text, position) <= offset)
        position += lengthAt(locale, text, position);
    return position;
}

Stop moveStringPointerEx(const Locale& locale, Span text, std::int32_t state, std::int32_t offset,
                         std::uint32_t options)
{
    if (!locale.stateful)
        return {moveStringPointer(locale, text, offset, options), std::nullopt};
    if ((options & kCharCount) != 0 && offset > 0)
        offset = charsToBytes(locale.page, text, state, offset);
    if (offset == 0)
        return {0, std::nullopt};
    std::ptrdiff_t step = stepOf(locale, state);
    std::ptrdiff_t position = 0;
    for (;;) {
        const unsigned byte = text.at(position);
        if (entersMultiByte(locale, byte) || leavesMultiByte(locale, byte)) {
            if (position == offset)
                return {position, state};
            state = entersMultiByte(locale, byte) ? 1 : 0;
            position += 1;
            step = stepOf(locale, state);
        }
        if (position + step > offset)
            return {position, state};
        position += step;
    }
}

Ending terminateStringEx(const Locale& locale, std::int32_t state, std::uint32_t options)
{
    if (options != 0 && options != kTerminate)
        return {-1, kBadArgument, {}};
    Ending ending;
    if (locale.stateful && state == 1)
        ending.written.push_back(static_cast<unsigned char>(shiftOut(locale.page)));
    if (options == kTerminate)
        ending.written.push_back(0);
    ending.result = static_cast<std::int32_t>(ending.written.size());
    return ending;
}

} // namespace vlx::oracle
