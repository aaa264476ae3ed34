// Data of the process and of threads.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "host/services.hpp"

namespace {

void* process(SYS1_Descriptor& descriptor)
{
    return SYS1_ResolveProcess(&descriptor, "data_test", __LINE__);
}

void* thread(SYS1_Descriptor& descriptor)
{
    return SYS1_ResolveThread(&descriptor, "data_test", __LINE__);
}

void inThreads(int count, void (*work)())
{
    std::vector<std::thread> threads;
    for (int index = 0; index != count; ++index)
        threads.emplace_back(work);
    for (std::thread& each : threads)
        each.join();
}

// What the callbacks saw, in order.
std::mutex logLock;
std::vector<std::string> eventLog;

void note(const char* event)
{
    const std::lock_guard guard(logLock);
    eventLog.emplace_back(event);
}

int noted(const char* event)
{
    const std::lock_guard guard(logLock);
    return static_cast<int>(std::ranges::count(eventLog, event));
}

TEST(ProcessDataTest, IsMadeOnceWhileOthersWait)
{
    static std::atomic<int> inits = 0;
    static SYS1_Descriptor descriptor{4,
                                      [](void* data) {
                                          ++inits;
                                          EXPECT_EQ(*static_cast<int*>(data), 0);
                                          std::this_thread::sleep_for(
                                              std::chrono::milliseconds(20));
                                          *static_cast<int*>(data) = 42;
                                      },
                                      nullptr, 0, nullptr};
    inThreads(100, [] { EXPECT_EQ(*static_cast<int*>(process(descriptor)), 42); });
    EXPECT_EQ(inits, 1);
    EXPECT_EQ(descriptor.resolved, process(descriptor));
}

TEST(ProcessDataTest, AnInitMayResolveOthersAndItself)
{
    static SYS1_Descriptor inner{4, [](void* data) { *static_cast<int*>(data) = 7; }, nullptr, 0,
                                 nullptr};
    static SYS1_Descriptor outer{16,
                                 [](void* data) {
                                     auto* const numbers = static_cast<int*>(data);
                                     numbers[0] = *static_cast<int*>(process(inner));
                                     EXPECT_EQ(process(outer), data);
                                     EXPECT_EQ(outer.resolved, nullptr);
                                 },
                                 nullptr, 0, nullptr};
    const int* const numbers = static_cast<int*>(process(outer));
    EXPECT_EQ(numbers[0], 7);
    EXPECT_EQ(numbers[3], 0);
}

TEST(ProcessDataTest, EndsWithTheProcessAfterTheDataOfItsThread)
{
    static SYS1_Descriptor first{4, nullptr, [](void*) { std::fputs("first;", stderr); }, 0,
                                 nullptr};
    static SYS1_Descriptor second{4, nullptr, [](void*) { std::fputs("second;", stderr); }, 0,
                                  nullptr};
    static SYS1_Descriptor ofThread{
        4, nullptr,
        [](void* data) { std::fprintf(stderr, "thread %d;", *static_cast<int*>(data)); }, 0,
        nullptr};
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            process(first);
            process(second);
            *static_cast<int*>(thread(ofThread)) = 5;
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^thread 5;second;first;$");
}

TEST(ThreadDataTest, TheThreadThatEndsTheProcessEndsItsOwn)
{
    static SYS1_Descriptor descriptor{4, nullptr, [](void*) { std::fputs("term;", stderr); }, 0,
                                      nullptr};
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(
        {
            thread(descriptor);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^term;$");
}

TEST(ThreadDataTest, AnEndInsideAnInitEndsNothingHalfMade)
{
    static SYS1_Descriptor descriptor{4, [](void*) { std::exit(0); },
                                      [](void*) { std::fputs("term;", stderr); }, 0, nullptr};
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(thread(descriptor), testing::ExitedWithCode(0), "^$");
    EXPECT_EXIT(process(descriptor), testing::ExitedWithCode(0), "^$");
}

TEST(ThreadDataTest, EachThreadHasItsOwnUntilItEnds)
{
    static std::mutex lock;
    static std::set<void*> live;
    static std::atomic<int> inits = 0;
    static std::atomic<int> terms = 0;
    static std::atomic<int> arrived = 0;
    static SYS1_Descriptor descriptor{8,
                                      [](void* data) {
                                          EXPECT_EQ(*static_cast<long long*>(data), 0);
                                          const std::lock_guard guard(lock);
                                          EXPECT_TRUE(live.insert(data).second);
                                          ++inits;
                                      },
                                      [](void* data) {
                                          const std::lock_guard guard(lock);
                                          EXPECT_EQ(live.erase(data), 1u);
                                          ++terms;
                                      },
                                      0, nullptr};
    inits = terms = arrived = 0;
    inThreads(100, [] {
        auto* const data = static_cast<long long*>(thread(descriptor));
        *data = 1;
        for (++arrived; arrived < 100;)
            std::this_thread::yield();
        EXPECT_EQ(thread(descriptor), data);
        EXPECT_EQ(terms, 0);
        for (++arrived; arrived < 200;)
            std::this_thread::yield();
    });
    EXPECT_EQ(inits, 100);
    EXPECT_EQ(terms, 100);
    EXPECT_TRUE(live.empty());
}

TEST(ThreadDataTest, TheYoungestEndsFirstAndMayUseTheOthers)
{
    static SYS1_Descriptor late{4, nullptr, [](void*) { note("never"); }, 0, nullptr};
    static SYS1_Descriptor older{4, nullptr, [](void*) { note("older"); }, 0, nullptr};
    static SYS1_Descriptor younger{4, nullptr,
                                   [](void* data) {
                                       note("younger");
                                       EXPECT_EQ(thread(younger), data);
                                       EXPECT_EQ(*static_cast<int*>(thread(older)), 3);
                                       // A thread that ends gets nothing new.
                                       EXPECT_EQ(thread(late), nullptr);
                                   },
                                   0, nullptr};
    eventLog.clear();
    inThreads(1, [] {
        *static_cast<int*>(thread(older)) = 3;
        thread(younger);
    });
    EXPECT_EQ(eventLog, (std::vector<std::string>{"younger", "older"}));
    EXPECT_EQ(noted("never"), 0);
}

TEST(ThreadDataTest, AnInitMayResolveProcessAndThreadData)
{
    static SYS1_Descriptor ofProcess{4, [](void* data) { *static_cast<int*>(data) = 9; }, nullptr,
                                     0, nullptr};
    static SYS1_Descriptor ofThread{4,
                                    [](void* data) {
                                        EXPECT_EQ(thread(ofThread), data);
                                        *static_cast<int*>(data) =
                                            *static_cast<int*>(process(ofProcess)) + 1;
                                    },
                                    nullptr, 0, nullptr};
    inThreads(20, [] { EXPECT_EQ(*static_cast<int*>(thread(ofThread)), 10); });
}

// The thread's C++ objects end before its data, or at least find nothing that is gone.
TEST(ThreadDataTest, ObjectsOfTheThreadMayUseItInTheirDestructors)
{
    static SYS1_Descriptor descriptor{4, nullptr, [](void*) { note("term"); }, 0, nullptr};
    struct Late {
        ~Late()
        {
            if (auto* const number = static_cast<int*>(thread(descriptor)))
                *number += 1;
        }
        void touch() {}
    };
    eventLog.clear();
    inThreads(10, [] {
        static thread_local Late late;
        late.touch();
        *static_cast<int*>(thread(descriptor)) = 3;
    });
    EXPECT_GE(noted("term"), 10);
}

} // namespace
