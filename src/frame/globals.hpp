// The global area, the allocator slots and the default locale: the process-wide words of the
// library, all zero at load.
#pragma once

#include <cstdint>

#include "host/services.hpp"
#include "tessera.h"

struct TSObjManager;

struct TSGlobals {
    TSContext allocContext; // first argument of every allocator call
    std::uint16_t initCount;
    SYS1_Lock lock; // the library's only lock
    std::int32_t active;
    TSObjManager* objectManager;
    std::uint32_t alignment;
    char pathSeparator[2];
    char fieldSeparator[2];
};

// `allocate` and `free` serve locale records, file records, name copies, rebuilt sections and the
// working memory of calls; the other pair serves the object store. Each slot has its own default.
struct TSSlots {
    TSAllocate allocate;
    TSFree free;
    TSAllocate allocateObject;
    TSFree freeObject;
};

extern TSGlobals* tsGlobals;
extern TSLocale* tsDefaultLocale;
extern TSSlots tsSlots;

// The locale of a call: a null handle is the default locale.
inline TSLocale* tsLocale(TSLocale* handle)
{
    return handle ? handle : tsDefaultLocale;
}

namespace vlx {

inline void* allocate(std::uint32_t bytes)
{
    return tsSlots.allocate(tsGlobals->allocContext, bytes);
}
inline void* allocateObject(std::uint32_t bytes)
{
    return tsSlots.allocateObject(tsGlobals->allocContext, bytes);
}

// True if the memory went back.
inline bool release(void* memory)
{
    return tsSlots.free(tsGlobals->allocContext, memory) != 0;
}
inline bool releaseObject(void* memory)
{
    return tsSlots.freeObject(tsGlobals->allocContext, memory) != 0;
}

} // namespace vlx
