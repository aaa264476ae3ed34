// What the generated tables hold: for every 16-bit Unicode value its type word and its images.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "object.hpp"

namespace vlx::data {

inline constexpr std::uint32_t kUnicodeValues = 0x10000;

// Each has an element for every value. A value without another form is its own image; a value that
// is no digit has the image 0 in `digit`.
struct UnicodeTables {
    std::vector<std::uint32_t> type;
    std::vector<std::uint16_t> lower;
    std::vector<std::uint16_t> upper;
    std::vector<std::uint16_t> fullWidth;
    std::vector<std::uint16_t> halfWidth;
    std::vector<std::uint16_t> digit;
};

// Reads the sources under `directory`, which is data/unicode of the project.
std::optional<UnicodeTables> loadUnicodeTables(const std::string& directory,
                                               Diagnostics& diagnostics);

} // namespace vlx::data
