// The trace of the frame: the told messages with their texts and levels, entries and exits, and
// that trace changes no result.
#include <algorithm>
#include <cstring>

#include "frame/alias.hpp"
#include "frame/file.hpp"
#include "frame/store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

constexpr char kFullName[] = "Northern_Northland.Double@Plain";

// True if a message is exactly this text.
bool said(const std::string& text)
{
    const auto records = Trace::records();
    return std::ranges::any_of(records, [&](const TraceRecord& record) {
        return record.kind == TraceKind::kPrint && record.text == text;
    });
}

class TraceTest : public StoreTest {
  protected:
    TraceTest() { putDirectory(); }

    // Runs the work twice: the message comes with its level alone, and not with all others.
    template <class Work>
    void expectAtLevel(std::uint32_t level, const std::string& text, const Work& work)
    {
        for (const std::uint32_t mask : {level, ~level, 0u}) {
            stopAll();
            MemoryHost::reset();
            putDirectory();
            Trace::setMask(mask);
            Trace::clear();
            work();
            Trace::setMask(0);
            EXPECT_EQ(said(text), mask == level) << text << ' ' << mask;
        }
    }
    static std::string bytesOf(std::size_t size) { return std::to_string(size) + " bytes"; }
};

TEST_F(TraceTest, TheCreationOfTheAreaIsDetail)
{
    expectAtLevel(TRC1_DETAIL, "Creating global area", [] { start(); });
}

TEST_F(TraceTest, TheAreaWithoutMemoryIsAnError)
{
    expectAtLevel(TRC1_ERRORS, "Unable to allocate " + bytesOf(sizeof(TSGlobals)) + " for globals",
                  [] {
                      Allocator::failAllocation(1);
                      start();
                  });
}

TEST_F(TraceTest, TheInitCountIsSaidAsItIsAtTheFirstStartAndAfterTheAdditionLater)
{
    Trace::setMask(~0u);
    start();
    EXPECT_TRUE(said("Tessera init count = 0"));
    Trace::clear();
    start();
    EXPECT_TRUE(said("Tessera init count = 2"));
}

TEST_F(TraceTest, TheDirectoryAndTheOptionsAreInputs)
{
    expectAtLevel(TRC1_INPUTS, "directory = /locales.", [] { start(); });
    expectAtLevel(TRC1_INPUTS, "No directory specified", [] { start(nullptr); });
    expectAtLevel(TRC1_INPUTS, "options = 5", [] { start(kDirectory, 5); });
}

TEST_F(TraceTest, TheManagerWithoutMemoryIsAnError)
{
    expectAtLevel(TRC1_ERRORS,
                  "Unable to allocate " + bytesOf(sizeof(TSObjManager)) + " for object manager",
                  [] {
                      Allocator::failAllocation(2);
                      start();
                      stopAll();
                  });
}

TEST_F(TraceTest, AFileThatIsOpenedIsAnInput)
{
    expectAtLevel(TRC1_INPUTS, "Opening file /locales/control.nls", [] { start(); });
}

TEST_F(TraceTest, ADirectoryThatIsTooLongIsTwoErrors)
{
    const std::string directory(248, 'd');
    const auto work = [&] { start(directory.c_str()); };
    expectAtLevel(TRC1_ERRORS, "Unable to construct control file name in directory " + directory,
                  work);
    expectAtLevel(TRC1_ERRORS, "control size = 260", work);
    expectAtLevel(TRC1_ERRORS, "Unable to open control file", work);
}

TEST_F(TraceTest, AControlFileThatDoesNotOpenIsAnErrorWithItsCode)
{
    const auto work = [] { start("/nowhere"); };
    expectAtLevel(TRC1_ERRORS, "Unable to open /nowhere/control.nls, err = 1000", work);
    expectAtLevel(TRC1_ERRORS, "Unable to open control file", work);
}

TEST_F(TraceTest, ACorruptedHeaderIsAnError)
{
    expectAtLevel(TRC1_ERRORS, "Control file header is corrupted", [] {
        putFile("control.nls", Bytes(100, 1));
        start();
    });
}

TEST_F(TraceTest, TheEntrySizeIsSaid)
{
    Trace::setMask(~0u);
    start();
    EXPECT_TRUE(said("TSObjDisk size = 38"));
}

TEST_F(TraceTest, NoMemoryForTheRawTableAndForTheTableAreErrorsWithTheirSizes)
{
    const std::size_t count = goodListings().size();
    const std::size_t sizes[] = {count * 38, count * sizeof(TSObject)};
    for (const std::uint32_t n : {0u, 1u})
        expectAtLevel(TRC1_ERRORS, "Unable to allocate " + bytesOf(sizes[n]) + " for control data",
                      [n] {
                          Allocator::failAllocation(Slot::kAllocateObject, 3 + n);
                          start();
                      });
}

