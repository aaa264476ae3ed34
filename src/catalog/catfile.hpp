// Message catalogs on disk: a header, a chain of sets in ascending order, and for each set a table
// of messages in ascending order and a block of texts. Numbers stand in the byte order of the
// machine that wrote the file; offsets count from its start.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

struct TSCatalogHeader {
    static constexpr std::uint32_t kMagic = 0x5A3C9E18;
    static constexpr std::uint32_t kVersion = 0x10000000;
    static constexpr int kLocaleNameSize = 132;

    std::uint32_t magic;
    std::uint32_t version;
    std::uint32_t byteOrder;
    std::uint32_t setCount; // at least 1
    std::uint32_t firstSet;
    char localeName[kLocaleNameSize]; // of the texts, with its terminator
};
static_assert(sizeof(TSCatalogHeader) == 152);
static_assert(offsetof(TSCatalogHeader, magic) == 0);
static_assert(offsetof(TSCatalogHeader, version) == 4);
static_assert(offsetof(TSCatalogHeader, byteOrder) == 8);
static_assert(offsetof(TSCatalogHeader, setCount) == 12);
static_assert(offsetof(TSCatalogHeader, firstSet) == 16);
static_assert(offsetof(TSCatalogHeader, localeName) == 20);

struct TSCatalogSet {
    std::uint32_t number;  // above 0
    std::uint32_t nextSet; // 0 in the last
    std::uint32_t messageCount;
    std::uint32_t messageTable;
    std::uint32_t textBlock;
    std::uint32_t textSize; // 0: the set has no texts
    std::uint32_t reserved;
};
static_assert(sizeof(TSCatalogSet) == 28);
static_assert(offsetof(TSCatalogSet, number) == 0);
static_assert(offsetof(TSCatalogSet, nextSet) == 4);
static_assert(offsetof(TSCatalogSet, messageCount) == 8);
static_assert(offsetof(TSCatalogSet, messageTable) == 12);
static_assert(offsetof(TSCatalogSet, textBlock) == 16);
static_assert(offsetof(TSCatalogSet, textSize) == 20);
static_assert(offsetof(TSCatalogSet, reserved) == 24);

struct TSCatalogMessage {
    std::uint32_t number;     // above 0
    std::uint32_t length;     // of the text, with its terminator
    std::uint32_t textOffset; // in the text block of the set
};
static_assert(sizeof(TSCatalogMessage) == 12);
static_assert(offsetof(TSCatalogMessage, number) == 0);
static_assert(offsetof(TSCatalogMessage, length) == 4);
static_assert(offsetof(TSCatalogMessage, textOffset) == 8);

namespace vlx {

// Values of TSCatalogHeader::byteOrder.
inline constexpr std::uint32_t kBigEndianCatalog = 1;
inline constexpr std::uint32_t kLittleEndianCatalog = 2;
inline constexpr std::uint32_t kOwnCatalogOrder =
    std::endian::native == std::endian::big ? kBigEndianCatalog : kLittleEndianCatalog;

} // namespace vlx
