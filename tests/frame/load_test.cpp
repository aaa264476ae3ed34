// The load of an object: its file, its sections in place, and what stands in for a bad one.
#include <cstring>

#include "frame/file.hpp"
#include "frame/store.hpp"
#include "host/host.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

constexpr std::uint8_t kTypes[] = {TS_OBJ_LANGUAGE, TS_OBJ_TERRITORY, TS_OBJ_CODEPAGE, TS_OBJ_SORT};
constexpr std::uint16_t kIds[] = {kNorthern, kNorthland, kDouble, kPlainSort};

class Load : public StoreTest {
  protected:
    Load()
    {
        putDirectory();
        start();
    }

    static std::string fileOf(std::uint8_t type) { return objectFileName(type, kIds[type]); }
    static const Bytes& goodFile(std::uint8_t type)
    {
        static const std::map<std::string, Bytes> files = goodFiles();
        return files.at(fileOf(type));
    }

    // Loads the object of a type from the bytes and gives the code; a failed load has to leave what
    // is told for the type.
    std::int32_t loadFrom(std::uint8_t type, const Bytes& bytes)
    {
        restart();
        putFile(fileOf(type), bytes);
        std::int32_t code = 0;
        object_ = load(type, kIds[type], code);
        if (code != TS_ERR_NONE)
            expectFailed(type, object_);
        return code;
    }
    void restart(std::uint32_t options = 0)
    {
        stopAll();
        putDirectory();
        ASSERT_EQ(start(kDirectory, options), TS_ERR_NONE);
    }
    static void expectFailed(std::uint8_t type, const TSObject* object)
    {
        if (type == TS_OBJ_SORT) {
            EXPECT_EQ(object, nullptr);
            EXPECT_EQ(listed(type, kIds[type])->sections[0], nullptr);
        } else {
            ASSERT_NE(object, nullptr);
            EXPECT_EQ(object->flags, TS_OBJ_BUILTIN);
            EXPECT_EQ(object->id, kIds[type]);
            EXPECT_NE(object->sections[0], nullptr);
        }
        EXPECT_EQ(listed(type, kIds[type])->file, nullptr);
        EXPECT_EQ(MemoryHost::openFiles(), 0);
        EXPECT_EQ(MemoryHost::openMappings(), 0);
        EXPECT_EQ(MemoryHost::openViews(), 0);
        EXPECT_EQ(lockDepth(), 0);
    }

    TSObject* object_ = nullptr;
};

TEST_F(Load, EveryTypeIsLoadedWithItsFileOpenAndNoFlags)
{
    for (const std::uint8_t type : kTypes) {
        EXPECT_EQ(loadFrom(type, goodFile(type)), TS_ERR_NONE);
        ASSERT_NE(object_, nullptr);
        EXPECT_NE(object_->sections[0], nullptr);
        EXPECT_NE(object_->file, nullptr);
        EXPECT_EQ(object_->flags, 0);
        EXPECT_EQ(MemoryHost::openFiles(), 1);
        EXPECT_EQ(MemoryHost::openMappings(), 1);
        EXPECT_EQ(lockDepth(), 0);
    }
}

TEST_F(Load, SectionsAreUsedInPlaceWithoutACopyOrAnAllocation)
{
    for (const std::uint8_t type : kTypes) {
        restart();
        const int blocks = Allocator::liveBlocks();
        std::int32_t code = 0;
        const TSObject* const object = load(type, kIds[type], code);
        // The file's record is the only block.
        EXPECT_EQ(Allocator::liveBlocks(), blocks + 1);
        const Bytes& file = goodFile(type);
        const int count = get16(file.data(), 8);
        EXPECT_EQ(MemoryHost::openViews(), count);
        for (int i = 0; i < count; ++i) {
            const auto at = static_cast<std::size_t>(i);
            const std::uint32_t size = get16(file.data(), i == 0 ? 10 : 8 + 8 * at);
            const std::uint32_t offset = get32(file.data(), 12 + 8 * at);
            const std::uint8_t* const section = object->sections[i];
            ASSERT_NE(section, nullptr);
            // It stands as far behind a view's start as in the file, and holds the file's bytes.
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(section) % host::granularity(),
                      offset % host::granularity());
            EXPECT_EQ(std::memcmp(section, file.data() + offset, size), 0);
        }
    }
}

