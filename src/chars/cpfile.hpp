// The sections of a code page object. Section 1 is the header and behind it, in multi-byte pages,
// the map values, the map pairs, and the trie and records of character types. Section 2 takes
// multi-byte characters to Unicode: a trie of nodes, then an array of values. Sections 3 and 4 take
// Unicode to the code page: the arrays that `unicodePages` points into.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/endian.hpp"

// Where the Unicode values of one high byte find their characters.
struct TSUnicodePage {
    std::uint8_t kind; // 0 to 4, see vlx::PageKind
    std::uint8_t mask; // and the low byte: the index into the arrays
    std::uint8_t low;  // the smallest low byte that is mapped
    std::uint8_t high; // the largest
    vlx::Le16 offset3; // of the page's array in section 3, in bytes
    vlx::Le16 offset4; // in section 4
};
static_assert(sizeof(TSUnicodePage) == 8 && offsetof(TSUnicodePage, offset3) == 4);

struct TSCodePageHeader {
    std::uint8_t substChar; // written for a Unicode value that the code page cannot represent
    std::uint8_t lineFeedChar;
    std::uint8_t carriageReturnChar;
    std::uint8_t lineEnd3Char;
    std::uint8_t lineEnd4Char;
    std::uint8_t maxCharBytes; // in a stateful page, of every character of the multi-byte state
    vlx::Le16 mapPairCount;
    std::uint8_t shiftIn;  // enters the multi-byte state; 0 where the page is not stateful
    std::uint8_t shiftOut; // leaves it
    std::uint8_t charLength[256];
    std::uint8_t toUpper[256];
    std::uint8_t toLower[256];
    vlx::Le16 toUnicode[256]; // 0xFFFD where the byte has no single-byte meaning
    vlx::Le16 reserved;
    vlx::Le32 charType[256];
    TSUnicodePage unicodePages[256];
    vlx::Le16 cpFlags;
    vlx::Le16 mapValuesOffset; // of 256 32-bit values, by byte
    vlx::Le16 mapPairsOffset;  // of the pairs, ascending by key
    vlx::Le16 typeTrieOffset;
    vlx::Le16 typeRecordsOffset;
    vlx::Le16 leafTableOffset; // in section 2, of the Unicode values
};
static_assert(sizeof(TSCodePageHeader) == 4376);
static_assert(offsetof(TSCodePageHeader, maxCharBytes) == 5);
static_assert(offsetof(TSCodePageHeader, mapPairCount) == 6);
static_assert(offsetof(TSCodePageHeader, shiftIn) == 8);
static_assert(offsetof(TSCodePageHeader, charLength) == 0x000A);
static_assert(offsetof(TSCodePageHeader, toUpper) == 0x010A);
static_assert(offsetof(TSCodePageHeader, toLower) == 0x020A);
static_assert(offsetof(TSCodePageHeader, toUnicode) == 0x030A);
static_assert(offsetof(TSCodePageHeader, reserved) == 0x050A);
static_assert(offsetof(TSCodePageHeader, charType) == 0x050C);
static_assert(offsetof(TSCodePageHeader, unicodePages) == 0x090C);
static_assert(offsetof(TSCodePageHeader, cpFlags) == 0x110C);
static_assert(offsetof(TSCodePageHeader, mapValuesOffset) == 0x110E);
static_assert(offsetof(TSCodePageHeader, mapPairsOffset) == 0x1110);
static_assert(offsetof(TSCodePageHeader, typeTrieOffset) == 0x1112);
static_assert(offsetof(TSCodePageHeader, typeRecordsOffset) == 0x1114);
static_assert(offsetof(TSCodePageHeader, leafTableOffset) == 0x1116);

// A character and its value under width mapping.
struct TSMapPair {
    vlx::Le32 key; // packed
    vlx::Le32 value;
};
static_assert(sizeof(TSMapPair) == 8);

// A node of section 2; the root is the first one.
struct TSUnicodeNode {
    std::uint8_t isLeaf; // 0: leads to nodes; otherwise to Unicode values
    std::uint8_t mask;   // and the input byte
    std::uint8_t low;    // the smallest input byte accepted here
    std::uint8_t high;
    vlx::Le16 base; // index of the first child node, or of the first Unicode value
};
static_assert(sizeof(TSUnicodeNode) == 6);

// A node of the character type trie. It has no range: the mask keeps every byte inside the tables.
struct TSTypeNode {
    std::uint8_t isLeaf; // 0: leads to nodes; otherwise to type records
    std::uint8_t mask;
    vlx::Le16 base;
};
static_assert(sizeof(TSTypeNode) == 4);

struct TSTypeRecord {
    vlx::Le32 type;
    vlx::Le32 delta; // added to the packed character by a mapping that `type` asks for
};
static_assert(sizeof(TSTypeRecord) == 8);

namespace vlx {

// How a page of `unicodePages` forms its result.
enum PageKind : std::uint8_t {
    kPageByte = 0,     // an 8-bit array in section 3: always one byte
    kPageWord = 1,     // a 16-bit array in section 3
    kPageWordByte = 2, // and bits 16 to 23 from an 8-bit array in section 4
    kPageWordWord = 3, // and bits 16 to 31 from a 16-bit array in section 4
    kPageByteByte = 4, // bits 0 to 7 from section 3, 8 to 15 from section 4, both 8-bit
};
inline constexpr int kPageKinds = 5;

// Bits of TSCodePageHeader::cpFlags.
inline constexpr std::uint16_t kAsciiFamily = 0x0001; // clear: the EBCDIC family
inline constexpr std::uint16_t kStateful = 0x0002;

inline constexpr std::uint16_t kNoUnicode = 0xFFFD; // a byte sequence without a Unicode value
inline constexpr std::uint16_t kUtf8CodePage = 57352;
inline constexpr std::uint16_t kAsciiCodePage = 367; // of object names

} // namespace vlx
