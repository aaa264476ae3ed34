// Every shipped code page is read where it is mapped: what the library allocates to open one is the
// locale record and little else, and the object's sections pass the checks that a copy is made
// without.
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "chars/cpfile.hpp"
#include "container.hpp"
#include "source_tree.hpp"

#include "tessera.h"
#include "tsconst.h"

namespace {

namespace fs = std::filesystem;
using vlx::data::Diagnostics;

constexpr std::uint32_t kRecords = 4096; // less than section 1 of any code page

std::uint32_t allocated = 0;

void* count(TSContext, std::uint32_t bytes)
{
    allocated += bytes;
    return std::malloc(bytes);
}

std::int32_t release(TSContext, void* memory)
{
    std::free(memory);
    return 1;
}

// What it takes to open a locale with the code page, beside the objects that are open already.
std::uint32_t costOf(const std::string& page)
{
    allocated = 0;
    std::int32_t code = 0;
    TSLocale* const locale = TSGetLocale(("." + page + "@BINARY").c_str(), 0, &code);
    EXPECT_NE(locale, nullptr) << page << ": " << code;
    if (locale == nullptr)
        return 0;
    EXPECT_NE(TSGetCharType(locale, "\x40", TS_CT_FORM), 0) << page;
    TSReleaseLocale(locale);
    return allocated;
}

void start(const std::string& directory)
{
    ASSERT_EQ(TSInit(directory.c_str(), count, release, count, release, 0, TS_STRICT_OBJECTS), 0);
    costOf("US-ASCII");
}

TEST(ShippedCodePages, AreReadInPlace)
{
    Diagnostics diagnostics;
    const auto control = vlx::data::readContainer(VLX_LOCALE "/control.nls", diagnostics);
    ASSERT_TRUE(control);
    start(VLX_LOCALE);
    int pages = 0;
    for (const TSObjDisk& entry : vlx::data::controlEntries(*control)) {
        if (entry.type != TS_OBJ_CODEPAGE)
            continue;
        const std::string name = vlx::data::nameOf(entry);
        const std::uint32_t cost = costOf(name);
        EXPECT_GT(cost, 0U) << name;
        EXPECT_LT(cost, kRecords) << name;
        ++pages;
    }
    EXPECT_GT(pages, 100);
    TSTerm();
}

// The count would tell a copy: a page whose trie leads outside is not read in place.
TEST(ShippedCodePages, WouldBeCopiedIfTheyWereNotSound)
{
    const SourceTree tree;
    fs::copy(VLX_LOCALE, tree.output());
    std::string bytes = contentOf(VLX_LOCALE "/cp_00932.nls");
    auto* const file = reinterpret_cast<TSObjHeader*>(bytes.data());
    reinterpret_cast<TSCodePageHeader*>(bytes.data() + file->sectionOffset(0))->typeTrieOffset =
        0xFFF0;
    tree.write("out/cp_00932.nls", bytes);
    start(tree.output());
    EXPECT_GT(costOf("MS932"), bytes.size() / 2);
    TSTerm();
}

} // namespace
