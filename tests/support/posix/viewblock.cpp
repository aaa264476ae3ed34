#include "support/viewblock.hpp"

#include <cstdlib>
#include <cstring>

#include <sys/mman.h>
#include <unistd.h>

#include "support/poison.hpp"

namespace vlx::test {

namespace {

std::size_t roundUp(std::size_t size, std::size_t unit)
{
    return (size + unit - 1) / unit * unit;
}

std::size_t pagesOf(std::size_t length)
{
    return roundUp(length, static_cast<std::size_t>(sysconf(_SC_PAGESIZE)));
}

// The address space of a block: no less than one granule stays closed behind it.
std::size_t spaceOf(std::size_t length)
{
    return roundUp(length, kViewGranularity) + kViewGranularity;
}

} // namespace

const std::uint8_t* createViewBlock(const std::uint8_t* bytes, std::size_t length)
{
    // One granule more than needed always holds a well placed start; the rest goes back.
    const std::size_t space = spaceOf(length);
    const std::size_t taken = space + kViewGranularity;
    void* const memory =
        mmap(nullptr, taken, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
    if (memory == MAP_FAILED)
        std::abort();
    auto* const begin = static_cast<std::uint8_t*>(memory);
    const std::size_t ahead = roundUp(reinterpret_cast<std::uintptr_t>(begin), kViewGranularity) -
                              reinterpret_cast<std::uintptr_t>(begin);
    if (ahead != 0)
        munmap(begin, ahead);
    std::uint8_t* const block = begin + ahead;
    if (kViewGranularity - ahead != 0)
        munmap(block + space, kViewGranularity - ahead);

    if (mprotect(block, pagesOf(length), PROT_READ | PROT_WRITE) != 0)
        std::abort();
    std::memcpy(block, bytes, length);
    mprotect(block, pagesOf(length), PROT_READ);
    poison(block + length, pagesOf(length) - length);
    return block;
}

void destroyViewBlock(const std::uint8_t* block, std::size_t length)
{
    unpoison(block, pagesOf(length));
    munmap(const_cast<std::uint8_t*>(block), spaceOf(length));
}

} // namespace vlx::test
