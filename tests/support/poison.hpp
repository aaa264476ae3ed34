// Marks memory that nobody may touch, for the address sanitizer; without it nothing happens.
#pragma once

#include <cstddef>

#if __has_include(<sanitizer/asan_interface.h>)
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) (static_cast<void>(0))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) (static_cast<void>(0))
#endif

namespace vlx::test {

inline void poison([[maybe_unused]] const void* address, [[maybe_unused]] std::size_t size)
{
    ASAN_POISON_MEMORY_REGION(address, size);
}

inline void unpoison([[maybe_unused]] const void* address, [[maybe_unused]] std::size_t size)
{
    ASAN_UNPOISON_MEMORY_REGION(address, size);
}

} // namespace vlx::test
