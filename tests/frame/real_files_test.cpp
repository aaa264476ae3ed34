// The store on the real host: real mappings, files that are replaced, and things that are no files.
#include <cstring>
#include <filesystem>

#include "frame/file.hpp"
#include "frame/real_store.hpp"
#include "locale/locale.hpp"

namespace vlx::test {
namespace {

namespace fs = std::filesystem;

class RealFiles : public RealStoreTest {
  protected:
    static bool isBuiltin(const TSObject* object) { return (object->flags & TS_OBJ_BUILTIN) != 0; }
    // Makes a directory where a file should be.
    void makeDirectory(std::string_view name) const
    {
        fs::remove(workshop_.path(name));
        fs::create_directory(workshop_.path(name));
    }
    static Bytes text(const char* string) { return Bytes(string, string + std::strlen(string)); }
};

TEST_F(RealFiles, ALocaleIsMadeFromMappedFilesInPlace)
{
    EXPECT_EQ(start(), TS_ERR_NONE);
    std::int32_t code = 4711;
    TSLocale* const made = locale(code);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(code, TS_ERR_NONE);
    for (const TSObject* object : {made->language, made->territory, made->codePage}) {
        EXPECT_EQ(object->flags, 0);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(object->sections[0]) % host::granularity(),
                  kFileHeaderSize);
    }
    EXPECT_STREQ(made->timeFormat, "%H.%M.%S");
    EXPECT_EQ(made->decimalPoint, ',');
    EXPECT_EQ(TSReleaseLocale(made), 0);
    EXPECT_EQ(TSTerm(), 0);
}

TEST_F(RealFiles, ASectionBehindAGranuleIsMapped)
{
    ObjectFile file;
    file.gap = 3 * host::granularity() + 4464;
    file.sections = {LanguageContent::sample().bytes()};
    workshop_.make("la_00001.nls", file.bytes());
    start();
    std::int32_t code = 0;
    TSLocale* const made = locale(code);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(made->language->flags, 0);
    EXPECT_EQ(
        std::memcmp(made->language->sections[0], file.sections[0].data(), file.sections[0].size()),
        0);
    TSReleaseLocale(made);
}

TEST_F(RealFiles, AMissingObjectFileGivesBuiltinData)
{
    fs::remove(workshop_.path("la_00001.nls"));
    start();
    std::int32_t code = 4711;
    TSLocale* const made = locale(code);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(code, TS_ERR_NONE);
    EXPECT_TRUE(isBuiltin(made->language));
    EXPECT_STREQ(made->language->name, "North");
    TSReleaseLocale(made);
}

TEST_F(RealFiles, ADirectoryInTheControlFilesPlaceGives10)
{
    makeDirectory("control.nls");
    EXPECT_EQ(start(), TS_ERR_NO_CONTROL_FILE);
    EXPECT_EQ(manager().objectCount, 3);
}

TEST_F(RealFiles, ADirectoryInAnObjectFilesPlaceGivesBuiltinData)
{
    makeDirectory("te_00001.nls");
    start();
    std::int32_t code = 4711;
    TSLocale* const made = locale(code);
    ASSERT_NE(made, nullptr);
    EXPECT_EQ(code, TS_ERR_NONE);
    EXPECT_TRUE(isBuiltin(made->territory));
    TSReleaseLocale(made);
}

TEST_F(RealFiles, ADirectoryInTheAliasFilesPlaceIsAnEmptyList)
{
    makeDirectory("alias.txt");
    EXPECT_EQ(start(), TS_ERR_NONE);
    EXPECT_EQ(manager().aliases, nullptr);
}

TEST_F(RealFiles, EmptyAndShortFilesGiveBuiltinDataAndNoSort)
{
    for (const std::size_t size : {0u, 1u, 75u, 76u}) {
        const Bytes whole = LanguageContent::sample().file();
        workshop_.make("la_00001.nls",
                       Bytes(whole.begin(), whole.begin() + static_cast<long>(size)));
        workshop_.make("so_00001.nls", Bytes(size, 0));
        start();
        std::int32_t code = 4711;
        TSLocale* const made = locale(code);
        ASSERT_NE(made, nullptr);
        EXPECT_TRUE(isBuiltin(made->language));
        TSReleaseLocale(made);
        EXPECT_EQ(TSGetLocale("North@Sort", 0, &code), nullptr);
        EXPECT_EQ(code, TS_ERR_NO_OBJECTS);
        EXPECT_EQ(TSTerm(), 0);
    }
}

TEST_F(RealFiles, AnEmptyAndAShortControlFileGive10)
{
    for (const std::size_t size : {0u, 1u, 75u, 76u, 100u}) {
        Bytes control = controlFile({{TS_OBJ_LANGUAGE, 1, "North"}});
        control.resize(size);
        workshop_.make("control.nls", control);
        EXPECT_EQ(start(), TS_ERR_NO_CONTROL_FILE) << size;
        EXPECT_EQ(manager().objectCount, 3);
        EXPECT_EQ(TSTerm(), 0);
    }
}

TEST_F(RealFiles, AFileIsFreeOfTheLibraryAfterTheStop)
{
    start();
    std::int32_t code = 0;
    TSReleaseLocale(locale(code));
    EXPECT_EQ(TSTerm(), 0);
    std::error_code error;
    for (const char* name : {"control.nls", "la_00001.nls", "te_00001.nls", "cp_00001.nls"}) {
        EXPECT_TRUE(fs::remove(workshop_.path(name), error)) << name;
        EXPECT_FALSE(error);
    }
}

TEST_F(RealFiles, ManyStartsAndStopsKeepNothing)
{
    // More rounds than a process may have open files.
    for (int round = 0; round < 2000; ++round) {
        ASSERT_EQ(start(), TS_ERR_NONE) << round;
        std::int32_t code = 0;
        TSLocale* const made = locale(code);
        ASSERT_NE(made, nullptr);
        ASSERT_FALSE(isBuiltin(made->language));
        TSReleaseLocale(made);
        ASSERT_EQ(TSTerm(), 0);
        Trace::setMask(0);
    }
}

TEST_F(RealFiles, AnExistingFileIsWrittenUnderATemporaryName)
{
    start();
    const std::string path = workshop_.make("old.dat", text("old"));
    std::int32_t code = 4711;
    TSFile* file = TSOpenFile(0, path.c_str(), TS_FILE_WRITE, 0, &code);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(code, TS_ERR_NONE);
    EXPECT_TRUE(fs::exists(workshop_.path("old.tmp")));
    EXPECT_EQ(workshop_.look(path), text("old"));
    EXPECT_EQ(TSCloseFile(file, 1), 0);
    EXPECT_EQ(workshop_.look(path), text("old"));
    EXPECT_FALSE(workshop_.look(workshop_.path("old.tmp")));

    file = TSOpenFile(0, path.c_str(), TS_FILE_WRITE, 0, &code);
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
    EXPECT_EQ(workshop_.look(path), Bytes());
    EXPECT_FALSE(workshop_.look(workshop_.path("old.tmp")));
}

TEST_F(RealFiles, ANewFileIsWrittenDirectly)
{
    start();
    const std::string path = workshop_.path("new.dat");
    std::int32_t code = 4711;
    TSFile* const file = TSOpenFile(0, path.c_str(), TS_FILE_WRITE, 0, &code);
    ASSERT_NE(file, nullptr);
    EXPECT_FALSE(file->usesTemp);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
    EXPECT_EQ(workshop_.look(path), Bytes());
}

TEST_F(RealFiles, SeeksReadsAndMapsAgree)
{
    start();
    Bytes content(200000);
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<std::uint8_t>(i * 31 + i / 256);
    const std::string path = workshop_.make("data", content);
    std::int32_t code = 0;
    TSFile* const file = TSOpenFile(0, path.c_str(), TS_FILE_READ, 0, &code);
    ASSERT_NE(file, nullptr);
    for (const std::uint32_t offset : {0u, 1u, 4095u, 4096u, 65535u, 65536u, 70000u, 199990u}) {
        Bytes read(10);
        EXPECT_EQ(TSSeekFile(file, static_cast<std::int32_t>(offset), TS_SEEK_SET), 0);
        EXPECT_EQ(TSReadFile(file, read.data(), 10, &code), 10u);
        const void* const mapped = TSLoadFile(file, offset, 10, &code);
        ASSERT_NE(mapped, nullptr);
        EXPECT_EQ(std::memcmp(mapped, content.data() + offset, 10), 0);
        EXPECT_EQ(std::memcmp(read.data(), content.data() + offset, 10), 0);
        EXPECT_EQ(TSUnloadFile(mapped), 0);
    }
    EXPECT_EQ(TSLoadFile(file, 199991, 10, &code), nullptr);
    EXPECT_EQ(code, TS_ERR_FILE_READ);
    EXPECT_EQ(TSCloseFile(file, 0), 0);
}

} // namespace
} // namespace vlx::test
