#include "codepage_view.hpp"

#include <cstring>

namespace vlx::data {

namespace {

// A good trie has fewer nodes, and each is entered once; a bad one may lead in circles.
constexpr int kMaxVisits = 0x10000;

// The bytes of a character, the first one first.
std::uint8_t byteAt(Packed character, int index)
{
    return static_cast<std::uint8_t>(character >> 8 * (packedLength(character) - 1 - index));
}

std::uint16_t decodeUtf8(Packed character)
{
    if (character < 0x80)
        return static_cast<std::uint16_t>(character);
    if (character < 0x10000)
        return static_cast<std::uint16_t>((character & 0x1F00) >> 2 | (character & 0x3F));
    return static_cast<std::uint16_t>((character & 0xF0000) >> 4 | (character & 0x3F00) >> 2 |
                                      (character & 0x3F));
}

Packed encodeUtf8(std::uint32_t value)
{
    if (value < 0x80)
        return value;
    if (value < 0x800)
        return (0xC0 | value >> 6) << 8 | (0x80 | (value & 0x3F));
    return (0xE0 | value >> 12) << 16 | (0x80 | (value >> 6 & 0x3F)) << 8 | (0x80 | (value & 0x3F));
}

} // namespace

std::optional<CodePageView> CodePageView::open(const std::vector<Bytes>& sections, std::uint16_t id)
{
    CodePageView view;
    if (sections.empty() || sections.front().size() < sizeof view.header_)
        return std::nullopt;
    std::memcpy(&view.header_, sections.front().data(), sizeof view.header_);
    view.sections_ = sections;
    view.sections_.resize(4);
    view.id_ = id;
    return view;
}

int CodePageView::lengthAt(std::uint8_t lead) const
{
    return stateful() ? header_.maxCharBytes : header_.charLength[lead];
}

template <class Item>
std::optional<Item> CodePageView::item(int number, std::size_t base, std::size_t index) const
{
    const Bytes& bytes = section(number);
    const std::size_t offset = base + index * sizeof(Item);
    if (offset + sizeof(Item) > bytes.size())
        return std::nullopt;
    Item copy;
    std::memcpy(&copy, bytes.data() + offset, sizeof copy);
    return copy;
}

// Nodes end where the values begin.
std::optional<TSUnicodeNode> CodePageView::unicodeNode(std::size_t index) const
{
    if ((index + 1) * sizeof(TSUnicodeNode) > header_.leafTableOffset)
        return std::nullopt;
    return item<TSUnicodeNode>(2, 0, index);
}

std::optional<std::uint16_t> CodePageView::unicodeValue(std::size_t index) const
{
    return item<Le16>(2, header_.leafTableOffset, index);
}

std::optional<TSTypeNode> CodePageView::typeNode(std::size_t index) const
{
    if (header_.typeTrieOffset + (index + 1) * sizeof(TSTypeNode) > header_.typeRecordsOffset)
        return std::nullopt;
    return item<TSTypeNode>(1, header_.typeTrieOffset, index);
}

std::optional<TSTypeRecord> CodePageView::typeRecord(std::size_t index) const
{
    return item<TSTypeRecord>(1, header_.typeRecordsOffset, index);
}

std::optional<Packed> CodePageView::mapValue(std::uint8_t byte) const
{
    return item<Le32>(1, header_.mapValuesOffset, byte);
}

std::optional<TSMapPair> CodePageView::mapPair(std::size_t index) const
{
    if (index >= header_.mapPairCount)
        return std::nullopt;
    return item<TSMapPair>(1, header_.mapPairsOffset, index);
}

void CodePageView::collect(std::size_t index, Packed lead, int left, int& visits,
                           std::vector<Packed>& found) const
{
    const auto node = unicodeNode(index);
    if (!node || left == 0 || --visits < 0)
        return;
    for (unsigned byte = node->low; byte <= node->high; ++byte) {
        const std::size_t next = node->base + (byte & node->mask);
        if (!node->isLeaf)
            collect(next, lead << 8 | byte, left - 1, visits, found);
        else if (const auto value = unicodeValue(next); left == 1 && value && *value != kNoUnicode)
            found.push_back(lead << 8 | byte);
    }
}

std::vector<Packed> CodePageView::characters() const
{
    std::vector<Packed> found;
    for (unsigned byte = 0; byte < 256; ++byte)
        if (header_.toUnicode[byte] != kNoUnicode)
            found.push_back(byte);
    for (std::uint32_t value = 0x80; utf8() && value < 0x10000; ++value)
        found.push_back(encodeUtf8(value));
    const auto root = unicodeNode(0);
    if (utf8() || !root || root->isLeaf)
        return found;
    int visits = kMaxVisits;
    for (unsigned byte = root->low; byte <= root->high; ++byte) {
        const int length = lengthAt(static_cast<std::uint8_t>(byte));
        if (length > 1 && length <= 4)
            collect(root->base + (byte & root->mask), byte, length - 1, visits, found);
    }
    return found;
}

std::optional<std::uint16_t> CodePageView::decode(Packed character) const
{
    if (character <= 0xFF)
        return header_.toUnicode[character];
    if (utf8())
        return decodeUtf8(character);
    auto node = unicodeNode(0);
    for (int i = 0; node && i < packedLength(character); ++i) {
        const std::uint8_t byte = byteAt(character, i);
        if (byte < node->low || byte > node->high)
            return kNoUnicode;
        const std::size_t next = node->base + (byte & node->mask);
        if (node->isLeaf)
            return unicodeValue(next);
        node = unicodeNode(next);
    }
    return std::nullopt;
}

std::optional<Packed> CodePageView::cell(int number, std::size_t offset, std::size_t width) const
{
    const Bytes& bytes = section(number);
    if (offset + width > bytes.size())
        return std::nullopt;
    Packed value = 0;
    for (std::size_t i = width; i > 0; --i)
        value = value << 8 | bytes[offset + i - 1];
    return value;
}

std::optional<Packed> CodePageView::encode(std::uint16_t value) const
{
    if (utf8())
        return encodeUtf8(value);
    const TSUnicodePage& entry = page(value);
    const auto low = static_cast<std::uint8_t>(value);
    if (low < entry.low || low > entry.high)
        return header_.substChar;
    if (entry.kind >= kPageKinds)
        return std::nullopt;
    const bool byteLow = entry.kind == kPageByte || entry.kind == kPageByteByte;
    const std::size_t lowWidth = byteLow ? 1 : 2;
    constexpr std::size_t kHighWidth[kPageKinds] = {0, 0, 1, 2, 1};
    const std::size_t highWidth = kHighWidth[entry.kind];
    const std::size_t index = low & entry.mask;
    const auto lowPart = cell(3, entry.offset3 + index * lowWidth, lowWidth);
    const auto highPart = highWidth == 0 ? std::optional<Packed>(0)
                                         : cell(4, entry.offset4 + index * highWidth, highWidth);
    if (!lowPart || !highPart)
        return std::nullopt;
    return *lowPart + (*highPart << 8 * lowWidth);
}

std::optional<TSTypeRecord> CodePageView::typeOf(Packed character) const
{
    auto node = typeNode(0);
    for (int i = 0; node && i < packedLength(character); ++i) {
        const std::size_t next = node->base + (byteAt(character, i) & node->mask);
        if (node->isLeaf)
            return typeRecord(next);
        node = typeNode(next);
    }
    return std::nullopt;
}

} // namespace vlx::data
