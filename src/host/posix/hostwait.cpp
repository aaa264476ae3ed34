// Sleep until a word changes, on a POSIX host: what the standard library offers.
#include "host/zbq/wait.hpp"

namespace zbq {

void waitWhile(std::atomic<std::uint32_t>& word, std::uint32_t value)
{
    word.wait(value, std::memory_order_acquire);
}

void wakeOne(std::atomic<std::uint32_t>& word)
{
    word.notify_one();
}

void wakeAll(std::atomic<std::uint32_t>& word)
{
    word.notify_all();
}

} // namespace zbq
