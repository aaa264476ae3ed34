// Sleep until a word changes, on a Windows host. The wait of the standard library is not used,
// since that of GCC 12 loses wakes here.
#include "host/zbq/wait.hpp"

#include <windows.h>

namespace zbq {

static_assert(sizeof(std::atomic<std::uint32_t>) == sizeof(std::uint32_t));

void waitWhile(std::atomic<std::uint32_t>& word, std::uint32_t value)
{
    WaitOnAddress(&word, &value, sizeof value, INFINITE);
}

void wakeOne(std::atomic<std::uint32_t>& word)
{
    WakeByAddressSingle(&word);
}

void wakeAll(std::atomic<std::uint32_t>& word)
{
    WakeByAddressAll(&word);
}

} // namespace zbq
