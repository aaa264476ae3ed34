// What the units of the facade share: the data of the process and of threads, and the start state.
#pragma once

#include <cstdint>

#include "frame/globals.hpp"
#include "frame/objman.hpp"
#include "frame/trace.hpp"
#include "nls1.h"

namespace vlx {

// Whether the library runs for the facade. A failed start is not tried again.
enum StartState : std::int32_t { kNotStarted = 0, kStarted = 1, kStartFailed = -1 };
extern std::int32_t startState;

// One 32-bit word for the process, the result of its start; one locale handle for each thread.
extern SYS1_Descriptor processDescriptor;
extern SYS1_Descriptor threadDescriptor;

// The callbacks of the descriptors, once for the process and for each thread.
void InitProcess(void* data);
void TermProcess(void* data);
void InitThread(void* data);
void TermThread(void* data);

// Makes sure of the process start; false if it has failed.
bool facadeRuns();

// The word of the calling thread, or null if it has none: without memory, or while it ends.
TSLocale** threadLocale();

// The object manager of a library that runs, or null.
inline TSObjManager* objectManager()
{
    return tsGlobals ? tsGlobals->objectManager : nullptr;
}

// A pair of ids in one number, taken apart as a signed one; 0 is no id.
struct IdPair {
    explicit IdPair(std::int32_t ids) : language(ids % kBase), territory(ids / kBase) {}

    static constexpr std::int32_t kBase = 65536;
    std::int32_t language;
    std::int32_t territory;
};

} // namespace vlx
