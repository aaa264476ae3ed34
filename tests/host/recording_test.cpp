// The recording services do what the tests of the library rely on.
#include "support/recording_services.hpp"

#include <thread>

#include <gtest/gtest.h>

#include "host/services.hpp"

namespace vlx::test {
namespace {

constinit std::atomic<std::uint32_t> cell{1};
constinit const TRC1_FileRecord unit{"Tessera", "1", "unit", "date", "time"};
constinit TRC1_FunctionRecord record{&unit, "TSWork", 6, 100, &cell, {0}, {0}};

// What a traced function does at its entry.
std::uint32_t flags()
{
    return record.generation == cell ? record.flags.load() : TRC1_Sync(&record);
}

class RecordingTest : public testing::Test {
  protected:
    RecordingTest()
    {
        Trace::setMask(0);
        Trace::clear();
        clearConfig();
    }
};

TEST_F(RecordingTest, AFunctionSyncsOnceForEachMask)
{
    EXPECT_EQ(flags(), 0u);
    EXPECT_EQ(flags(), 0u);
    EXPECT_EQ(Trace::syncs("TSWork"), 1);
    Trace::setMask(TRC1_FLOW);
    EXPECT_EQ(flags(), TRC1_FLOW);
    EXPECT_EQ(flags(), TRC1_FLOW);
    EXPECT_EQ(Trace::syncs("TSWork"), 2);
}

TEST_F(RecordingTest, KeepsEventsMessagesAndDumpsInOrder)
{
    TRC1_Event(&record, 100, TRC1_ENTRY);
    TRC1_Printf(&record, 101, "Opening file %s", "name");
    TRC1_Dump(&record, 102, "ABC", 3, "table");
    TRC1_Event(&record, 103, TRC1_EXIT_RESULT, std::int64_t{-7});
    TRC1_Event(&record, 104, TRC1_EXIT);
    const std::vector<TraceRecord> records = Trace::records();
    ASSERT_EQ(records.size(), 5u);
    EXPECT_EQ(records[0].function, "TSWork");
    EXPECT_EQ(records[0].source, "unit");
    EXPECT_EQ(records[0].component, "Tessera");
    EXPECT_EQ(records[0].line, 100);
    EXPECT_EQ(records[0].kind, TraceKind::kEntry);
    EXPECT_EQ(records[1].kind, TraceKind::kPrint);
    EXPECT_EQ(records[1].text, "Opening file name");
    EXPECT_EQ(records[2].label, "table");
    EXPECT_EQ(records[2].bytes, (std::vector<std::uint8_t>{'A', 'B', 'C'}));
    EXPECT_EQ(records[3].kind, TraceKind::kExitResult);
    EXPECT_EQ(records[3].result, -7);
    EXPECT_EQ(records[4].kind, TraceKind::kExit);
    EXPECT_TRUE(Trace::printed("file name"));
    EXPECT_FALSE(Trace::printed("table"));
    EXPECT_EQ(Trace::count("TSWork", TraceKind::kExit), 1);
    EXPECT_EQ(Trace::count("TSOther", TraceKind::kExit), 0);
    Trace::clear();
    EXPECT_TRUE(Trace::records().empty());
}

TEST_F(RecordingTest, ConfigurationIsWhatTheTestSets)
{
    EXPECT_EQ(SYS1_GetEnv("PATH", 0), nullptr);
    setConfig("TS_LANG", "German");
    const char* const value = SYS1_GetEnv("TS_LANG", 0);
    EXPECT_STREQ(value, "German");
    setConfig("TS_LANG", "French");
    EXPECT_STREQ(SYS1_GetEnv("TS_LANG", 0), "French");
    clearConfig();
    EXPECT_EQ(SYS1_GetEnv("TS_LANG", 0), nullptr);
    EXPECT_STREQ(value, "German");
}

TEST_F(RecordingTest, CountsTheTakesOfThisThread)
{
    SYS1_Lock lock;
    SYS1_InitializeLock(&lock);
    SYS1_GetLock(&lock);
    SYS1_GetLock(&lock);
    EXPECT_EQ(lockDepth(), 2);
    std::thread([] { EXPECT_EQ(lockDepth(), 0); }).join();
    SYS1_ReleaseLock(&lock);
    EXPECT_EQ(lockDepth(), 1);
    SYS1_DestroyLock(&lock);
    EXPECT_EQ(lockDepth(), 0);
}

} // namespace
} // namespace vlx::test
