// Trace of the base services. Its settings are read once in a process, so each case runs in a child
// that begins with the environment of the test.
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "host/services.hpp"
#include "support/process.hpp"

namespace {

using vlx::test::clearProcessVariable;
using vlx::test::setProcessVariable;

constinit std::atomic<std::uint32_t> cell{1};
constinit const TRC1_FileRecord unit{"Tessera", "1", "unit", "date", "time"};
constinit TRC1_FunctionRecord record{&unit, "TSWork", 6, 100, &cell, {0}, {0}};

// Traces before main begins and after it has ended, in a child that asks for it.
struct Early {
    const bool wanted = std::getenv("ZBQ_TEST_EARLY") != nullptr;
    Early()
    {
        if (wanted)
            TRC1_Event(&record, 1, TRC1_ENTRY);
    }
    ~Early()
    {
        if (wanted)
            TRC1_Event(&record, 2, TRC1_EXIT);
    }
} early;

// Checks of a child can't be seen; it ends with a code of its own.
void require(bool condition)
{
    if (!condition)
        std::exit(9);
}

void settings(const std::string& place, const char* mask)
{
    if (place.empty())
        clearProcessVariable("ZBQ_TRACE");
    else
        setProcessVariable("ZBQ_TRACE", place);
    if (mask)
        setProcessVariable("ZBQ_TRACE_MASK", mask);
    else
        clearProcessVariable("ZBQ_TRACE_MASK");
}

// What stands behind time, thread and unit; the whole line if they aren't as they should be.
std::string withoutOrigin(const std::string& line)
{
    constexpr std::string_view kTime = "0000-00-00T00:00:00.000000Z ";
    constexpr std::string_view kUnit = " Tessera/unit ";
    for (std::size_t at = 0; at != kTime.size(); ++at) {
        const char found = at < line.size() ? line[at] : '\0';
        if (kTime[at] == '0' ? found < '0' || found > '9' : found != kTime[at])
            return line;
    }
    const std::size_t thread = line.find_first_not_of("0123456789", kTime.size());
    if (thread == kTime.size() || thread == std::string::npos ||
        line.compare(thread, kUnit.size(), kUnit) != 0)
        return line;
    return line.substr(thread + kUnit.size());
}

class TraceTest : public testing::Test {
  protected:
    TraceTest()
    {
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        file_ = std::string("trace_test_") +
                testing::UnitTest::GetInstance()->current_test_info()->name() + ".txt";
        // A child passes here too, and may have opened the file already.
        const char* const place = std::getenv("ZBQ_TRACE");
        if (!place || place != file_)
            std::remove(file_.c_str());
    }
    ~TraceTest() override
    {
        settings("", nullptr);
        std::remove(file_.c_str());
    }

    // The lines of the file, without time and thread.
    std::vector<std::string> lines() const
    {
        std::vector<std::string> texts;
        std::ifstream stream(file_);
        for (std::string line; std::getline(stream, line);)
            texts.push_back(withoutOrigin(line));
        return texts;
    }

