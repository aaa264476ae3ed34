// SYS1_GetEnv: configuration values are environment variables.
//
// A value that was handed out stays where it is, whatever becomes of the environment. The same
// value is handed out as the same address, so that repeated questions need no more memory.
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "host/host.hpp"
#include "host/services.hpp"
#include "host/zbq/lock.hpp"

namespace {

struct Kept {
    Kept* next;
    char* name() { return reinterpret_cast<char*>(this + 1); }
    char* value() { return name() + std::strlen(name()) + 1; }
};

constinit zbq::Mutex keptLock;
constinit Kept* keptValues = nullptr;

// Under the lock.
const char* keep(const char* name, const char* value)
{
    for (Kept* kept = keptValues; kept; kept = kept->next)
        if (std::strcmp(kept->name(), name) == 0 && std::strcmp(kept->value(), value) == 0)
            return kept->value();

    const std::size_t nameSize = std::strlen(name) + 1;
    const std::size_t valueSize = std::strlen(value) + 1;
    auto* const kept = static_cast<Kept*>(std::malloc(sizeof(Kept) + nameSize + valueSize));
    if (!kept)
        return nullptr;
    std::memcpy(kept->name(), name, nameSize);
    std::memcpy(kept->name() + nameSize, value, valueSize);
    kept->next = keptValues;
    keptValues = kept;
    return kept->value();
}

// A value too long for the usual buffer. It may grow between two questions.
const char* keepLong(const char* name, std::int32_t needed)
{
    const auto size = static_cast<std::uint32_t>(needed);
    char* const buffer = static_cast<char*>(std::malloc(size));
    if (!buffer)
        return nullptr;
    const std::int32_t length = vlx::host::environment(name, buffer, size);
    const bool fits = length >= 0 && length < needed;
    const char* const kept = fits ? keep(name, buffer) : nullptr;
    std::free(buffer);
    return length >= needed ? keepLong(name, length) : kept;
}

} // namespace

const char* SYS1_GetEnv(const char* name, std::int32_t)
{
    char buffer[512];
    const std::int32_t length = vlx::host::environment(name, buffer, sizeof buffer);
    if (length < 0)
        return nullptr;
    const std::lock_guard guard(keptLock);
    return length < static_cast<std::int32_t>(sizeof buffer) ? keep(name, buffer)
                                                             : keepLong(name, length);
}
