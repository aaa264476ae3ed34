// Every allocation, free and host call fails in its turn: the told code comes, nothing leaks, and
// the library works afterwards.
#include <functional>

#include "frame/file.hpp"
#include "frame/store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

constexpr char kFullName[] = "Northern_Northland.Double@Plain";

class Failing : public StoreTest {
  protected:
    Failing() { putDirectory(); }

    static int failures(const char* function)
    {
        int count = 0;
        for (const TraceRecord& record : Trace::records())
            if (record.kind == TraceKind::kExitResult && record.function == function &&
                record.result != 0)
                ++count;
        return count;
    }

    // What a give-back that failed leaves out; the trace tells which one did.
    static void expectLeftByFailedGiveBacks()
    {
        EXPECT_EQ(MemoryHost::openViews(), failures("TSUnloadFile"));
        EXPECT_EQ(MemoryHost::openFiles(), failures("TSCloseFile"));
        EXPECT_EQ(Allocator::liveBlocks(), failures("TSCloseFile"));
        EXPECT_LE(MemoryHost::openMappings(), failures("TSCloseFile"));
        EXPECT_TRUE(Allocator::sound());
        EXPECT_EQ(lockDepth(), 0);
    }
    // Begins a new count; what is out by told failures stays behind.
    static void forget()
    {
        MemoryHost::reset();
        Allocator::reset();
        Trace::clear();
        putDirectory();
    }
    static void expectWorking()
    {
        EXPECT_EQ(start(), TS_ERR_NONE);
        TSLocale* const locale = goodLocale(kFullName);
        ASSERT_NE(locale, nullptr);
        EXPECT_FALSE(isBuiltin(locale->language));
        EXPECT_EQ(TSReleaseLocale(locale), 0);
        EXPECT_EQ(TSTerm(), 0);
    }
};

using Order = std::function<void(std::uint32_t)>;

const std::pair<const char*, Order> kAllocations[] = {
    {"any", [](std::uint32_t n) { Allocator::failAllocation(n); }},
    {"allocate", [](std::uint32_t n) { Allocator::failAllocation(Slot::kAllocate, n); }},
    {"allocateObject",
     [](std::uint32_t n) { Allocator::failAllocation(Slot::kAllocateObject, n); }},
};

// What a start gives by the allocation that fails: the area, the manager, the file's record, the
// raw table, the table.
TEST_F(Failing, EachAllocationOfTheStartGivesItsToldCode)
{
    const std::vector<std::int32_t> expected[] = {
        {TS_ERR_MEMORY, TS_ERR_NO_OBJECTS, TS_ERR_NO_CONTROL_FILE, TS_ERR_NO_CONTROL_FILE,
         TS_ERR_NO_CONTROL_FILE, TS_ERR_NONE},
        {TS_ERR_NO_CONTROL_FILE, TS_ERR_NONE},
        {TS_ERR_MEMORY, TS_ERR_NO_OBJECTS, TS_ERR_NO_CONTROL_FILE, TS_ERR_NO_CONTROL_FILE,
         TS_ERR_NONE},
    };
    for (std::size_t i = 0; i < std::size(kAllocations); ++i) {
        const auto& [name, order] = kAllocations[i];
        for (std::uint32_t n = 1; n <= expected[i].size(); ++n) {
            SCOPED_TRACE(std::string(name) + ' ' + std::to_string(n));
            order(n);
            EXPECT_EQ(start(), expected[i][n - 1]);
            EXPECT_EQ(Allocator::failurePending(), n == expected[i].size());
            order(0);
            EXPECT_EQ(lockDepth(), 0);
            stopAll();
            expectNothingLeft();
            expectWorking();
        }
    }
}

TEST_F(Failing, NoMemoryForTheTableGivesAManagerWithoutObjects)
{
    for (const std::uint32_t n : {3u, 4u}) { // the raw table, the table
        Allocator::failAllocation(Slot::kAllocateObject, n);
        EXPECT_EQ(start(), TS_ERR_NO_CONTROL_FILE);
        EXPECT_EQ(manager().objects, nullptr);
        EXPECT_EQ(manager().objectCount, 0);
        EXPECT_EQ(manager().aliases, nullptr);
        std::int32_t code = 0;
        EXPECT_EQ(TSGetLocale("", 0, &code), nullptr);
        EXPECT_EQ(code, TS_ERR_LANGUAGE);
        EXPECT_EQ(TSTerm(), 0);
        expectNothingLeft();
    }
}