TEST_F(Load, TheSectionCountSaysHowManyAreMapped)
{
    ObjectFile file;
    file.sections = {Bytes(8, 1), Bytes(8, 2), Bytes(8, 3), Bytes(8, 4)};
    for (int count = 0; count <= 6; ++count) {
        file.sectionCount = count;
        EXPECT_EQ(loadFrom(TS_OBJ_SORT, file.bytes()), TS_ERR_NONE);
        for (int i = 0; i < 4; ++i) {
            const bool mapped = i == 0 || i < count;
            ASSERT_EQ(object_->sections[i] != nullptr, mapped) << count << ' ' << i;
            if (mapped) {
                EXPECT_EQ(*object_->sections[i], i + 1);
            }
        }
    }
}

TEST_F(Load, ASectionOfSize0IsANullPointerAndNoError)
{
    ObjectFile file;
    file.sections = {Bytes(8, 1), Bytes(), Bytes(8, 3)};
    EXPECT_EQ(loadFrom(TS_OBJ_SORT, file.bytes()), TS_ERR_NONE);
    EXPECT_EQ(object_->sections[1], nullptr);
    ASSERT_NE(object_->sections[2], nullptr);
    EXPECT_EQ(*object_->sections[2], 3);
}

TEST_F(Load, ASortWhoseSection1IsEmptyIsLoadedOnceAndGivenBack)
{
    ObjectFile file;
    file.sections = {Bytes()};
    EXPECT_EQ(loadFrom(TS_OBJ_SORT, file.bytes()), TS_ERR_NONE);
    ASSERT_NE(object_, nullptr);
    EXPECT_EQ(object_->sections[0], nullptr);
    EXPECT_EQ(MemoryHost::openFiles(), 1);
    std::int32_t code = 0;
    EXPECT_EQ(TSGetObjFromID(&manager(), TS_OBJ_SORT, kPlainSort, 0, &code), object_);
    EXPECT_EQ(code, TS_ERR_NONE);
    EXPECT_EQ(MemoryHost::openFiles(), 1);
}

TEST_F(Load, SectionsMayStandAtAnyOffset)
{
    for (const std::size_t gap : {1u, 3u, 65535u, 65536u, 70001u}) {
        ObjectFile file;
        file.gap = gap;
        file.sections = {LanguageContent::sample().bytes()};
        EXPECT_EQ(loadFrom(TS_OBJ_LANGUAGE, file.bytes()), TS_ERR_NONE);
        EXPECT_EQ(object_->flags, 0);
        EXPECT_EQ(
            std::memcmp(object_->sections[0], file.sections[0].data(), file.sections[0].size()), 0);
    }
}

TEST_F(Load, ASectionOf65535BytesIsMappedWhole)
{
    ObjectFile file;
    file.sections = {Bytes(65535, 7)};
    EXPECT_EQ(loadFrom(TS_OBJ_SORT, file.bytes()), TS_ERR_NONE);
    EXPECT_EQ(object_->sections[0][65534], 7);
}

TEST_F(Load, AMissingFileIs1000)
{
    for (const std::uint8_t type : kTypes) {
        restart();
        eraseFile(fileOf(type));
        std::int32_t code = 0;
        TSObject* const object = load(type, kIds[type], code);
        EXPECT_EQ(code, TS_ERR_FILE_NOT_FOUND);
        expectFailed(type, object);
    }
}

TEST_F(Load, ADeniedFileIs1001)
{
    for (const std::uint8_t type : kTypes) {
        restart();
        MemoryHost::deny(std::string(kDirectory) + "/" + fileOf(type));
        std::int32_t code = 0;
        TSObject* const object = load(type, kIds[type], code);
        EXPECT_EQ(code, TS_ERR_FILE_ACCESS);
        expectFailed(type, object);
    }
}

TEST_F(Load, AWrongMagicIs2000)
{
    for (const std::uint8_t type : kTypes)
        for (std::size_t at = 0; at < 4; ++at) {
            Bytes file = goodFile(type);
            file[at] ^= 0x80;
            EXPECT_EQ(loadFrom(type, file), TS_ERR_HEADER);
        }
}

TEST_F(Load, AnEmptyFileIs1)
{
    for (const std::uint8_t type : kTypes)
        EXPECT_EQ(loadFrom(type, {}), TS_ERR_FAILED);
}

