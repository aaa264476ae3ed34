// TSInit, TSTerm and the error field: the start and the stop of the library.
#include <algorithm>
#include <chrono>
#include <future>

#include "frame/file.hpp"
#include "frame/store.hpp"
#include "host/host.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

class Start : public StoreTest {
  protected:
    Start() { putDirectory(); }
};

TEST_F(Start, AGoodDirectoryGives0AndAStartedLibrary)
{
    EXPECT_EQ(start(), TS_ERR_NONE);
    ASSERT_NE(tsGlobals, nullptr);
    EXPECT_EQ(tsGlobals->initCount, 1);
    EXPECT_EQ(tsGlobals->active, 1);
    EXPECT_EQ(tsGlobals->alignment, 4u);
    EXPECT_STREQ(tsGlobals->fieldSeparator, "_");
    EXPECT_STREQ(tsGlobals->pathSeparator, host::kPathSeparator);
    EXPECT_EQ(tsDefaultLocale, nullptr);
    EXPECT_EQ(lockDepth(), 0);
}

TEST_F(Start, NothingIsLoadedAtTheStart)
{
    start();
    for (int i = 0; i < manager().objectCount; ++i) {
        EXPECT_EQ(manager().objects[i].sections[0], nullptr);
        EXPECT_EQ(manager().objects[i].file, nullptr);
    }
    EXPECT_EQ(MemoryHost::openFiles(), 0);
    EXPECT_EQ(MemoryHost::openViews(), 0);
}

TEST_F(Start, SecondStartKeepsTheFirstDirectory)
{
    putDirectory("/other");
    EXPECT_EQ(start(), TS_ERR_NONE);
    EXPECT_EQ(start("/other"), TS_ERR_NONE);
    EXPECT_STREQ(manager().directory, kDirectory);
    EXPECT_EQ(tsGlobals->initCount, 2);
    EXPECT_EQ(lockDepth(), 0);
}

TEST_F(Start, SecondStartGives0EvenIfTheFirstGave10)
{
    EXPECT_EQ(start("/nowhere"), TS_ERR_NO_CONTROL_FILE);
    EXPECT_EQ(start(), TS_ERR_NONE);
    EXPECT_TRUE(hasBuiltinTable());
}

TEST_F(Start, SecondStartIgnoresItsAllocatorsAndContextAndOptions)
{
    start();
    const std::uint32_t before = Allocator::calls(Slot::kAllocateObject);
    EXPECT_EQ(TSInit("/other", nullptr, nullptr, nullptr, nullptr, 99, TS_STRICT_OBJECTS),
              TS_ERR_NONE);
    EXPECT_EQ(tsSlots.allocate, &Allocator::allocate);
    EXPECT_EQ(tsSlots.free, &Allocator::free);
    EXPECT_EQ(tsSlots.allocateObject, &Allocator::allocateObject);
    EXPECT_EQ(tsSlots.freeObject, &Allocator::freeObject);
    EXPECT_EQ(tsGlobals->allocContext, 0u);
    EXPECT_FALSE(manager().strict);
    EXPECT_EQ(Allocator::calls(Slot::kAllocateObject), before);
}

TEST_F(Start, WithNoDataAtAllGives10AndTheBuiltinLocale)
{
    MemoryHost::reset();
    EXPECT_EQ(start(nullptr), TS_ERR_NO_CONTROL_FILE);
    EXPECT_TRUE(hasBuiltinTable());
    EXPECT_EQ(tsGlobals->initCount, 1);
    TSLocale* const locale = goodLocale("");
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "English");
    EXPECT_STREQ(locale->territory->name, "UnitedStates");
    EXPECT_STREQ(locale->codePage->name, "US-ASCII");
    EXPECT_EQ(locale->sort, nullptr);
    EXPECT_TRUE(locale->flags & kLocaleBinarySort);
    EXPECT_EQ(TSReleaseLocale(locale), 0);
}

TEST_F(Start, TwoStartsNeedTwoStopsAndOnlyTheSecondReleasesTheObjects)
{
    start();
    start();
    std::int32_t code = 0;
    const TSObject* const object = load(TS_OBJ_LANGUAGE, kNorthern, code);
    ASSERT_NE(object->sections[0], nullptr);
    EXPECT_EQ(TSTerm(), 0);
    ASSERT_NE(tsGlobals, nullptr);
    EXPECT_NE(object->sections[0], nullptr);
    EXPECT_EQ(MemoryHost::openViews(), 1);
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_EQ(tsGlobals, nullptr);
    EXPECT_EQ(MemoryHost::openViews(), 0);
    EXPECT_EQ(Allocator::liveBlocks(), 0);
}

