// The queries, and what all rules share.
#include "support/oracle_strings_walk.hpp"
#include "text/oracle_text.hpp"

namespace vlx::oracle {

namespace {

// The kinds of text: Unicode, and bytes of the code page.
struct Kept {
    bool unicode;
    Units text;
};

int separatorOf(int item)
{
    switch (item) {
    case 59:
        return 0;
    case 60:
        return 1;
    case 61:
        return 2;
    case 66:
        return 3;
    case 67:
        return 4;
    default:
        return -1;
    }
}

int recordTextOf(int item)
{
    switch (item) {
    case 62:
        return 0;
    case 64:
        return 1;
    case 68:
        return 2;
    case 71:
        return 3;
    case 72:
        return 4;
    case 79:
        return 5;
    case 80:
        return 6;
    case 81:
        return 7;
    default:
        return -1;
    }
}

int territoryWordOf(int item)
{
    switch (item) {
    case 62:
        return 13;
    case 64:
        return 15;
    case 65:
        return 16;
    case 68:
        return 14;
    case 71:
        return 17;
    case 72:
        return 18;
    case 79:
        return 19;
    case 80:
        return 20;
    default:
        return 21;
    }
}

Kept kept(const TextLocale& locale, bool wantsUnicode, int item, bool ofObject)
{
    const int separator = separatorOf(item);
    if (separator >= 0) {
        const auto index = static_cast<std::size_t>(separator);
        if (ofObject)
            return {true, {locale.words[index]}};
        if (wantsUnicode)
            return {true, {locale.separatorsU[index]}};
        return {false, {locale.separators[index]}};
    }
    if (item >= 16 && item <= 57)
        return {true, locale.languageTexts[static_cast<std::size_t>(item - 9 - 5)]};
    const int record = recordTextOf(item);
    if (!ofObject && record >= 0)
        return wantsUnicode ? Kept{true, locale.textsU[static_cast<std::size_t>(record)]}
                            : Kept{false, locale.texts[static_cast<std::size_t>(record)]};
    return {true, locale.territoryTexts[static_cast<std::size_t>(territoryWordOf(item) - 11)]};
}

// The characters of a text as bytes, up to a terminator.
std::vector<Bytes> charactersOf(const TextLocale& locale, const Kept& kept, bool stateful)
{
    std::vector<Bytes> result;
    std::int32_t state = 0;
    for (std::size_t at = 0; at < kept.text.size() && kept.text[at] != 0;) {
        if (kept.unicode) {
            result.push_back(
                unicodeToMb(locale.base.page, static_cast<std::uint16_t>(kept.text[at++])));
            continue;
        }
        if (stateful && isShiftUnit(locale, kept.text[at])) {
            state = kept.text[at++] == shiftIn(locale.base.page) ? 1 : 0;
            continue;
        }
        const std::size_t length = stateful ? (state == 1 ? maxCharBytes(locale.base.page) : 1)
                                            : charLength(locale.base.page, kept.text[at]);
        if (length > kept.text.size() - at)
            break; // cut off by its end
        Bytes bytes;
        for (std::size_t i = 0; i < length; ++i)
            bytes.push_back(static_cast<unsigned char>(kept.text[at + i]));
        result.push_back(bytes);
        at += length;
    }
    return result;
}

Units plainText(const TextLocale& locale, const Kept& kept, std::int32_t size)
{
    Units result;
    for (const Bytes& character : charactersOf(locale, kept, false)) {
        if (size < 2 || static_cast<std::int32_t>(character.size()) >= size)
            break;
        result.insert(result.end(), character.begin(), character.end());
        size -= static_cast<std::int32_t>(character.size());
    }
    return result;
}

Units shiftText(const TextLocale& locale, const Kept& kept, std::int32_t state, std::int32_t size)
{
    Units result;
    for (const Bytes& character : charactersOf(locale, kept, true)) {
        const auto n = static_cast<std::int32_t>(character.size());
        const bool needsShift = (n == 1 && state == 1) || (n >= 2 && state == 0);
        if (size < 2 || n + (needsShift ? 1 : 0) + (n >= 2 ? 1 : 0) >= size)
            break;
        if (needsShift) {
            result.push_back(state == 1 ? shiftOut(locale.base.page) : shiftIn(locale.base.page));
            state = 1 - state;
            --size;
        }
        result.insert(result.end(), character.begin(), character.end());
        size -= n;
    }
    if (state == 1)
        result.push_back(shiftOut(locale.base.page));
    return result;
}

Units packedText(const TextLocale& locale, const Kept& kept, std::int32_t size)
{
    Units result;
    if (kept.unicode) {
        for (std::size_t i = 0; i < kept.text.size() && kept.text[i] != 0 && size > 1; ++i, --size)
            result.push_back(
                unicodeToWide(locale.base.page, static_cast<std::uint16_t>(kept.text[i])));
        return result;
    }
    for (const Bytes& character : charactersOf(locale, kept, locale.base.stateful)) {
        if (size-- < 2)
            break;
        std::uint32_t value = 0;
        for (const unsigned char byte : character)
            value = value << 8 | byte;
        result.push_back(value);
    }
    return result;
}

} // namespace

Units textItem(const TextLocale& locale, Member member, int item, bool ofObject, std::int32_t state,
               std::int32_t size)
{
    if (separatorOf(item) >= 0)
        size = std::min(size, member == Member::kEx && state == 1 ? 3 : 2);
    const Kept text = kept(locale, member == Member::kUnicode, item, ofObject);
    switch (member) {
    case Member::kPlain:
        return plainText(locale, text, size);
    case Member::kEx:
        return shiftText(locale, text, state, size);
    case Member::kPacked:
        return packedText(locale, text, size);
    case Member::kUnicode:
        break;
    }
    Units result;
    for (std::size_t i = 0; i < text.text.size() && text.text[i] != 0 && size > 1; ++i, --size)
        result.push_back(text.text[i]);
    return result;
}

std::int32_t numberItem(const TextLocale& locale, int item, bool ofObject)
{
    const auto value = [&](std::uint32_t record, std::uint32_t object) {
        return static_cast<std::int32_t>(ofObject ? object : record);
    };
    switch (item) {
    case 63:
        return value(locale.digits[0], locale.words[5]);
    case 69:
        return value(locale.digits[1], locale.words[6]);
    case 70:
        return value(locale.digits[2], locale.words[7]);
    case 73:
        return value(locale.flags & 1, locale.words[10] >> 1 & 1);
    case 74:
        return value(locale.flags >> 1 & 1, locale.words[10] >> 2 & 1);
    case 75:
        return value(locale.flags >> 2 & 1, locale.words[10] >> 3 & 1);
    case 76:
        return value(locale.flags >> 3 & 1, locale.words[10] >> 4 & 1);
    case 77:
        return value(locale.positions[0], locale.words[8] & 0xFF);
    default:
        return value(locale.positions[1], locale.words[8] >> 8);
    }
}

Codes codesOf(const TextLocale& locale, Member member)
{
    if (locale.ascii || member == Member::kUnicode)
        return {0x30, 0x2D, 0x2B, 0x3B, 0x28, 0x29, 0x20, 0x25};
    return {0xF0, 0x60, 0x4E, 0x5E, 0x4D, 0x5D, 0x40, 0x6C};
}

void put(Units& memory, std::ptrdiff_t position, std::uint32_t unit)
{
    if (position < 0 || static_cast<std::size_t>(position) >= memory.size())
        throw StrayRead();
    memory[static_cast<std::size_t>(position)] = unit;
}

std::uint32_t unitAt(const Units& text, std::ptrdiff_t position)
{
    if (position < 0 || static_cast<std::size_t>(position) >= text.size())
        throw StrayRead();
    return text[static_cast<std::size_t>(position)];
}

Bytes narrowBytes(const Units& units)
{
    Bytes bytes;
    for (const std::uint32_t unit : units)
        bytes.push_back(static_cast<unsigned char>(unit));
    return bytes;
}

Units wideUnits(const Bytes& bytes)
{
    return {bytes.begin(), bytes.end()};
}

std::ptrdiff_t lengthAt(const TextLocale& locale, const Units& text, std::ptrdiff_t at)
{
    if (locale.base.singleByte)
        return 1;
    return charLength(locale.base.page, unitAt(text, at));
}

bool isShiftUnit(const TextLocale& locale, std::uint32_t unit)
{
    return unit == shiftIn(locale.base.page) || unit == shiftOut(locale.base.page);
}

std::int32_t lengthOf(const TextLocale& locale, Member member, const Source& source,
                      std::uint32_t options)
{
    if (source.length < 0) {
        std::ptrdiff_t length = 0;
        while (unitAt(source.text, length) != 0)
            ++length;
        return static_cast<std::int32_t>(length);
    }
    std::int32_t length = source.length;
    if (isBytes(member) && (options & kCounted) != 0 && length > 0) {
        const Bytes text = narrowBytes(source.text);
        length = charsToBytes(locale.base.page, Span(text), source.state, length);
    }
    if (static_cast<std::size_t>(length) > source.text.size())
        throw StrayRead(); // more than the caller has
    return length;
}

GroupList::GroupList(Units list, const Codes& table)
    : text(std::move(list)), codes(table), left(static_cast<std::int32_t>(text.size()))
{
    text.push_back(0);
}

std::int32_t GroupList::next()
{
    if (at < 0 || text[static_cast<std::size_t>(at)] == 0)
        return -1;
    std::int64_t number = 0;
    std::ptrdiff_t position = at;
    std::int32_t read = 0;
    while (read < left && unitAt(text, position) != 0 && unitAt(text, position) != codes.list) {
        const std::uint32_t unit = unitAt(text, position);
        if (unit < codes.zero || unit > codes.zero + 9)
            return -1;
        number = std::min<std::int64_t>(number * 10 + (unit - codes.zero), INT32_MAX);
        ++position;
        ++read;
    }
    if (unitAt(text, position) != 0) {
        left -= read;
        at = position + 1;
    } else {
        left = 0;
        at = -1;
    }
    return static_cast<std::int32_t>(number);
}

} // namespace vlx::oracle
