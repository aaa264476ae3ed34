// The full-width and the half-width form of a Unicode value; a value without one is its own.
#pragma once

#include <cstdint>

namespace vlx::data {

std::uint16_t toFullWidth(std::uint16_t value);
std::uint16_t toHalfWidth(std::uint16_t value);

} // namespace vlx::data
