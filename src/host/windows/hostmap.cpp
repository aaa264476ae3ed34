// Read-only views of files on a Windows host, which knows its views by their address.
#include "host/host.hpp"

#include <windows.h>

namespace vlx::host {

Mapping createMapping(File file)
{
    return reinterpret_cast<Mapping>(
        CreateFileMappingA(reinterpret_cast<HANDLE>(file), nullptr, PAGE_READONLY, 0, 0, nullptr));
}

bool closeMapping(Mapping mapping)
{
    return mapping != 0 && CloseHandle(reinterpret_cast<HANDLE>(mapping)) != 0;
}

std::uint32_t granularity()
{
    SYSTEM_INFO system;
    GetSystemInfo(&system);
    return system.dwAllocationGranularity;
}

const void* mapView(Mapping mapping, std::uint32_t offset, std::uint32_t length)
{
    // Length 0 would map the rest of the file.
    if (length == 0)
        return nullptr;
    return MapViewOfFile(reinterpret_cast<HANDLE>(mapping), FILE_MAP_READ, 0, offset, length);
}

bool unmapView(const void* view)
{
    return UnmapViewOfFile(view) != 0;
}

} // namespace vlx::host
