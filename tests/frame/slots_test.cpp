// The allocator slots: which pair allocates a block and which frees it, and what the functions get
// as their context.
#include <algorithm>
#include <cstring>
#include <functional>
#include <iterator>
#include <map>
#include <set>

#include "frame/file.hpp"
#include "frame/store.hpp"
#include "host/host.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

// Allocators that write down which slot a block came from and which one took it back.
struct Journal {
    struct Passage {
        std::uint32_t size;
        Slot from;
        Slot to;
    };

    std::map<void*, std::pair<Slot, std::uint32_t>> out;
    std::vector<Passage> passages;
    std::set<TSContext> contexts;
    TSContext firstContext = 0;
    int failing = 0; // the nth allocation from now fails

    static Journal& only()
    {
        static Journal journal;
        return journal;
    }
    static void note(TSContext context)
    {
        if (only().contexts.empty())
            only().firstContext = context;
        only().contexts.insert(context);
    }
    template <Slot slot>
    static void* take(TSContext context, std::uint32_t bytes)
    {
        note(context);
        if (only().failing > 0 && --only().failing == 0)
            return nullptr;
        void* const memory = ::operator new(bytes);
        only().out[memory] = {slot, bytes};
        return memory;
    }
    template <Slot slot>
    static std::int32_t give(TSContext context, void* memory)
    {
        note(context);
        const auto found = only().out.find(memory);
        if (found == only().out.end())
            return 0;
        only().passages.push_back({found->second.second, found->second.first, slot});
        only().out.erase(found);
        ::operator delete(memory);
        return 1;
    }
    // How many blocks of a size went from a slot to another.
    static std::ptrdiff_t count(std::uint32_t size, Slot from, Slot to)
    {
        return std::ranges::count_if(only().passages, [&](const Passage& passage) {
            return passage.size == size && passage.from == from && passage.to == to;
        });
    }
    static std::ptrdiff_t count(std::uint32_t size)
    {
        return std::ranges::count_if(only().passages,
                                     [&](const Passage& passage) { return passage.size == size; });
    }
};

class Slots : public StoreTest {
  protected:
    Slots()
    {
        putDirectory();
        Journal::only() = Journal();
    }
    ~Slots() override
    {
        stopAll();
        EXPECT_TRUE(Journal::only().out.empty());
    }

    static std::int32_t startJournal(const char* directory = kDirectory, TSContext context = 0,
                                     std::uint32_t options = 0)
    {
        return TSInit(directory, Journal::take<Slot::kAllocate>, Journal::give<Slot::kFree>,
                      Journal::take<Slot::kAllocateObject>, Journal::give<Slot::kFreeObject>,
                      context, options);
    }
    // A block of the size went this way and no other.
    static void expectOnly(std::uint32_t size, Slot from, Slot to)
    {
        EXPECT_GT(Journal::count(size), 0);
        EXPECT_EQ(Journal::count(size, from, to), Journal::count(size));
    }
};

constexpr std::uint32_t tableSize(std::size_t entries)
{
    return static_cast<std::uint32_t>(entries * sizeof(TSObject));
}

// Deliberate: the area comes from allocateObject and goes back through free.
TEST_F(Slots, TheGlobalAreaComesFromAllocateObjectAndGoesToFree)
{
    startJournal();
    TSTerm();
    expectOnly(sizeof(TSGlobals), Slot::kAllocateObject, Slot::kFree);
}

// Deliberate: so do the manager and its table.
TEST_F(Slots, TheManagerAndTheTableComeFromAllocateObjectAndGoToFree)
{
    startJournal();
    TSTerm();
    expectOnly(sizeof(TSObjManager), Slot::kAllocateObject, Slot::kFree);
    expectOnly(tableSize(goodListings().size()), Slot::kAllocateObject, Slot::kFree);
}

TEST_F(Slots, TheBuiltinTableComesFromAllocateObjectAndGoesToFree)
{
    startJournal("/nowhere");
    TSTerm();
    expectOnly(tableSize(3), Slot::kAllocateObject, Slot::kFree);
}

TEST_F(Slots, TheRawControlDataStayInThePairOfObjects)
{
    startJournal();
    expectOnly(static_cast<std::uint32_t>(goodListings().size() * kListingSize),
               Slot::kAllocateObject, Slot::kFreeObject);
}

TEST_F(Slots, TheTableOfAFailedReadGoesToFreeObject)
{
    Bytes control = controlFile(goodListings());
    control.pop_back();
    putFile("control.nls", control);
    startJournal();
    expectOnly(tableSize(goodListings().size()), Slot::kAllocateObject, Slot::kFreeObject);
    expectOnly(static_cast<std::uint32_t>(goodListings().size() * kListingSize),
               Slot::kAllocateObject, Slot::kFreeObject);
}

