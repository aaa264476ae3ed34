// The built-in maps once more, slow and literal: the ranges as they are told, in their order, with
// the rows of the tables behind them. Nothing is shared with the library or its generator.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vlx::oracle {

std::uint16_t toLower(std::uint16_t value);
std::uint16_t toUpper(std::uint16_t value);
std::uint16_t toFullWidth(std::uint16_t value);
std::uint16_t toHalfWidth(std::uint16_t value);
std::uint16_t digit(std::uint16_t value); // 0 if it is none

// The entries of the two tables, without the ranges that need none.
std::size_t lowerTableSize();
std::size_t upperTableSize();

} // namespace vlx::oracle
