// The base services that the library imports: a lock, configuration values, per-process and
// per-thread data, and trace. They live in a shared library of their own, so that a product can put
// its own in that place; the one that comes with this library is in `zbq/`.
#pragma once

#include <atomic>
#include <cstdint>

#if defined(_WIN32) && !defined(VLX_STATIC)
#if defined(ZBQ_BUILD)
#define ZBQ_API __declspec(dllexport)
#else
#define ZBQ_API __declspec(dllimport)
#endif
#elif defined(_WIN32)
#define ZBQ_API
#else
#define ZBQ_API __attribute__((visibility("default")))
#endif

extern "C" {

// A lock in the caller's storage. The thread that holds it can take it again, and gives it back as
// often.
struct SYS1_Lock {
    alignas(16) std::uint8_t storage[64];
};

ZBQ_API void SYS1_InitializeLock(SYS1_Lock* lock);
ZBQ_API void SYS1_GetLock(SYS1_Lock* lock);
ZBQ_API void SYS1_ReleaseLock(SYS1_Lock* lock);

// Ends a lock; the calling thread may still hold it, however often it took it.
ZBQ_API void SYS1_DestroyLock(SYS1_Lock* lock);

// A configuration value, which the service keeps, or null. The second argument is reserved, 0. In a
// process with raised privileges there are none.
ZBQ_API const char* SYS1_GetEnv(const char* name, std::int32_t reserved);

// Data of the process or of each thread. It is created, zeroed, at its first resolution, by whoever
// comes first while the others wait, and handed to `init`; `term` gets it at the end of the process
// or thread.
struct SYS1_Descriptor {
    std::uint32_t dataSize;
    void (*init)(void* data);
    void (*term)(void* data);
    std::int32_t reserved; // 0
    void* resolved;        // of a process descriptor: the address of the data once it is resolved
};

// The address of the data, or null if there is no memory for it. While the data of a thread ends,
// the thread gets what it has and nothing new.
ZBQ_API void* SYS1_ResolveProcess(SYS1_Descriptor* descriptor, const char* sourceName,
                                  std::int32_t line);
ZBQ_API void* SYS1_ResolveThread(SYS1_Descriptor* descriptor, const char* sourceName,
                                 std::int32_t line);

// What a unit tells about itself.
struct TRC1_FileRecord {
    const char* component;
    const char* version;
    const char* source;
    const char* buildDate;
    const char* buildTime;
};

// What a function tells about itself. `cell` belongs to the unit and starts as 1; the service
// raises it when the settings change. A `generation` that equals the cell says that `flags` is
// current.
struct TRC1_FunctionRecord {
    const TRC1_FileRecord* file;
    const char* name;
    std::uint32_t nameLength;
    std::int32_t line; // of the function's entry
    std::atomic<std::uint32_t>* cell;
    std::atomic<std::uint32_t> flags;
    std::atomic<std::uint32_t> generation;
};

enum TRC1_Flag : std::uint32_t {
    TRC1_RESULTS = 0x04, // results of lookups
    TRC1_INPUTS = 0x08,  // file names, search keys, options
    TRC1_DETAIL = 0x10,  // steps and records
    TRC1_FLOW = 0x40,    // entry and exit of functions
    TRC1_ERRORS = 0x80,  // a failure, just before it is returned
    TRC1_START = 0x100,  // failures of the process start
};

// Kinds of TRC1_Event. An exit with a result has one more argument, the result as a 64-bit integer.
enum TRC1_EventKind : std::int32_t { TRC1_ENTRY = 0, TRC1_EXIT_RESULT = 1, TRC1_EXIT = 2 };

// Brings a record up to date and returns its flag word.
ZBQ_API std::uint32_t TRC1_Sync(TRC1_FunctionRecord* record);

ZBQ_API void TRC1_Event(TRC1_FunctionRecord* record, std::int32_t line, std::int32_t kind, ...);

#if defined(__GNUC__)
__attribute__((format(printf, 3, 4)))
#endif
ZBQ_API void
TRC1_Printf(TRC1_FunctionRecord* record, std::int32_t line, const char* format, ...);

ZBQ_API void TRC1_Dump(TRC1_FunctionRecord* record, std::int32_t line, const void* address,
                       std::uint32_t length, const char* label);

} // extern "C"
