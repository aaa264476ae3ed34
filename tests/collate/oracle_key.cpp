// The members of sort keys.
#include "collate/oracle_collate.hpp"

#include <memory>

#include "compare/oracle_compare_parts.hpp"
#include "mapping/oracle_maps.hpp"

namespace vlx::oracle {

namespace {

using Values = std::vector<std::uint16_t>;

std::uint16_t short16(unsigned value)
{
    return static_cast<std::uint16_t>(value);
}

// What the rules say of one character: R, F and the fold of widths.
struct Character {
    std::uint16_t raw = 0;
    std::uint16_t upper = 0;
    std::uint16_t narrow = 0;
    std::uint16_t plain = 0; // without a fold
};

// Reads the next character; false at the end, and where it does not fit.
using ReadCharacter = std::function<bool(Character&)>;

enum class Fold { kNone, kCase, kWidth };

bool foldOf(std::uint32_t options, Fold& fold)
{
    switch (options & ~kCharCount) {
    case 0:
        fold = Fold::kNone;
        return true;
    case 0x80000040:
        fold = Fold::kCase;
        return true;
    case 0x80000041:
        fold = Fold::kWidth;
        return true;
    default:
        return false;
    }
}

// The pair fold, step by step. The array is as long as the rules allow.
Values pairFold(const Language& language, const ReadCharacter& read, std::size_t room,
                bool storesFirst)
{
    Values array(room, 0);
    std::size_t out = 0;
    Character c;
    if (!read(c))
        return {};
    std::uint16_t held = c.upper;
    array.at(0) = storesFirst ? c.raw : 0;
    for (;;) {
        std::vector<std::uint16_t> results = mapPair(language, true, array.at(out), 0);
        if (results.empty()) {
            if (!read(c)) {
                array.at(out++) = held;
                break;
            }
            array.at(out + 1) = c.raw;
            results = mapPair(language, true, array.at(out), array.at(out + 1));
            if (results.empty()) {
                array.at(out++) = held;
                held = c.upper;
                continue;
            }
        }
        for (const std::uint16_t result : results)
            array.at(out++) = result;
        if (!read(c))
            break;
        held = c.upper;
        array.at(out) = c.raw;
    }
    array.resize(out);
    return array;
}

Values foldText(const Language& language, const ReadCharacter& read, Fold fold, std::int32_t length,
                bool storesFirst = true)
{
    if (fold == Fold::kCase && !language.upper.empty())
        return pairFold(language, read, 2 * static_cast<std::size_t>(length), storesFirst);
    Values values;
    Character c;
    while (read(c))
        values.push_back(fold == Fold::kNone ? c.plain : fold == Fold::kCase ? c.upper : c.narrow);
    return values;
}

Span padded(Bytes& bytes)
{
    bytes.resize(4, 0);
    return Span(bytes);
}

// R of bytes whose length the length table tells.
std::uint16_t tableUnicode(const Locale& locale, Span text)
{
    if (charLength(locale.page, text.at(0)) == 1)
        return short16(toUnicode(locale.page, text.at(0)));
    return mbToUnicode(locale.page, text);
}

ReadCharacter plainReader(const Locale& locale, Span text, std::int32_t length, Fold fold)
{
    auto at = std::make_shared<std::int32_t>(0);
    return [&locale, text, length, fold, at](Character& c) {
        if (*at >= length)
            return false;
        const Span here = text.from(*at);
        if (locale.singleByte) {
            c.raw = c.plain = c.narrow = short16(toUnicode(locale.page, here.at(0)));
            c.upper = short16(toUnicode(locale.page, toUpper(locale.page, here.at(0))));
            *at += 1;
            return true;
        }
        const auto n = static_cast<std::int32_t>(charLength(locale.page, here.at(0)));
        if (n > length - *at)
            return false;
        c.raw = c.plain = c.narrow = tableUnicode(locale, here);
        // Each fold alone: they are slow, and not defined for the same characters.
        if (fold == Fold::kCase) {
            Bytes upper = n == 1
                              ? Bytes{static_cast<unsigned char>(toUpper(locale.page, here.at(0)))}
                              : mapChar(locale.page, here, 4);
            c.upper = tableUnicode(locale, padded(upper));
        }
        if (fold == Fold::kWidth) {
            Bytes narrow = putWide(unmapValue(locale.page, getWide(locale.page, here)));
            if (narrow[0] != 0)
                c.narrow = tableUnicode(locale, padded(narrow));
        }
        *at += n;
        return true;
    };
}

ReadCharacter shiftedReader(const Locale& locale, Span text, std::int32_t length,
                            std::int32_t first, Fold fold)
{
    auto at = std::make_shared<std::int32_t>(0);
    auto state = std::make_shared<std::int32_t>(first);
    return [&locale, text, length, fold, at, state](Character& c) {
        if (*at >= length)
            return false;
        if (isShift(locale, text.at(*at))) {
            *state = stateBehind(locale, text.at(*at));
            *at += 1;
        }
        const auto n = static_cast<std::int32_t>(stepOf(locale, *state));
        if (n > length - *at)
            return false;
        const Span here = text.from(*at);
        const auto unicodeOf = [&](Bytes bytes) {
            return bytes.size() == 1 ? short16(toUnicode(locale.page, bytes[0]))
                                     : mbToUnicode(locale.page, padded(bytes));
        };
        c.raw = c.plain = c.narrow =
            n == 1 ? short16(toUnicode(locale.page, here.at(0))) : mbToUnicode(locale.page, here);
        if (fold == Fold::kCase)
            c.upper = unicodeOf(
                *state == 0 ? Bytes{static_cast<unsigned char>(toUpper(locale.page, here.at(0)))}
                            : mapCharEx(locale.page, here, 4));
        if (fold == Fold::kWidth) {
            const Bytes narrow =
                putWide(unmapValue(locale.page, getWideEx(locale.page, here, *state)));
            if (narrow[0] != 0)
                c.narrow = unicodeOf(narrow);
        }
        *at += n;
        return true;
    };
}

ReadCharacter unitReader(const Units& text, std::int32_t length)
{
    auto at = std::make_shared<std::int32_t>(0);
    return [&text, length, at](Character& c) {
        if (*at >= length)
            return false;
        c.raw = c.plain = short16(text.at(static_cast<std::size_t>((*at)++)));
        c.upper = toUpper(c.raw);
        c.narrow = toHalfWidth(c.raw);
        return true;
    };
}

ReadCharacter packedReader(const Locale& locale, const Units& text, std::int32_t length, Fold fold)
{
    auto at = std::make_shared<std::int32_t>(0);
    return [&locale, &text, length, fold, at](Character& c) {
        if (*at >= length)
            return false;
        const std::uint32_t value = text.at(static_cast<std::size_t>((*at)++));
        const auto unicodeOf = [&](std::uint32_t unit) {
            return short16(unit < 256 ? toUnicode(locale.page, unit)
                                      : wideToUnicode(locale.page, unit));
        };
        if (locale.singleByte && fold != Fold::kCase) {
            c.plain = c.narrow = short16(toUnicode(locale.page, value & 0xFF));
            return true;
        }
        c.raw = c.plain = c.narrow = unicodeOf(value);
        if (fold == Fold::kCase)
            c.upper = unicodeOf(value < 256 ? toUpper(locale.page, value)
                                            : mapCharW(locale.page, value, 4));
        if (fold == Fold::kWidth) {
            const std::uint32_t narrow = unmapValue(locale.page, value);
            if (narrow != 0)
                c.narrow = unicodeOf(narrow);
        }
        return true;
    };
}

Outcome emptyKey(KeyBuffer& buffer)
{
    if (buffer.bytes.empty())
        return {0, kUntouched};
    for (std::size_t i = 0; i < std::min<std::size_t>(buffer.bytes.size(), 3); ++i)
        buffer.bytes[i] = 0;
    return {3, kUntouched};
}

Outcome wholeKey(KeyBuffer& buffer, const Bytes& key)
{
    if (key.size() <= buffer.bytes.size())
        std::copy(key.begin(), key.end(), buffer.bytes.begin());
    return {static_cast<std::int32_t>(key.size()), kUntouched};
}

// Numbers as bytes, the high one first.
Bytes numbers(const Units& units, int width)
{
    Bytes bytes;
    for (const std::uint32_t unit : units)
        for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
            bytes.push_back(static_cast<unsigned char>(unit >> shift));
    return bytes;
}

// Text that is written character by character; what would land outside the buffer is left out.
struct TextKey {
    KeyBuffer& buffer;
    std::size_t cursor = 0;
    std::size_t left;

