#include "convert/cpupgrad.hpp"

#include <cstddef>
#include <cstring>

#include "chars/cpfile.hpp"
#include "frame/globals.hpp"

namespace vlx {
namespace {

// Section 1 of the older form, up to its extension area. It knows no stateful code page.
struct OldHeader {
    std::uint8_t firstBytes[6];
    Le16 mapPairCount;
    std::uint8_t charLength[256];
    std::uint8_t toUpper[256];
    std::uint8_t toLower[256];
    Le16 toUnicode[256];
    Le32 charType[256];
    TSUnicodePage unicodePages[256];
    Le16 cpFlags;
    Le16 mapValuesOffset;
    Le16 mapPairsOffset;
    Le16 typeTrieOffset;
    Le16 typeRecordsOffset;
    Le16 leafTableOffset;
};
static_assert(sizeof(OldHeader) == 4372);
static_assert(offsetof(OldHeader, charLength) == 8);
static_assert(offsetof(OldHeader, toUnicode) == 0x308);
static_assert(offsetof(OldHeader, charType) == 0x508);
static_assert(offsetof(OldHeader, unicodePages) == 0x908);
static_assert(offsetof(OldHeader, cpFlags) == 0x1108);
static_assert(offsetof(OldHeader, leafTableOffset) == 0x1112);

// A node of section 2 of the older form.
struct OldNode {
    std::uint8_t isLeaf;
    std::uint8_t mask;
    Le16 base;
};
static_assert(sizeof(OldNode) == 4);

constexpr std::uint32_t kMaxSection = 0xFFFF;

std::uint32_t roundUp(std::uint32_t size)
{
    const std::uint32_t step = tsGlobals->alignment;
    return (size + step - 1) / step * step;
}

std::uint16_t word(std::uint32_t value)
{
    return static_cast<std::uint16_t>(value);
}

void copyFields(const OldHeader& from, TSCodePageHeader& to)
{
    std::memcpy(&to, from.firstBytes, sizeof from.firstBytes);
    to.mapPairCount = from.mapPairCount;
    std::memcpy(to.charLength, from.charLength, sizeof to.charLength);
    std::memcpy(to.toUpper, from.toUpper, sizeof to.toUpper);
    std::memcpy(to.toLower, from.toLower, sizeof to.toLower);
    std::memcpy(to.toUnicode, from.toUnicode, sizeof to.toUnicode);
    std::memcpy(to.charType, from.charType, sizeof to.charType);
    std::memcpy(to.unicodePages, from.unicodePages, sizeof to.unicodePages);
    to.cpFlags = from.cpFlags;
}

// Section 1 of a single-byte page: the header alone, with no offsets.
std::int32_t upgradeSingleByte(const OldHeader& old, Section& section)
{
    const Section nothing;
    section = {copyPadded(nothing, sizeof(TSCodePageHeader)), sizeof(TSCodePageHeader), true};
    if (!section.data)
        return TS_ERR_MEMORY;
    copyFields(old, *reinterpret_cast<TSCodePageHeader*>(const_cast<std::uint8_t*>(section.data)));
    return TS_ERR_NONE;
}

std::int32_t upgradeSection1(const Section& from, const OldHeader& old, Section& section)
{
    // Deliberate: between the header and the extension area stays a gap of a header's size.
    const std::uint32_t extension = roundUp(sizeof(TSCodePageHeader)) + sizeof(TSCodePageHeader);
    const std::uint32_t oldExtension = old.mapValuesOffset;
    if (oldExtension < sizeof(OldHeader) || oldExtension > from.size)
        return TS_ERR_MEMORY;
    const std::uint32_t extensionSize = from.size - oldExtension;
    if (extension + extensionSize > kMaxSection)
        return TS_ERR_MEMORY;
    const Section nothing;
    section = {copyPadded(nothing, extension + extensionSize), extension + extensionSize, true};
    if (!section.data)
        return TS_ERR_MEMORY;
    auto* const block = const_cast<std::uint8_t*>(section.data);
    auto& page = *reinterpret_cast<TSCodePageHeader*>(block);
    copyFields(old, page);
    const std::uint32_t moved = extension - oldExtension;
    page.mapValuesOffset = word(extension);
    page.mapPairsOffset = word(old.mapPairsOffset + moved);
    page.typeTrieOffset = word(old.typeTrieOffset + moved);
    page.typeRecordsOffset = word(old.typeRecordsOffset + moved);
    if (extensionSize > 0)
        std::memcpy(block + extension, from.data + oldExtension, extensionSize);
    return TS_ERR_NONE;
}

// Section 2: the nodes get a range, which takes every byte, and the Unicode values move behind
// them.
std::int32_t upgradeSection2(const Section& from, std::uint32_t oldLeafTable, Section& section,
                             Le16& leafTable)
{
    if (oldLeafTable > from.size)
        return TS_ERR_MEMORY;
    const std::uint32_t count = oldLeafTable / sizeof(OldNode);
    const std::uint32_t nodes = count * std::uint32_t{sizeof(TSUnicodeNode)};
    const std::uint32_t values = from.size - oldLeafTable;
    const std::uint32_t offset = nodes + roundUp(nodes);
    if (offset + values > kMaxSection)
        return TS_ERR_MEMORY;
    const Section nothing;
    section = {copyPadded(nothing, offset + values), offset + values, true};
    if (!section.data)
        return TS_ERR_MEMORY;
    auto* const block = const_cast<std::uint8_t*>(section.data);
    for (std::uint32_t i = 0; i < count; ++i) {
        const auto& old = reinterpret_cast<const OldNode*>(from.data)[i];
        reinterpret_cast<TSUnicodeNode*>(block)[i] = {old.isLeaf, old.mask, 0, 255, old.base};
    }
    if (values > 0)
        std::memcpy(block + offset, from.data + oldLeafTable, values);
    leafTable = word(offset);
    return TS_ERR_NONE;
}

} // namespace

std::int32_t upgradeCodePage(const LoadedSections& old, LoadedSections& upgraded)
{
    const Section& section1 = old[0];
    if (section1.size < sizeof(OldHeader))
        return TS_ERR_MEMORY;
    const auto& header = *reinterpret_cast<const OldHeader*>(section1.data);
    const std::uint8_t maxCharBytes = header.firstBytes[offsetof(TSCodePageHeader, maxCharBytes)];
    if (maxCharBytes < 2)
        return upgradeSingleByte(header, upgraded[0]);
    std::int32_t code = upgradeSection1(section1, header, upgraded[0]);
    if (code == TS_ERR_NONE && old[1].data) {
        auto& page =
            *reinterpret_cast<TSCodePageHeader*>(const_cast<std::uint8_t*>(upgraded[0].data));
        code = upgradeSection2(old[1], header.leafTableOffset, upgraded[1], page.leafTableOffset);
    }
    if (code != TS_ERR_NONE && upgraded[0].data) {
        vlx::release(const_cast<std::uint8_t*>(upgraded[0].data));
        upgraded[0] = {};
    }
    return code;
}

} // namespace vlx
