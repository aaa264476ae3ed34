// The user's locale: its name from the environment or from the host's locale id.
#include <cstring>

#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "host/host.hpp"
#include "locale/locale.hpp"
#include "locale/native.hpp"

TS_TRACE_UNIT("tssloc");

namespace host = vlx::host;

namespace {

constexpr char kUserVariable[] = "TS_LANG";
constexpr char kUnknownLocale[] = "Unknown";

void copyCut(char* buffer, std::uint32_t size, const char* text)
{
    std::strncpy(buffer, text, size - 1);
    buffer[size - 1] = 0;
}

// Reads a value that is longer than the buffer, by way of a block of the size it needs, and cuts
// it. Without memory the name is empty.
void readLongValue(char* buffer, std::uint32_t size, std::uint32_t needed)
{
    buffer[0] = 0;
    auto* const block = static_cast<char*>(vlx::allocate(needed));
    if (!block)
        return;
    const std::int32_t length = host::environment(kUserVariable, block, needed);
    if (length >= 0 && static_cast<std::uint32_t>(length) < needed)
        copyCut(buffer, size, block);
    vlx::release(block);
}

} // namespace

std::int32_t TSGetUserLocale(char* buffer, std::uint32_t size)
{
    TS_TRACE(TSGetUserLocale);
    const std::int32_t length = host::environment(kUserVariable, buffer, size);
    if (length < 0) {
        const std::uint32_t nativeId = host::userLocaleId();
        TSMapNativeLocale(&nativeId, buffer, size);
        TS_RETURN(vlx::kUserLocaleOfHost);
    }
    if (static_cast<std::uint32_t>(length) >= size)
        readLongValue(buffer, size, static_cast<std::uint32_t>(length));
    TS_RETURN(vlx::kUserLocaleOfVariable);
}

char* TSMapNativeLocale(const std::uint32_t* nativeId, char* buffer, std::uint32_t size)
{
    TS_TRACE(TSMapNativeLocale);
    int low = 0;
    int high = vlx::kNativeLocaleCount - 1;
    while (low < high) {
        const int middle = (low + high) >> 1;
        if (vlx::kNativeLocales[middle].nativeId < *nativeId)
            low = middle + 1;
        else
            high = middle;
    }
    // Deliberate: all 32 bits count, so an id with sort bits is not found.
    if (vlx::kNativeLocales[high].nativeId == *nativeId)
        copyCut(buffer, size, vlx::kNativeLocales[high].name);
    else
        std::memcpy(buffer, kUnknownLocale, sizeof kUnknownLocale);
    TS_RETURN(buffer);
}
