// The lock of the base services; the recording services are held to the same.
#include <atomic>
#include <cstring>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "host/services.hpp"

namespace {

class LockTest : public testing::Test {
  protected:
    LockTest()
    {
        std::memset(&lock_, 0xEE, sizeof lock_);
        SYS1_InitializeLock(&lock_);
    }
    ~LockTest() override { SYS1_DestroyLock(&lock_); }

    SYS1_Lock lock_;
};

TEST_F(LockTest, KeepsThreadsApart)
{
    constexpr int kThreads = 8;
    constexpr int kRounds = 2000;
    int counter = 0; // not atomic: the lock guards it
    std::vector<std::thread> threads;
    for (int count = 0; count != kThreads; ++count)
        threads.emplace_back([&] {
            for (int round = 0; round != kRounds; ++round) {
                SYS1_GetLock(&lock_);
                SYS1_GetLock(&lock_);
                ++counter;
                SYS1_ReleaseLock(&lock_);
                SYS1_ReleaseLock(&lock_);
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(counter, kThreads * kRounds);
}

TEST_F(LockTest, IsFreeWhenItWasGivenBackAsOftenAsTaken)
{
    std::atomic<bool> taken = false;
    SYS1_GetLock(&lock_);
    SYS1_GetLock(&lock_);
    SYS1_GetLock(&lock_);
    std::thread other([&] {
        SYS1_GetLock(&lock_);
        taken = true;
        SYS1_ReleaseLock(&lock_);
    });
    SYS1_ReleaseLock(&lock_);
    SYS1_ReleaseLock(&lock_);
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(taken);
    SYS1_ReleaseLock(&lock_);
    other.join();
    EXPECT_TRUE(taken);
}

TEST_F(LockTest, AReleaseByAnotherThreadDoesNothing)
{
    std::atomic<bool> taken = false;
    SYS1_GetLock(&lock_);
    std::thread([&] { SYS1_ReleaseLock(&lock_); }).join();
    std::thread other([&] {
        SYS1_GetLock(&lock_);
        taken = true;
        SYS1_ReleaseLock(&lock_);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_FALSE(taken);
    SYS1_ReleaseLock(&lock_);
    other.join();
}

TEST_F(LockTest, EndsWhileItIsHeldAndBeginsAgain)
{
    for (int round = 0; round != 3; ++round) {
        SYS1_GetLock(&lock_);
        SYS1_GetLock(&lock_);
        SYS1_GetLock(&lock_);
        SYS1_DestroyLock(&lock_);
        SYS1_InitializeLock(&lock_);
        std::atomic<bool> taken = false;
        std::thread([&] {
            SYS1_GetLock(&lock_);
            taken = true;
            SYS1_ReleaseLock(&lock_);
        }).join();
        EXPECT_TRUE(taken);
    }
}

} // namespace