TEST_F(Slots, FileRecordsStayInTheOtherPair)
{
    startJournal();
    TSReleaseLocale(goodLocale("Northern_Northland.Double@Plain"));
    TSTerm();
    EXPECT_EQ(Journal::count(sizeof(TSFile)), 5);
    expectOnly(sizeof(TSFile), Slot::kAllocate, Slot::kFree);
}

TEST_F(Slots, LocaleRecordsAndTheirTextsStayInTheOtherPair)
{
    startJournal();
    TSLocale* const locale = goodLocale("Northern_Northland.Double@Plain");
    Journal::only().passages.clear();
    EXPECT_EQ(TSReleaseLocale(locale), 0);
    EXPECT_EQ(Journal::only().passages.size(), 17u); // the record, eight texts in two forms
    for (const Journal::Passage& passage : Journal::only().passages) {
        EXPECT_EQ(passage.from, Slot::kAllocate);
        EXPECT_EQ(passage.to, Slot::kFree);
    }
}

TEST_F(Slots, TheCopyOfAWideNameStaysInTheOtherPair)
{
    startJournal();
    std::int32_t code = 0;
    const std::vector<TSChar32> name(29, 'n');
    TSGetObjFromNameW(&manager(), TS_OBJ_LANGUAGE, name.data(), 29, 1, &code);
    expectOnly(29, Slot::kAllocate, Slot::kFree);
}

// Deliberate: the sections of an older page come from allocate and go to freeObject.
TEST_F(Slots, RebuiltSectionsComeFromAllocateAndGoToFreeObject)
{
    const OldCodePage old = OldCodePage::doubleByte();
    putFile(objectFileName(TS_OBJ_CODEPAGE, kDouble), old.file());
    startJournal();
    std::int32_t code = 0;
    load(TS_OBJ_CODEPAGE, kDouble, code);
    EXPECT_EQ(code, TS_ERR_NONE);
    TSTerm();
    expectOnly(static_cast<std::uint32_t>(8752 + old.extension.size()), Slot::kAllocate,
               Slot::kFreeObject);
    expectOnly(24 + 8, Slot::kAllocate, Slot::kFreeObject);
}

TEST_F(Slots, CopiesOfBadSectionsComeFromAllocateAndGoToFreeObject)
{
    Bytes file = goodFiles()[objectFileName(TS_OBJ_TERRITORY, kNorthland)];
    put16(file, kFileHeaderSize + 22, 0xFFF0);
    putFile(objectFileName(TS_OBJ_TERRITORY, kNorthland), file);
    startJournal();
    std::int32_t code = 0;
    const TSObject* const object = load(TS_OBJ_TERRITORY, kNorthland, code);
    EXPECT_EQ(object->flags, TS_OBJ_SECTION1_HEAP);
    TSTerm();
    expectOnly(65535, Slot::kAllocate, Slot::kFreeObject);
}

TEST_F(Slots, CopiesThatAreNotAllMadeGoToFreeObjectToo)
{
    Bytes file = goodFiles()[objectFileName(TS_OBJ_CODEPAGE, kDouble)];
    file[kFileHeaderSize + 5] = 9; // maxCharBytes
    putFile(objectFileName(TS_OBJ_CODEPAGE, kDouble), file);
    startJournal();
    Journal::only().passages.clear();
    Journal::only().failing = 4; // the file's record, two sections
    std::int32_t code = 0;
    EXPECT_TRUE(isBuiltin(load(TS_OBJ_CODEPAGE, kDouble, code)));
    EXPECT_EQ(code, TS_ERR_MEMORY);
    ASSERT_EQ(Journal::only().passages.size(), 3u);
    for (const Journal::Passage& passage : Journal::only().passages) {
        const bool record = passage.size == sizeof(TSFile);
        EXPECT_EQ(passage.from, Slot::kAllocate);
        EXPECT_EQ(passage.to, record ? Slot::kFree : Slot::kFreeObject);
    }
}

TEST_F(Slots, TheContextIsTheFirstArgumentOfEveryCallFromTheFirstOn)
{
    const TSContext context = ~TSContext{0} - 4711;
    putFile(objectFileName(TS_OBJ_CODEPAGE, kDouble), OldCodePage::doubleByte().file());
    EXPECT_EQ(startJournal(kDirectory, context), TS_ERR_NONE);
    EXPECT_EQ(Journal::only().firstContext, context);
    TSReleaseLocale(goodLocale("Northern_Northland.Double@Plain"));
    TSSetLocale("English", 0);
    const TSChar32 name[] = {'x', 0};
    std::int32_t code = 0;
    TSGetObjFromNameW(&manager(), TS_OBJ_LANGUAGE, name, 1, 0, &code);
    EXPECT_EQ(tsGlobals->allocContext, context);
    TSTerm();
    EXPECT_EQ(Journal::only().contexts, std::set<TSContext>{context});
}

