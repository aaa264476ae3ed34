// The locks of the base services: words and no object of the operating system. So they are there
// before any code runs, nothing is to be given back when they end, and an end while one is held is
// an end like any other.
#pragma once

#include <atomic>
#include <cstdint>
#include <thread>

#include "host/zbq/wait.hpp"

namespace zbq {

// Keeps threads apart; as std::lock_guard takes it.
class Mutex {
  public:
    void lock()
    {
        std::uint32_t seen = kFree;
        if (state_.compare_exchange_strong(seen, kHeld, std::memory_order_acquire,
                                           std::memory_order_relaxed))
            return;
        // Whoever has waited takes the lock as contended, since others may wait too.
        while (state_.exchange(kContended, std::memory_order_acquire) != kFree)
            waitWhile(state_, kContended);
    }

    void unlock()
    {
        if (state_.exchange(kFree, std::memory_order_release) == kContended)
            wakeOne(state_);
    }

  private:
    enum : std::uint32_t { kFree, kHeld, kContended };

    std::atomic<std::uint32_t> state_{kFree};
};

// A lock that its holder can take again.
class RecursiveLock {
  public:
    void take()
    {
        const std::thread::id self = std::this_thread::get_id();
        // Only this thread stores its own id, so that any other value means the lock isn't its own.
        if (owner_.load(std::memory_order_relaxed) != self) {
            mutex_.lock();
            owner_.store(self, std::memory_order_relaxed);
        }
        ++depth_;
    }

    // Does nothing in a thread that does not hold the lock.
    void give()
    {
        if (owner_.load(std::memory_order_relaxed) != std::this_thread::get_id() || --depth_ != 0)
            return;
        owner_.store({}, std::memory_order_relaxed);
        mutex_.unlock();
    }

    // How often the calling thread holds it.
    std::uint32_t depth() const
    {
        return owner_.load(std::memory_order_relaxed) == std::this_thread::get_id() ? depth_ : 0;
    }

  private:
    Mutex mutex_;
    std::uint32_t depth_ = 0;
    std::atomic<std::thread::id> owner_{};
};

} // namespace zbq
