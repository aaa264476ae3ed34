// Opens and messages while the nth allocation or the nth call of the host fails.
#include <gmock/gmock.h>

#include "catalog/catalog_fixture.hpp"

namespace vlx::test {
namespace {

class FailingCatalog : public CatalogTest {
  protected:
    FailingCatalog()
    {
        loadAll(); // so that only the catalog takes memory and files
        MemoryHost::put("EN/msgs", smallCatalog().bytes());
        MemoryHost::setEnvironment("TS_NLSPATH", std::string(600, 'x'));
    }

    Catalog tryOpen(Form form)
    {
        return Catalog(
            TSOpenCatalogU(locale_.get(), units(u"%l/%N"), units(u"msgs"), flagsOf(form)));
    }

    // Runs an open until the ordered failure does not come any more; each failure gives one of the
    // codes, and back what it took.
    template <class Order>
    void openFailing(Form form, Order order, const std::vector<std::int32_t>& codes)
    {
        const int blocks = Allocator::liveBlocks();
        const int files = MemoryHost::openFiles();
        for (std::uint32_t n = 1;; ++n) {
            ASSERT_LT(n, 100u);
            order(n);
            const Catalog catalog = tryOpen(form);
            order(0);
            if (catalog) {
                EXPECT_GT(n, 3u);
                EXPECT_EQ(message(catalog.get(), 5, 900), "far");
                return;
            }
            EXPECT_THAT(codes, testing::Contains(TSGetError(locale_.get()))) << n;
            EXPECT_EQ(Allocator::liveBlocks(), blocks) << n;
            EXPECT_EQ(MemoryHost::openFiles(), files) << n;
        }
    }
};

TEST_F(FailingCatalog, AnAllocationThatFailsIs20)
{
    const auto order = [](std::uint32_t n) { Allocator::failAllocation(n); };
    openFailing(Form::kSlim, order, {20});
    openFailing(Form::kPreloaded, order, {20, 71}); // 71 for the locale of the texts
}

TEST_F(FailingCatalog, ACallOfTheHostThatFailsHasACode)
{
    const std::int32_t preloaded[] = {71, 71, 1, 1003}; // open, size, mapping, view
    for (std::uint32_t n = 1; n <= 4; ++n) {
        MemoryHost::failCall(n);
        EXPECT_FALSE(tryOpen(Form::kPreloaded));
        EXPECT_EQ(TSGetError(locale_.get()), preloaded[n - 1]);
    }
    for (std::uint32_t n = 1; n <= 2; ++n) {
        MemoryHost::failCall(n);
        EXPECT_FALSE(tryOpen(Form::kSlim));
        EXPECT_EQ(TSGetError(locale_.get()), 71);
    }
    EXPECT_TRUE(tryOpen(Form::kSlim));
}

TEST_F(FailingCatalog, ASlimMessageWithoutMemoryOrFileIs72OrTheDefault)
{
    for (const bool memory : {true, false})
        for (std::uint32_t n = 1; n < 20; ++n) {
            const Catalog catalog = tryOpen(Form::kSlim);
            const int blocks = Allocator::liveBlocks();
            if (memory)
                Allocator::failAllocation(n);
            else
                MemoryHost::failCall(n);
            const auto got = message(catalog.get(), 5, 900);
            const bool failed = !got;
            Allocator::failAllocation(0);
            MemoryHost::failCall(0);
            if (failed) {
                EXPECT_EQ(TSGetError(locale_.get()), 72);
            } else {
                EXPECT_EQ(got, "far");
            }
            EXPECT_EQ(message(catalog.get(), 5, 900, "default"), "far");
            if (failed && !catalog->catalogLocale) {
                EXPECT_EQ(Allocator::liveBlocks(), blocks);
            }
        }
}

} // namespace
} // namespace vlx::test