    std::string file_;
};

TEST_F(TraceTest, IsOffWithoutAPlaceAndAsksOnce)
{
    settings("", "0xFFFF");
    EXPECT_EXIT(
        {
            require(TRC1_Sync(&record) == 0);
            require(record.flags == 0);
            require(record.generation == cell);
            TRC1_Event(&record, 1, TRC1_ENTRY);
            TRC1_Printf(&record, 1, "%d", 1);
            TRC1_Dump(&record, 1, "x", 1, "label");
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^$");
    EXPECT_TRUE(lines().empty());
}

TEST_F(TraceTest, WritesEventsMessagesAndDumps)
{
    settings(file_, nullptr);
    EXPECT_EXIT(
        {
            require(TRC1_Sync(&record) == 0x1DC);
            require(record.flags == 0x1DC);
            TRC1_Event(&record, 100, TRC1_ENTRY);
            TRC1_Printf(&record, 101, "Opening file %s", "a\nb");
            TRC1_Printf(&record, 102, "Unable, rc = %d\n", -5);
            const char bytes[] = "ABCDEFGHIJKLMNOP\x01\xFF";
            TRC1_Dump(&record, 103, bytes, 18, "table");
            TRC1_Dump(&record, 104, nullptr, 18, "nothing");
            TRC1_Event(&record, 105, TRC1_EXIT_RESULT, std::int64_t{-3000000000});
            TRC1_Event(&record, 106, TRC1_EXIT);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    const std::vector<std::string> expected = {
        "TSWork:100 enter",
        "TSWork:101 Opening file a.b",
        "TSWork:102 Unable, rc = -5",
        "TSWork:103 table: 18 bytes",
        "TSWork:103 table 0000: 41 42 43 44 45 46 47 48 49 4a 4b 4c 4d 4e 4f 50  "
        "|ABCDEFGHIJKLMNOP|",
        "TSWork:103 table 0010: 01 ff" + std::string(14 * 3, ' ') + "  |..|",
        "TSWork:104 nothing: 0 bytes",
        "TSWork:105 leave = -3000000000",
        "TSWork:106 leave",
    };
    EXPECT_EQ(lines(), expected);
}

TEST_F(TraceTest, MasksAreDecimalOrHexadecimal)
{
    struct Mask {
        const char* text;
        std::uint32_t flags;
    };
    constexpr Mask kMasks[] = {{"0x40", 0x40}, {"132", 0x84}, {"0XfFfFfFfF", 0x1DC},
                               {"010", 0x08},  {"0", 0},      {nullptr, 0x1DC}};
    for (const Mask& mask : kMasks) {
        settings(file_, mask.text);
        EXPECT_EXIT(
            {
                require(TRC1_Sync(&record) == mask.flags);
                std::exit(0);
            },
            testing::ExitedWithCode(0), "");
    }
}

TEST_F(TraceTest, AppendsToItsFile)
{
    settings(file_, nullptr);
    for (int run = 0; run != 2; ++run)
        EXPECT_EXIT(
            {
                TRC1_Event(&record, 1, TRC1_ENTRY);
                std::exit(0);
            },
            testing::ExitedWithCode(0), "");
    EXPECT_EQ(lines().size(), 2u);
}

TEST_F(TraceTest, WorksBeforeAndAfterMain)
{
    settings(file_, nullptr);
    setProcessVariable("ZBQ_TEST_EARLY", "1");
    EXPECT_EXIT(std::exit(0), testing::ExitedWithCode(0), "");
    clearProcessVariable("ZBQ_TEST_EARLY");
    EXPECT_EQ(lines(), (std::vector<std::string>{"TSWork:1 enter", "TSWork:2 leave"}));
}

TEST_F(TraceTest, WritesToTheErrorStream)
{
    settings("stderr", nullptr);
    EXPECT_EXIT(
        {
            TRC1_Event(&record, 1, TRC1_ENTRY);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "Tessera/unit TSWork:1 enter");
}

TEST_F(TraceTest, AFileThatDoesNotOpenMeansOff)
{
    settings("no_such_directory/file", nullptr);
    EXPECT_EXIT(
        {
            require(TRC1_Sync(&record) == 0);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "^$");
}

TEST_F(TraceTest, CutsALongMessageAndEndsItsLine)
{
    settings(file_, nullptr);
    EXPECT_EXIT(
        {
            TRC1_Printf(&record, 1, "%s", std::string(100000, 'x').c_str());
            TRC1_Event(&record, 2, TRC1_EXIT);
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    const std::vector<std::string> texts = lines();
    ASSERT_EQ(texts.size(), 2u);
    EXPECT_GT(texts[0].size(), 3000u);
    EXPECT_LT(texts[0].size(), 5000u);
}

TEST_F(TraceTest, LinesOfThreadsDoNotMix)
{
    settings(file_, nullptr);
    EXPECT_EXIT(
        {
            std::vector<std::thread> threads;
            for (int number = 0; number != 8; ++number)
                threads.emplace_back([] {
                    for (int round = 0; round != 50; ++round) {
                        TRC1_Sync(&record);
                        TRC1_Printf(&record, 7, "%s", std::string(200, 'y').c_str());
                    }
                });
            for (std::thread& thread : threads)
                thread.join();
            std::exit(0);
        },
        testing::ExitedWithCode(0), "");
    const std::vector<std::string> texts = lines();
    EXPECT_EQ(texts.size(), 400u);
    for (const std::string& text : texts)
        EXPECT_EQ(text, "TSWork:7 " + std::string(200, 'y'));
}

} // namespace
