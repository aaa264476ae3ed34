// The code pages that are imported: where each comes from, what is corrected in it, and with what
// it is compared.
#pragma once

#include <cstdint>
#include <vector>

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

// What the cells of a correction become, if not the values from a first one on.
inline constexpr std::int32_t kUnassigned = -1;
inline constexpr std::int32_t kNoControls = -2; // unassigned where the converter has a C1 control

struct CellChange {
    std::uint32_t first; // packed characters, that differ in their last byte alone
    std::uint32_t last;
    std::int32_t value;
};

struct Correction {
    const char* reason; // as it stands in the source
    std::vector<CellChange> cells;
};

struct PageRow {
    const char* name;
    int id;
    const char* title;
    Origin origin;
    const char* converter;
    const char* compared; // the converter of the other library, or null
    Shape shape;
    int maxBytes;
    std::vector<Correction> corrections;

    bool ascii() const { return shape == Shape::kAscii; }
    bool stateful() const { return shape == Shape::kStateful; }
};

const std::vector<PageRow>& pageRows();

} // namespace vlx::import
