// Memory of a POSIX host, and the comparison of names.
#include "host/host.hpp"

#include <cstdlib>

namespace vlx::host {

namespace {

unsigned char lower(unsigned char byte)
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<unsigned char>(byte - 'A' + 'a') : byte;
}

} // namespace

void* allocate(TSContext, std::uint32_t bytes)
{
    return std::malloc(bytes);
}

std::int32_t free(TSContext, void* memory)
{
    std::free(memory);
    return 1;
}

// Own code, since the standard functions ask the locale of the process what a letter is.
bool equalIgnoringCase(const char* left, const char* right, std::size_t length)
{
    for (std::size_t at = 0; at != length; ++at)
        if (lower(static_cast<unsigned char>(left[at])) !=
            lower(static_cast<unsigned char>(right[at])))
            return false;
    return true;
}

} // namespace vlx::host
