// Base services that record trace and let the test set configuration values. They fulfil
// host/services.hpp in place of the services' library.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vlx::test {

enum class TraceKind : std::uint8_t { kEntry, kExitResult, kExit, kPrint, kDump };

struct TraceRecord {
    std::string function;
    std::string source;
    std::string component;
    std::int32_t line = 0;
    TraceKind kind = TraceKind::kEntry;
    std::string text;                // of a print, formatted
    std::string format;              // of a print, as it was given
    std::int64_t result = 0;         // of an exit with a result
    std::string label;               // of a dump
    std::vector<std::uint8_t> bytes; // of a dump
};

struct Trace {
    // Forgets the records and keeps the mask.
    static void clear();

    // Sets the flags that are on, 0 at first. All functions notice at their next entry.
    static void setMask(std::uint32_t mask);

    // In the order in which they came.
    static std::vector<TraceRecord> records();

    // True if a message with this text in it was printed.
    static bool printed(std::string_view text);

    // The number of records of a kind that a function gave.
    static int count(std::string_view function, TraceKind kind);

    // How often a function asked for its flags since the last clear().
    static int syncs(std::string_view function);
};

// What SYS1_GetEnv answers; nothing is set at first. Values handed out stay valid.
void setConfig(std::string_view name, std::string_view value);
void clearConfig();

// How many takes of locks by this thread are not given back; an ended lock gives all of its back.
int lockDepth();

} // namespace vlx::test
