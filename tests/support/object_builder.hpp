// Builds the files of a locale directory in memory, byte by byte by their offsets and without the
// library's own structures, so that a test and the library agree only where both read the format
// alike.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vlx::test {

class PageBuilder;

using Bytes = std::vector<std::uint8_t>;

// Little-endian numbers at an offset, which must lie inside.
void put16(Bytes& bytes, std::size_t offset, std::uint32_t value);
void put32(Bytes& bytes, std::size_t offset, std::uint32_t value);
std::uint16_t get16(const std::uint8_t* bytes, std::size_t offset);
std::uint32_t get32(const std::uint8_t* bytes, std::size_t offset);
void append(Bytes& bytes, const Bytes& more);

inline constexpr std::uint32_t kFileMagic = 0x5A3C9E17;
inline constexpr std::size_t kFileHeaderSize = 76;
inline constexpr std::size_t kListingSize = 38;

// The container of the control file and of every object file. The sections stand behind the header
// in their order, each behind `gap` bytes.
struct ObjectFile {
    std::uint32_t magic = kFileMagic;
    std::uint32_t version = 0x20000000;
    std::vector<Bytes> sections;
    int sectionCount = -1; // of the header; negative: as many as there are
    std::size_t gap = 0;

    Bytes bytes() const;
};

// An entry of the control file's table.
struct Listing {
    std::uint8_t type;
    std::uint16_t id;
    std::string name;
    std::uint8_t flags = 0;

    Bytes bytes() const;
};

Bytes controlFile(const std::vector<Listing>& listings);

// The name of an object's file: "cp_00932.nls".
std::string objectFileName(std::uint8_t type, std::uint16_t id);

// Section 1 of a language: three default ids, 44 texts, two pair tables.
struct LanguageContent {
    static constexpr std::size_t kTexts = 44;
    static constexpr std::size_t kHeaderSize = 102;
    static constexpr std::size_t kFirstTextWord = 5;
    using Pair = std::array<std::uint16_t, 4>;

    std::uint16_t territory = 1;
    std::uint16_t codePage = 1;
    std::uint16_t sort = 0;
    std::array<std::u16string, kTexts> texts; // code, name, days, months, AM and PM
    std::vector<Pair> upperPairs;
    std::vector<Pair> lowerPairs;

    // A language of twelve months whose texts look like English and are none of the built-in ones.
    static LanguageContent sample();

    Bytes bytes() const;
    Bytes file() const;
};

// Section 1 of a territory: ten words and 11 texts.
struct TerritoryContent {
    static constexpr std::size_t kTexts = 11;
    static constexpr std::size_t kHeaderSize = 46;
    static constexpr std::size_t kFirstTextWord = 11;
    enum Text {
        kCode,
        kName,
        kGrouping,
        kMonetaryGrouping,
        kCurrency,
        kIntlCurrency,
        kPositiveSign,
        kNegativeSign,
        kTime,
        kDate,
        kLongDate
    };

    std::array<std::uint16_t, kFirstTextWord> words;
    std::array<std::u16string, kTexts> texts;

    static TerritoryContent sample();

    Bytes bytes() const;
    Bytes file() const;
};

// The file of a page that was built: its sections up to the last one that is not empty.
Bytes codePageFile(const PageBuilder& page);

// A code page of the older form, version 1. `extension` follows the 4372 bytes of section 1, and
// `offsets` are the five words at its end: of the map values, the map pairs, the type trie, the
// type records and the leaf table.
struct OldCodePage {
    static constexpr std::size_t kHeaderSize = 4372;

    Bytes header = Bytes(kHeaderSize, 0);
    Bytes extension;
    Bytes section2;
    Bytes section3;

    // A single-byte page whose fields all differ from each other.
    static OldCodePage singleByte();
    // A page with the two-byte characters 0x8140 to 0x8143, U+3000 to U+3003.
    static OldCodePage doubleByte();

    void setOffset(int index, std::uint32_t value); // of the five, from 0
    Bytes section1() const;
    Bytes file() const;
};

} // namespace vlx::test
