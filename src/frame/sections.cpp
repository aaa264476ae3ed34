#include "frame/sections.hpp"

#include <algorithm>
#include <cstring>

#include "frame/globals.hpp"

namespace vlx {

std::uint8_t* copyPadded(const Section& section, std::uint32_t blockSize)
{
    auto* const block = static_cast<std::uint8_t*>(allocate(blockSize));
    if (!block)
        return nullptr;
    const std::uint32_t size = std::min(section.size, blockSize);
    if (size > 0)
        std::memcpy(block, section.data, size);
    std::memset(block + size, 0, blockSize - size);
    return block;
}

} // namespace vlx
