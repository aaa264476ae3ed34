// Files of a Windows host.
#include "host/host.hpp"

#include <cstdlib>
#include <cstring>

#include <windows.h>

namespace vlx::host {

namespace {

struct OpenCall {
    DWORD access;
    DWORD share;
    DWORD disposition;
    DWORD attributes;
};

OpenCall openCall(Access access)
{
    switch (access) {
    case Access::kWrite:
        return {GENERIC_WRITE, 0, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL};
    case Access::kUpdate:
        return {GENERIC_READ | GENERIC_WRITE, 0, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL};
    case Access::kRead:
        break;
    }
    return {GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING,
            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_RANDOM_ACCESS};
}

OpenError errorOf(DWORD number)
{
    switch (number) {
    case ERROR_FILE_NOT_FOUND:
        return OpenError::kNotFound;
    case ERROR_ACCESS_DENIED:
        return OpenError::kAccessDenied;
    default:
        return OpenError::kOther;
    }
}

HANDLE handleOf(File file)
{
    return reinterpret_cast<HANDLE>(file);
}

} // namespace

File open(const char* path, Access access, OpenError& error)
{
    const OpenCall call = openCall(access);
    const HANDLE handle = CreateFileA(path, call.access, call.share, nullptr, call.disposition,
                                      call.attributes, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        error = errorOf(GetLastError());
        return kNoFile;
    }
    error = OpenError::kNone;
    return reinterpret_cast<File>(handle);
}

bool close(File file)
{
    return CloseHandle(handleOf(file)) != 0;
}

bool exists(const char* path)
{
    return GetFileAttributesA(path) != INVALID_FILE_ATTRIBUTES;
}

bool read(File file, void* buffer, std::uint32_t count, std::uint32_t& done)
{
    DWORD got = 0;
    const bool well = ReadFile(handleOf(file), buffer, count, &got, nullptr) != 0;
    done = well ? got : 0;
    return well;
}

bool seek(File file, std::int32_t offset, Origin origin)
{
    const DWORD method = origin == Origin::kBegin     ? FILE_BEGIN
                         : origin == Origin::kCurrent ? FILE_CURRENT
                                                      : FILE_END;
    return SetFilePointer(handleOf(file), offset, nullptr, method) != INVALID_SET_FILE_POINTER;
}

bool size(File file, std::uint64_t& bytes)
{
    DWORD high = 0;
    const DWORD low = GetFileSize(handleOf(file), &high);
    // The value of a failure can be that of a size too.
    if (low == INVALID_FILE_SIZE && GetLastError() != NO_ERROR)
        return false;
    bytes = std::uint64_t{high} << 32 | low;
    return true;
}

bool remove(const char* path)
{
    return DeleteFileA(path) != 0;
}

std::uint32_t replace(const char* source, const char* target)
{
    return MoveFileExA(source, target, MOVEFILE_REPLACE_EXISTING) != 0 ? 0 : GetLastError();
}

std::size_t stemLength(const char* path)
{
    // The split bounds nothing that it writes; a longer path can't be opened anyway.
    const std::size_t length = std::strlen(path);
    if (length >= _MAX_PATH)
        return length;
    char extension[_MAX_PATH] = "";
    _splitpath(path, nullptr, nullptr, nullptr, extension);
    return length - std::strlen(extension);
}

} // namespace vlx::host