TEST_F(Failing, NoMemoryForTheLastControlFilesRecordGivesAManagerWithoutObjects)
{
    putDirectory(kDefaultDirectory);
    Allocator::failAllocation(Slot::kAllocate, 1);
    EXPECT_EQ(start(nullptr), TS_ERR_NO_CONTROL_FILE);
    EXPECT_EQ(manager().objectCount, 0);
}

TEST_F(Failing, EachAllocationOfALoadGivesBuiltinDataOrNoSortAnd20)
{
    // A language whose content is copied, and an older code page: more blocks than the record.
    Bytes language = goodFiles()["la_00002.nls"];
    put16(language, kFileHeaderSize + 10, 0xFFFF);
    const struct {
        std::uint8_t type;
        std::uint16_t id;
        Bytes file;
        std::uint32_t blocks;
    } rows[] = {
        {TS_OBJ_LANGUAGE, kNorthern, language, 2},
        {TS_OBJ_TERRITORY, kNorthland, goodFiles()["te_00002.nls"], 1},
        {TS_OBJ_CODEPAGE, kDouble, OldCodePage::doubleByte().file(), 3},
        {TS_OBJ_SORT, kPlainSort, goodFiles()["so_00007.nls"], 1},
    };
    for (const auto& row : rows)
        for (std::uint32_t n = 1; n <= row.blocks + 1; ++n) {
            SCOPED_TRACE(std::to_string(row.type) + ' ' + std::to_string(n));
            putFile(objectFileName(row.type, row.id), row.file);
            start();
            Allocator::failAllocation(n);
            std::int32_t code = 0;
            const TSObject* const object = load(row.type, row.id, code);
            const bool failed = n <= row.blocks;
            EXPECT_EQ(Allocator::failurePending(), !failed);
            Allocator::failAllocation(0);
            EXPECT_EQ(code, failed ? TS_ERR_MEMORY : TS_ERR_NONE);
            if (failed && row.type == TS_OBJ_SORT) {
                EXPECT_EQ(object, nullptr);
            } else {
                ASSERT_NE(object, nullptr);
                EXPECT_EQ(isBuiltin(object), failed);
            }
            EXPECT_EQ(TSTerm(), 0);
            expectNothingLeft();
            putDirectory();
            expectWorking();
        }
}

TEST_F(Failing, EachAllocationOfACodePagesCopyGivesBuiltinDataAnd20)
{
    Bytes page = goodFiles()["cp_00932.nls"];
    page[kFileHeaderSize + 5] = 9; // maxCharBytes
    putFile("cp_00932.nls", page);
    for (std::uint32_t n = 1; n <= 6; ++n) { // the file's record and a block for each section
        start();
        Allocator::failAllocation(n);
        std::int32_t code = 0;
        const TSObject* const object = load(TS_OBJ_CODEPAGE, kDouble, code);
        EXPECT_EQ(code, n <= 5 ? TS_ERR_MEMORY : TS_ERR_NONE);
        EXPECT_EQ(isBuiltin(object), n <= 5);
        Allocator::failAllocation(0);
        EXPECT_EQ(TSTerm(), 0);
        expectNothingLeft();
    }
}

// An object that has no memory takes the built-in data, so that the locale still comes.
TEST_F(Failing, EachAllocationOfALocaleGives20OrALocaleWithABuiltinObject)
{
    for (const auto& [name, order] : kAllocations) {
        int refused = 0;
        int builtin = 0;
        bool pending = false;
        for (std::uint32_t n = 1; !pending; ++n) {
            SCOPED_TRACE(std::string(name) + ' ' + std::to_string(n));
            start();
            order(n);
            std::int32_t code = 4711;
            TSLocale* const locale = TSGetLocale(kFullName, 0, &code);
            pending = Allocator::failurePending();
            order(0);
            if (locale) {
                EXPECT_EQ(code, TS_ERR_NONE);
                const bool whole = !isBuiltin(locale->language) && !isBuiltin(locale->territory) &&
                                   !isBuiltin(locale->codePage);
                EXPECT_EQ(whole, pending);
                builtin += !whole;
                EXPECT_EQ(TSReleaseLocale(locale), 0);
            } else {
                EXPECT_EQ(code, TS_ERR_MEMORY);
                ++refused;
            }
            EXPECT_EQ(TSTerm(), 0);
            expectNothingLeft();
            expectWorking();
        }
        const bool allocates = std::string(name) != "allocateObject";
        EXPECT_EQ(builtin, allocates ? 3 : 0);
        EXPECT_EQ(refused, allocates ? 18 : 0); // the record, the sort, eight texts in two forms
    }
}

