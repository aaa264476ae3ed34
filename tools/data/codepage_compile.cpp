#include "codepage_compile.hpp"

#include <cstring>
#include <type_traits>
#include <utility>

#include "chars/cpfile.hpp"
#include "codepage_pages.hpp"
#include "codepage_tries.hpp"
#include "container.hpp"
#include "sourcefile.hpp"
#include "typeword.hpp"
#include "width.hpp"

#include "tsconst.h"

namespace vlx::data {

namespace {

template <class Item>
void append(Bytes& section, const Item& item)
{
    static_assert(std::is_trivially_copyable_v<Item>);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&item);
    section.insert(section.end(), bytes, bytes + sizeof item);
}

Packed utf8Packed(std::uint32_t value)
{
    if (value < 0x80)
        return value;
    if (value < 0x800)
        return 0xC080 | (value & 0x7C0) << 2 | (value & 0x3F);
    return 0xE08080 | (value & 0xF000) << 4 | (value & 0xFC0) << 2 | (value & 0x3F);
}

// The tables that the rule stands for, so that types, case and width come out of them as in any
// other page.
void fillByRule(CodePageSource& page)
{
    for (std::uint32_t value = 0; value < 0x10000; ++value) {
        const auto value16 = static_cast<std::uint16_t>(value);
        page.decode[utf8Packed(value)] = value16;
        page.encode[value16] = utf8Packed(value);
    }
}

class Compiler {
  public:
    Compiler(CodePageSource source, std::string file, const CharacterData& characters,
             Diagnostics& diagnostics)
        : page_(std::move(source)), characters_(characters), report_(std::move(file), diagnostics)
    {
    }
    std::optional<Object> compile();

  private:
    void fillHeader();
    void fillByte(std::uint8_t byte, std::uint16_t value);
    void fillLengths();
    void appendMaps();
    void appendTypes(const std::map<Packed, std::uint16_t>& longer);
    void checkBytes();
    void checkSizes();

    Packed encoded(std::uint16_t value, Packed otherwise) const;
    Packed fullWidth(Packed character, std::uint16_t value) const;
    std::uint32_t longerWord(std::uint16_t value) const;
    TypeRecord recordOf(Packed character, std::uint16_t value) const;
    std::uint16_t offsetHere() const { return static_cast<std::uint16_t>(section1_.size()); }

