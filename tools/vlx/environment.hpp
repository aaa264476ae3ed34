// The environment of the program.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace vlx::cli {

inline std::optional<std::string> environment(const char* name)
{
    // NOLINTNEXTLINE(concurrency-mt-unsafe): the program has one thread, and sets no variable
    const char* const value = std::getenv(name);
    return value ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace vlx::cli
