// A key of a locale with a sort, taken apart.
#pragma once

#include <array>
#include <string>
#include <string_view>

namespace vlx::cli {

inline constexpr std::size_t kKeyLevels = 4;

// The runs of the levels as hex, a blank between weights: two bytes on level 1, one on levels 2 and
// 3, on level 4 a position and two bytes, as in "0002:0102", or two bytes where the levels before
// are empty.
std::array<std::string, kKeyLevels> levelsOf(std::string_view key);

// All bytes as hex.
std::string hexOf(std::string_view bytes);

} // namespace vlx::cli