TEST_F(Load, AFileShorterThanItsHeaderIs1003)
{
    for (const std::uint8_t type : kTypes)
        for (const std::size_t size : {1u, 38u, 75u}) {
            Bytes file = goodFile(type);
            file.resize(size);
            EXPECT_EQ(loadFrom(type, file), TS_ERR_FILE_READ);
        }
}

TEST_F(Load, AFileShorterThanASectionIs1003)
{
    for (const std::uint8_t type : kTypes) {
        Bytes file = goodFile(type);
        file.pop_back();
        EXPECT_EQ(loadFrom(type, file), TS_ERR_FILE_READ);
    }
}

TEST_F(Load, ASectionOffsetBehindTheFileIs1003)
{
    for (const std::uint32_t offset : {0x00010000u, 0x7FFFFFFFu, 0xFFFF0000u, 0xFFFFFFFFu})
        for (const std::uint8_t type : kTypes) {
            Bytes file = goodFile(type);
            put32(file, 12, offset);
            EXPECT_EQ(loadFrom(type, file), TS_ERR_FILE_READ);
        }
}

TEST_F(Load, ASectionMayOverlapTheHeader)
{
    Bytes file = goodFile(TS_OBJ_SORT);
    put32(file, 12, 0);
    EXPECT_EQ(loadFrom(TS_OBJ_SORT, file), TS_ERR_NONE);
    EXPECT_EQ(get32(object_->sections[0], 0), kFileMagic);
}

TEST_F(Load, OnlyVersion1OfACodePageIsRebuiltAndAllOtherVersionsStandAsTheyAre)
{
    for (const std::uint8_t type : kTypes)
        for (std::uint32_t version = 0; version < 16; ++version) {
            if (type == TS_OBJ_CODEPAGE && version == 1)
                continue;
            Bytes file = goodFile(type);
            put32(file, 4, version << 28 | 0x0FFFFFFF);
            EXPECT_EQ(loadFrom(type, file), TS_ERR_NONE);
            EXPECT_EQ(object_->flags, 0);
        }
}

TEST_F(Load, AnObjectIsLoadedOnce)
{
    std::int32_t code = 0;
    const TSObject* const first = load(TS_OBJ_LANGUAGE, kNorthern, code);
    const std::uint32_t calls = MemoryHost::calls();
    EXPECT_EQ(load(TS_OBJ_LANGUAGE, kNorthern, code), first);
    EXPECT_EQ(code, TS_ERR_NONE);
    EXPECT_EQ(MemoryHost::calls(), calls);
}

TEST_F(Load, AnObjectWithBuiltinDataIsNotTriedAgainAndItsCodeIs0)
{
    eraseFile(fileOf(TS_OBJ_LANGUAGE));
    std::int32_t code = 0;
    load(TS_OBJ_LANGUAGE, kNorthern, code);
    putDirectory();
    const TSObject* const object = load(TS_OBJ_LANGUAGE, kNorthern, code);
    EXPECT_EQ(code, TS_ERR_NONE);
    EXPECT_TRUE(isBuiltin(object));
}

TEST_F(Load, ASortThatFailedIsTriedAgain)
{
    eraseFile(fileOf(TS_OBJ_SORT));
    std::int32_t code = 0;
    EXPECT_EQ(load(TS_OBJ_SORT, kPlainSort, code), nullptr);
    putDirectory();
    EXPECT_NE(load(TS_OBJ_SORT, kPlainSort, code), nullptr);
    EXPECT_EQ(code, TS_ERR_NONE);
}

TEST_F(Load, AStrictManagerGivesNothingForAFailedLoadAndTriesAgain)
{
    for (const std::uint8_t type : kTypes) {
        restart(TS_STRICT_OBJECTS);
        eraseFile(fileOf(type));
        std::int32_t code = 0;
        EXPECT_EQ(load(type, kIds[type], code), nullptr);
        EXPECT_EQ(code, TS_ERR_FILE_NOT_FOUND);
        EXPECT_EQ(listed(type, kIds[type])->flags, 0);
        putDirectory();
        EXPECT_NE(load(type, kIds[type], code), nullptr);
        EXPECT_EQ(code, TS_ERR_NONE);
    }
}