    void put(const Bytes& bytes)
    {
        if (bytes.size() <= left) {
            if (cursor + bytes.size() <= buffer.bytes.size())
                std::copy(bytes.begin(), bytes.end(),
                          buffer.bytes.begin() + static_cast<std::ptrdiff_t>(cursor));
            left -= bytes.size();
        }
        cursor += bytes.size();
    }
    void putShift(unsigned byte)
    {
        if (left > 0)
            put({static_cast<unsigned char>(byte)});
    }
};

// By the sort object, in the caller's buffer or not.
Outcome sortedKey(KeyBuffer& buffer, const SortObject& sort, const Values& values, bool memory)
{
    const std::size_t size = buffer.bytes.size();
    if (values.empty()) {
        if (size >= 3)
            std::fill_n(buffer.bytes.begin(), 3, 0);
        return {3, kUntouched};
    }
    const std::size_t need = 16 * values.size() + 4;
    const std::size_t step = (4 - buffer.past) % 4;
    const std::size_t available = size > step ? size - step : 0;
    const bool inBuffer = available >= need;
    if (!inBuffer && !memory)
        return {-1, kNoMemory};
    const Bytes key = buildKey(sort, values);
    if (key.size() <= available) {
        std::copy(key.begin(), key.end(), buffer.bytes.begin());
        if (inBuffer)
            std::fill(buffer.bytes.begin() + static_cast<std::ptrdiff_t>(key.size()),
                      buffer.bytes.begin() + static_cast<std::ptrdiff_t>(available), 0);
    }
    return {static_cast<std::int32_t>(key.size()), kUntouched};
}

} // namespace

Outcome Collation::plainKey(KeyBuffer& buffer, const Text& text, std::uint32_t options) const
{
    std::int32_t length = text.length;
    if ((options & kCharCount) != 0 && length > 0)
        length = charsToBytes(locale.page, text.bytes, 0, length);
    Fold fold{};
    if (!foldOf(options, fold))
        return {-1, kBadArgument};
    if (length < 0)
        length = static_cast<std::int32_t>(terminatedLength(text.bytes));
    static_cast<void>(text.bytes.from(length));
    if (length == 0)
        return emptyKey(buffer);
    if (sort == nullptr && fold == Fold::kNone)
        return wholeKey(buffer, Bytes(text.bytes.data(), text.bytes.data() + length));
    if (!memory)
        return {-1, kNoMemory};
    const Values values =
        foldText(language, plainReader(locale, text.bytes, length, fold), fold, length);
    if (sort != nullptr)
        return sortedKey(buffer, *sort, values, memory);
    TextKey key{buffer, 0, buffer.bytes.size()};
    for (const std::uint16_t value : values)
        key.put(unicodeToMb(locale.page, value));
    return {static_cast<std::int32_t>(key.cursor), kUntouched};
}

Outcome Collation::shiftedKey(KeyBuffer& buffer, const Text& text, std::uint32_t options) const
{
    if (!locale.stateful)
        return plainKey(buffer, text, options);
    std::int32_t length = text.length;
    if ((options & kCharCount) != 0 && length > 0)
        length = charsToBytes(locale.page, text.bytes, text.state, length);
    Fold fold{};
    if (!foldOf(options, fold))
        return {-1, kBadArgument};
    if (length < 0)
        length = static_cast<std::int32_t>(terminatedLength(text.bytes));
    static_cast<void>(text.bytes.from(length));
    if (length == 0)
        return emptyKey(buffer);
    if (sort == nullptr && fold == Fold::kNone)
        return wholeKey(buffer, Bytes(text.bytes.data(), text.bytes.data() + length));
    if (!memory)
        return {-1, kNoMemory};
    const Values values = foldText(
        language, shiftedReader(locale, text.bytes, length, text.state, fold), fold, length);
    if (sort != nullptr)
        return sortedKey(buffer, *sort, values, memory);
    TextKey key{buffer, 0, buffer.bytes.size()};
    int state = 0;
    for (const std::uint16_t value : values) {
        const Bytes character = unicodeToMb(locale.page, value);
        if (character.size() == 1 && state == 1) {
            key.putShift(shiftOut(locale.page));
            state = 0;
        } else if (character.size() > 1 && state == 0) {
            key.putShift(shiftIn(locale.page));
            state = 1;
        }
        key.put(character);
    }
    return {static_cast<std::int32_t>(key.cursor), kUntouched};
}

Outcome Collation::unitsKey(KeyBuffer& buffer, const Units& text, std::int32_t length,
                            std::uint32_t options) const
{
    Fold fold{};
    if (!foldOf(options, fold))
        return {-1, kBadArgument};
    if (length < 0)
        length = lengthUnits(text);
    if (static_cast<std::size_t>(length) > text.size())
        throw StrayRead();
    if (length == 0)
        return emptyKey(buffer);
    const Units head(text.begin(), text.begin() + length);
    if (sort == nullptr && fold == Fold::kNone)
        return wholeKey(buffer, numbers(head, 2));
    if (!memory)
        return {-1, kNoMemory};
    const Values values = foldText(language, unitReader(head, length), fold, length, false);
    if (sort != nullptr)
        return sortedKey(buffer, *sort, values, memory);
    return wholeKey(buffer, numbers(Units(values.begin(), values.end()), 2));
}

Outcome Collation::packedKey(KeyBuffer& buffer, const Units& text, std::int32_t length,
                             std::uint32_t options) const
{
    Fold fold{};
    if (!foldOf(options, fold))
        return {-1, kBadArgument};
    if (length < 0)
        length = lengthUnits(text);
    if (static_cast<std::size_t>(length) > text.size())
        throw StrayRead();
    if (length == 0)
        return emptyKey(buffer);
    const Units head(text.begin(), text.begin() + length);
    if (sort == nullptr && fold == Fold::kNone)
        return wholeKey(buffer, numbers(head, 4));
    if (!memory)
        return {-1, kNoMemory};
    const Values values =
        foldText(language, packedReader(locale, head, length, fold), fold, length);
    if (sort != nullptr)
        return sortedKey(buffer, *sort, values, memory);
    Units laidOut;
    for (const std::uint16_t value : values)
        laidOut.push_back(unicodeToWide(locale.page, value));
    return wholeKey(buffer, numbers(laidOut, 4));
}

} // namespace vlx::oracle
