// Catalog files as bytes, by their offsets and without the library's own structures.
#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <vector>

namespace vlx::test {

struct CatalogMessage {
    std::uint32_t number;
    std::string text; // without its terminator
};

struct CatalogSet {
    std::uint32_t number;
    std::vector<CatalogMessage> messages;
};

struct CatalogFile {
    std::string locale;
    std::vector<CatalogSet> sets;
    std::uint32_t magic = 0x5A3C9E18;
    std::uint32_t version = 0x10000000;
    std::uint32_t byteOrder = std::endian::native == std::endian::big ? 1 : 2;

    // The header, then the records of all sets, then each set's table and texts.
    std::vector<std::uint8_t> bytes() const;
};

inline constexpr std::size_t kCatalogHeaderSize = 152;
inline constexpr std::size_t kCatalogSetSize = 28;
inline constexpr std::size_t kCatalogMessageSize = 12;

// A number of a catalog file, in the byte order of this machine.
void putNumber(std::vector<std::uint8_t>& bytes, std::size_t offset, std::uint32_t value);
std::uint32_t numberAt(const std::vector<std::uint8_t>& bytes, std::size_t offset);

} // namespace vlx::test
