// Opening and closing catalogs.
#include "catalog/catalog_fixture.hpp"

namespace vlx::test {
namespace {

using OpenCatalog = CatalogTest;

TEST_F(OpenCatalog, CloseOfANullCatalogIs70AndTouchesNoLocale)
{
    locale_->lastError = 4711;
    EXPECT_EQ(TSCloseCatalog(nullptr), 70);
    EXPECT_EQ(locale_->lastError, 4711);
}

TEST_F(OpenCatalog, FlagsOutsideTheMaskAre2)
{
    MemoryHost::put("msgs", smallCatalog().bytes());
    for (const std::uint32_t flags : {0x2u, 0x4u, 0x10u, 0x80u, 0x80000062u, 0xFFFFFFFFu}) {
        EXPECT_EQ(TSOpenCatalog(locale_.get(), nullptr, "msgs", flags), nullptr);
        EXPECT_EQ(TSGetError(locale_.get()), 2) << flags;
    }
}

TEST_F(OpenCatalog, ANameThatIsNullOrEmptyIs2InAllForms)
{
    TSLocale* const locale = locale_.get();
    EXPECT_EQ(TSOpenCatalog(locale, "a;", nullptr, 0), nullptr);
    EXPECT_EQ(TSGetError(locale), 2);
    EXPECT_EQ(TSOpenCatalog(locale, "a;", "", 0), nullptr);
    EXPECT_EQ(TSGetError(locale), 2);
    locale->lastError = 0;
    EXPECT_EQ(TSOpenCatalogU(locale, units(u"a;"), nullptr, 0), nullptr);
    EXPECT_EQ(TSGetError(locale), 2);
    locale->lastError = 0;
    EXPECT_EQ(TSOpenCatalogW(locale, units(U"a;"), units(U""), 0), nullptr);
    EXPECT_EQ(TSGetError(locale), 2);
}

TEST_F(OpenCatalog, ASingleBitOfAFlagHasNoEffect)
{
    Trace::setMask(TRC1_INPUTS);
    for (const std::uint32_t flags : {0u, 1u, 0x20u, 0x40u, 0x60u, 0x61u, 0x80000000u}) {
        EXPECT_EQ(TSOpenCatalog(locale_.get(), "%l", "msgs", flags), nullptr);
        EXPECT_EQ(TSGetError(locale_.get()), 71);
        const std::vector<std::string> wanted{"EN", "msgs", "DF", "msgs"};
        auto tried = triedPaths();
        std::erase_if(tried, [](const auto& path) { return path.starts_with("/loc/"); });
        EXPECT_EQ(tried, wanted) << flags;
    }
    forgetLocaleOfSecondPass();
}

TEST_F(OpenCatalog, ASlimOpenOfAFileThatIsNoCatalogSucceeds)
{
    MemoryHost::put("msgs", "no catalog");
    const Catalog catalog(TSOpenCatalog(locale_.get(), nullptr, "msgs", TS_CATALOG_SEARCH_ONCE));
    ASSERT_TRUE(catalog);
    EXPECT_EQ(TSGetError(locale_.get()), 0);
    char output[8] = "#######";
    EXPECT_EQ(TSGetMessage(catalog.get(), 1, 1, output, 8, nullptr), 72);
    EXPECT_EQ(TSGetError(locale_.get()), 72);
    EXPECT_STREQ(output, "");
    EXPECT_EQ(message(catalog.get(), 1, 1, "default"), "default");
    EXPECT_EQ(catalog->catalogLocale, nullptr);
}

TEST_F(OpenCatalog, APreloadedOpenOfAFileOf151BytesIs71)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    bytes.resize(151);
    EXPECT_FALSE(openBytes(bytes, Form::kPreloaded, locale_.get()));
    EXPECT_EQ(TSGetError(locale_.get()), 71);
}

TEST_F(OpenCatalog, APreloadedOpenOfAnEmptyFileIs71)
{
    EXPECT_FALSE(openBytes({}, Form::kPreloaded, locale_.get()));
    EXPECT_EQ(TSGetError(locale_.get()), 71);
}

TEST_F(OpenCatalog, APreloadedOpenChecksEachFieldOfTheHeader)
{
    const std::vector<std::uint8_t> good = smallCatalog().bytes();
    const struct {
        std::size_t offset;
        std::uint32_t value;
    } faults[] = {{0, 0x5A3C9E17}, {4, 0x20000000}, {8, numberAt(good, 8) == 1 ? 2u : 1u},
                  {8, 0},          {12, 0},         {12, 3},
                  {16, 0},         {16, 0xFFFFFFF0}};
    for (const auto& fault : faults) {
        std::vector<std::uint8_t> bytes = good;
        putNumber(bytes, fault.offset, fault.value);
        EXPECT_FALSE(openBytes(bytes, Form::kPreloaded, locale_.get())) << fault.offset;
        EXPECT_EQ(TSGetError(locale_.get()), 71);
    }
}

TEST_F(OpenCatalog, ALocaleThatCannotBeMadeIs71)
{
    CatalogFile file = smallCatalog();
    file.locale = "Nowhere";
    EXPECT_FALSE(openBytes(file.bytes(), Form::kPreloaded, locale_.get()));
    EXPECT_EQ(TSGetError(locale_.get()), 71);
    const Catalog slim = openBytes(file.bytes(), Form::kSlim, locale_.get());
    EXPECT_EQ(message(slim.get(), 1, 1), std::nullopt);
}

TEST_F(OpenCatalog, ALocaleNameWithoutItsTerminatorIs71)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    std::fill(bytes.begin() + 20, bytes.begin() + 152, 'a');
    EXPECT_FALSE(openBytes(bytes, Form::kPreloaded, locale_.get()));
    EXPECT_EQ(TSGetError(locale_.get()), 71);
}

