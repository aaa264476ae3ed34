// The recording services. Data of processes and threads come from the real ones, linked beside
// this.
#include "support/recording_services.hpp"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <map>
#include <mutex>
#include <new>
#include <set>

#include "host/services.hpp"
#include "host/zbq/lock.hpp"

namespace vlx::test {

namespace {

struct State {
    std::mutex lock;
    std::uint32_t mask = 0;
    std::set<std::atomic<std::uint32_t>*> cells;
    std::vector<TraceRecord> records;
    std::map<std::string, int, std::less<>> syncs;
    std::map<std::string, std::string, std::less<>> config;
    std::set<std::string, std::less<>> handedOut;
};

State& state()
{
    // Never destroyed, since the library may trace at the end of the process.
    static State& only = *new State;
    return only;
}

// The state for one call.
struct Locked {
    State& services = state();
    std::lock_guard<std::mutex> guard{services.lock};
};

TraceRecord recordOf(const TRC1_FunctionRecord& function, std::int32_t line, TraceKind kind)
{
    TraceRecord record;
    record.function.assign(function.name, function.nameLength);
    record.source = function.file->source;
    record.component = function.file->component;
    record.line = line;
    record.kind = kind;
    return record;
}

void keep(TraceRecord record)
{
    Locked().services.records.push_back(std::move(record));
}

TraceKind kindOf(std::int32_t event)
{
    switch (event) {
    case TRC1_ENTRY:
        return TraceKind::kEntry;
    case TRC1_EXIT_RESULT:
        return TraceKind::kExitResult;
    default:
        return TraceKind::kExit;
    }
}

thread_local int depthOfThread = 0;

zbq::RecursiveLock& lockIn(SYS1_Lock* lock)
{
    return *std::launder(reinterpret_cast<zbq::RecursiveLock*>(lock->storage));
}

} // namespace

void Trace::clear()
{
    Locked locked;
    locked.services.records.clear();
    locked.services.syncs.clear();
}

void Trace::setMask(std::uint32_t mask)
{
    Locked locked;
    locked.services.mask = mask;
    for (std::atomic<std::uint32_t>* const cell : locked.services.cells)
        cell->fetch_add(1, std::memory_order_release);
}

std::vector<TraceRecord> Trace::records()
{
    return Locked().services.records;
}

bool Trace::printed(std::string_view text)
{
    Locked locked;
    return std::ranges::any_of(locked.services.records, [&](const TraceRecord& record) {
        return record.kind == TraceKind::kPrint && record.text.find(text) != std::string::npos;
    });
}

int Trace::count(std::string_view function, TraceKind kind)
{
    Locked locked;
    return static_cast<int>(
        std::ranges::count_if(locked.services.records, [&](const TraceRecord& record) {
            return record.kind == kind && record.function == function;
        }));
}

int Trace::syncs(std::string_view function)
{
    Locked locked;
    const auto found = locked.services.syncs.find(function);
    return found == locked.services.syncs.end() ? 0 : found->second;
}

void setConfig(std::string_view name, std::string_view value)
{
    Locked().services.config.insert_or_assign(std::string(name), std::string(value));
}

void clearConfig()
{
    Locked().services.config.clear();
}

int lockDepth()
{
    return depthOfThread;
}

} // namespace vlx::test

using namespace vlx::test;

void SYS1_InitializeLock(SYS1_Lock* lock)
{
    new (lock->storage) zbq::RecursiveLock;
}

void SYS1_GetLock(SYS1_Lock* lock)
{
    lockIn(lock).take();
    ++depthOfThread;
}

void SYS1_ReleaseLock(SYS1_Lock* lock)
{
    if (lockIn(lock).depth() == 0)
        return;
    --depthOfThread;
    lockIn(lock).give();
}

void SYS1_DestroyLock(SYS1_Lock* lock)
{
    depthOfThread -= static_cast<int>(lockIn(lock).depth());
    new (lock->storage) zbq::RecursiveLock;
}

const char* SYS1_GetEnv(const char* name, std::int32_t)
{
    Locked locked;
    const auto found = locked.services.config.find(std::string_view(name));
    if (found == locked.services.config.end())
        return nullptr;
    return locked.services.handedOut.insert(found->second).first->c_str();
}

std::uint32_t TRC1_Sync(TRC1_FunctionRecord* record)
{
    Locked locked;
    locked.services.cells.insert(record->cell);
    ++locked.services.syncs[std::string(record->name, record->nameLength)];
    record->flags.store(locked.services.mask, std::memory_order_relaxed);
    record->generation.store(record->cell->load(std::memory_order_relaxed),
                             std::memory_order_release);
    return locked.services.mask;
}

void TRC1_Event(TRC1_FunctionRecord* record, std::int32_t line, std::int32_t kind, ...)
{
    TraceRecord event = recordOf(*record, line, kindOf(kind));
    if (kind == TRC1_EXIT_RESULT) {
        std::va_list arguments;
        va_start(arguments, kind);
        event.result = va_arg(arguments, std::int64_t);
        va_end(arguments);
    }
    keep(std::move(event));
}

void TRC1_Printf(TRC1_FunctionRecord* record, std::int32_t line, const char* format, ...)
{
    TraceRecord print = recordOf(*record, line, TraceKind::kPrint);
    print.format = format;
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list again;
    va_copy(again, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, again);
    va_end(again);
    if (length > 0) {
        print.text.resize(static_cast<std::size_t>(length));
        std::vsnprintf(print.text.data(), print.text.size() + 1, format, arguments);
    }
    va_end(arguments);
    keep(std::move(print));
}

void TRC1_Dump(TRC1_FunctionRecord* record, std::int32_t line, const void* address,
               std::uint32_t length, const char* label)
{
    TraceRecord dump = recordOf(*record, line, TraceKind::kDump);
    dump.label = label;
    const auto* const bytes = static_cast<const std::uint8_t*>(address);
    if (bytes)
        dump.bytes.assign(bytes, bytes + length);
    keep(std::move(dump));
}
