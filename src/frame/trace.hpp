// Trace of the library's functions. A unit names itself once, an instrumented function once, and
// each return passes the guard:
//
//     TS_TRACE_UNIT("tsstrcmp");
//
//     int32_t TSStrcmp(...)
//     {
//         TS_TRACE(TSStrcmp);
//         ...
//         TS_RETURN(result);
//     }
//
// With no trace on this costs one compare at the entry: the function's cached generation with the
// unit's cell. The flag word is read once and decides the whole call.
#pragma once

#include <bit>
#include <cassert>
#include <cstdint>

#include "host/services.hpp"

// The build stamp, from the build system.
extern const char vlxBuildDate[];
extern const char vlxBuildTime[];

namespace vlx {

class TraceGuard {
  public:
    explicit TraceGuard(TRC1_FunctionRecord& record) : record_(record), flags_(flagsOf(record))
    {
        if (on(TRC1_FLOW)) [[unlikely]]
            TRC1_Event(&record_, record_.line, TRC1_ENTRY);
    }
    ~TraceGuard() { assert(left_ && "every return of a traced function passes TS_RETURN"); }
    TraceGuard(const TraceGuard&) = delete;
    TraceGuard& operator=(const TraceGuard&) = delete;

    bool on(std::uint32_t flag) const { return (flags_ & flag) != 0; }
    TRC1_FunctionRecord* record() const { return &record_; }

    template <class Result>
    Result leave(std::int32_t line, Result result)
    {
        markLeft();
        if (on(TRC1_FLOW)) [[unlikely]]
            TRC1_Event(&record_, line, TRC1_EXIT_RESULT, asInteger(result));
        return result;
    }

    void leave(std::int32_t line)
    {
        markLeft();
        if (on(TRC1_FLOW)) [[unlikely]]
            TRC1_Event(&record_, line, TRC1_EXIT);
    }

  private:
    static std::uint32_t flagsOf(TRC1_FunctionRecord& record)
    {
        const std::uint32_t current = record.cell->load(std::memory_order_relaxed);
        if (record.generation.load(std::memory_order_acquire) == current) [[likely]]
            return record.flags.load(std::memory_order_relaxed);
        return TRC1_Sync(&record);
    }

    template <class Result>
    static std::int64_t asInteger(Result* pointer)
    {
        return static_cast<std::int64_t>(reinterpret_cast<std::uintptr_t>(pointer));
    }
    // A double is traced by its bits, which every value has.
    static std::int64_t asInteger(double value) { return std::bit_cast<std::int64_t>(value); }
    template <class Result>
    static std::int64_t asInteger(Result value)
    {
        return static_cast<std::int64_t>(value);
    }

    void markLeft()
    {
#ifndef NDEBUG
        left_ = true;
#endif
    }

    TRC1_FunctionRecord& record_;
    const std::uint32_t flags_;
#ifndef NDEBUG
    bool left_ = false;
#endif
};

} // namespace vlx

// The unit's file record and sync cell.
#define TS_TRACE_UNIT(unit) TS_TRACE_UNIT_OF("Tessera", unit)
#define TS_TRACE_UNIT_OF(component, unit)                                                          \
    namespace {                                                                                    \
    constinit std::atomic<std::uint32_t> tsTraceCell{1};                                           \
    constinit const TRC1_FileRecord tsTraceFile{component, VLX_VERSION, unit, vlxBuildDate,        \
                                                vlxBuildTime};                                     \
    }                                                                                              \
    static_assert(true)

// The function's record and the guard of this call; the first line of a traced function.
#define TS_TRACE(function)                                                                         \
    static constinit TRC1_FunctionRecord tsTraceRecord{                                            \
        &tsTraceFile, #function, sizeof #function - 1, __LINE__, &tsTraceCell, {0}, {0}};          \
    ::vlx::TraceGuard tsTrace(tsTraceRecord)

// Leaves a traced function, with its result if it has one.
#define TS_RETURN(...) return tsTrace.leave(__LINE__ __VA_OPT__(, ) __VA_ARGS__)

// Prints a message, printf-style, if `flag` is on.
#define TS_PRINT(flag, ...)                                                                        \
    do {                                                                                           \
        if (tsTrace.on(flag)) [[unlikely]]                                                         \
            TRC1_Printf(tsTrace.record(), __LINE__, __VA_ARGS__);                                  \
    } while (false)

#define TS_DUMP(flag, address, length, label)                                                      \
    do {                                                                                           \
        if (tsTrace.on(flag)) [[unlikely]]                                                         \
            TRC1_Dump(tsTrace.record(), __LINE__, address, length, label);                         \
    } while (false)

// The failing path: prints the message, stores the code and leaves with the failure's result.
#define TS_FAIL(store, code, result, ...)                                                          \
    do {                                                                                           \
        TS_PRINT(TRC1_ERRORS, __VA_ARGS__);                                                        \
        (store) = (code);                                                                          \
        TS_RETURN(result);                                                                         \
    } while (false)

// Stores the code of a call that delivers what it has all the same; a failure is told first, by a
// message that takes the code.
#define TS_STORE(store, code, message)                                                             \
    do {                                                                                           \
        const std::int32_t tsCode = (code);                                                        \
        if (tsCode != 0) [[unlikely]]                                                              \
            TS_PRINT(TRC1_ERRORS, message, static_cast<int>(tsCode));                              \
        (store) = tsCode;                                                                          \
    } while (false)
