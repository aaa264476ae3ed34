#include "support/viewblock.hpp"

#include <cstdlib>
#include <cstring>

#include <windows.h>

namespace vlx::test {

const std::uint8_t* createViewBlock(const std::uint8_t* bytes, std::size_t length)
{
    // The system places reservations at multiples of the same granularity.
    void* const memory =
        VirtualAlloc(nullptr, length + kViewGranularity, MEM_RESERVE, PAGE_NOACCESS);
    if (!memory || !VirtualAlloc(memory, length, MEM_COMMIT, PAGE_READWRITE))
        std::abort();
    std::memcpy(memory, bytes, length);
    DWORD before;
    VirtualProtect(memory, length, PAGE_READONLY, &before);
    return static_cast<const std::uint8_t*>(memory);
}

void destroyViewBlock(const std::uint8_t* block, std::size_t)
{
    VirtualFree(const_cast<std::uint8_t*>(block), 0, MEM_RELEASE);
}

} // namespace vlx::test
