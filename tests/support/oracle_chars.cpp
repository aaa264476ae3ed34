#include "support/oracle_chars.hpp"

namespace vlx::oracle {

namespace {

constexpr unsigned kUtf8Id = 57352;

unsigned word16(Span section, std::ptrdiff_t offset)
{
    return section.at(offset) | section.at(offset + 1) << 8;
}

std::uint32_t word32(Span section, std::ptrdiff_t offset)
{
    return word16(section, offset) | static_cast<std::uint32_t>(word16(section, offset + 2)) << 16;
}

std::ptrdiff_t stepOf(const Page& page, std::int32_t state)
{
    return state != 0 ? static_cast<std::ptrdiff_t>(maxCharBytes(page)) : 1;
}

} // namespace

unsigned Span::at(std::ptrdiff_t position) const
{
    if (position < 0 || static_cast<std::size_t>(position) >= size_)
        throw StrayRead();
    return data_[position];
}

Span Span::from(std::ptrdiff_t position) const
{
    if (position < 0 || static_cast<std::size_t>(position) > size_)
        throw StrayRead();
    return {data_ + position, size_ - static_cast<std::size_t>(position)};
}

unsigned substChar(const Page& page)
{
    return page.sections[0].at(0x0000);
}

unsigned maxCharBytes(const Page& page)
{
    return page.sections[0].at(0x0005);
}

unsigned shiftIn(const Page& page)
{
    return page.sections[0].at(0x0008);
}

unsigned shiftOut(const Page& page)
{
    return page.sections[0].at(0x0009);
}

unsigned charLength(const Page& page, unsigned byte)
{
    return page.sections[0].at(0x000A + static_cast<std::ptrdiff_t>(byte));
}

unsigned toUnicode(const Page& page, unsigned byte)
{
    return word16(page.sections[0], 0x030A + 2 * static_cast<std::ptrdiff_t>(byte));
}

bool isStateful(const Page& page)
{
    return (word16(page.sections[0], 0x110C) & 2) != 0;
}

std::uint32_t getWide(const Page& page, Span text)
{
    std::uint32_t value = 0;
    const auto length = static_cast<std::ptrdiff_t>(charLength(page, text.at(0)));
    for (std::ptrdiff_t i = 0; i < length; ++i)
        value = value << 8 | text.at(i);
    return value;
}

std::uint32_t getWideEx(const Page& page, Span text, std::int32_t state)
{
    std::uint32_t value = 0;
    const std::ptrdiff_t length = stepOf(page, state);
    for (std::ptrdiff_t i = 0; i < length; ++i)
        value = value << 8 | text.at(i);
    return value;
}

Bytes putWide(std::uint32_t value)
{
    Bytes bytes;
    if (value > 0xFFFFFF)
        bytes.push_back(static_cast<unsigned char>(value >> 24));
    if ((value >> 16 & 0xFF) != 0)
        bytes.push_back(static_cast<unsigned char>(value >> 16 & 0xFF));
    if ((value >> 8 & 0xFF) != 0)
        bytes.push_back(static_cast<unsigned char>(value >> 8 & 0xFF));
    bytes.push_back(static_cast<unsigned char>(value & 0xFF));
    return bytes;
}

std::int32_t charsToBytes(const Page& page, Span text, std::int32_t state, std::int32_t count)
{
    std::ptrdiff_t offset = 0;
    for (std::int32_t done = 0; done < count; ++done) {
        if (!isStateful(page)) {
            offset += static_cast<std::ptrdiff_t>(charLength(page, text.at(offset)));
            continue;
        }
        if (text.at(offset) == shiftIn(page)) {
            state = 1;
            offset += 1;
        } else if (text.at(offset) == shiftOut(page)) {
            state = 0;
            offset += 1;
        }
        offset += stepOf(page, state);
        if (text.at(offset) == shiftIn(page)) {
            state = 1;
            offset += 1;
        } else if (text.at(offset) == shiftOut(page)) {
            state = 0;
            offset += 1;
        }
    }
    return static_cast<std::int32_t>(offset);
}

std::uint16_t mbToUnicode(const Page& page, Span text)
{
    if (page.id == kUtf8Id) {
        if (text.at(0) >= 0xE0)
            return static_cast<std::uint16_t>((text.at(0) & 0x0F) << 12 | (text.at(1) & 0x3F) << 6 |
                                              (text.at(2) & 0x3F));
        return static_cast<std::uint16_t>((text.at(0) & 0x1F) << 6 | (text.at(1) & 0x3F));
    }
    const Span section = page.sections[1];
    std::ptrdiff_t node = 0;
    std::ptrdiff_t position = 0;
    for (;;) {
        const unsigned isLeaf = section.at(6 * node);
        const unsigned mask = section.at(6 * node + 1);
        const unsigned low = section.at(6 * node + 2);
        const unsigned high = section.at(6 * node + 3);
        const unsigned base = word16(section, 6 * node + 4);
        const unsigned byte = text.at(position);
        if (byte < low || byte > high)
            return 0xFFFD;
        const auto index = static_cast<std::ptrdiff_t>(base + (byte & mask));
        if (isLeaf != 0) {
            const auto leafTable = static_cast<std::ptrdiff_t>(word16(page.sections[0], 0x1116));
            return static_cast<std::uint16_t>(word16(section, leafTable + 2 * index));
        }
        node = index;
        ++position;
    }
}

std::uint16_t wideToUnicode(const Page& page, std::uint32_t value)
{
    const Bytes area = putWide(value);
    return mbToUnicode(page, Span(area));
}

namespace {

// The result of a Unicode value's page; none where the low byte is outside the page's run.
struct PageResult {
    unsigned kind;
    std::uint32_t value;
};

std::optional<PageResult> pageResult(const Page& page, std::uint16_t value)
{
    const auto entry = static_cast<std::ptrdiff_t>(0x090C + 8 * (value >> 8));
    const unsigned kind = page.sections[0].at(entry);
    const unsigned mask = page.sections[0].at(entry + 1);
    const unsigned low = page.sections[0].at(entry + 2);
    const unsigned high = page.sections[0].at(entry + 3);
    const auto offset3 = static_cast<std::ptrdiff_t>(word16(page.sections[0], entry + 4));
    const auto offset4 = static_cast<std::ptrdiff_t>(word16(page.sections[0], entry + 6));
    const unsigned lowByte = value & 0xFFU;
    if (lowByte < low || lowByte > high)
        return std::nullopt;
    const auto index = static_cast<std::ptrdiff_t>(lowByte & mask);
    const Span three = page.sections[2];
    const Span four = page.sections[3];
    switch (kind) {
    case 0:
        return PageResult{kind, three.at(offset3 + index)};
    case 1:
        return PageResult{kind, word16(three, offset3 + 2 * index)};
    case 2:
        return PageResult{kind,
                          (four.at(offset4 + index) << 16) + word16(three, offset3 + 2 * index)};
    case 3:
        return PageResult{kind, (word16(four, offset4 + 2 * index) << 16) +
                                    word16(three, offset3 + 2 * index)};
    case 4:
        return PageResult{kind, (four.at(offset4 + index) << 8) + three.at(offset3 + index)};
    default:
        throw StrayRead(); // No other kind is valid.
    }
}

} // namespace

Bytes unicodeToMb(const Page& page, std::uint16_t value)
{
    if (page.id == kUtf8Id) {
        if (value <= 0x7F)
            return {static_cast<unsigned char>(value)};
        if (value <= 0x7FF)
            return {static_cast<unsigned char>(0xC0 | value >> 6),
                    static_cast<unsigned char>(0x80 | (value & 0x3F))};
        return {static_cast<unsigned char>(0xE0 | value >> 12),
                static_cast<unsigned char>(0x80 | (value >> 6 & 0x3F)),
                static_cast<unsigned char>(0x80 | (value & 0x3F))};
    }
    const std::optional<PageResult> result = pageResult(page, value);
    if (!result)
        return {static_cast<unsigned char>(substChar(page))};
    if (result->kind == 0)
        return {static_cast<unsigned char>(result->value)};
    return putWide(result->value);
}

std::uint32_t unicodeToWide(const Page& page, std::uint16_t value)
{
    if (page.id == kUtf8Id) {
        const std::uint32_t wide = value;
        if (wide <= 0x7F)
            return wide;
        if (wide <= 0x7FF)
            return (wide & 0x7C0) * 4 | (wide & 0x3F) | 0xC080;
        return (wide & 0xF000) * 16 | (wide & 0xFC0) * 4 | (wide & 0x3F) | 0xE08080;
    }
    const std::optional<PageResult> result = pageResult(page, value);
    return result ? result->value : substChar(page);
}

std::size_t charTypeRecord(const Page& page, Span text)
{
    const Span section = page.sections[0];
    const auto trie = static_cast<std::ptrdiff_t>(word16(section, 0x1112));
    const auto records = static_cast<std::ptrdiff_t>(word16(section, 0x1114));
    std::ptrdiff_t node = 0;
    for (std::ptrdiff_t position = 0;; ++position) {
        const unsigned isLeaf = section.at(trie + 4 * node);
        const unsigned mask = section.at(trie + 4 * node + 1);
        const unsigned base = word16(section, trie + 4 * node + 2);
        const auto index = static_cast<std::ptrdiff_t>(base + (text.at(position) & mask));
        if (isLeaf != 0)
            return static_cast<std::size_t>(records + 8 * index);
        node = index;
    }
}

std::size_t charTypeRecordW(const Page& page, std::uint32_t value)
{
    const Bytes area = putWide(value);
    return charTypeRecord(page, Span(area));
}

Bytes mapChar(const Page& page, Span text, std::uint32_t mapping)
{
    const auto record = static_cast<std::ptrdiff_t>(charTypeRecord(page, text));
    if ((word32(page.sections[0], record) & mapping) != 0)
        return putWide(getWide(page, text) + word32(page.sections[0], record + 4));
    Bytes bytes;
    const auto length = static_cast<std::ptrdiff_t>(charLength(page, text.at(0)));
    for (std::ptrdiff_t i = 0; i < length; ++i)
        bytes.push_back(static_cast<unsigned char>(text.at(i)));
    return bytes;
}

std::uint32_t mapCharW(const Page& page, std::uint32_t value, std::uint32_t mapping)
{
    const auto record = static_cast<std::ptrdiff_t>(charTypeRecordW(page, value));
    if ((word32(page.sections[0], record) & mapping) != 0)
        return value + word32(page.sections[0], record + 4);
    return value;
}

Bytes mapCharEx(const Page& page, Span text, std::uint32_t mapping)
{
    const auto record = static_cast<std::ptrdiff_t>(charTypeRecord(page, text));
    if ((word32(page.sections[0], record) & mapping) != 0)
        return putWide(getWideEx(page, text, 1) + word32(page.sections[0], record + 4));
    Bytes bytes;
    for (std::ptrdiff_t i = 0; i < static_cast<std::ptrdiff_t>(maxCharBytes(page)); ++i)
        bytes.push_back(static_cast<unsigned char>(text.at(i)));
    return bytes;
}

} // namespace vlx::oracle
