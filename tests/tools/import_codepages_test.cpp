// The committed code page sources are what the importer writes, byte by byte.
#include <filesystem>
#include <set>

#include <gmock/gmock.h>
#include <gnu/libc-version.h>
#include <gtest/gtest.h>
#include <unicode/uvernum.h>
#include <unicode/uversion.h>

#include "import.hpp"
#include "source_tree.hpp"

namespace {

namespace fs = std::filesystem;

std::string icuVersion()
{
    UVersionInfo version;
    char text[U_MAX_VERSION_STRING_LENGTH];
    u_getVersion(version);
    u_versionToString(version, text);
    return text;
}

TEST(ImportCodePages, GivesTheCommittedSources)
{
    if (icuVersion() != "72.1")
        GTEST_SKIP() << "the sources come from ICU 72.1, and this is " << icuVersion();
    if (std::string(gnu_get_libc_version()) != "2.36")
        GTEST_SKIP() << "some come from glibc 2.36, and this is " << gnu_get_libc_version();
    const SourceTree tree;
    fs::create_directory(tree.path("pages"));
    ASSERT_TRUE(vlx::import::importCodePages({tree.path("pages")}));
    std::set<std::string> written;
    for (const auto& file : fs::directory_iterator(tree.path("pages"))) {
        const std::string name = file.path().filename().string();
        EXPECT_EQ(contentOf(file.path().string()),
                  contentOf(std::string(VLX_DATA_DIRECTORY) + "/codepages/" + name))
            << name;
        written.insert(name);
    }
    for (const auto& file : fs::directory_iterator(VLX_DATA_DIRECTORY "/codepages")) {
        const std::string name = file.path().filename().string();
        EXPECT_EQ(written.contains(name), name != "US-ASCII.cp" && name != "UTF-8.cp") << name;
    }
}

TEST(ImportCharacters, GivesTheCommittedTables)
{
    if (icuVersion() != "72.1")
        GTEST_SKIP() << "the tables come from ICU 72.1, and this is " << icuVersion();
    const SourceTree tree;
    fs::create_directory(tree.path("tables"));
    ASSERT_TRUE(vlx::import::importCharacters({tree.path("tables")}));
    for (const char* const name : {"properties-younger.tsv", "case-younger.tsv"})
        EXPECT_EQ(contentOf(tree.path(std::string("tables/") + name)),
                  contentOf(std::string(VLX_DATA_DIRECTORY) + "/unicode/" + name))
            << name;
}

TEST(ImportCodePages, FailsWithoutADirectoryToWriteTo)
{
    EXPECT_FALSE(vlx::import::importCodePages({"/nonexistent/directory"}));
}

} // namespace
