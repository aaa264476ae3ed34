// Sleep until a word changes, on a POSIX host: by the kernel's own way where we know it, since that
// of the standard library reports failures by exceptions and would bring all of their run time
// along.
#include "host/zbq/wait.hpp"

#ifdef __linux__

#include <climits>

#include <linux/futex.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zbq {

namespace {

static_assert(sizeof(std::atomic<std::uint32_t>) == sizeof(std::uint32_t));

void callFutex(std::atomic<std::uint32_t>& word, int operation, std::uint32_t value)
{
    syscall(SYS_futex, &word, operation | FUTEX_PRIVATE_FLAG, value, nullptr, nullptr, 0);
}

} // namespace

void waitWhile(std::atomic<std::uint32_t>& word, std::uint32_t value)
{
    while (word.load(std::memory_order_acquire) == value)
        callFutex(word, FUTEX_WAIT, value);
}

void wakeOne(std::atomic<std::uint32_t>& word)
{
    callFutex(word, FUTEX_WAKE, 1);
}

void wakeAll(std::atomic<std::uint32_t>& word)
{
    callFutex(word, FUTEX_WAKE, INT_MAX);
}

} // namespace zbq

#else

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

#endif
