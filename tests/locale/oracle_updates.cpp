// The updates of the oracle.
#include <algorithm>

#include "locale/oracle_items.hpp"

namespace vlx::oracle {

namespace {

using Units = std::vector<std::uint16_t>;

Answer failure(std::int32_t error)
{
    return {0, error, {}};
}
Answer success()
{
    return {1, 0, {}};
}

Span contentOf(const test::ListedObject& object)
{
    return Span(object.sections[0].data(), object.sections[0].size());
}

unsigned lowerCase(unsigned byte)
{
    return byte >= 'A' && byte <= 'Z' ? byte + 32 : byte;
}

bool sameName(std::string own, const Bytes& name)
{
    if (name.size() == own.size() + 1)
        own.push_back(0);
    return own.size() == name.size() &&
           std::equal(own.begin(), own.end(), name.begin(), [](char left, unsigned char right) {
               return lowerCase(static_cast<unsigned char>(left)) == lowerCase(right);
           });
}

// Puts the object of an index into the record.
Answer place(Record& record, int type, int index)
{
    switch (type) {
    case 0:
        record.resolution.language = index;
        break;
    case 1:
        record.resolution.territory = index;
        setModifiable(record.values, record.page(), contentOf(record.territory()));
        break;
    case 2: {
        if (record.resolution.codePage == index)
            break;
        const Page from = record.page();
        const Page to = pageOf(record.objects->at(static_cast<std::size_t>(index)));
        if (const std::int32_t error = changeCodePage(record.values, from, to); error != 0)
            return failure(error);
        record.resolution.codePage = index;
        break;
    }
    default:
        record.resolution.sort = index;
        record.values.flags = static_cast<std::uint16_t>(
            index == Resolution::kNone ? record.values.flags | 0x80 : record.values.flags & ~0x80);
        break;
    }
    return success();
}

Answer placeById(Record& record, int type, std::int32_t value)
{
    const unsigned id = static_cast<unsigned>(value) & 0xFFFF;
    if (type == 3 && id == 0)
        return place(record, type, Resolution::kNone);
    for (std::size_t i = 0; i < record.objects->size(); ++i)
        if (record.objects->at(i).type == type && record.objects->at(i).id == id)
            return place(record, type, static_cast<int>(i));
    return failure(37);
}

Answer placeByName(Record& record, int type, Bytes name)
{
    name.resize(std::min<std::size_t>(name.size(), 32));
    const Page page = record.page();
    if (!isAsciiBased(page)) {
        Bytes ascii;
        const test::ListedObject* const names = namePage(*record.objects);
        if (!names)
            return failure(37);
        for (const unsigned char byte : name) {
            if (charLength(page, byte) != 1)
                return failure(37);
            const Bytes made =
                unicodeToMb(pageOf(*names), static_cast<std::uint16_t>(toUnicode(page, byte)));
            ascii.insert(ascii.end(), made.begin(), made.end());
        }
        name = ascii;
    }
    if (type == 3 && sameName("BINARY", name))
        return place(record, type, Resolution::kNone);
    for (std::size_t i = 0; i < record.objects->size(); ++i)
        if (record.objects->at(i).type == type && sameName(record.objects->at(i).name, name))
            return place(record, type, static_cast<int>(i));
    return failure(37);
}

bool isDigit(const Page& page, unsigned byte)
{
    return isAsciiBased(page) ? byte >= 0x30 && byte <= 0x39 : byte >= 0xF0 && byte <= 0xF9;
}

struct SeparatorRow {
    std::int32_t item;
    std::size_t index;
    int other; // index of the separator that it may not equal, -1: no test
    bool isPoint;
};
constexpr SeparatorRow kSeparators[] = {
    {59, 0, 1, true}, {60, 1, 0, false}, {61, 2, -1, false}, {66, 3, 4, true}, {67, 4, 3, false}};

Answer setSeparator(Record& record, const SeparatorRow& row, unsigned byte)
{
    const Page page = record.page();
    Values& values = record.values;
    if (charLength(page, byte) != 1)
        return failure(37);
    if (row.other >= 0) {
        if (isDigit(page, byte) || byte == values.separators[static_cast<std::size_t>(row.other)])
            return failure(37);
        if (row.isPoint && byte == 0)
            return failure(37);
    }
    values.separators[row.index] = static_cast<std::uint8_t>(byte);
    values.separatorsU[row.index] = static_cast<std::uint16_t>(toUnicode(page, byte));
    values.modifiedMask |= 0x800u << row.index;
    values.modifiedMaskU = static_cast<std::uint16_t>(values.modifiedMaskU | 1u << row.index);
    return success();
}

constexpr std::int32_t kTexts[] = {62, 64, 68, 71, 72, 79, 80, 81};

// What a reader of a stored text sees: up to its terminator.
Bytes upToTerminator(const Bytes& text)
{
    return Bytes(text.begin(), std::find(text.begin(), text.end(), 0));
}

Units unicodeOf(const Page& page, const Bytes& text)
{
    Units units;
    bool multi = false;
    for (std::size_t at = 0; at < text.size();) {
        if (isStateful(page) && (text[at] == shiftIn(page) || text[at] == shiftOut(page))) {
            multi = text[at] == shiftIn(page);
            ++at;
            continue;
        }
        std::size_t length = charLength(page, text[at]);
        if (isStateful(page))
            length = multi ? maxCharBytes(page) : 1;
        if (at + length > text.size())
            break;
        units.push_back(static_cast<std::uint16_t>(
            length == 1 ? toUnicode(page, text[at])
                        : mbToUnicode(page, Span(text).from(static_cast<std::ptrdiff_t>(at)))));
        at += length;
    }
    return units;
}

// A reader of the 16-bit form stops at a zero, too.
Units upToZero(const Units& units)
{
    return Units(units.begin(), std::find(units.begin(), units.end(), 0));
}

void store(Record& record, std::size_t index, const Bytes& text)
{
    Values& values = record.values;
    values.texts[index] = upToTerminator(text);
    values.textsU[index] = upToZero(unicodeOf(record.page(), values.texts[index]));
    values.modifiedMask |= 0x10000u << index;
    values.modifiedMaskU = static_cast<std::uint16_t>(values.modifiedMaskU | 0x20u << index);
}

Bytes cutPlain(const Record& record, const Bytes& text)
{
    if (maxCharBytes(record.page()) == 1)
        return text;
    std::size_t at = 0;
    while (at < text.size() && at + charLength(record.page(), text[at]) <= text.size())
        at += charLength(record.page(), text[at]);
    return Bytes(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(at));
}

Bytes cutStateful(const Record& record, const Bytes& text, std::int32_t state)
{
    const Page page = record.page();
    const std::size_t longest = maxCharBytes(page);
    const auto in = static_cast<unsigned char>(shiftIn(page));
    const auto out = static_cast<unsigned char>(shiftOut(page));
    Bytes stored;
    if (state == 1)
        stored.push_back(in);
    std::size_t at = 0;
    bool lastIsShiftIn = false;
    while (at < text.size()) {
        std::size_t step = state == 1 ? longest : 1;
        const bool isIn = text[at] == in;
        const bool isOut = !isIn && text[at] == out;
        if (isIn || isOut)
            step = 1;
        if (at + step > text.size())
            break;
        if (isIn || isOut)
            state = isIn ? 1 : 0;
        lastIsShiftIn = isIn;
        stored.insert(stored.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                      text.begin() + static_cast<std::ptrdiff_t>(at + step));
        at += step;
    }
    if (state == 1) {
        if (at == 0)
            stored.clear();
        else if (lastIsShiftIn)
            stored.pop_back();
        else
            stored.push_back(out);
    }
    return stored;
}

std::int32_t nameType(std::int32_t item)
{
    return item == 2 ? 0 : item == 6 ? 1 : item == 10 ? 2 : item == 12 ? 3 : -1;
}

std::int32_t lengthOf(const Bytes& text)
{
    return static_cast<std::int32_t>(std::find(text.begin(), text.end(), 0) - text.begin());
}

// The bytes of a length, with characters counted from `state`.
Bytes given(const Record& record, const Bytes& text, std::int32_t state, std::int32_t length,
            std::uint32_t options)
{
    if ((options & 0x4000) != 0 && length > 0)
        length = charsToBytes(record.page(), Span(text), state, length);
    if (length < 0)
        length = lengthOf(text);
    if (length > static_cast<std::int32_t>(text.size()))
        throw StrayRead{};
    return Bytes(text.begin(), text.begin() + length);
}

Answer act(Record& record, std::int32_t item, const Bytes& text, std::int32_t state, bool stateful)
{
    if (nameType(item) >= 0)
        return placeByName(record, nameType(item), text);
    for (const SeparatorRow& row : kSeparators)
        if (row.item == item)
            return state == 1 ? failure(37) : setSeparator(record, row, text.front());
    for (std::size_t i = 0; i < std::size(kTexts); ++i) {
        if (kTexts[i] != item)
            continue;
        store(record, i, stateful ? cutStateful(record, text, state) : cutPlain(record, text));
        return success();
    }
    return failure(35);
}

bool isTextItem(std::int32_t item)
{
    return nameType(item) >= 0 || std::count(std::begin(kTexts), std::end(kTexts), item) != 0 ||
           (item >= 59 && item <= 61) || item == 66 || item == 67;
}

// The bytes of 16-bit text, in the single-byte state at both ends.
Bytes bytesOf(const Page& page, const Units& text)
{
    Bytes bytes;
    bool multi = false;
    for (const std::uint16_t unit : text) {
        if (unit == 0)
            break;
        const Bytes character = unicodeToMb(page, unit);
        if (isStateful(page) && multi != (character.size() > 1)) {
            multi = !multi;
            bytes.push_back(static_cast<unsigned char>(multi ? shiftIn(page) : shiftOut(page)));
        }
        bytes.insert(bytes.end(), character.begin(), character.end());
    }
    if (multi)
        bytes.push_back(static_cast<unsigned char>(shiftOut(page)));
    return bytes;
}

} // namespace

Answer setNumInfo(Record& record, std::int32_t item, std::int32_t value)
{
    Values& values = record.values;
    const auto flag = [&](unsigned mask, std::uint32_t bit) {
        if (value != 0 && value != 1)
            return failure(37);
        values.flags =
            static_cast<std::uint16_t>(value == 1 ? values.flags | mask : values.flags & ~mask);
        values.modifiedMask |= bit;
        return success();
    };
    const auto digits = [&](std::size_t index, std::uint32_t bit) {
        values.digits[index] = static_cast<std::uint16_t>(value);
        values.modifiedMask |= bit;
        return success();
    };
    const auto position = [&](std::size_t index, std::uint32_t bit) {
        if (value < 0 || value > 4)
            return failure(37);
        values.positions[index] = static_cast<std::uint8_t>(value);
        values.modifiedMask |= bit;
        return success();
    };
    switch (item) {
    case 1:
        return placeById(record, 0, value);
    case 5:
        return placeById(record, 1, value);
    case 9:
        return placeById(record, 2, value);
    case 11:
        return placeById(record, 3, value);
    case 63:
        return digits(0, 0x1);
    case 69:
        return digits(1, 0x2);
    case 70:
        return digits(2, 0x4);
    case 73:
        return flag(0x01, 0x8);
    case 74:
        return flag(0x02, 0x10);
    case 75:
        return flag(0x04, 0x20);
    case 76:
        return flag(0x08, 0x40);
    case 82:
        return flag(0x10, 0x80);
    case 83:
        return flag(0x20, 0x100);
    case 77:
        return position(0, 0x200);
    case 78:
        return position(1, 0x400);
    default:
        return failure(35);
    }
}

Answer setTextInfo(Record& record, std::int32_t item, const Bytes& text, std::int32_t length,
                   std::uint32_t options)
{
    if (options != 0 && options != 0x4000)
        return failure(2);
    const Bytes bytes = given(record, text, 0, length, options);
    if (bytes.empty())
        return success();
    return act(record, item, bytes, 0, false);
}

Answer setTextInfoEx(Record& record, std::int32_t item, const Bytes& text, std::int32_t state,
                     std::int32_t length, std::uint32_t options)
{
    if (!record.stateful())
        return setTextInfo(record, item, text, length, options);
    if (options != 0 && options != 0x4000)
        return failure(2);
    Bytes bytes = given(record, text, state, length, options);
    const Page page = record.page();
    if (!bytes.empty() && (bytes[0] == shiftIn(page) || bytes[0] == shiftOut(page))) {
        state = bytes[0] == shiftIn(page) ? 1 : 0;
        bytes.erase(bytes.begin());
    }
    if (bytes.empty())
        return success();
    return act(record, item, bytes, state, true);
}

Answer setTextInfoU(Record& record, std::int32_t item, const std::vector<std::uint16_t>& text,
                    std::int32_t length, std::uint32_t options)
{
    if (options != 0 && options != 0x4000)
        return failure(2);
    if (length < 0)
        length = static_cast<std::int32_t>(upToZero(text).size());
    if (length == 0)
        return success();
    if (length / 2 > 131 || !isTextItem(item))
        return failure(37);
    const Units units(text.begin(), text.begin() + length);
    Bytes bytes = bytesOf(record.page(), units);
    bytes.push_back(0);
    const Answer answer = setTextInfoEx(record, item, bytes, 0, -1, 0);
    if (answer.result == 0)
        return answer;
    Values& values = record.values;
    for (const SeparatorRow& row : kSeparators) {
        if (row.item != item)
            continue;
        if (length != 1)
            return failure(37);
        values.separatorsU[row.index] = units[0];
    }
    for (std::size_t i = 0; i < std::size(kTexts); ++i) {
        if (kTexts[i] != item)
            continue;
        values.textsU[i] = upToZero(units);
        values.modifiedMaskU = static_cast<std::uint16_t>(values.modifiedMaskU | 0x20u << i);
    }
    return success();
}

Answer setTextInfoW(Record& record, std::int32_t item, const std::vector<std::uint32_t>& text,
                    std::int32_t length, std::uint32_t options)
{
    if (options != 0 && options != 0x4000)
        return failure(2);
    if (length < 0)
        length = static_cast<std::int32_t>(std::find(text.begin(), text.end(), 0u) - text.begin());
    if (length == 0)
        return success();
    const Page page = record.page();
    Bytes bytes;
    bool multi = false;
    for (std::int32_t i = 0; i < length; ++i) {
        const std::uint32_t value = text[static_cast<std::size_t>(i)];
        if (record.stateful() && multi != (value >= 256)) {
            multi = !multi;
            bytes.push_back(static_cast<unsigned char>(multi ? shiftIn(page) : shiftOut(page)));
        }
        const Bytes character = putWide(value);
        bytes.insert(bytes.end(), character.begin(), character.end());
    }
    const auto size = static_cast<std::int32_t>(bytes.size());
    return setTextInfoEx(record, item, bytes, 0, size, 0);
}

} // namespace vlx::oracle
