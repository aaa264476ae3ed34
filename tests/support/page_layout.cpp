// The sections of a built page.
#include <algorithm>
#include <stdexcept>

#include "support/page_builder.hpp"

namespace vlx::test {

namespace {

constexpr std::size_t kSectionLimit = 65535;

template <class Item>
void append(Section& section, const Item* items, std::size_t count)
{
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(items);
    section.insert(section.end(), bytes, bytes + count * sizeof(Item));
}

std::uint16_t offsetOf(const Section& section)
{
    if (section.size() > kSectionLimit)
        throw std::length_error("a section of a code page is too large");
    return static_cast<std::uint16_t>(section.size());
}

void put16(Section& section, std::uint32_t value)
{
    section.push_back(static_cast<std::uint8_t>(value));
    section.push_back(static_cast<std::uint8_t>(value >> 8));
}

// Parts a map of byte strings by the byte at `depth`.
template <class Map>
std::map<std::uint8_t, Map> partsOf(const Map& map, std::size_t depth)
{
    std::map<std::uint8_t, Map> parts;
    for (const auto& [bytes, item] : map)
        parts[bytes.at(depth)].emplace(bytes, item);
    return parts;
}

} // namespace

// True once in `outOf` times of a random layout, and never in another.
bool PageBuilder::chance(unsigned outOf)
{
    return layout_ && (*layout_)() % outOf == 0;
}

// A mask under which no two bytes of a run fall together.
std::uint8_t PageBuilder::maskOf(std::uint8_t low, std::uint8_t high)
{
    if (!narrow_ && !chance(2))
        return 0xFF;
    unsigned mask = 0;
    while (mask < static_cast<unsigned>(high - low))
        mask = mask << 1 | 1;
    return static_cast<std::uint8_t>(mask);
}

// A gap, so that nothing that follows is aligned by itself.
void PageBuilder::pad(Section& section)
{
    if (chance(2))
        section.push_back(0xEE);
}

TSObject& PageBuilder::build()
{
    for (Section& section : sections_)
        section.clear();
    Section extension;
    if (header_.maxCharBytes > 1)
        layOutExtension(extension);
    if (header_.maxCharBytes > 1 && shape_ != PageShape::kUtf8)
        layOutUnicode(sections_[1]);
    if (shape_ != PageShape::kUtf8)
        layOutPages();
    append(sections_[0], &header_, 1);
    append(sections_[0], extension.data(), extension.size());
    for (std::size_t i = 0; i < sections_.size(); ++i) {
        offsetOf(sections_[i]);
        object_.sections[i] = sections_[i].empty() ? nullptr : sections_[i].data();
    }
    return object_;
}

// The extension area is laid out apart from the header, which is complete only in the end.
void PageBuilder::layOutExtension(Section& extension)
{
    Section whole(sizeof(TSCodePageHeader));
    pad(whole);
    header_.mapValuesOffset = offsetOf(whole);
    for (const std::uint32_t value : mapValues_) {
        put16(whole, value);
        put16(whole, value >> 16);
    }
    pad(whole);
    header_.mapPairsOffset = offsetOf(whole);
    header_.mapPairCount = static_cast<std::uint16_t>(mapPairs_.size());
    for (const auto& [key, value] : mapPairs_) {
        const TSMapPair pair{key, value};
        append(whole, &pair, 1);
    }
    pad(whole);
    layOutTypes(whole);
    extension.assign(whole.begin() + sizeof(TSCodePageHeader), whole.end());
}

void PageBuilder::layOutTypes(Section& section)
{
    std::vector<TSTypeNode> nodes(1, TSTypeNode{1, 0, 0});
    std::vector<TSTypeRecord> records(1);
    if (!types_.empty())
        addTypeNode(0, 0, types_, nodes, records);
    header_.typeTrieOffset = offsetOf(section);
    append(section, nodes.data(), nodes.size());
    pad(section);
    header_.typeRecordsOffset = offsetOf(section);
    append(section, records.data(), records.size());
}

// Fills the node of the bytes before `depth`. Record 0 is that of characters without a type, and a
// leaf with mask 0 that leads to it stands wherever nothing was told.
void PageBuilder::addTypeNode(std::size_t node, std::size_t depth, const Records& records,
                              std::vector<TSTypeNode>& nodes, std::vector<TSTypeRecord>& leaves)
{
    const auto& [bytes, record] = *records.begin();
    if (bytes.size() == depth) {
        nodes[node] = {1, 0, static_cast<std::uint16_t>(leaves.size())};
        leaves.push_back({record.type, record.delta});
        return;
    }
    const auto parts = partsOf(records, depth);
    const bool isLeaf = std::all_of(records.begin(), records.end(), [&](const auto& item) {
        return item.first.size() == depth + 1;
    });
    const std::uint8_t mask = maskOf(parts.begin()->first, parts.rbegin()->first);
    const std::size_t base = isLeaf ? leaves.size() : nodes.size();
    nodes[node] = {isLeaf, mask, static_cast<std::uint16_t>(base)};
    if (isLeaf)
        leaves.resize(base + mask + 1U);
    else
        nodes.resize(base + mask + 1U, TSTypeNode{1, 0, 0});
    for (const auto& [byte, part] : parts) {
        const std::size_t slot = base + (byte & mask);
        if (isLeaf)
            leaves[slot] = {part.begin()->second.type, part.begin()->second.delta};
        else
            addTypeNode(slot, depth + 1, part, nodes, leaves);
    }
}

void PageBuilder::layOutUnicode(Section& section)
{
    std::vector<TSUnicodeNode> nodes(1, TSUnicodeNode{1, 0, 1, 0, 0});
    std::vector<Le16> leaves(1, kNoUnicode);
    if (!decode_.empty())
        addNode(0, 0, decode_, nodes, leaves);
    append(section, nodes.data(), nodes.size());
    pad(section);
    header_.leafTableOffset = offsetOf(section);
    append(section, leaves.data(), leaves.size());
}

// Fills the node of the bytes before `depth`. What no character uses becomes a leaf that takes no
// byte or, by chance, one that takes every byte and leads to the value of none.
void PageBuilder::addNode(std::size_t node, std::size_t depth, const Values& values,
                          std::vector<TSUnicodeNode>& nodes, std::vector<Le16>& leaves)
{
    const auto parts = partsOf(values, depth);
    const std::uint8_t low = parts.begin()->first;
    const std::uint8_t high = parts.rbegin()->first;
    const std::uint8_t mask = maskOf(low, high);
    const bool isLeaf = values.begin()->first.size() == depth + 1;
    const std::size_t base = isLeaf ? leaves.size() : nodes.size();
    nodes[node] = {isLeaf, mask, low, high, static_cast<std::uint16_t>(base)};
    // The run may wrap around under its mask, so that only the highest index tells the size.
    std::size_t size = 0;
    for (unsigned byte = low; byte <= high; ++byte)
        size = std::max<std::size_t>(size, (byte & mask) + 1U);
    const TSUnicodeNode unused =
        chance(2) ? TSUnicodeNode{1, 0, 0, 0xFF, 0} : TSUnicodeNode{1, 0, 1, 0, 0};
    if (isLeaf)
        leaves.resize(base + size, kNoUnicode);
    else
        nodes.resize(base + size, unused);
    for (const auto& [byte, part] : parts) {
        const std::size_t slot = base + (byte & mask);
        if (isLeaf)
            leaves[slot] = part.begin()->second;
        else
            addNode(slot, depth + 1, part, nodes, leaves);
    }
}

// Section 3 begins with the substitution character, to which the pages without a character lead.
void PageBuilder::layOutPages()
{
    std::map<std::uint8_t, std::map<std::uint8_t, TSChar32>> runs;
    for (const auto& [unicode, character] : encode_)
        runs[static_cast<std::uint8_t>(unicode >> 8)][static_cast<std::uint8_t>(unicode)] =
            character;
    sections_[2].push_back(header_.substChar);
    for (TSUnicodePage& page : header_.unicodePages) {
        page = {kPageByte, 0, 0, 0, 0, 0};
        if (chance(4))
            page.low = 1;
    }
    for (const auto& [highByte, run] : runs)
        layOutPage(highByte, run);
}

void PageBuilder::layOutPage(std::uint8_t highByte, const std::map<std::uint8_t, TSChar32>& run)
{
    TSChar32 largest = header_.substChar;
    for (const auto& [low, character] : run)
        largest = std::max(largest, character);
    std::vector<PageKind> valid;
    if (largest <= 0xFF)
        valid.push_back(kPageByte);
    if (largest <= 0xFFFF)
        valid.insert(valid.end(), {kPageWord, kPageByteByte});
    if (largest <= 0xFFFFFF)
        valid.push_back(kPageWordByte);
    valid.push_back(kPageWordWord);
    PageKind kind = layout_ ? valid[(*layout_)() % valid.size()] : valid.front();
    if (const auto told = kinds_.find(highByte); told != kinds_.end())
        kind = told->second;
    if (std::find(valid.begin(), valid.end(), kind) == valid.end())
        throw std::invalid_argument("the kind cannot hold the characters of the page");

    const std::uint8_t low = run.begin()->first;
    const std::uint8_t high = run.rbegin()->first;
    const std::uint8_t mask = maskOf(low, high);
    std::vector<TSChar32> array;
    for (unsigned byte = low; byte <= high; ++byte)
        array.resize(std::max<std::size_t>(array.size(), (byte & mask) + 1U), header_.substChar);
    for (const auto& [byte, character] : run)
        array[byte & mask] = character;

    pad(sections_[2]);
    pad(sections_[3]);
    header_.unicodePages[highByte] = {
        kind, mask, low, high, offsetOf(sections_[2]), offsetOf(sections_[3])};
    for (const TSChar32 character : array) {
        if (kind == kPageByte || kind == kPageByteByte)
            sections_[2].push_back(static_cast<std::uint8_t>(character));
        else
            put16(sections_[2], character);
        if (kind == kPageByteByte)
            sections_[3].push_back(static_cast<std::uint8_t>(character >> 8));
        else if (kind == kPageWordByte)
            sections_[3].push_back(static_cast<std::uint8_t>(character >> 16));
        else if (kind == kPageWordWord)
            put16(sections_[3], character >> 16);
    }
}

} // namespace vlx::test
