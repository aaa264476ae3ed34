// The check of a code page object at load, and the copy of one that does not pass.
#include <algorithm>
#include <cstring>

#include "chars/codepage.hpp"
#include "frame/globals.hpp"
#include "frame/sections.hpp"

namespace vlx {
namespace {

constexpr std::uint32_t kMaxOffset = 0xFFFF;
constexpr std::uint32_t kMaxIndex = 0xFFFF + 0xFF; // a 16-bit base and a masked byte

// Blocks of this size hold everything that an offset and an index can reach.
constexpr std::uint32_t kPaddedSize[TSObjHeader::kMaxSections] = {
    kMaxOffset + (kMaxIndex + 1) * std::uint32_t{sizeof(TSTypeRecord)},
    (kMaxIndex + 1) * std::uint32_t{sizeof(TSUnicodeNode)},
    kMaxOffset + 256 * std::uint32_t{sizeof(Le16)},
    kMaxOffset + 256 * std::uint32_t{sizeof(Le16)},
};
static_assert(kPaddedSize[0] >= kMaxOffset + kMaxOffset * sizeof(TSMapPair));
static_assert(kPaddedSize[1] >= kMaxOffset + (kMaxIndex + 1) * sizeof(Le16));

const TSCodePageHeader& headerOf(const Section& section)
{
    return *reinterpret_cast<const TSCodePageHeader*>(section.data);
}

// The largest index that a byte in `low` to `high` gives under `mask`; -1 for an empty range.
int largestIndex(std::uint8_t mask, unsigned low, unsigned high)
{
    if (mask == 0xFF)
        return low <= high ? static_cast<int>(high) : -1;
    int largest = -1;
    for (unsigned byte = low; byte <= high; ++byte)
        largest = std::max(largest, static_cast<int>(byte & mask));
    return largest;
}

// The nodes of section 2.
struct UnicodeTrie {
    using Node = TSUnicodeNode;

    const std::uint8_t* nodes;
    std::uint32_t nodeBytes; // up to the end of the section
    std::uint32_t leafBytes; // from the table of Unicode values to the end of the section

    static unsigned low(const Node& node) { return node.low; }
    static unsigned high(const Node& node) { return node.high; }
    bool leafFits(const Node& node) const
    {
        const int index = largestIndex(node.mask, node.low, node.high);
        return index < 0 ||
               (node.base + static_cast<unsigned>(index) + 1) * sizeof(Le16) <= leafBytes;
    }
};

// The nodes of character types, which have no range.
struct TypeTrie {
    using Node = TSTypeNode;

    const std::uint8_t* nodes;
    std::uint32_t nodeBytes;
    std::uint32_t leafBytes;

    static unsigned low(const Node&) { return 0; }
    static unsigned high(const Node&) { return 255; }
    bool leafFits(const Node& node) const
    {
        return (node.base + node.mask + 1u) * sizeof(TSTypeRecord) <= leafBytes;
    }
};

// Walks a trie over every input. A node that would need a byte behind the character, or that lies
// or leads outside its section, is a fault.
template <class Trie>
class TrieWalk {
    using Node = typename Trie::Node;

  public:
    explicit TrieWalk(const Trie& trie) : trie_(trie) {}

    bool isSound(const TSCodePageHeader& page)
    {
        if (!inside(0))
            return false;
        const Node root = node(0);
        if (root.isLeaf)
            return trie_.leafFits(root);
        for (unsigned lead = Trie::low(root); lead <= Trie::high(root); ++lead) {
            const int length = walkLength(page, static_cast<std::uint8_t>(lead));
            if (length == 1 || !visit(root.base + (lead & root.mask), length - 1))
                return false;
        }
        return true;
    }

  private:
    // A node with `bytes` bytes of input left. Each node is visited once for each number of them.
    bool visit(unsigned index, int bytes)
    {
        if (!inside(index))
            return false;
        std::uint8_t& seen = seen_[index];
        const auto bit = static_cast<std::uint8_t>(1 << bytes);
        if (seen & bit)
            return true;
        seen = static_cast<std::uint8_t>(seen | bit);

        const Node here = node(index);
        if (here.isLeaf)
            return trie_.leafFits(here);
        if (bytes == 1)
            return false;
        for (unsigned byte = Trie::low(here); byte <= Trie::high(here); ++byte)
            if (!visit(here.base + (byte & here.mask), bytes - 1))
                return false;
        return true;
    }

    bool inside(unsigned index) const { return (index + 1) * sizeof(Node) <= trie_.nodeBytes; }

    Node node(unsigned index) const
    {
        Node node;
        std::memcpy(&node, trie_.nodes + index * sizeof(Node), sizeof node);
        return node;
    }

