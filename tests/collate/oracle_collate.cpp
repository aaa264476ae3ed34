// The members of the comparison.
#include "collate/oracle_collate.hpp"

#include "compare/oracle_compare_parts.hpp"
#include "mapping/oracle_maps.hpp"

namespace vlx::oracle {

namespace {

constexpr std::uint64_t kOnStack = 256;

// The character at a place of a text, which ends where its length says. False if it does not fit.
using ReadCharacter = std::function<bool(Cursor&, unsigned&)>;

Lookup nextElements(const SortObject& sort, const ReadCharacter& read, Cursor& cursor)
{
    unsigned c = cursor.pending;
    if (c != 0xFFFF) {
        cursor.pending = 0xFFFF;
        cursor.remaining -= 1;
    } else {
        if (!read(cursor, c)) {
            cursor.remaining = 0;
            return {};
        }
        cursor.position = (cursor.position + 1) & 0xFFFF;
    }
    unsigned next = 0;
    if (sort.contractions() > 0 && cursor.remaining != 0 && read(cursor, next)) {
        cursor.pending = next;
        const Lookup found = sort.pair(c, next);
        if (found.count != 0) {
            cursor.pending = 0xFFFF;
            cursor.position = (cursor.position + 1) & 0xFFFF;
            return found;
        }
        cursor.remaining += 1;
    }
    return sort.character(c);
}

// `text` ends where the call's length ends.
ReadCharacter plainReader(const Locale& locale, Span text)
{
    return [&locale, text](Cursor& cursor, unsigned& value) {
        if (cursor.remaining == 0)
            return false;
        const unsigned byte = text.at(cursor.place);
        const auto n =
            locale.singleByte ? 1 : static_cast<std::int32_t>(charLength(locale.page, byte));
        if (n > cursor.remaining)
            return false;
        value = n == 1 ? toUnicode(locale.page, byte)
                       : mbToUnicode(locale.page, text.from(cursor.place));
        cursor.place += n;
        cursor.remaining -= n;
        return true;
    };
}

ReadCharacter shiftedReader(const Locale& locale, Span text)
{
    return [&locale, text](Cursor& cursor, unsigned& value) {
        if (cursor.remaining == 0)
            return false;
        if (isShift(locale, text.at(cursor.place))) {
            cursor.state = stateBehind(locale, text.at(cursor.place));
            cursor.place += 1;
            cursor.remaining -= 1;
        }
        const auto n = static_cast<std::int32_t>(stepOf(locale, cursor.state));
        if (n > cursor.remaining)
            return false;
        value = n == 1 ? toUnicode(locale.page, text.at(cursor.place))
                       : mbToUnicode(locale.page, text.from(cursor.place));
        cursor.place += n;
        cursor.remaining -= n;
        return true;
    };
}

unsigned packedUnicode(const Page& page, std::uint32_t value)
{
    return value < 256 ? toUnicode(page, value) : wideToUnicode(page, value);
}

ReadCharacter unitReader(const Locale& locale, const Units& text, std::int32_t length, bool packed)
{
    return [&locale, &text, length, packed](Cursor& cursor, unsigned& value) {
        if (cursor.remaining == 0 || cursor.place == length) // a value that was lost still counts
            return false;
        const std::uint32_t unit = text.at(static_cast<std::size_t>(cursor.place));
        value = packed ? packedUnicode(locale.page, unit) : unit;
        cursor.place += 1;
        cursor.remaining -= 1;
        return true;
    };
}

Next nextBy(const SortObject& sort, ReadCharacter read)
{
    return [&sort, read](Cursor& cursor) { return nextElements(sort, read, cursor); };
}

std::int32_t bytesOfLength(const Locale& locale, const Text& text, std::uint32_t options)
{
    if ((options & kCharCount) != 0 && text.length > 0)
        return charsToBytes(locale.page, text.bytes, text.state, text.length);
    return text.length;
}

std::int32_t terminated(const Text& text, std::int32_t length)
{
    if (length < 0)
        return static_cast<std::int32_t>(terminatedLength(text.bytes));
    static_cast<void>(text.bytes.from(length));
    return length;
}

// Nothing is read behind the length of a text.
Span firstBytes(Span text, std::int32_t length)
{
    static_cast<void>(text.from(length));
    return {text.data(), static_cast<std::size_t>(length)};
}

std::uint64_t areaBytes(std::int32_t length)
{
    return 16 * static_cast<std::uint64_t>(length) + 4;
}

bool hasWorkArea(bool memory, std::int32_t length1, std::int32_t length2)
{
    return memory || areaBytes(length1) + areaBytes(length2) <= kOnStack;
}

std::uint32_t codeOptions(std::uint32_t options)
{
    return options & (ignoresWidth(options) ? 0x80200041 : 0x80200040);
}

// The key route; a key is its bytes, or the error that it failed with.
struct Key {
    Bytes bytes;
    std::int32_t error = kUntouched;
    bool failed = false;
};

Outcome byKeys(const Key& key1, const std::function<Key()>& key2, std::int32_t error)
{
    if (key1.failed)
        return {0, key1.error};
    const Key second = key2();
    if (second.failed)
        return {0, second.error};
    const std::size_t common = std::min(key1.bytes.size(), second.bytes.size());
    for (std::size_t i = 0; i < common; ++i)
        if (key1.bytes[i] != second.bytes[i])
            return {key1.bytes[i] - second.bytes[i], error};
    if (key1.bytes.size() == second.bytes.size())
        return {0, error};
    return {key1.bytes.size() < second.bytes.size() ? -1 : 1, error};
}

// A key in a buffer that has room for it.
template <class Make>
Key keyOf(const Make& make)
{
    KeyBuffer buffer{Bytes(4096), 0};
    const Outcome outcome = make(buffer);
    if (outcome.result < 0)
        return {{}, outcome.error, true};
    if (outcome.result > static_cast<std::int32_t>(buffer.bytes.size()))
        throw StrayRead();
    buffer.bytes.resize(static_cast<std::size_t>(outcome.result));
    return {buffer.bytes, outcome.error, false};
}

// What is left of two texts without the blanks at their ends, of any width. Of the second no more
// is copied than is left of the first. A shift byte that an empty text gets is no part of it.
template <class Truncate>
void strip(const Text& text1, std::int32_t& length1, const Text& text2, std::int32_t& length2,
           const Truncate& truncate)
{
    const auto left = [&](const Text& text, std::int32_t count) {
        Bytes copy;
        for (std::int32_t i = 0; i < count; ++i)
            copy.push_back(static_cast<unsigned char>(text.bytes.at(i)));
        copy.push_back(0);
        copy.push_back(0);
        return truncate(copy, text.state, count + 1) - 1;
    };
    const std::int32_t left1 = left(text1, length1);
    const std::int32_t copied = std::min(left1, length2);
    length1 = std::min(length1, left1);
    length2 = std::min(copied, left(text2, copied));
}

std::int32_t withoutBlanks(const Units& text, std::int32_t length, std::uint32_t blank,
                           const std::uint32_t* second)
{
    while (length > 0) {
        const std::uint32_t last = text.at(static_cast<std::size_t>(length - 1));
        if (last == blank || (second != nullptr && last != *second))
            --length;
        else
            break;
    }
    return length;
}

std::int32_t unitsLength(const Units& text, std::int32_t length)
{
    if (length < 0)
        return lengthUnits(text);
    if (static_cast<std::size_t>(length) > text.size())
        throw StrayRead();
    return length;
}

} // namespace

Outcome Collation::plain(const Text& text1, const Text& text2, std::uint32_t options) const
{
    std::int32_t length1 = bytesOfLength(locale, {text1.bytes, 0, text1.length}, options);
    std::int32_t length2 = bytesOfLength(locale, {text2.bytes, 0, text2.length}, options);
    options &= ~kCharCount;
    if (sort == nullptr)
        return Comparison{locale, language, memory}.plain({text1.bytes, 0, length1},
                                                          {text2.bytes, 0, length2}, options);
    length1 = terminated(text1, length1);
    length2 = terminated(text2, length2);
    std::int32_t error = kUntouched;
    if ((options & 1) != 0) {
        if (memory || std::max(length1, length2) < 256) {
            strip(text1, length1, text2, length2,
                  [&](Bytes& copy, std::int32_t, std::int32_t size) {
                      return truncate(locale, copy, size, kTruncateBlanks | kIgnoreWidth).result;
                  });
            error = 0;
        }
        options &= ~kStripBlanks;
    }
    if (!hasWorkArea(memory, length1, length2))
        return {0, kNoMemory};
    const Span bytes1 = firstBytes(text1.bytes, length1);
    const Span bytes2 = firstBytes(text2.bytes, length2);
    if (options == 0)
        return {compareElements(nextBy(*sort, plainReader(locale, bytes1)), {0, length1},
                                nextBy(*sort, plainReader(locale, bytes2)), {0, length2}),
                error};
    const auto key = [&](Span bytes, std::int32_t length) {
        return keyOf([&](KeyBuffer& buffer) {
            return plainKey(buffer, {bytes, 0, length}, options);
        });
    };
    return byKeys(
        key(bytes1, length1), [&] { return key(bytes2, length2); }, error);
}

Outcome Collation::shifted(const Text& text1, const Text& text2, std::uint32_t options) const
{
    std::int32_t length1 = bytesOfLength(locale, text1, options);
    std::int32_t length2 = bytesOfLength(locale, text2, options);
    options &= ~kCharCount;
    if (!locale.stateful)
        return plain({text1.bytes, 0, length1}, {text2.bytes, 0, length2}, options);
    if (sort == nullptr)
        return Comparison{locale, language, memory}.shifted({text1.bytes, text1.state, length1},
                                                            {text2.bytes, text2.state, length2},
                                                            codeOptions(options));
    length1 = terminated(text1, length1);
    length2 = terminated(text2, length2);
    std::int32_t error = kUntouched;
    if ((options & 1) != 0 && (memory || std::max(length1, length2) <= 256)) {
        strip(
            text1, length1, text2, length2,
            [&](Bytes& copy, std::int32_t state, std::int32_t size) {
                return truncateEx(locale, copy, state, size, kTruncateBlanks | kIgnoreWidth).result;
            });
        error = 0;
    }
    if (!hasWorkArea(memory, length1, length2))
        return {0, kNoMemory};
    const Span bytes1 = firstBytes(text1.bytes, length1);
    const Span bytes2 = firstBytes(text2.bytes, length2);
    if (options == 0)
        return {compareElements(nextBy(*sort, shiftedReader(locale, bytes1)),
                                {0, length1, 0, 0xFFFF, text1.state},
                                nextBy(*sort, shiftedReader(locale, bytes2)),
                                {0, length2, 0, 0xFFFF, text2.state}),
                error};
    const auto key = [&](Span bytes, std::int32_t length, std::int32_t state) {
        return keyOf([&](KeyBuffer& buffer) {
            return shiftedKey(buffer, {bytes, state, length}, options);
        });
    };
    return byKeys(
        key(bytes1, length1, text1.state), [&] { return key(bytes2, length2, text2.state); },
        error);
}

Outcome Collation::units(const Units& first, std::int32_t length1, const Units& second,
                         std::int32_t length2, std::uint32_t options) const
{
    if ((options & 0x7FDFFFBE) != 0)
        return {0, kBadArgument};
    if (sort == nullptr)
        return Comparison{locale, language, memory}.units(first, length1, second, length2,
                                                          codeOptions(options));
    const bool strips = (options & kStripBlanks) != 0;
    options &= ~kStripBlanks;
    std::int32_t error = kUntouched;
    const std::uint32_t blank = 0x2000; // the bytes 00 20 of a little-endian machine
    std::uint32_t wide = 0;
    const bool widths = strips && ignoresWidth(options);
    if (widths) {
        wide = toFullWidth(static_cast<std::uint16_t>(blank));
        error = 0;
    }
    length1 = unitsLength(first, length1);
    length2 = unitsLength(second, length2);
    if (strips) {
        length1 = withoutBlanks(first, length1, blank, widths ? &wide : nullptr);
        length2 = withoutBlanks(second, length2, blank, widths ? &wide : nullptr);
    }
    if (!hasWorkArea(memory, length1, length2))
        return {0, kNoMemory};
    if (options == 0)
        return {compareElements(
                    nextBy(*sort, unitReader(locale, first, length1, false)), {0, length1},
                    nextBy(*sort, unitReader(locale, second, length2, false)), {0, length2}),
                error};
    const auto key = [&](const Units& text, std::int32_t length) {
        return keyOf([&](KeyBuffer& buffer) { return unitsKey(buffer, text, length, options); });
    };
    return byKeys(
        key(first, length1), [&] { return key(second, length2); }, error);
}

Outcome Collation::packed(const Units& first, std::int32_t length1, const Units& second,
                          std::int32_t length2, std::uint32_t options) const
{
    if (sort == nullptr)
        return Comparison{locale, language, memory}.packed(first, length1, second, length2,
                                                           options & 0x80200040);
    options &= ~kCharCount;
    const bool strips = (options & kStripBlanks) != 0;
    options &= ~kStripBlanks;
    std::int32_t error = kUntouched;
    const std::uint32_t blank = (locale.page.sections[0].at(0x110C) & 1) != 0 ? 0x20 : 0x40;
    Units wide(1);
    const bool widths = strips && ignoresWidth(options);
    if (widths) {
        mapStringW(locale, language, wide, 1, {blank}, 1, kFullWidth);
        error = 0;
    }
    length1 = unitsLength(first, length1);
    length2 = unitsLength(second, length2);
    if (strips) {
        length1 = withoutBlanks(first, length1, blank, widths ? &wide[0] : nullptr);
        length2 = withoutBlanks(second, length2, blank, widths ? &wide[0] : nullptr);
    }
    if (!memory)
        return {0, kNoMemory};
    if (options == 0)
        return {
            compareElements(nextBy(*sort, unitReader(locale, first, length1, true)), {0, length1},
                            nextBy(*sort, unitReader(locale, second, length2, true)), {0, length2}),
            error};
    const auto key = [&](const Units& text, std::int32_t length) {
        return keyOf([&](KeyBuffer& buffer) { return packedKey(buffer, text, length, options); });
    };
    return byKeys(
        key(first, length1), [&] { return key(second, length2); }, error);
}

} // namespace vlx::oracle
