#include "frame/store.hpp"

#include "support/sort_builder.hpp"

namespace vlx::test {

PageBuilder doublePage()
{
    PageBuilder page(PageShape::kDoubleByte);
    page.id(kDouble).asciiHalf();
    for (TSChar32 trail = 0x40; trail < 0x50; ++trail) {
        const auto unicode = static_cast<TSChar16>(0x3000 + trail);
        page.map(0x8100 + trail, unicode).type(0x8100 + trail, 0x00080801);
        page.map(0x9F00 + trail, static_cast<TSChar16>(0x0400 + trail));
        page.mapValue(0x8100 + trail, 0x1000 + trail);
    }
    page.type(0x8141, 0x00080806, 1).mapValue('A', 0xFF21);
    page.pageKind(0x30, kPageWord).pageKind(0x04, kPageByteByte);
    return page;
}

PageBuilder shiftedPage()
{
    PageBuilder page(PageShape::kStateful2);
    page.id(kShifted).asciiHalf();
    for (TSChar32 trail = 0x41; trail < 0x49; ++trail)
        page.map(0x4200 + trail, static_cast<TSChar16>(0x3000 + trail))
            .type(0x4200 + trail, 0x00080801);
    return page;
}

PageBuilder asciiPage()
{
    PageBuilder page(PageShape::kSingleByte);
    page.id(kAscii).asciiHalf();
    return page;
}

std::vector<Listing> goodListings()
{
    return {
        {TS_OBJ_LANGUAGE, kEnglish, "English"},    {TS_OBJ_LANGUAGE, kNorthern, "Northern"},
        {TS_OBJ_TERRITORY, kHomeland, "Homeland"}, {TS_OBJ_TERRITORY, kNorthland, "Northland"},
        {TS_OBJ_CODEPAGE, kAscii, "Ascii"},        {TS_OBJ_CODEPAGE, kDouble, "Double"},
        {TS_OBJ_CODEPAGE, kShifted, "Shifted"},    {TS_OBJ_SORT, kPlainSort, "Plain"},
    };
}

std::map<std::string, Bytes> goodFiles()
{
    LanguageContent english = LanguageContent::sample();
    english.codePage = kAscii;
    english.texts[1] = u"English";
    LanguageContent northern = LanguageContent::sample();
    northern.territory = kNorthland;
    northern.codePage = kDouble;
    northern.sort = kPlainSort;
    TerritoryContent homeland = TerritoryContent::sample();
    homeland.texts[TerritoryContent::kName] = u"Homeland";
    ObjectFile sort;
    sort.sections = {SortBuilder().letter('a', {0x0101}).bytes(), Bytes(32, 0x22)};

    const auto built = [](PageBuilder page) {
        page.build();
        return codePageFile(page);
    };
    return {
        {"control.nls", controlFile(goodListings())},
        {objectFileName(TS_OBJ_LANGUAGE, kEnglish), english.file()},
        {objectFileName(TS_OBJ_LANGUAGE, kNorthern), northern.file()},
        {objectFileName(TS_OBJ_TERRITORY, kHomeland), homeland.file()},
        {objectFileName(TS_OBJ_TERRITORY, kNorthland), TerritoryContent::sample().file()},
        {objectFileName(TS_OBJ_CODEPAGE, kAscii), built(asciiPage())},
        {objectFileName(TS_OBJ_CODEPAGE, kDouble), built(doublePage())},
        {objectFileName(TS_OBJ_CODEPAGE, kShifted), built(shiftedPage())},
        {objectFileName(TS_OBJ_SORT, kPlainSort), sort.bytes()},
    };
}

void putDirectory(const std::string& directory)
{
    for (const auto& [name, bytes] : goodFiles())
        MemoryHost::put(directory + "/" + name, bytes);
}

void putFile(const std::string& name, const Bytes& bytes)
{
    MemoryHost::put(std::string(kDirectory) + "/" + name, bytes);
}

void eraseFile(const std::string& name)
{
    MemoryHost::erase(std::string(kDirectory) + "/" + name);
}

std::int32_t start(const char* directory, std::uint32_t options)
{
    return TSInit(directory, Allocator::allocate, Allocator::free, Allocator::allocateObject,
                  Allocator::freeObject, 0, options);
}

void stopAll()
{
    // A start that failed half way leaves its area, which only a whole start and stop takes away.
    if (tsGlobals && tsGlobals->initCount == 0)
        start(nullptr);
    while (tsGlobals)
        TSTerm();
}

TSObjManager& manager()
{
    return *tsGlobals->objectManager;
}

TSObject* listed(std::uint8_t type, std::uint16_t id)
{
    std::int32_t code = TS_ERR_NONE;
    TSObject* const object = TSGetObjFromID(&manager(), type, id, 1, &code);
    EXPECT_NE(object, nullptr);
    EXPECT_EQ(code, TS_ERR_NONE);
    return object;
}

TSObject* load(std::uint8_t type, std::uint16_t id, std::int32_t& code)
{
    code = 4711;
    return TSLoadObject(&manager(), listed(type, id), &code);
}

TSLocale* goodLocale(const std::string& name)
{
    std::int32_t code = 4711;
    TSLocale* const locale = TSGetLocale(name.c_str(), 0, &code);
    EXPECT_NE(locale, nullptr) << name;
    EXPECT_EQ(code, TS_ERR_NONE) << name;
    return locale;
}

bool isBuiltin(const TSObject* object)
{
    return (object->flags & TS_OBJ_BUILTIN) != 0;
}

bool hasBuiltinTable()
{
    const TSObjManager& table = manager();
    return table.objectCount == 3 && table.objects && isBuiltin(&table.objects[0]) &&
           std::string(table.objects[2].name) == "US-ASCII";
}

StoreTest::StoreTest()
{
    MemoryHost::reset();
    Allocator::reset();
    clearConfig();
    Trace::setMask(0);
    Trace::clear();
}

StoreTest::~StoreTest()
{
    MemoryHost::failCall(0);
    Allocator::failAllocation(0);
    Allocator::failFree(0);
    for (const Slot slot : {Slot::kAllocate, Slot::kFree, Slot::kAllocateObject, Slot::kFreeObject})
        Allocator::failAllocation(slot, 0);
    stopAll();
    Trace::setMask(0);
    expectNothingLeft();
    EXPECT_EQ(lockDepth(), 0);
    EXPECT_EQ(tsDefaultLocale, nullptr);
}

void StoreTest::expectNothingLeft() const
{
    EXPECT_EQ(Allocator::liveBlocks(), left_.blocks);
    EXPECT_EQ(MemoryHost::liveBlocks(), 0);
    EXPECT_EQ(MemoryHost::openFiles(), left_.files);
    EXPECT_EQ(MemoryHost::openMappings(), left_.mappings);
    EXPECT_EQ(MemoryHost::openViews(), left_.views);
    EXPECT_TRUE(Allocator::sound()) << testing::PrintToString(Allocator::complaints());
}

} // namespace vlx::test