TEST_F(Slots, TheContextIs0UnlessItIsGiven)
{
    startJournal();
    TSReleaseLocale(goodLocale("Northern_Northland.Double@Plain"));
    TSTerm();
    EXPECT_EQ(Journal::only().contexts, std::set<TSContext>{0});
}

TEST_F(Slots, AHalfStartKeepsItsContextUntilAnotherOneIsGiven)
{
    const auto halfStart = [](TSContext context) {
        putFile("control.nls", Bytes(76, 0));
        Allocator::failAllocation(Slot::kAllocateObject, tsGlobals ? 1 : 2);
        EXPECT_EQ(TSInit(kDirectory, Allocator::allocate, Allocator::free,
                         Allocator::allocateObject, Allocator::freeObject, context, 0),
                  TS_ERR_NO_OBJECTS);
        return tsGlobals->allocContext;
    };
    EXPECT_EQ(halfStart(5), 5u);
    EXPECT_EQ(halfStart(0), 5u);
    EXPECT_EQ(halfStart(6), 6u);
    stopAll();
    EXPECT_EQ(tsGlobals, nullptr);
}

// One row for each slot that alone is replaced.
class OneSlot : public Slots, public testing::WithParamInterface<Slot> {};

// Blocks of the other half of a pair come from the host: a block that the host does not know is
// given back by the journal's function and the other way round, so both keep to one heap here.
struct SharedHeap {
    static inline std::map<Slot, int> calls;

    template <Slot slot>
    static void* take(TSContext context, std::uint32_t bytes)
    {
        ++calls[slot];
        return host::allocate(context, bytes);
    }
    template <Slot slot>
    static std::int32_t give(TSContext context, void* memory)
    {
        ++calls[slot];
        return host::free(context, memory);
    }
};

TEST_P(OneSlot, IsUsedAndTheOthersKeepTheirDefaults)
{
    const Slot slot = GetParam();
    SharedHeap::calls.clear();
    const auto pick = [slot](Slot one, auto function) { return slot == one ? function : nullptr; };
    EXPECT_EQ(TSInit(kDirectory, pick(Slot::kAllocate, &SharedHeap::take<Slot::kAllocate>),
                     pick(Slot::kFree, &SharedHeap::give<Slot::kFree>),
                     pick(Slot::kAllocateObject, &SharedHeap::take<Slot::kAllocateObject>),
                     pick(Slot::kFreeObject, &SharedHeap::give<Slot::kFreeObject>), 0, 0),
              TS_ERR_NONE);
    EXPECT_EQ(tsSlots.allocate == &host::allocate, slot != Slot::kAllocate);
    EXPECT_EQ(tsSlots.free == &host::free, slot != Slot::kFree);
    EXPECT_EQ(tsSlots.allocateObject == &host::allocate, slot != Slot::kAllocateObject);
    EXPECT_EQ(tsSlots.freeObject == &host::free, slot != Slot::kFreeObject);
    TSReleaseLocale(goodLocale("Northern_Northland.Double@Plain"));
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_GT(SharedHeap::calls[slot], 0);
    EXPECT_EQ(SharedHeap::calls.size(), 1u);
    EXPECT_EQ(MemoryHost::liveBlocks(), 0);
}

std::string nameOf(const testing::TestParamInfo<Slot>& row)
{
    constexpr const char* names[] = {"Allocate", "Free", "AllocateObject", "FreeObject"};
    return names[static_cast<int>(row.param)];
}

INSTANTIATE_TEST_SUITE_P(Replaced, OneSlot,
                         testing::Values(Slot::kAllocate, Slot::kFree, Slot::kAllocateObject,
                                         Slot::kFreeObject),
                         nameOf);

TEST_F(Slots, AllDefaultsTogetherAreTheHosts)
{
    EXPECT_EQ(TSInit(kDirectory, nullptr, nullptr, nullptr, nullptr, 0, 0), TS_ERR_NONE);
    TSReleaseLocale(goodLocale("Northern_Northland.Double@Plain"));
    EXPECT_GT(MemoryHost::liveBlocks(), 0);
    EXPECT_EQ(TSTerm(), 0);
    EXPECT_EQ(MemoryHost::liveBlocks(), 0);
}

} // namespace
} // namespace vlx::test