TEST_F(Load, ALocaleOfADeletedLanguageHasBuiltinTextsAndTheListedName)
{
    eraseFile("la_00002.nls");
    TSLocale* const locale = goodLocale("Northern_Northland.Double@Plain");
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "Northern");
    EXPECT_EQ(locale->language->id, kNorthern);
    const std::uint8_t* const content = locale->language->sections[0];
    EXPECT_EQ(get16(content, get16(content, 14)), u'S'); // Sunday
    EXPECT_FALSE(isBuiltin(locale->territory));
    EXPECT_EQ(TSReleaseLocale(locale), 0);
}

TEST_F(Load, ABadFileIsNoFailureOfALocaleButForASort)
{
    for (const std::uint8_t type : kTypes)
        for (const Bytes& bytes : {Bytes(), Bytes(10, 0), Bytes(100, 0)}) {
            restart();
            putFile(fileOf(type), bytes);
            std::int32_t code = 4711;
            TSLocale* const locale = TSGetLocale("Northern_Northland.Double@Plain", 0, &code);
            EXPECT_EQ(locale == nullptr, type == TS_OBJ_SORT);
            EXPECT_EQ(code, type == TS_OBJ_SORT ? TS_ERR_NO_OBJECTS : TS_ERR_NONE);
            if (locale)
                TSReleaseLocale(locale);
        }
}

TEST_F(Load, AStrictLocaleOfABadFileFailsWith11)
{
    for (const std::uint8_t type : kTypes) {
        restart(TS_STRICT_OBJECTS);
        eraseFile(fileOf(type));
        std::int32_t code = 4711;
        EXPECT_EQ(TSGetLocale("Northern_Northland.Double@Plain", 0, &code), nullptr);
        EXPECT_EQ(code, TS_ERR_NO_OBJECTS);
    }
}

TEST_F(Load, ABuiltinCodePageUnderAListedNameHasTheHeaderAsSection3)
{
    eraseFile(fileOf(TS_OBJ_CODEPAGE));
    std::int32_t code = 0;
    const TSObject* const object = load(TS_OBJ_CODEPAGE, kDouble, code);
    ASSERT_NE(object, nullptr);
    EXPECT_STREQ(object->name, "Double");
    EXPECT_EQ(object->sections[2], object->sections[0]);
    EXPECT_EQ(object->sections[1], nullptr);
    EXPECT_EQ(object->sections[3], nullptr);
}

TEST_F(Load, UnloadGivesEverythingBackAndListsTheObjectAgain)
{
    for (const std::uint8_t type : kTypes) {
        restart();
        std::int32_t code = 0;
        TSObject* const object = load(type, kIds[type], code);
        EXPECT_EQ(TSUnloadObject(&manager(), object), 0);
        EXPECT_EQ(object->file, nullptr);
        for (const std::uint8_t* section : object->sections)
            EXPECT_EQ(section, nullptr);
        EXPECT_EQ(MemoryHost::openFiles() + MemoryHost::openViews(), 0);
        EXPECT_NE(load(type, kIds[type], code), nullptr);
    }
}

TEST_F(Load, UnloadGivesTheLastFailuresCode)
{
    std::int32_t code = 0;
    TSObject* const object = load(TS_OBJ_LANGUAGE, kNorthern, code);
    MemoryHost::failCall(1); // the view
    EXPECT_EQ(TSUnloadObject(&manager(), object), TS_ERR_FILE_UNMAP);
    left_.views = 1;

    load(TS_OBJ_LANGUAGE, kNorthern, code);
    MemoryHost::failCall(3); // the view, the mapping, the file
    EXPECT_EQ(TSUnloadObject(&manager(), object), 1);
    EXPECT_EQ(object->file, nullptr);
    left_.files = 1;
    left_.blocks = 1;
}

TEST_F(Load, AReleasedLocaleUnloadsNothing)
{
    TSReleaseLocale(goodLocale("Northern_Northland.Double@Plain"));
    EXPECT_EQ(MemoryHost::openFiles(), 4);
    EXPECT_NE(listed(TS_OBJ_LANGUAGE, kNorthern)->sections[0], nullptr);
}

TEST_F(Load, AFileReplacedUnderALoadedObjectLeavesItAsItWas)
{
    std::int32_t code = 0;
    const TSObject* const object = load(TS_OBJ_LANGUAGE, kNorthern, code);
    const Bytes before(object->sections[0], object->sections[0] + 102);
    putFile(fileOf(TS_OBJ_LANGUAGE), Bytes(100, 0));
    EXPECT_EQ(Bytes(object->sections[0], object->sections[0] + 102), before);
}

} // namespace
} // namespace vlx::test
