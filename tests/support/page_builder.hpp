// Builds code page objects in memory, so that a test has the page that it needs and no other. A
// character is given as its packed value: 0x41 is one byte, 0x8140 two.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <random>
#include <vector>

#include "chars/cpfile.hpp"
#include "frame/objman.hpp"

namespace vlx::test {

// What the characters of a page look like. The number is the longest character's; the shift bytes
// of a page of kStatefulHigh are 0x80 or above.
enum class PageShape {
    kSingleByte,
    kDoubleByte,
    kThreeByte,
    kFourByte,
    kStateful2,
    kStateful3,
    kStatefulHigh,
    kUtf8,
};
inline constexpr PageShape kPageShapes[] = {
    PageShape::kSingleByte, PageShape::kDoubleByte, PageShape::kThreeByte,    PageShape::kFourByte,
    PageShape::kStateful2,  PageShape::kStateful3,  PageShape::kStatefulHigh, PageShape::kUtf8,
};

bool isStateful(PageShape shape);
std::uint8_t longestCharacter(PageShape shape);

using Section = std::vector<std::uint8_t>;
using CharBytes = std::vector<std::uint8_t>;

// The bytes of a packed value, first one first.
CharBytes bytesOf(TSChar32 character);

class PageBuilder {
  public:
    // An empty page of the ASCII family: every byte is a character without a Unicode value, except
    // that the page of kUtf8 has ASCII and the lead bytes of longer characters.
    explicit PageBuilder(PageShape shape);

    // The object points into the builder, which can move but has no copy.
    PageBuilder(PageBuilder&&) = default;
    PageBuilder& operator=(PageBuilder&&) = default;

    PageBuilder& id(std::uint16_t value);
    PageBuilder& ebcdic(); // the EBCDIC family
    PageBuilder& shifts(std::uint8_t in, std::uint8_t out);
    PageBuilder& substitute(std::uint8_t byte);
    PageBuilder& lineEnds(std::uint8_t lineFeed, std::uint8_t carriageReturn, std::uint8_t third,
                          std::uint8_t fourth);

    // The length of characters by their first byte. Mapping a longer character of a page that is
    // not stateful sets it, too.
    PageBuilder& lead(std::uint8_t byte, std::uint8_t length);

    PageBuilder& asciiHalf(); // 0x00 to 0x7F as in ASCII, with the case of the letters
    PageBuilder& map(TSChar32 character, TSChar16 unicode);
    PageBuilder& decodeOnly(TSChar32 character, TSChar16 unicode);
    PageBuilder& encodeOnly(TSChar16 unicode, TSChar32 character);

    // The type word of a character, and for longer characters the delta of its case.
    PageBuilder& type(TSChar32 character, std::uint32_t type, std::uint32_t delta = 0);
    // The same for all characters that begin with some bytes.
    PageBuilder& typeOfPrefix(TSChar32 prefix, std::uint32_t type, std::uint32_t delta = 0);
    PageBuilder& casePair(std::uint8_t upper, std::uint8_t lower);
    // The map value of a one-byte character, or the pair of a longer one.
    PageBuilder& mapValue(TSChar32 character, std::uint32_t value);

    // How the characters of a high byte of Unicode are kept. If nothing is told, it is the smallest
    // kind that holds them.
    PageBuilder& pageKind(std::uint8_t highByte, PageKind kind);
    // Masks as narrow as their run allows, instead of 0xFF.
    PageBuilder& narrow();
    // Kinds, masks and gaps by chance, as far as the format leaves a choice.
    PageBuilder& randomLayout(std::uint64_t seed);

    // Lays the sections out. The object lives as long as the builder stays where it is.
    TSObject& build();

    TSObject& object() { return object_; }
    const TSObject& object() const { return object_; }
    const std::array<Section, 4>& sections() const { return sections_; }
    PageShape shape() const { return shape_; }
    std::uint8_t shiftIn() const { return header_.shiftIn; }
    std::uint8_t shiftOut() const { return header_.shiftOut; }
    // What the page was told: the Unicode values of characters longer than one byte, and the
    // characters of Unicode values.
    const std::map<CharBytes, TSChar16>& decoded() const { return decode_; }
    const std::map<TSChar16, TSChar32>& encoded() const { return encode_; }

  private:
    struct Record {
        std::uint32_t type = 0;
        std::uint32_t delta = 0;
    };
    using Values = std::map<CharBytes, TSChar16>;
    using Records = std::map<CharBytes, Record>;

    bool chance(unsigned outOf);
    std::uint8_t maskOf(std::uint8_t low, std::uint8_t high);
    void pad(Section& section);
    void layOutExtension(Section& section);
    void layOutTypes(Section& section);
    void layOutUnicode(Section& section);
    void layOutPages();
    void layOutPage(std::uint8_t highByte, const std::map<std::uint8_t, TSChar32>& run);
    void addNode(std::size_t node, std::size_t depth, const Values& values,
                 std::vector<TSUnicodeNode>& nodes, std::vector<Le16>& leaves);
    void addTypeNode(std::size_t node, std::size_t depth, const Records& records,
                     std::vector<TSTypeNode>& nodes, std::vector<TSTypeRecord>& leaves);

    PageShape shape_;
    TSCodePageHeader header_{};
    Values decode_;
    std::map<TSChar16, TSChar32> encode_;
    Records types_;
    std::array<std::uint32_t, 256> mapValues_{};
    std::map<TSChar32, std::uint32_t> mapPairs_;
    std::map<std::uint8_t, PageKind> kinds_;
    bool narrow_ = false;
    std::optional<std::mt19937_64> layout_;
    std::array<Section, 4> sections_;
    TSObject object_{};
};

// A valid page of some shape with everything else left to chance.
PageBuilder randomPage(std::mt19937_64& random, PageShape shape);

} // namespace vlx::test