    CodePageSource page_;
    const CharacterData& characters_;
    Reporter report_;
    TSCodePageHeader header_{};
    Bytes section1_;
    Bytes section2_;
    UnicodePages pages_{};
};

Packed Compiler::encoded(std::uint16_t value, Packed otherwise) const
{
    const auto found = page_.encode.find(value);
    return found == page_.encode.end() ? otherwise : found->second;
}

void Compiler::fillByte(std::uint8_t byte, std::uint16_t value)
{
    const auto image = [&](std::uint16_t unicode) {
        const Packed character = encoded(unicode, byte);
        return static_cast<std::uint8_t>(character <= 0xFF ? character : byte);
    };
    header_.toUnicode[byte] = value;
    header_.charType[byte] = characters_.typeWord(value) | kHalfWidthWord;
    if (const std::uint16_t upper = characters_.toUpper(value); upper != value)
        header_.toUpper[byte] = image(upper);
    if (const std::uint16_t lower = characters_.toLower(value); lower != value)
        header_.toLower[byte] = image(lower);
}

// In a page with shift bytes every length is 1: the plain functions, which alone read this table
// there, know no state, and a shift byte is a character to them.
void Compiler::fillLengths()
{
    std::memset(header_.charLength, 1, sizeof header_.charLength);
    if (page_.stateful())
        return;
    for (const auto& [character, value] : page_.decode) {
        const int length = packedLength(character);
        header_.charLength[character >> 8 * (length - 1)] = static_cast<std::uint8_t>(length);
    }
    // The rule takes every byte of these ranges for a first byte, also those of overlong forms.
    if (page_.utf8) {
        std::memset(header_.charLength + 0xC0, 2, 0x20);
        std::memset(header_.charLength + 0xE0, 3, 0x10);
    }
}

void Compiler::fillHeader()
{
    header_.substChar = page_.substitution;
    header_.lineFeedChar = page_.lineFeed;
    header_.carriageReturnChar = page_.carriageReturn;
    header_.lineEnd3Char = page_.lineEnd3;
    header_.lineEnd4Char = page_.lineEnd4;
    header_.maxCharBytes = static_cast<std::uint8_t>(page_.maxBytes);
    header_.shiftIn = page_.shiftIn;
    header_.shiftOut = page_.shiftOut;
    header_.cpFlags = static_cast<std::uint16_t>((page_.asciiFamily ? kAsciiFamily : 0) |
                                                 (page_.stateful() ? kStateful : 0));
    fillLengths();
    for (int byte = 0; byte < 256; ++byte) {
        header_.toUpper[byte] = header_.toLower[byte] = static_cast<std::uint8_t>(byte);
        header_.toUnicode[byte] = kNoUnicode;
    }
    for (const auto& [character, value] : page_.decode)
        if (character <= 0xFF)
            fillByte(static_cast<std::uint8_t>(character), value);
    std::memcpy(header_.unicodePages, pages_.entries.data(), sizeof header_.unicodePages);
}

// The character's wide form by the source, or by Unicode if the page has it; 0 if there is none.
Packed Compiler::fullWidth(Packed character, std::uint16_t value) const
{
    if (const auto told = page_.mapValues.find(character); told != page_.mapValues.end())
        return told->second == kNoCharacter ? 0 : told->second;
    const std::uint16_t wide = toFullWidth(value);
    return wide == value ? 0 : encoded(wide, 0);
}

void Compiler::appendMaps()
{
    Le32 values[256]{};
    std::vector<TSMapPair> pairs;
    for (const auto& [character, value] : page_.decode) {
        const Packed wide = fullWidth(character, value);
        if (character <= 0xFF)
            values[character] = wide;
        else if (wide != 0)
            pairs.push_back({character, wide});
    }
    header_.mapValuesOffset = offsetHere();
    append(section1_, values);
    header_.mapPairsOffset = offsetHere();
    header_.mapPairCount = static_cast<std::uint16_t>(pairs.size());
    for (const TSMapPair& pair : pairs)
        append(section1_, pair);
}

// Who defines characters of several bytes of their own needs them for names: they are ideographs.
// Only the page by rule has no custom of its own.
std::uint32_t Compiler::longerWord(std::uint16_t value) const
{
    const bool privateUse = value >= 0xE000 && value <= 0xF8FF;
    return privateUse && !page_.utf8 ? kUserDefinedWord : characters_.typeWord(value);
}

// Mapping adds the delta to the packed character, so it can only lead to one of the same length.
TypeRecord Compiler::recordOf(Packed character, std::uint16_t value) const
{
    TypeRecord record{longerWord(value), 0};
    const std::uint16_t image = record.type & kUpperCase   ? characters_.toLower(value)
                                : record.type & kLowerCase ? characters_.toUpper(value)
                                                           : value;
    const Packed other = image == value ? character : encoded(image, character);
    if (packedLength(other) == packedLength(character))
        record.delta = other - character;
    return record;
}

void Compiler::appendTypes(const std::map<Packed, std::uint16_t>& longer)
{
    std::map<Packed, TypeRecord> records;
    for (const auto& [character, value] : longer)
        records.emplace(character, recordOf(character, value));
    const TypeTrie trie = buildTypeTrie(records);
    header_.typeTrieOffset = offsetHere();
    for (const TSTypeNode& node : trie.nodes)
        append(section1_, node);
    header_.typeRecordsOffset = offsetHere();
    for (const TypeRecord& record : trie.records)
        append(section1_, TSTypeRecord{record.type, record.delta});
}

// The bytes that the library writes of itself have to be characters of one byte.
void Compiler::checkBytes()
{
    const std::pair<const char*, std::uint8_t> bytes[] = {{"substitution", page_.substitution},
                                                          {"lf", page_.lineFeed},
                                                          {"cr", page_.carriageReturn},
                                                          {"lineEnd3", page_.lineEnd3},
                                                          {"lineEnd4", page_.lineEnd4}};
    for (const auto& [key, byte] : bytes)
        if (!page_.decode.contains(byte))
            report_.error(0, std::string("'") + key + "' is no character of the page");
    if (const auto found = page_.decode.find(page_.substitution);
        found != page_.decode.end() && encoded(found->second, 0) != page_.substitution)
        report_.error(0, "'substitution' does not map back");
}

void Compiler::checkSizes()
{
    const std::size_t sizes[] = {section1_.size(), section2_.size(), pages_.section3.size(),
                                 pages_.section4.size()};
    for (std::size_t i = 0; i < std::size(sizes); ++i)
        if (sizes[i] > kMaxSectionSize)
            report_.error(0, "the page is too large: section " + std::to_string(i + 1) + " has " +
                                 std::to_string(sizes[i]) + " bytes");
}

std::optional<Object> Compiler::compile()
{
    if (page_.utf8)
        fillByRule(page_);
    checkBytes();
    // What goes by rule needs no arrays; its entries stand for nothing.
    pages_ = layOutPages(page_.utf8 ? decltype(page_.encode){} : page_.encode, page_.substitution,
                         page_.maxBytes);
    fillHeader();
    section1_.resize(sizeof header_);
    const std::map<Packed, std::uint16_t> longer(page_.decode.upper_bound(0xFF),
                                                 page_.decode.end());
    if (!longer.empty()) {
        appendMaps();
        appendTypes(longer);
    }
    if (!longer.empty() && !page_.utf8) {
        const UnicodeTrie trie = buildUnicodeTrie(longer);
        for (const TSUnicodeNode& node : trie.nodes)
            append(section2_, node);
        header_.leafTableOffset = static_cast<std::uint16_t>(section2_.size());
        for (const Le16 value : trie.values)
            append(section2_, value);
    }
    std::memcpy(section1_.data(), &header_, sizeof header_);
    checkSizes();
    if (!report_.clean())
        return std::nullopt;
    return Object{TS_OBJ_CODEPAGE,
                  page_.id,
                  page_.name,
                  {section1_, section2_, pages_.section3, pages_.section4}};
}

} // namespace

std::optional<Object> compileCodePage(const CodePageSource& source, const std::string& file,
                                      const CharacterData& characters, Diagnostics& diagnostics)
{
    return Compiler(source, file, characters, diagnostics).compile();
}

} // namespace vlx::data