TEST_F(Failing, EachFreeOfTheStartIsNoFailureOfIt)
{
    for (const Slot slot : {Slot::kFree, Slot::kFreeObject}) { // the file's record, the raw table
        Allocator::failFree(slot, 1);
        EXPECT_EQ(start(), TS_ERR_NONE);
        EXPECT_FALSE(Allocator::failurePending());
        EXPECT_EQ(TSTerm(), 0);
        EXPECT_EQ(Allocator::liveBlocks(), 1);
        forget();
        expectWorking();
    }
}

// The default locale's 17 blocks, four files' records, the table, the manager, the area.
TEST_F(Failing, EachFreeOfTheStopLeavesOneBlockAndIs1ButForAFilesRecord)
{
    constexpr std::uint32_t kLocaleBlocks = 17;
    constexpr std::uint32_t kFiles = 4;
    bool pending = false;
    std::uint32_t n = 1;
    for (; !pending; ++n) {
        SCOPED_TRACE(n);
        start();
        ASSERT_EQ(TSSetLocale(kFullName, 0), 0);
        Allocator::failFree(n);
        const std::int32_t result = TSTerm();
        pending = Allocator::failurePending();
        Allocator::failFree(0);
        EXPECT_EQ(tsGlobals, nullptr);
        EXPECT_EQ(lockDepth(), 0);
        const bool filesRecord = n > kLocaleBlocks && n <= kLocaleBlocks + kFiles;
        EXPECT_EQ(result, pending || filesRecord ? 0 : 1);
        EXPECT_EQ(Allocator::liveBlocks(), pending ? 0 : 1);
        EXPECT_EQ(MemoryHost::openFiles() + MemoryHost::openViews(), 0);
        forget();
        expectWorking();
    }
    EXPECT_EQ(n - 1, kLocaleBlocks + kFiles + 3 + 1);
}

// The calls of a start: open, mapping, view, seek, read, and the three that give back.
TEST_F(Failing, EachHostCallOfTheStartGives10AndTheBuiltinTableOrIsOnlyAGiveBack)
{
    Trace::setMask(TRC1_FLOW);
    const std::int32_t expected[] = {TS_ERR_NO_CONTROL_FILE,
                                     TS_ERR_NO_CONTROL_FILE,
                                     TS_ERR_NO_CONTROL_FILE,
                                     TS_ERR_NO_CONTROL_FILE,
                                     TS_ERR_NO_CONTROL_FILE,
                                     TS_ERR_NONE,
                                     TS_ERR_NONE,
                                     TS_ERR_NONE,
                                     TS_ERR_NONE};
    constexpr std::uint32_t kAliases = 6; // the call that asks for the file of aliases
    for (std::uint32_t n = 1; n <= std::size(expected); ++n) {
        SCOPED_TRACE(n);
        forget();
        MemoryHost::failCall(n);
        EXPECT_EQ(start(), expected[n - 1]);
        EXPECT_GE(MemoryHost::calls(), n);
        EXPECT_EQ(hasBuiltinTable(), expected[n - 1] != TS_ERR_NONE);
        const bool givesBack = n > 5 && n != kAliases;
        EXPECT_EQ(failures("TSUnloadFile") + failures("TSCloseFile"), givesBack ? 1 : 0);
        MemoryHost::failCall(0);
        EXPECT_EQ(TSTerm(), 0);
        expectLeftByFailedGiveBacks();
        forget();
        expectWorking();
        expectNothingLeft();
    }
    forget();
    start();
    EXPECT_EQ(MemoryHost::calls(), std::size(expected));
}

