// Many threads through the facade.
#include <atomic>
#include <set>
#include <thread>
#include <vector>

#include "facade/facade_fixture.hpp"

namespace vlx::test {
namespace {

constexpr int kWaves = 20;
constexpr int kThreads = 50; // at once: a thousand in all

using FacadeThreads = Facade;

TEST_F(FacadeThreads, SetLocaleMakesTheDataOfItsThread)
{
    Trace::setMask(TRC1_FLOW);
    for (const std::uint32_t options : {0u, NLS1_PROCESS, NLS1_THREAD}) {
        Trace::clear();
        std::thread([&] { NLS1_SetLocale(2, 0, options); }).join();
        EXPECT_EQ(Trace::count("InitThread", TraceKind::kEntry), 1) << options;
        EXPECT_EQ(Trace::count("TermThread", TraceKind::kEntry), 1) << options;
    }
}

TEST_F(FacadeThreads, AThousandEndedAndStartedLeaveNoHandleBehind)
{
    int before = 0; // with the objects that the first wave loads
    for (int wave = 0; wave <= kWaves; ++wave) {
        std::vector<TSLocale*> locales(kThreads);
        std::atomic<int> arrived = 0;
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i)
            threads.emplace_back([&, i] {
                TSLocale* const own = NLS1_PrivateFunction_GetThreadLocale();
                locales[static_cast<std::size_t>(i)] = own;
                for (++arrived; arrived < kThreads;)
                    std::this_thread::yield(); // all have theirs at the same time
                EXPECT_EQ(NLS1_PrivateFunction_GetThreadLocale(), own);
                const std::uint32_t german = 0x0407;
                if (i % 4 == 0)
                    NLS1_SetLocaleFromNative(&german, NLS1_THREAD | TS_LOCALE_FALLBACK);
                char output[8];
                EXPECT_EQ(NLS1_TranslateString(30, output, 8, 31, "text", 4, nullptr, 0, nullptr),
                          4);
            });
        for (std::thread& thread : threads)
            thread.join();
        EXPECT_EQ(std::set<TSLocale*>(locales.begin(), locales.end()).size(), locales.size());
        EXPECT_FALSE(std::set<TSLocale*>(locales.begin(), locales.end()).contains(nullptr));
        if (wave == 0)
            before = MemoryHost::liveBlocks();
    }
    EXPECT_EQ(MemoryHost::liveBlocks(), before);
}

} // namespace
} // namespace vlx::test