TEST_F(TraceTest, AFailedSeekIsAnErrorWithItsOffset)
{
    Trace::setMask(TRC1_ERRORS);
    MemoryHost::failCall(4); // open, mapping, view, seek
    start();
    EXPECT_TRUE(Trace::printed("Seek to offset 76 failed for file "));
}

TEST_F(TraceTest, AFailedReadIsAnErrorWithItsSizeAndCode)
{
    const std::string begin = "Read of " + bytesOf(goodListings().size() * 38) + " from file ";
    Trace::setMask(TRC1_ERRORS);
    MemoryHost::failCall(5); // open, mapping, view, seek, read
    start();
    EXPECT_TRUE(Trace::printed(begin));
    EXPECT_TRUE(Trace::printed(" failed with error 1003"));
}

TEST_F(TraceTest, AShortReadIsAnErrorWithCode0)
{
    Bytes control = controlFile(goodListings());
    control.pop_back();
    putFile("control.nls", control);
    Trace::setMask(TRC1_ERRORS);
    start();
    EXPECT_TRUE(Trace::printed(" failed with error 0"));
}

TEST_F(TraceTest, NoAliasListIsAnError)
{
    // The directory is one of the memory host, so the file is not there.
    expectAtLevel(TRC1_ERRORS, "Alias list build failed. No aliases supported", [] { start(); });
}

TEST_F(TraceTest, EachEntryIsDetail)
{
    int index = 0;
    for (const Listing& listing : goodListings())
        expectAtLevel(TRC1_DETAIL,
                      "Entry = " + std::to_string(index++) +
                          ", Object Type = " + std::to_string(listing.type) + ", Object Id = " +
                          std::to_string(listing.id) + ", Object Name = " + listing.name,
                      [] { start(); });
}

TEST_F(TraceTest, ALookupIsAnInput)
{
    expectAtLevel(TRC1_INPUTS, "Searching for type 2, name Double", [] {
        start();
        std::int32_t code = 0;
        TSGetObjFromName(&manager(), TS_OBJ_CODEPAGE, "Double", 6, 1, &code);
    });
    expectAtLevel(TRC1_INPUTS, "Searching for type 3, id 7", [] {
        start();
        std::int32_t code = 0;
        TSGetObjFromID(&manager(), TS_OBJ_SORT, 7, 1, &code);
    });
}

TEST_F(TraceTest, ALookupOfAPartSaysThatPartAlone)
{
    Trace::setMask(TRC1_INPUTS);
    start();
    TSReleaseLocale(goodLocale(kFullName));
    EXPECT_TRUE(said("Searching for type 0, name Northern"));
    EXPECT_TRUE(said("Searching for type 1, name Northland"));
    EXPECT_TRUE(said("Searching for type 3, name Plain"));
}

// A name need not be terminated, and its message has the usual format nevertheless.
TEST_F(TraceTest, ALookupReadsNoMoreThanTheNameAndCutsALongOne)
{
    Trace::setMask(TRC1_INPUTS);
    start();
    std::int32_t code = 0;
    const std::string name(4000, 'x');
    Trace::clear();
    TSGetObjFromName(&manager(), TS_OBJ_LANGUAGE, std::vector<char>(3, 'y').data(), 3, 1, &code);
    TSGetObjFromName(&manager(), TS_OBJ_LANGUAGE, name.data(), 4000, 1, &code);
    TSGetObjFromName(&manager(), TS_OBJ_LANGUAGE, name.data(), 0, 1, &code);
    const std::vector<TraceRecord> records = Trace::records();
    ASSERT_EQ(records.size(), 3U);
    for (const TraceRecord& record : records)
        EXPECT_EQ(record.format, "Searching for type %d, name %s");
    EXPECT_EQ(records[0].text, "Searching for type 0, name yyy");
    EXPECT_EQ(records[1].text, "Searching for type 0, name " + name.substr(0, 127));
    EXPECT_EQ(records[2].text, "Searching for type 0, name ");
}

TEST_F(TraceTest, ATemporaryFileAndItsRenameAreInputs)
{
    const auto work = [] {
        start();
        MemoryHost::put("/old.dat", "old");
        std::int32_t code = 0;
        TSCloseFile(TSOpenFile(0, "/old.dat", TS_FILE_WRITE, 0, &code), 0);
    };
    expectAtLevel(TRC1_INPUTS, "Using temp file /old.tmp", work);
    expectAtLevel(TRC1_INPUTS, "Renaming /old.tmp to /old.dat", work);
}

