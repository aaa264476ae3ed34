// Threads that meet at the load of objects.
#include <barrier>
#include <cstring>
#include <thread>

#include "chars/codepage.hpp"
#include "frame/store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

constexpr int kThreads = 16;
constexpr int kRounds = 12;

// Runs the work in all threads at once.
template <class Work>
void together(const Work& work)
{
    std::barrier gate(kThreads);
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&, i] {
            gate.arrive_and_wait();
            work(i);
        });
    for (std::thread& thread : threads)
        thread.join();
}

class Threads : public StoreTest {
  protected:
    Threads() { putDirectory(); }
};

TEST_F(Threads, SixteenStartLocalesOnAColdDirectoryAndAgree)
{
    for (int round = 0; round < kRounds; ++round) {
        start();
        std::array<TSLocale*, kThreads> locales{};
        std::array<std::int32_t, kThreads> codes{};
        together([&](int i) {
            const auto at = static_cast<std::size_t>(i);
            locales[at] = TSGetLocale("Northern_Northland.Double@Plain", 0, &codes[at]);
            if (!locales[at])
                return;
            // Sections 2 to 4 must be there for whoever sees section 1.
            EXPECT_EQ(TSCpMbToUnicode(locales[at]->codePage, "\x81\x40"), 0x3040);
            EXPECT_EQ(TSCpUnicodeToWide(locales[at]->codePage, 0x3040), 0x8140u);
        });
        for (std::size_t i = 0; i < kThreads; ++i) {
            ASSERT_NE(locales[i], nullptr);
            EXPECT_EQ(codes[i], TS_ERR_NONE);
            EXPECT_EQ(locales[i]->language, locales[0]->language);
            EXPECT_EQ(locales[i]->territory, locales[0]->territory);
            EXPECT_EQ(locales[i]->codePage, locales[0]->codePage);
            EXPECT_EQ(locales[i]->sort, locales[0]->sort);
            EXPECT_STREQ(locales[i]->timeFormat, locales[0]->timeFormat);
        }
        EXPECT_EQ(MemoryHost::openFiles(), 4); // each object once
        together([&](int i) { TSReleaseLocale(locales[static_cast<std::size_t>(i)]); });
        EXPECT_EQ(TSTerm(), 0);
        expectNothingLeft();
    }
}

TEST_F(Threads, LoadsOfOneObjectRaceAndItIsLoadedOnce)
{
    for (int round = 0; round < kRounds; ++round) {
        start();
        TSObject* const object = listed(TS_OBJ_CODEPAGE, kDouble);
        together([&](int) {
            std::int32_t code = 4711;
            EXPECT_EQ(TSLoadObject(&manager(), object, &code), object);
            EXPECT_EQ(code, TS_ERR_NONE);
        });
        EXPECT_EQ(MemoryHost::openFiles(), 1);
        TSTerm();
    }
}

TEST_F(Threads, LookupsOfAnObjectWithoutAFileAgreeOnTheBuiltinData)
{
    for (int round = 0; round < kRounds; ++round) {
        eraseFile("cp_00932.nls");
        start();
        together([&](int) {
            std::int32_t code = 0;
            const TSObject* const object =
                TSGetObjFromID(&manager(), TS_OBJ_CODEPAGE, kDouble, 0, &code);
            ASSERT_NE(object, nullptr);
            EXPECT_TRUE(code == TS_ERR_NONE || code == TS_ERR_FILE_NOT_FOUND);
            EXPECT_EQ(object->sections[2], object->sections[0]);
            EXPECT_EQ(TSCpUnicodeToWide(object, 0x41), 1u);
        });
        TSTerm();
    }
}

TEST_F(Threads, LoadsOfARebuiltPageRaceAndItIsRebuiltOnce)
{
    putFile("cp_00932.nls", OldCodePage::doubleByte().file());
    for (int round = 0; round < kRounds; ++round) {
        start();
        together([&](int) {
            std::int32_t code = 0;
            const TSObject* const object =
                TSGetObjFromName(&manager(), TS_OBJ_CODEPAGE, "Double", 6, 0, &code);
            ASSERT_NE(object, nullptr);
            EXPECT_EQ(TSCpMbToUnicode(object, "\x81\x41"), 0x3001);
        });
        TSTerm();
        expectNothingLeft();
    }
}

TEST_F(Threads, StartsAndStopsCountWhileOthersLoad)
{
    start();
    together([&](int i) {
        for (int round = 0; round < kRounds; ++round)
            if (i % 2 == 0) {
                EXPECT_EQ(start(), TS_ERR_NONE);
            } else {
                TSReleaseLocale(goodLocale("Northern_Northland.Double@Plain"));
            }
    });
    EXPECT_EQ(tsGlobals->initCount, 1 + kThreads / 2 * kRounds);
}

TEST_F(Threads, TraceThatIsSwitchedMeanwhileDisturbsNothing)
{
    start();
    together([&](int i) {
        for (int round = 0; round < kRounds; ++round)
            if (i == 0) {
                Trace::setMask(round % 2 == 0 ? TRC1_FLOW | TRC1_INPUTS : 0);
            } else {
                TSReleaseLocale(goodLocale("English"));
            }
    });
}

} // namespace
} // namespace vlx::test
