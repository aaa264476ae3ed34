// The code pages that are imported: where each comes from, what is corrected in it, and with what
// it is compared.
#pragma once

#include <cstdint>
#include <span>

namespace vlx::import {

enum class Origin : std::uint8_t {
    kIcu,
    kGlibc,
};

enum class Shape : std::uint8_t {
    kAscii,
    kEbcdic,
    kStateful, // EBCDIC with shift bytes
};

struct PageRow {
    const char* name;
    std::uint16_t id;
    const char* title;
    const char* converter;
    const char* compared; // the converter of the other library, or null
};

// Pages that are read in one way.
struct PageFamily {
    const char* title; // ahead of those of the pages
    Origin origin;
    Shape shape;
    int maxBytes;
    std::span<const PageRow> pages;

    bool ascii() const { return shape == Shape::kAscii; }
    bool stateful() const { return shape == Shape::kStateful; }
};

// What the cells of a correction become, if not the values from a first one on.
inline constexpr std::int32_t kUnassigned = -1;
inline constexpr std::int32_t kNoControls = -2; // unassigned where the converter has a C1 control
inline constexpr std::int32_t kNoPrivate = -3;  // unassigned where it has a value of private use

// A run of cells, packed; those of no use have a last of 0.
struct CellChange {
    std::uint32_t first;
    std::uint32_t last;
    std::int32_t value;
};

struct PageCorrection {
    const char* pages;  // their names, parted by blanks
    const char* reason; // as it stands in the sources
    CellChange cells[4];
};

std::span<const PageFamily> pageFamilies();
std::span<const PageCorrection> pageCorrections();

} // namespace vlx::import