// Deliberate: the message of a failed close comes after a good rename too.
TEST_F(TraceTest, AfterARenameTheCloseIsSaidToHaveFailedWhetherItDidOrNot)
{
    const auto work = [](bool fail) {
        start();
        MemoryHost::put("/old.dat", "old");
        std::int32_t code = 0;
        TSFile* const file = TSOpenFile(0, "/old.dat", TS_FILE_WRITE, 0, &code);
        if (fail)
            MemoryHost::failCall(2);
        EXPECT_EQ(TSCloseFile(file, 0), fail ? 1 : 0);
    };
    expectAtLevel(TRC1_ERRORS, "Close failed, rc = 0", [&] { work(false); });
    for (const std::uint32_t mask : {std::uint32_t{TRC1_ERRORS}, ~0u}) {
        stopAll();
        Trace::setMask(mask);
        Trace::clear();
        work(true);
        EXPECT_TRUE(Trace::printed("Close failed, rc = 4711"));
    }
}

TEST_F(TraceTest, AnAliasLookupIsAnInput)
{
    expectAtLevel(TRC1_INPUTS, "Searching for latin1.", [] {
        start();
        EXPECT_EQ(TSGetCodepageFromAlias(&manager(), "latin1"), nullptr);
    });
}

TEST_F(TraceTest, EveryEntryHasOneExitAndUnitsNameThemselves)
{
    Trace::setMask(TRC1_FLOW);
    start();
    TSSetLocale(kFullName, 0);
    std::int32_t code = 0;
    TSGetLocale("Nobody", 0, &code);
    TSTerm();
    std::map<std::string, int> open;
    for (const TraceRecord& record : Trace::records()) {
        open[record.function] += record.kind == TraceKind::kEntry ? 1 : -1;
        EXPECT_EQ(record.component, "Tessera");
        EXPECT_LE(record.source.size(), 8u);
        EXPECT_GT(record.line, 0);
    }
    for (const char* function :
         {"TSInit", "TSTerm", "TSInitObjManager", "TSDestroyObjManager", "TSGetObjFromName",
          "TSLoadObject", "TSUnloadObject", "TSOpenFile", "TSCloseFile", "TSReadFile", "TSSeekFile",
          "TSLoadFile", "TSUnloadFile", "TSBuildAliasList", "TSDestroyAliasList"})
        EXPECT_EQ(open.count(function), 1u) << function;
    for (const auto& [function, balance] : open)
        EXPECT_EQ(balance, 0) << function;
}

TEST_F(TraceTest, AnExitHasTheResult)
{
    Trace::setMask(TRC1_FLOW);
    start("/nowhere");
    const auto records = Trace::records();
    const auto exit = std::ranges::find_if(records, [](const TraceRecord& record) {
        return record.function == "TSInit" && record.kind == TraceKind::kExitResult;
    });
    ASSERT_NE(exit, records.end());
    EXPECT_EQ(exit->result, TS_ERR_NO_CONTROL_FILE);
}

// What a run of everything gives: results, codes and a locale's values.
std::vector<std::int64_t> resultsOfARun()
{
    std::vector<std::int64_t> results;
    const auto note = [&results](std::int64_t result) { results.push_back(result); };
    for (const char* directory : {kDirectory, "/nowhere", "/bad"}) {
        note(start(directory));
        note(start(directory));
        note(manager().objectCount);
        for (const char* name : {"", "Northern", kFullName, "English@BINARY", "X", "English_X"}) {
            std::int32_t code = 4711;
            TSLocale* const locale = TSGetLocale(name, 0, &code);
            note(code);
            note(locale != nullptr);
            if (!locale)
                continue;
            note(locale->decimalPoint);
            note(static_cast<std::int64_t>(std::strlen(locale->timeFormat)));
            note(TSReleaseLocale(locale));
        }
        note(TSTerm());
        note(TSTerm());
    }
    return results;
}

TEST_F(TraceTest, NoMaskChangesAnyResult)
{
    MemoryHost::put("/bad/control.nls", Bytes(200, 0x5A));
    const std::vector<std::int64_t> silent = resultsOfARun();
    for (std::uint32_t bit = 1; bit <= 0x200; bit <<= 1) {
        Trace::setMask(bit);
        EXPECT_EQ(resultsOfARun(), silent) << bit;
    }
    Trace::setMask(~0u);
    EXPECT_EQ(resultsOfARun(), silent);
}

} // namespace
} // namespace vlx::test
