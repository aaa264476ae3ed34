// Random catalogs in random code pages, compared with a plain list of their texts and the oracle of
// conversion.
#include <map>
#include <random>

#include "catalog/catalog_fixture.hpp"
#include "support/oracle_convert.hpp"

namespace vlx::test {
namespace {

using Random = std::mt19937_64;

constexpr int kCatalogs = 120;
constexpr int kCalls = 450; // of each form of a catalog: 10^5 and some

// A locale directory with a random page of each shape, and the oracle's view of them.
struct World {
    explicit World(Random& random)
    {
        for (const PageShape shape : kPageShapes)
            for (int i = 0; i < 2; ++i)
                pages.push_back(randomPage(random, shape));
        for (std::size_t i = 0; i < pages.size(); ++i) {
            PageBuilder& page = pages[i];
            const auto id =
                static_cast<std::uint16_t>(page.shape() == PageShape::kUtf8 ? 57352 : 100 + i);
            if (page.shape() == PageShape::kUtf8 && i % 2 == 1)
                continue; // there is one UTF-8
            page.id(id).build();
            const std::string name = "P" + std::to_string(i);
            directory.add(name, page);
            names.push_back("L." + name);
            pageOf.push_back(&page);
            oracle::Page view{id, {}};
            for (std::size_t section = 0; section < 4; ++section)
                view.sections[section] =
                    oracle::Span(page.sections()[section].data(), page.sections()[section].size());
            locales.push_back({view, oracle::maxCharBytes(view) == 1, oracle::isStateful(view)});
        }
        directory.add(LanguageSpec{1, "L", 10, 100, 0}).add(TerritorySpec{.id = 10});
    }

    std::vector<PageBuilder> pages;
    LocaleDirectory directory;
    std::vector<std::string> names; // of locales
    std::vector<const PageBuilder*> pageOf;
    std::vector<oracle::Locale> locales;
};

// Bytes of a page, valid for the most, without a NUL.
std::string randomBytes(Random& random, const PageBuilder& page)
{
    std::string text;
    const std::size_t characters = random() % 20;
    for (std::size_t i = 0; i < characters; ++i) {
        if (!page.encoded().empty() && random() % 8 != 0) {
            auto at = page.encoded().begin();
            std::advance(at, static_cast<long>(random() % page.encoded().size()));
            const CharBytes bytes = bytesOf(at->second);
            if (isStateful(page.shape()) && random() % 4 == 0)
                text += static_cast<char>(bytes.size() > 1 ? page.shiftIn() : page.shiftOut());
            text.append(bytes.begin(), bytes.end());
        } else {
            text += static_cast<char>(1 + random() % 255);
        }
    }
    std::erase(text, '\0');
    return text;
}

class RandomMessages : public LocaleTest {
  protected:
    RandomMessages() : world_(random_) { EXPECT_EQ(start(world_.directory), TS_ERR_NONE); }

    using Texts = std::map<std::pair<std::int32_t, std::int32_t>, std::string>;

    std::uint32_t nextNumber(std::uint32_t number)
    {
        return number + 1 + static_cast<std::uint32_t>(random_() % 3 == 0 ? random_() % 50 : 0);
    }

    CatalogFile randomFile(std::size_t source, Texts& texts)
    {
        CatalogFile file{.locale = world_.names[source], .sets = {}};
        std::uint32_t set = 0;
        for (std::size_t i = 1 + random_() % 8; i > 0; --i) {
            file.sets.push_back({set = nextNumber(set), {}});
            std::uint32_t number = 0;
            for (std::size_t j = random_() % 12; j > 0; --j) {
                number = nextNumber(number);
                const std::string text = randomBytes(random_, *world_.pageOf[source]);
                file.sets.back().messages.push_back({number, text});
                texts[{static_cast<int>(set), static_cast<int>(number)}] = text;
            }
        }
        return file;
    }

    // A call of any form, compared with what stands in the list.
    void compare(TSCatalog* catalog, const Texts& texts, std::size_t source, std::size_t target);

    Random random_{20261121};
    World world_;
};

void RandomMessages::compare(TSCatalog* catalog, const Texts& texts, std::size_t source,
                             std::size_t target)
{
    std::pair<std::int32_t, std::int32_t> which{static_cast<int>(random_() % 60),
                                                static_cast<int>(random_() % 60)};
    if (random_() % 4 != 0 && !texts.empty()) {
        auto at = texts.begin();
        std::advance(at, static_cast<long>(random_() % texts.size()));
        which = at->first;
    }
    const auto size = static_cast<std::int32_t>(1 + random_() % 50);
    std::vector<unsigned char> output(static_cast<std::size_t>(size) + 1, 0x5A);
    const std::int32_t result = TSGetMessage(catalog, which.first, which.second,
                                             reinterpret_cast<char*>(output.data()), size, nullptr);
    EXPECT_EQ(output.back(), 0x5A);
    const auto known = texts.find(which);
    if (known == texts.end()) {
        EXPECT_EQ(result, 72);
        EXPECT_EQ(output[0], 0);
        EXPECT_EQ(TSGetError(catalog->locale), 72);
        return;
    }
    const oracle::Bytes text(known->second.begin(), known->second.end());
    oracle::Bytes readable = text;
    readable.resize(text.size() + 8); // a cut character is read to its end
    const oracle::ToBytes wanted = oracle::convertStringEx(
        world_.locales[target], {0, size}, world_.locales[source],
        {oracle::Span(readable), 0, static_cast<std::int32_t>(text.size())}, TS_OPT_TERMINATE);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(TSGetError(catalog->locale), 0);
    output.resize(static_cast<std::size_t>(wanted.result));
    EXPECT_EQ(output, oracle::Bytes(wanted.written.begin(), wanted.written.begin() + wanted.result))
        << world_.names[source] << " to " << world_.names[target] << ", size " << size;
}

TEST_F(RandomMessages, AgreeWithTheListOfTextsAndTheOracleOfConversion)
{
    for (int i = 0; i < kCatalogs && !HasFailure(); ++i) {
        const std::size_t source = random_() % world_.names.size();
        const std::size_t target = random_() % world_.names.size();
        Texts texts;
        MemoryHost::put("msgs", randomFile(source, texts).bytes());
        const Handle locale = make(world_.names[target]);
        ASSERT_TRUE(locale);
        for (const std::uint32_t flags : {TS_CATALOG_SEARCH_ONCE, TS_CATALOG_PRELOAD}) {
            const Catalog catalog(TSOpenCatalog(locale.get(), nullptr, "msgs", flags));
            ASSERT_TRUE(catalog) << TSGetError(locale.get());
            for (int call = 0; call < kCalls && !HasFailure(); ++call)
                compare(catalog.get(), texts, source, target);
        }
    }
}

} // namespace
} // namespace vlx::test