TEST_F(Failing, EachHostCallOfALoadGivesItsToldCode)
{
    Trace::setMask(TRC1_FLOW);
    const struct {
        std::uint8_t type;
        std::uint16_t id;
        int sections;
    } rows[] = {{TS_OBJ_LANGUAGE, kNorthern, 1},
                {TS_OBJ_TERRITORY, kNorthland, 1},
                {TS_OBJ_CODEPAGE, kDouble, 4},
                {TS_OBJ_SORT, kPlainSort, 2}};
    for (const auto& row : rows) {
        // Open, mapping, the header's view, the sections' views, the header given back.
        std::vector<std::int32_t> expected = {TS_ERR_FAILED, TS_ERR_FAILED, TS_ERR_FILE_READ};
        expected.insert(expected.end(), static_cast<std::size_t>(row.sections), TS_ERR_FILE_READ);
        expected.push_back(TS_ERR_NONE);
        for (std::uint32_t n = 1; n <= expected.size(); ++n) {
            SCOPED_TRACE(std::to_string(row.type) + ' ' + std::to_string(n));
            forget();
            start();
            MemoryHost::failCall(n);
            std::int32_t code = 4711;
            const TSObject* const object = load(row.type, row.id, code);
            EXPECT_EQ(code, expected[n - 1]);
            const bool failed = code != TS_ERR_NONE;
            EXPECT_EQ(object == nullptr, failed && row.type == TS_OBJ_SORT);
            if (object) {
                EXPECT_EQ(isBuiltin(object), failed);
            }
            EXPECT_EQ(lockDepth(), 0);
            EXPECT_EQ(TSTerm(), 0);
            expectLeftByFailedGiveBacks();
            forget();
            expectWorking();
            expectNothingLeft();
        }
        forget();
        start();
        const std::uint32_t before = MemoryHost::calls();
        std::int32_t code = 0;
        load(row.type, row.id, code);
        EXPECT_EQ(MemoryHost::calls() - before, expected.size());
        TSTerm();
    }
}

TEST_F(Failing, EachHostCallOfAStrictLoadLeavesTheObjectListedForALaterOne)
{
    for (std::uint32_t n = 1; n <= 7; ++n) { // up to the last section's view
        forget();
        start(kDirectory, TS_STRICT_OBJECTS);
        MemoryHost::failCall(n);
        std::int32_t code = 0;
        EXPECT_EQ(load(TS_OBJ_CODEPAGE, kDouble, code), nullptr);
        EXPECT_NE(code, TS_ERR_NONE);
        const TSObject* const object = load(TS_OBJ_CODEPAGE, kDouble, code);
        EXPECT_EQ(code, TS_ERR_NONE);
        ASSERT_NE(object, nullptr);
        EXPECT_EQ(object->flags, 0);
        TSTerm();
        expectNothingLeft();
    }
}

TEST_F(Failing, EachGiveBackOfABadFileIsNoHarm)
{
    Trace::setMask(TRC1_FLOW);
    Bytes page = goodFiles()["cp_00932.nls"];
    put16(page, 8, 4);
    put32(page, 36, 0x01000000); // the fourth section lies outside
    for (std::uint32_t n = 1; n < 30; ++n) {
        SCOPED_TRACE(n);
        forget();
        putFile("cp_00932.nls", page);
        start();
        MemoryHost::failCall(n);
        std::int32_t code = 0;
        EXPECT_TRUE(isBuiltin(load(TS_OBJ_CODEPAGE, kDouble, code)));
        EXPECT_NE(code, TS_ERR_NONE);
        MemoryHost::failCall(0);
        EXPECT_EQ(TSTerm(), 0);
        expectLeftByFailedGiveBacks();
    }
    forget();
}

TEST_F(Failing, EachHostCallOfTheStopIsAToldCodeAndTheLibraryIsStopped)
{
    Trace::setMask(TRC1_FLOW);
    bool reached = false;
    for (std::uint32_t n = 1; !reached; ++n) {
        SCOPED_TRACE(n);
        forget();
        start();
        std::int32_t code = 0;
        load(TS_OBJ_CODEPAGE, kDouble, code);
        const std::uint32_t before = MemoryHost::calls();
        MemoryHost::failCall(n);
        const std::int32_t result = TSTerm();
        reached = MemoryHost::calls() - before < n;
        const std::int32_t expected = failures("TSCloseFile")    ? TS_ERR_FAILED
                                      : failures("TSUnloadFile") ? TS_ERR_FILE_UNMAP
                                                                 : TS_ERR_NONE;
        EXPECT_EQ(result, expected);
        EXPECT_EQ(expected == TS_ERR_NONE, reached);
        EXPECT_EQ(tsGlobals, nullptr);
        expectLeftByFailedGiveBacks();
        MemoryHost::failCall(0);
        forget();
        expectWorking();
    }
}

} // namespace
} // namespace vlx::test
