// Code page files of the older form, which is rebuilt to the current one at load.
#pragma once

#include <cstdint>

#include "frame/sections.hpp"

namespace vlx {

// Rebuilds sections 1 and 2 of the older form in blocks from `allocate`. 0, or 20 if memory runs
// out or the sizes contradict each other, and then `upgraded` is empty.
std::int32_t upgradeCodePage(const LoadedSections& old, LoadedSections& upgraded);

} // namespace vlx