TEST_F(OpenCatalog, AChainInACircleIs71)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    putNumber(bytes, 152 + 28 + 4, 152); // the second set leads to the first
    for (const std::uint32_t count : {2u, 3u, 4u}) {
        putNumber(bytes, 12, count);
        EXPECT_FALSE(openBytes(bytes, Form::kPreloaded, locale_.get()));
        EXPECT_EQ(TSGetError(locale_.get()), 71);
    }
    const Catalog slim = openBytes(bytes, Form::kSlim, locale_.get());
    EXPECT_EQ(message(slim.get(), 5, 900), "far");
    EXPECT_EQ(message(slim.get(), 3, 1), std::nullopt);
}

TEST_F(OpenCatalog, ASetThatLeadsToItselfIs71)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    putNumber(bytes, 152 + 4, 152);
    EXPECT_FALSE(openBytes(bytes, Form::kPreloaded, locale_.get()));
    EXPECT_EQ(TSGetError(locale_.get()), 71);
}

TEST_F(OpenCatalog, ATableThatEndsBehindTheFileIs71WhenPreloaded)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    putNumber(bytes, 152 + 12, static_cast<std::uint32_t>(bytes.size() - 12)); // three entries
    EXPECT_FALSE(openBytes(bytes, Form::kPreloaded, locale_.get()));
    EXPECT_EQ(TSGetError(locale_.get()), 71);
}

TEST_F(OpenCatalog, SetsThatShareTheirMessagesAreTheirsBoth)
{
    std::vector<std::uint8_t> bytes = smallCatalog().bytes();
    for (std::size_t word = 2; word < 6; ++word)
        putNumber(bytes, 152 + 28 + 4 * word, numberAt(bytes, 152 + 4 * word));
    const Catalog catalog = openBytes(bytes, Form::kPreloaded, locale_.get());
    ASSERT_TRUE(catalog);
    EXPECT_EQ(message(catalog.get(), 1, 7), "seven");
    EXPECT_EQ(message(catalog.get(), 5, 7), "seven");
}

TEST_F(OpenCatalog, AFailureToMapIsStoredAsItComes)
{
    MemoryHost::put("msgs", smallCatalog().bytes());
    MemoryHost::failCall(3); // open, size, then the mapping
    EXPECT_EQ(TSOpenCatalog(locale_.get(), nullptr, "msgs", TS_CATALOG_PRELOAD), nullptr);
    EXPECT_EQ(TSGetError(locale_.get()), TS_ERR_FAILED);
    MemoryHost::failCall(4);
    EXPECT_EQ(TSOpenCatalog(locale_.get(), nullptr, "msgs", TS_CATALOG_PRELOAD), nullptr);
    EXPECT_EQ(TSGetError(locale_.get()), TS_ERR_FILE_READ);
}

TEST_F(OpenCatalog, AFileWithoutASizeIs71)
{
    MemoryHost::put("msgs", smallCatalog().bytes());
    for (const std::uint32_t flags : {TS_CATALOG_SEARCH_ONCE, TS_CATALOG_PRELOAD}) {
        MemoryHost::failCall(2);
        EXPECT_EQ(TSOpenCatalog(locale_.get(), nullptr, "msgs", flags), nullptr);
        EXPECT_EQ(TSGetError(locale_.get()), 71);
    }
}

TEST_F(OpenCatalog, APreloadedCatalogNeedsItsFileNoMore)
{
    const Catalog catalog = openBytes(smallCatalog().bytes(), Form::kPreloaded, locale_.get());
    MemoryHost::put("msgs", "something else");
    EXPECT_EQ(MemoryHost::openViews(), 4); // of the four objects, none of the catalog
    EXPECT_EQ(message(catalog.get(), 1, 1), "one");
}

TEST_F(OpenCatalog, TheDefaultLocaleStandsInForANullHandle)
{
    MemoryHost::put("msgs", smallCatalog().bytes());
    ASSERT_EQ(TSSetLocale("Codes_Codes", 0), 0);
    const Catalog catalog(TSOpenCatalog(nullptr, nullptr, "msgs", TS_CATALOG_PRELOAD));
    ASSERT_TRUE(catalog);
    EXPECT_EQ(catalog->locale, tsDefaultLocale);
    EXPECT_EQ(message(catalog.get(), 5, 900), "far");
}

TEST_F(OpenCatalog, TheLocaleOfTheTextsIsNotReleased)
{
    const Catalog other = openBytes(smallCatalog().bytes(), Form::kPreloaded, locale_.get());
    const int before = Allocator::liveBlocks();
    TSCatalog* const catalog =
        openBytes(smallCatalog().bytes(), Form::kPreloaded, locale_.get()).release();
    TSLocale* const left = catalog->catalogLocale;
    EXPECT_EQ(TSCloseCatalog(catalog), 0);
    EXPECT_GT(Allocator::liveBlocks(), before);
    EXPECT_EQ(TSReleaseLocale(left), 0);
    EXPECT_EQ(Allocator::liveBlocks(), before);
}

} // namespace
} // namespace vlx::test
