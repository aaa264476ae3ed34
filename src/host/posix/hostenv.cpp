// The fixed names and the environment of a POSIX host.
#include "host/host.hpp"

#include <cstdlib>
#include <cstring>

namespace vlx::host {

const char* const kPathSeparator = "/";
const char* const kControlName = "/control.nls";
const char* const kDefaultDirectory = VLX_LOCALE_DIRECTORY;

std::int32_t environment(const char* name, char* buffer, std::uint32_t size)
{
    // A process with raised privileges reads no files that its caller names.
    const char* const value = secure_getenv(name);
    if (!value)
        return -1;
    const std::size_t length = std::strlen(value);
    if (length >= size)
        return static_cast<std::int32_t>(length + 1);
    std::memcpy(buffer, value, length + 1);
    return static_cast<std::int32_t>(length);
}

// This host has locales of a thread by name alone, and leaves them to the program.
bool setThreadLocale(std::uint32_t)
{
    return false;
}

} // namespace vlx::host
