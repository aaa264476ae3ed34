#include "frame/locdir.hpp"

#include <cstdio>
#include <cstring>

#include "frame/globals.hpp"
#include "frame/objfile.hpp"
#include "host/host.hpp"

namespace host = vlx::host;

namespace {

constexpr char kObjectExtension[] = ".nls";
constexpr char kAliasName[] = "alias.txt";
constexpr char kDirectoryVariable[] = "TS_LOCALEDIR";

// What a name needs beside its directory, in the counting of these names: the object name's id may
// have five digits.
constexpr std::size_t kObjectNameRoom = sizeof "/la_00000.nls";
constexpr std::size_t kAliasNameRoom = sizeof kAliasName; // the separator stands for its terminator

// Reports a buffer that is too small, on standard error, as there is no locale to hold a code.
bool fits(std::size_t needed, std::uint32_t size)
{
    if (size >= needed)
        return true;
    std::fprintf(stderr, "Buffer provided = %d, needed = %d\n", static_cast<int>(size),
                 static_cast<int>(needed));
    return false;
}

} // namespace

char* TSComposeControlName(const char* directory, char* buffer, std::uint32_t size)
{
    const std::size_t length = std::strlen(directory);
    const std::size_t name = std::strlen(host::kControlName) + 1;
    if (size < length || size - length < name)
        return nullptr;
    std::memcpy(buffer, directory, length);
    std::memcpy(buffer + length, host::kControlName, name);
    return buffer;
}

char* TSComposeObjectName(const char* directory, unsigned type, unsigned id, char* buffer,
                          std::uint32_t size)
{
    if (type >= vlx::kObjectTypes || !fits(std::strlen(directory) + kObjectNameRoom, size))
        return nullptr;
    std::snprintf(buffer, size, "%s%s%s%s%05u%s", directory, tsGlobals->pathSeparator,
                  vlx::kObjectTypeCode[type], tsGlobals->fieldSeparator, id & 0xFFFFu,
                  kObjectExtension);
    return buffer;
}

char* TSComposeAliasName(const char* directory, char* buffer, std::uint32_t size)
{
    // Deliberate: the test counts one byte less than the name takes; the copy is bounded, and a
    // name that the test lets through by that byte is cut and finds no file.
    if (!fits(std::strlen(directory) + kAliasNameRoom, size))
        return nullptr;
    std::snprintf(buffer, size, "%s%s%s", directory, tsGlobals->pathSeparator, kAliasName);
    return buffer;
}

std::int32_t TSLocaleDirCandidate(char* buffer, std::uint32_t size, std::int32_t which)
{
    if (which == 0) {
        const std::uint32_t length = TSGetConfigValue(kDirectoryVariable, buffer, size);
        if (length == 0)
            return -1;
        return length <= size ? static_cast<std::int32_t>(length) : 0;
    }
    const std::size_t length = std::strlen(host::kDefaultDirectory) + 1;
    if (length > size)
        return 0;
    std::memcpy(buffer, host::kDefaultDirectory, length);
    return static_cast<std::int32_t>(length);
}

std::uint32_t TSGetConfigValue(const char* name, char* buffer, std::uint32_t size)
{
    const char* const value = SYS1_GetEnv(name, 0);
    if (!value)
        return 0;
    const std::size_t length = std::strlen(value) + 1;
    if (length > size)
        return length > INT32_MAX ? INT32_MAX : static_cast<std::uint32_t>(length);
    std::memcpy(buffer, value, length);
    return static_cast<std::uint32_t>(length);
}