    const Trie& trie_;
    std::uint8_t seen_[kMaxIndex + 1] = {};
};

std::uint32_t bytesFrom(const Section& section, std::uint32_t offset)
{
    return section.size > offset ? section.size - offset : 0;
}

bool triesAreSound(const LoadedSections& sections)
{
    const TSCodePageHeader& page = headerOf(sections[0]);
    if (sections[1].data) {
        const UnicodeTrie trie{sections[1].data, sections[1].size,
                               bytesFrom(sections[1], page.leafTableOffset)};
        if (!TrieWalk(trie).isSound(page))
            return false;
    }
    if (page.typeTrieOffset == 0)
        return true;
    const TypeTrie trie{sections[0].data + page.typeTrieOffset,
                        bytesFrom(sections[0], page.typeTrieOffset),
                        bytesFrom(sections[0], page.typeRecordsOffset)};
    return TrieWalk(trie).isSound(page);
}

// The rule of UTF-8 reads three bytes from a lead of 0xE0 on, two from others.
bool utf8LengthsAreSound(const TSCodePageHeader& page)
{
    if (page.cpFlags & kStateful)
        return false;
    for (int lead = 0xE0; lead < 256; ++lead)
        if (page.charLength[lead] == 2)
            return false;
    return true;
}

bool lengthsAreSound(const TSCodePageHeader& page)
{
    if (page.maxCharBytes < 1 || page.maxCharBytes > kMaxCharBytes)
        return false;
    return std::all_of(page.charLength, page.charLength + 256,
                       [&](std::uint8_t length) { return length >= 1 && length <= kMaxCharBytes; });
}

bool unicodePageIsSound(const TSUnicodePage& page, const LoadedSections& sections)
{
    const int index = largestIndex(page.mask, page.low, page.high);
    if (index < 0)
        return true;
    if (page.kind >= kPageKinds)
        return false;
    constexpr std::uint32_t width3[kPageKinds] = {1, 2, 2, 2, 1};
    constexpr std::uint32_t width4[kPageKinds] = {0, 0, 1, 2, 1};
    const auto fits = [index](const Section& section, std::uint32_t offset, std::uint32_t width) {
        return width == 0 ||
               offset + (static_cast<std::uint32_t>(index) + 1) * width <= section.size;
    };
    return fits(sections[2], page.offset3, width3[page.kind]) &&
           fits(sections[3], page.offset4, width4[page.kind]);
}

bool mapTablesAreSound(const TSCodePageHeader& page, std::uint32_t size)
{
    return page.mapValuesOffset + 256 * sizeof(Le32) <= size &&
           page.mapPairsOffset + page.mapPairCount * sizeof(TSMapPair) <= size;
}

} // namespace

bool codePageIsSound(std::uint16_t id, const LoadedSections& sections)
{
    if (sections[0].size < sizeof(TSCodePageHeader))
        return false;
    const TSCodePageHeader& page = headerOf(sections[0]);
    if (!lengthsAreSound(page) || !mapTablesAreSound(page, sections[0].size) ||
        page.typeTrieOffset > sections[0].size)
        return false;
    if (id == kUtf8CodePage && !utf8LengthsAreSound(page))
        return false;
    // UTF-8 goes by rule: its pages are never read.
    if (id != kUtf8CodePage &&
        !std::all_of(page.unicodePages, page.unicodePages + 256, [&](const TSUnicodePage& entry) {
            return unicodePageIsSound(entry, sections);
        }))
        return false;
    return triesAreSound(sections);
}

// The tries stay as they are, and all of their indexes lead into the block: walks in a section of
// the heap end with the character.
bool padCodePage(std::uint16_t id, const LoadedSections& sections, LoadedSections& copy)
{
    for (int i = 0; i < TSObjHeader::kMaxSections; ++i) {
        copy[i] = {copyPadded(sections[i], kPaddedSize[i]), kPaddedSize[i], true};
        if (!copy[i].data)
            return false;
    }
    auto& page = *reinterpret_cast<TSCodePageHeader*>(const_cast<std::uint8_t*>(copy[0].data));
    const auto clamp = [](std::uint8_t length) {
        return std::clamp<std::uint8_t>(length, 1, kMaxCharBytes);
    };
    page.maxCharBytes = clamp(page.maxCharBytes);
    std::transform(page.charLength, page.charLength + 256, page.charLength, clamp);
    if (id == kUtf8CodePage) {
        page.cpFlags = static_cast<std::uint16_t>(page.cpFlags & ~kStateful);
        for (int lead = 0xE0; lead < 256; ++lead)
            if (page.charLength[lead] == 2)
                page.charLength[lead] = 3;
    }
    for (TSUnicodePage& entry : page.unicodePages)
        if (entry.kind >= kPageKinds)
            entry = {kPageByte, 0, 1, 0, std::uint16_t{0}, std::uint16_t{0}}; // maps nothing
    return true;
}

} // namespace vlx
