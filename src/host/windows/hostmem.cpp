// Memory of a Windows host, and the comparison of names.
#include "host/host.hpp"

#include <cstring>

#include <windows.h>

namespace vlx::host {

void* allocate(TSContext, std::uint32_t bytes)
{
    return GlobalAlloc(0, bytes);
}

// The host answers null when the memory is freed.
std::int32_t free(TSContext, void* memory)
{
    return GlobalFree(memory) == nullptr;
}

bool equalIgnoringCase(const char* left, const char* right, std::size_t length)
{
    return _memicmp(left, right, length) == 0;
}

} // namespace vlx::host
