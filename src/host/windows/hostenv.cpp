// The fixed names and the environment of a Windows host.
#include "host/host.hpp"

#include <windows.h>

namespace vlx::host {

const char* const kPathSeparator = "\\";
const char* const kControlName = "\\control.nls";
const char* const kDefaultDirectory = "\\Vernique\\locale";

std::int32_t environment(const char* name, char* buffer, std::uint32_t size)
{
    if (const DWORD length = GetEnvironmentVariableA(name, buffer, size); length != 0)
        return static_cast<std::int32_t>(length);
    // 0 is an empty value or none; only an empty one needs room for its terminator.
    if (GetEnvironmentVariableA(name, nullptr, 0) == 0)
        return -1;
    buffer[0] = '\0';
    return 0;
}

bool setThreadLocale(std::uint32_t id)
{
    return SetThreadLocale(id) != 0;
}

} // namespace vlx::host