TEST_F(Start, TheCountedStopKeepsTheLockAndTheLastStopEndsIt)
{
    start();
    start();
    start();
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_EQ(lockDepth(), 1);
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_EQ(lockDepth(), 2);
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_EQ(lockDepth(), 0);
    EXPECT_EQ(tsGlobals, nullptr);
}

TEST_F(Start, TheThreadOfTheCountedStopCanStartLoadAndStopAgain)
{
    start();
    start();
    TSTerm();
    ASSERT_EQ(lockDepth(), 1);
    std::int32_t code = 0;
    EXPECT_NE(load(TS_OBJ_LANGUAGE, kNorthern, code), nullptr);
    EXPECT_EQ(start(), TS_ERR_NONE);
    EXPECT_EQ(lockDepth(), 1);
    EXPECT_EQ(tsGlobals->initCount, 2);
}

TEST_F(Start, AnotherThreadsLoadWaitsForTheLockThatTheCountedStopKept)
{
    start();
    start();
    TSTerm();
    auto other = std::async(std::launch::async, [] {
        std::int32_t code = 0;
        return load(TS_OBJ_LANGUAGE, kNorthern, code) != nullptr;
    });
    EXPECT_EQ(other.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    SYS1_ReleaseLock(&tsGlobals->lock);
    EXPECT_TRUE(other.get());
}

TEST_F(Start, AStopWithoutAStartGives0AndChangesNothing)
{
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_EQ(tsGlobals, nullptr);
}

TEST_F(Start, AStopOfAHalfStartedLibraryChangesNothingAndReleasesTheLock)
{
    Allocator::failAllocation(Slot::kAllocateObject, 2);
    EXPECT_EQ(start(), TS_ERR_NO_OBJECTS);
    ASSERT_NE(tsGlobals, nullptr);
    EXPECT_EQ(TSTerm(), 0);
    ASSERT_NE(tsGlobals, nullptr);
    EXPECT_EQ(tsGlobals->initCount, 0);
    EXPECT_EQ(lockDepth(), 0);
}

TEST_F(Start, NoMemoryForTheManagerGives11AndAHalfStartedLibrary)
{
    Allocator::failAllocation(Slot::kAllocateObject, 2);
    EXPECT_EQ(start(), TS_ERR_NO_OBJECTS);
    ASSERT_NE(tsGlobals, nullptr);
    EXPECT_EQ(tsGlobals->active, 0);
    EXPECT_EQ(tsGlobals->initCount, 0);
    EXPECT_EQ(tsGlobals->objectManager, nullptr);
    EXPECT_EQ(lockDepth(), 0);
}

TEST_F(Start, AHalfStartedLibraryStartsOnTheSameArea)
{
    Allocator::failAllocation(Slot::kAllocateObject, 2);
    start();
    const TSGlobals* const area = tsGlobals;
    EXPECT_EQ(start(), TS_ERR_NONE);
    EXPECT_EQ(tsGlobals, area);
    EXPECT_EQ(tsGlobals->initCount, 1);
    EXPECT_EQ(tsGlobals->active, 1);
}

TEST_F(Start, NoMemoryForTheGlobalAreaGives20AndChangesNothing)
{
    Allocator::failAllocation(Slot::kAllocateObject, 1);
    EXPECT_EQ(start(), TS_ERR_MEMORY);
    EXPECT_EQ(tsGlobals, nullptr);
    EXPECT_EQ(start(), TS_ERR_NONE);
}

TEST_F(Start, NoMemoryForTheGlobalAreaGives20WithTraceOnToo)
{
    Trace::setMask(~0u);
    Allocator::failAllocation(Slot::kAllocateObject, 1);
    EXPECT_EQ(start(), TS_ERR_MEMORY);
    EXPECT_TRUE(Trace::printed("Unable to allocate " + std::to_string(sizeof(TSGlobals)) +
                               " bytes for globals"));
}

TEST_F(Start, OnlyOneOptionValueHasAMeaning)
{
    for (const std::uint32_t options : {0u, 1u, 2u, 0x80000000u, 0x80000003u, ~0u}) {
        EXPECT_EQ(start(kDirectory, options), TS_ERR_NONE);
        EXPECT_FALSE(manager().strict) << options;
        TSTerm();
    }
    EXPECT_EQ(start(kDirectory, TS_STRICT_OBJECTS), TS_ERR_NONE);
    EXPECT_TRUE(manager().strict);
}

TEST_F(Start, AStrictStartWithoutAControlFileGives10AndNoObjects)
{
    EXPECT_EQ(start("/nowhere", TS_STRICT_OBJECTS), TS_ERR_NO_CONTROL_FILE);
    EXPECT_EQ(manager().objectCount, 0);
    EXPECT_EQ(manager().objects, nullptr);
    EXPECT_EQ(manager().aliases, nullptr);
    std::int32_t code = 0;
    EXPECT_EQ(TSGetLocale("", 0, &code), nullptr);
    EXPECT_EQ(code, TS_ERR_LANGUAGE);
    EXPECT_EQ(TSTerm(), 0);
}

TEST_F(Start, TheLastStopReleasesTheDefaultLocale)
{
    start();
    EXPECT_EQ(TSSetLocale("Northern", 0), 0);
    ASSERT_NE(tsDefaultLocale, nullptr);
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_EQ(tsDefaultLocale, nullptr);
    EXPECT_EQ(Allocator::liveBlocks(), 0);
}

TEST_F(Start, TheFirstFailureOfTheStopIsItsResult)
{
    start();
    TSSetLocale("Northern", 0);
    Allocator::failFree(Slot::kFree, 1); // a text of the default locale
    EXPECT_EQ(TSTerm(), 1);
    EXPECT_EQ(tsGlobals, nullptr);
    left_.blocks = 1;
}

TEST_F(Start, TheFirstFailureOfTheStopIsItsResultWhenTheObjectsFailToo)
{
    // The language alone has views, so that no later object's success hides their failure.
    eraseFile(objectFileName(TS_OBJ_TERRITORY, kNorthland));
    eraseFile(objectFileName(TS_OBJ_CODEPAGE, kDouble));
    start();
    TSSetLocale("Northern_Northland.Double@BINARY", 0);
    Allocator::failFree(Slot::kFree, 1);
    MemoryHost::failCall(1); // the view of an object
    Trace::setMask(TRC1_FLOW);
    EXPECT_EQ(TSTerm(), 1);
    const auto records = Trace::records();
    EXPECT_TRUE(std::ranges::any_of(records, [](const TraceRecord& record) {
        return record.function == "TSUnloadFile" && record.result == TS_ERR_FILE_UNMAP;
    }));
    left_.blocks = 1;
    left_.views = 1;
}

TEST_F(Start, AStopWhoseViewDoesNotUnmapGivesTheFileCode)
{
    start();
    std::int32_t code = 0;
    load(TS_OBJ_LANGUAGE, kNorthern, code);
    MemoryHost::failCall(1);
    EXPECT_EQ(TSTerm(), TS_ERR_FILE_UNMAP);
    EXPECT_EQ(tsGlobals, nullptr);
    left_.views = 1;
}

TEST_F(Start, ALaterObjectsSuccessReplacesTheStopsFailure)
{
    start();
    std::int32_t code = 0;
    load(TS_OBJ_LANGUAGE, kEnglish, code);
    load(TS_OBJ_LANGUAGE, kNorthern, code);
    MemoryHost::failCall(1); // the view of the first one
    EXPECT_EQ(TSTerm(), 0);
    left_.views = 1;
}

TEST_F(Start, TheLibraryStartsAgainAfterItsStop)
{
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(start(), TS_ERR_NONE);
        EXPECT_EQ(TSReleaseLocale(goodLocale("Northern_Northland.Double@Plain")), 0);
        EXPECT_EQ(TSTerm(), 0);
        expectNothingLeft();
    }
}

TEST_F(Start, GettingTheErrorKeepsIt)
{
    TSLocale record{};
    record.lastError = TS_ERR_BUFFER;
    EXPECT_EQ(TSGetError(&record), TS_ERR_BUFFER);
    EXPECT_EQ(TSGetError(&record), TS_ERR_BUFFER);
}

TEST_F(Start, ANullLocaleIsTheDefaultOneForTheErrorAndTheState)
{
    start();
    TSSetLocale("Northern", 0);
    tsDefaultLocale->lastError = TS_ERR_BASE;
    EXPECT_EQ(TSGetError(nullptr), TS_ERR_BASE);
    std::int32_t state = 7;
    TSInitState(nullptr, &state);
    EXPECT_EQ(state, 0);
    EXPECT_EQ(TSGetError(nullptr), TS_ERR_NONE);
}

TEST_F(Start, InitStateClearsTheErrorAndTheStateOfARecordBeforeAnyStart)
{
    TSLocale record{};
    record.lastError = TS_ERR_BUFFER;
    std::int32_t state = 1;
    TSInitState(&record, &state);
    EXPECT_EQ(record.lastError, 0);
    EXPECT_EQ(state, 0);
}

} // namespace
} // namespace vlx::test
