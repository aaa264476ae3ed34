// Memory for the views of the memory host.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vlx::test {

// Views begin at a multiple of this.
inline constexpr std::uint32_t kViewGranularity = 65536;

// A read-only copy of `length` bytes at a multiple of the granularity. What lies around its pages
// faults when it is touched.
const std::uint8_t* createViewBlock(const std::uint8_t* bytes, std::size_t length);
void destroyViewBlock(const std::uint8_t* block, std::size_t length);

} // namespace vlx::test
