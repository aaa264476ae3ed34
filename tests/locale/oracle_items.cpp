// The queries of the oracle.
#include "locale/oracle_items.hpp"

#include <algorithm>

namespace vlx::oracle {

namespace {

constexpr int kNone = Resolution::kNone;

unsigned wordAt(const test::ListedObject& object, unsigned word)
{
    const unsigned high = object.sections[0].at(2 * word + 1);
    return object.sections[0].at(2 * word) | high << 8;
}

Item unitsAt(const test::ListedObject& object, unsigned offset)
{
    Item item{1, {}, false};
    for (unsigned at = offset;; at += 2) {
        const unsigned high = object.sections[0].at(at + 1);
        const unsigned unit = object.sections[0].at(at) | high << 8;
        if (unit == 0)
            return item;
        item.elements.push_back(unit);
    }
}

Item textAtWord(const test::ListedObject& object, unsigned word)
{
    return unitsAt(object, wordAt(object, word));
}

Item asciiText(const std::string& text)
{
    Item item{3, {}, false};
    for (const char byte : text)
        item.elements.push_back(static_cast<unsigned char>(byte));
    return item;
}

Item singleElement(std::uint32_t kind, std::uint32_t element)
{
    Item item{kind, {}, true};
    if (element != 0)
        item.elements.push_back(element);
    return item;
}

Item defaultObject(const Record& record, int type, unsigned id)
{
    for (const test::ListedObject& object : *record.objects)
        if (object.type == type && object.id == id && !(type == 3 && id == 0))
            return asciiText(object.name);
    return type == 3 && id == 0 ? asciiText("Binary") : Item{};
}

std::string sortName(const Record& record)
{
    return record.resolution.sort == kNone
               ? "Binary"
               : record.objects->at(static_cast<std::size_t>(record.resolution.sort)).name;
}

// Item, territory word, index among the record's texts or separators.
struct Row {
    std::int32_t item;
    unsigned word;
    std::size_t index;
};
constexpr Row kSeparatorRows[] = {{59, 0, 0}, {60, 1, 1}, {61, 2, 2}, {66, 3, 3}, {67, 4, 4}};
constexpr Row kTextRows[] = {{62, 13, 0}, {64, 15, 1}, {68, 14, 2}, {71, 17, 3},
                             {72, 18, 4}, {79, 19, 5}, {80, 20, 6}, {81, 21, 7}};

template <class Elements>
Item ownText(std::uint32_t kind, const Elements& elements)
{
    return {kind, {elements.begin(), elements.end()}, false};
}

Item textOf(const Record& record, std::int32_t item, bool useRecord, bool unicode)
{
    for (const Row& row : kSeparatorRows) {
        if (row.item != item)
            continue;
        if (!useRecord)
            return singleElement(1, wordAt(record.territory(), row.word));
        return unicode ? singleElement(1, record.values.separatorsU[row.index])
                       : singleElement(2, record.values.separators[row.index]);
    }
    for (const Row& row : kTextRows) {
        if (row.item != item)
            continue;
        if (!useRecord)
            return textAtWord(record.territory(), row.word);
        return unicode ? ownText(1, record.values.textsU[row.index])
                       : ownText(2, record.values.texts[row.index]);
    }
    if (item == 2)
        return asciiText(record.language().name);
    if (item == 3)
        return textAtWord(record.language(), 5);
    if (item == 4)
        return textAtWord(record.language(), 6);
    if (item == 6)
        return asciiText(record.territory().name);
    if (item == 7)
        return textAtWord(record.territory(), 11);
    if (item == 8)
        return textAtWord(record.territory(), 12);
    if (item == 10)
        return asciiText(record.codePage().name);
    if (item == 12)
        return asciiText(sortName(record));
    if (item == 13)
        return defaultObject(record, 1, wordAt(record.language(), 0));
    if (item == 14)
        return defaultObject(record, 2, wordAt(record.language(), 1));
    if (item == 15)
        return defaultObject(record, 3, wordAt(record.language(), 2));
    if (item >= 16 && item <= 57)
        return textAtWord(record.language(), static_cast<unsigned>(item) - 9);
    if (item == 65)
        return textAtWord(record.territory(), 16);
    if (item == 88)
        return asciiText(record.language().name + "_" + record.territory().name + "." +
                         record.codePage().name + "@" + sortName(record));
    return {};
}

// The characters of a text as bytes of the locale's code page; nothing without the code page of
// names where it is needed.
struct Characters {
    bool good = true;
    std::vector<Bytes> all;
};

Characters charactersOf(const Record& record, const Item& item, bool followShifts)
{
    const Page page = record.page();
    Characters characters;
    if (item.kind == 1) {
        for (const std::uint32_t unit : item.elements)
            characters.all.push_back(unicodeToMb(page, static_cast<std::uint16_t>(unit)));
        return characters;
    }
    if (item.kind == 3 && !isAsciiBased(page)) {
        const test::ListedObject* const names = namePage(*record.objects);
        if (!names)
            return {false, {}};
        for (const std::uint32_t byte : item.elements)
            characters.all.push_back(
                unicodeToMb(page, static_cast<std::uint16_t>(toUnicode(pageOf(*names), byte))));
        return characters;
    }
    bool multi = false;
    std::size_t at = 0;
    while (at < item.elements.size()) {
        const std::uint32_t byte = item.elements[at];
        if (followShifts && (byte == shiftIn(page) || byte == shiftOut(page))) {
            multi = byte == shiftIn(page);
            ++at;
            continue;
        }
        std::size_t length = charLength(page, byte);
        if (followShifts)
            length = multi ? maxCharBytes(page) : 1;
        if (at + length > item.elements.size())
            break; // the terminator cuts it off
        Bytes character;
        for (std::size_t i = 0; i < length; ++i)
            character.push_back(static_cast<unsigned char>(item.elements[at + i]));
        characters.all.push_back(character);
        at += length;
    }
    return characters;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const Answer& answer)
{
    out << "result " << answer.result << ", error " << answer.error << ", written" << std::hex;
    for (const std::uint32_t element : answer.written)
        out << ' ' << element;
    return out << std::dec;
}

bool isAsciiBased(const Page& page)
{
    return (page.sections[0].at(0x110C) & 1) != 0;
}

const test::ListedObject* namePage(const Objects& objects)
{
    for (const test::ListedObject& object : objects)
        if (object.type == 2 && object.id == 367)
            return &object;
    return nullptr;
}

Item textItem(const Record& record, std::int32_t item, bool useRecord)
{
    return textOf(record, item, useRecord, false);
}

Item textItemU(const Record& record, std::int32_t item, bool useRecord)
{
    return textOf(record, item, useRecord, true);
}

Answer numInfo(const Record& record, std::int32_t item, std::uint32_t options)
{
    if (options != 0 && options != 1)
        return {-1, 2, {}};
    const auto answer = [](unsigned value) {
        return Answer{static_cast<std::int32_t>(value), 0, {}};
    };
    const bool useRecord = options == 0;
    const Values& values = record.values;
    const test::ListedObject& territory = record.territory();
    const unsigned flags = wordAt(territory, 10);
    switch (item) {
    case 1:
        return answer(record.language().id);
    case 5:
        return answer(territory.id);
    case 9:
        return answer(record.codePage().id);
    case 11:
        return answer(
            record.resolution.sort == kNone
                ? 0
                : record.objects->at(static_cast<std::size_t>(record.resolution.sort)).id);
    case 58:
        return answer(flags & 1);
    case 63:
        return answer(useRecord ? values.digits[0] : wordAt(territory, 5));
    case 69:
        return answer(useRecord ? values.digits[1] : wordAt(territory, 6));
    case 70:
        return answer(useRecord ? values.digits[2] : wordAt(territory, 7));
    case 73:
        return answer(useRecord ? values.flags & 1u : flags >> 1 & 1);
    case 74:
        return answer(useRecord ? values.flags >> 1 & 1u : flags >> 2 & 1);
    case 75:
        return answer(useRecord ? values.flags >> 2 & 1u : flags >> 3 & 1);
    case 76:
        return answer(useRecord ? values.flags >> 3 & 1u : flags >> 4 & 1);
    case 77:
        return answer(useRecord ? values.positions[0] : territory.sections[0].at(16));
    case 78:
        return answer(useRecord ? values.positions[1] : territory.sections[0].at(17));
    case 82:
        return answer(useRecord ? values.flags >> 4 & 1u : flags >> 5 & 1);
    case 83:
        return answer(useRecord ? values.flags >> 5 & 1u : flags >> 6 & 1);
    case 84:
        return answer(wordAt(territory, 9));
    case 85:
        return answer(maxCharBytes(record.page()));
    case 86:
        return answer(isAsciiBased(record.page()) ? 1 : 0);
    case 87:
        return answer(record.stateful() ? 1 : 0);
    default:
        return {-1, 35, {}};
    }
}

Answer textInfo(const Record& record, std::int32_t item, std::int32_t size, std::uint32_t options)
{
    if ((options & ~0x4001u) != 0)
        return {-1, 2, {}};
    if (size <= 0)
        return {};
    const Item text = textItem(record, item, (options & 1) == 0);
    if (text.kind == 0)
        return {-1, 35, {}};
    const Characters characters = charactersOf(record, text, false);
    if (!characters.good)
        return {-1, 30, {}};
    if (text.single && size > 2)
        size = 2;
    Answer answer;
    std::int32_t left = size;
    for (const Bytes& character : characters.all) {
        if (left < 2)
            break;
        const auto n = static_cast<std::int32_t>(character.size());
        if ((options & 0x4000) == 0 && n >= left)
            break;
        answer.written.insert(answer.written.end(), character.begin(), character.end());
        left -= (options & 0x4000) != 0 ? 1 : n;
    }
    answer.written.push_back(0);
    answer.result = (options & 0x4000) != 0 ? size - left + 1
                                            : static_cast<std::int32_t>(answer.written.size());
    return answer;
}

Answer textInfoEx(const Record& record, std::int32_t item, std::int32_t state, std::int32_t size,
                  std::uint32_t options)
{
    if (!record.stateful())
        return textInfo(record, item, size, options);
    if ((options & ~0x4001u) != 0)
        return {-1, 2, {}};
    if (size <= 0)
        return {};
    const Item text = textItem(record, item, (options & 1) == 0);
    if (text.kind == 0)
        return {-1, 35, {}};
    const Characters characters = charactersOf(record, text, true);
    if (!characters.good)
        return {-1, 30, {}};
    if (text.single && size > 2)
        size = state == 1 ? 3 : 2;
    const Page page = record.page();
    Answer answer;
    std::int32_t left = size;
    for (const Bytes& character : characters.all) {
        if (left < 2)
            break;
        const auto n = static_cast<std::int32_t>(character.size());
        const bool needShift = (n == 1 && state == 1) || (n >= 2 && state == 0);
        if ((options & 0x4000) == 0 && n + (needShift ? 1 : 0) + (n >= 2 ? 1 : 0) >= left)
            break;
        if (needShift) {
            answer.written.push_back(n == 1 ? shiftOut(page) : shiftIn(page));
            state = 1 - state;
            if ((options & 0x4000) == 0)
                --left;
        }
        answer.written.insert(answer.written.end(), character.begin(), character.end());
        left -= (options & 0x4000) != 0 ? 1 : n;
    }
    if (state == 1)
        answer.written.push_back(shiftOut(page));
    answer.written.push_back(0);
    answer.result = (options & 0x4000) != 0 ? size - left + 1
                                            : static_cast<std::int32_t>(answer.written.size());
    return answer;
}

Answer textInfoU(const Record& record, std::int32_t item, std::int32_t size, std::uint32_t options)
{
    options &= ~0x4000u;
    if (options > 1)
        return {-1, 2, {}};
    if (size <= 0)
        return {};
    const Item text = textItemU(record, item, options == 0);
    if (text.kind == 0)
        return {-1, 35, {}};
    if (text.single && size > 2)
        size = 2;
    const Page page = record.page();
    const test::ListedObject* const names = namePage(*record.objects);
    if (text.kind == 3 && !isAsciiBased(page) && !names)
        return {-1, 30, {}};
    Answer answer;
    for (const std::uint32_t element : text.elements) {
        if (size - static_cast<std::int32_t>(answer.written.size()) <= 1)
            break;
        if (text.kind == 1)
            answer.written.push_back(element);
        else
            answer.written.push_back(
                toUnicode(isAsciiBased(page) ? page : pageOf(*names), element));
    }
    answer.written.push_back(0);
    answer.result = static_cast<std::int32_t>(answer.written.size());
    return answer;
}

Answer textInfoW(const Record& record, std::int32_t item, std::int32_t size, std::uint32_t options)
{
    options &= ~0x4000u;
    if (options > 1)
        return {-1, 2, {}};
    if (size <= 0)
        return {};
    const Item text = textItem(record, item, options == 0);
    if (text.kind == 0)
        return {-1, 35, {}};
    if (text.single && size > 2)
        size = 2;
    const Page page = record.page();
    std::vector<std::uint32_t> values;
    if (text.kind == 1) {
        for (const std::uint32_t unit : text.elements)
            values.push_back(unicodeToWide(page, static_cast<std::uint16_t>(unit)));
    } else if (text.kind == 3 && !isAsciiBased(page)) {
        const test::ListedObject* const names = namePage(*record.objects);
        if (!names)
            return {-1, 30, {}};
        for (const std::uint32_t byte : text.elements)
            values.push_back(
                unicodeToWide(page, static_cast<std::uint16_t>(toUnicode(pageOf(*names), byte))));
    } else {
        for (const Bytes& character : charactersOf(record, text, record.stateful()).all) {
            std::uint32_t value = 0;
            for (const unsigned char byte : character)
                value = value << 8 | byte;
            values.push_back(value);
        }
    }
    Answer answer;
    for (const std::uint32_t value : values)
        if (size - static_cast<std::int32_t>(answer.written.size()) > 1)
            answer.written.push_back(value);
    answer.written.push_back(0);
    answer.result = static_cast<std::int32_t>(answer.written.size());
    return answer;
}

} // namespace vlx::oracle
