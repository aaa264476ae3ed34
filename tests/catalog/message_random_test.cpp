// Random catalogs in random code pages, compared with a plain list of their texts and the oracle of
// conversion.
#include <algorithm>
#include <map>
#include <random>

#include "catalog/catalog_fixture.hpp"
#include "support/oracle_convert.hpp"

namespace vlx::test {
namespace {

using Random = std::mt19937_64;

constexpr int kCatalogs = 120;
constexpr int kCalls = 450; // of each form of a catalog: 10^5 and some
constexpr unsigned kFill = 0x5A;

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

    // A call compared with what stands in the list.
    struct Call {
        TSCatalog* catalog;
        const Texts& texts;
        std::size_t source;
        std::size_t target;
        std::pair<std::int32_t, std::int32_t> which;
        std::int32_t size;

        const std::string* text() const
        {
            const auto known = texts.find(which);
            return known == texts.end() ? nullptr : &known->second;
        }
    };
    Call anyCall(TSCatalog* catalog, const Texts& texts, std::size_t source, std::size_t target);
    void compare(const Call& call);
    void compareBytes(const Call& call);
    template <class Unit>
    void compareUnits(const Call& call);

    // What a message or a default text writes, from the start of the output on.
    oracle::Bytes messageBytes(const Call& call, std::int32_t size,
                               const oracle::Bytes* defaultText);

    const oracle::Locale& localeOf(const Call& call) const { return world_.locales[call.target]; }

    Random random_{20261121};
    World world_;
};

RandomMessages::Call RandomMessages::anyCall(TSCatalog* catalog, const Texts& texts,
                                             std::size_t source, std::size_t target)
{
    std::pair<std::int32_t, std::int32_t> which{static_cast<int>(random_() % 60),
                                                static_cast<int>(random_() % 60)};
    if (random_() % 4 != 0 && !texts.empty()) {
        auto at = texts.begin();
        std::advance(at, static_cast<long>(random_() % texts.size()));
        which = at->first;
    }
    return {catalog, texts, source, target, which, static_cast<std::int32_t>(1 + random_() % 50)};
}

oracle::Bytes RandomMessages::messageBytes(const Call& call, std::int32_t size,
                                           const oracle::Bytes* defaultText)
{
    if (const std::string* const known = call.text()) {
        oracle::Bytes text(known->begin(), known->end());
        text.resize(known->size() + 8); // a cut character is read to its end
        return oracle::convertStringEx(
                   localeOf(call), {0, size}, world_.locales[call.source],
                   {oracle::Span(text), 0, static_cast<std::int32_t>(known->size())},
                   TS_OPT_TERMINATE)
            .written;
    }
    if (!defaultText)
        return {0};
    oracle::Bytes output(static_cast<std::size_t>(size));
    const oracle::Outcome copied =
        oracle::copyEx(localeOf(call), output, 0, size, {oracle::Span(*defaultText), 0, -1}, 0);
    output.resize(static_cast<std::size_t>(copied.result));
    return output;
}

void RandomMessages::compareBytes(const Call& call)
{
    const std::string other = randomBytes(random_, *world_.pageOf[call.target]);
    oracle::Bytes defaultText(other.begin(), other.end());
    defaultText.resize(other.size() + 8);
    const bool hasDefault = random_() % 2 == 0;
    oracle::Bytes wanted = messageBytes(call, call.size, hasDefault ? &defaultText : nullptr);
    oracle::Bytes output(static_cast<std::size_t>(call.size) + 1, kFill);
    const std::int32_t result = TSGetMessage(
        call.catalog, call.which.first, call.which.second, reinterpret_cast<char*>(output.data()),
        call.size, hasDefault ? reinterpret_cast<const char*>(defaultText.data()) : nullptr);
    const std::int32_t code = call.text() || hasDefault ? 0 : 72;
    EXPECT_EQ(result, code);
    EXPECT_EQ(TSGetError(call.catalog->locale), code);
    EXPECT_EQ(output.back(), kFill);
    output.resize(wanted.size());
    EXPECT_EQ(output, wanted);
}

// The bytes of a default text, and the elements of bytes.
oracle::ToBytes toBytes(const oracle::Locale& locale, const oracle::UnitText& text, TSChar16)
{
    return oracle::unicodeToStringEx(locale, {0, 4 * text.length + 1}, text, 0);
}
oracle::ToBytes toBytes(const oracle::Locale& locale, const oracle::UnitText& text, TSChar32)
{
    return oracle::wideToMbEx(locale, {0, 4 * text.length + 1}, text, 0);
}
std::vector<TSChar16> toUnits(const oracle::Locale& locale, std::int32_t count,
                              const oracle::Text& text, TSChar16)
{
    return oracle::stringToUnicodeEx({0, count}, locale, text, 0).written;
}
std::vector<TSChar32> toUnits(const oracle::Locale& locale, std::int32_t count,
                              const oracle::Text& text, TSChar32)
{
    return oracle::mbToWideEx(locale, {0, count}, text, 0).written;
}
template <class Unit>
void RandomMessages::compareUnits(const Call& call)
{
    const oracle::Locale& locale = localeOf(call);
    std::vector<Unit> defaultText;
    for (std::size_t i = random_() % 20; i > 0; --i)
        defaultText.push_back(static_cast<Unit>(1 + random_() % 0xFFFF));
    defaultText.push_back(0);
    const oracle::ToBytes defaultBytes =
        toBytes(locale,
                {oracle::Units(defaultText.begin(), defaultText.end()),
                 static_cast<std::int32_t>(defaultText.size())},
                Unit{});
    // A page may have another byte for a zero, and zeros for other values.
    const bool hasDefault = random_() % 2 == 0 && oracle::unicodeToMb(locale.page, 0)[0] == 0;
    const std::int32_t size = 4 * call.size + 1;
    oracle::Bytes bytes = messageBytes(call, size, hasDefault ? &defaultBytes.written : nullptr);
    bytes.resize(static_cast<std::size_t>(size) + 8);
    const auto end = std::find(bytes.begin(), bytes.end(), 0);
    std::vector<Unit> wanted = toUnits(
        locale, call.size,
        {oracle::Span(bytes), 0, static_cast<std::int32_t>(end - bytes.begin()) + 1}, Unit{});
    wanted.resize(static_cast<std::size_t>(call.size) + 1, kFill);
    wanted.end()[-2] = 0;

    std::vector<Unit> output(wanted.size(), kFill);
    std::int32_t result = 0;
    const Unit* const given = hasDefault ? defaultText.data() : nullptr;
    if constexpr (sizeof(Unit) == 2)
        result = TSGetMessageU(call.catalog, call.which.first, call.which.second, output.data(),
                               call.size, given);
    else
        result = TSGetMessageW(call.catalog, call.which.first, call.which.second, output.data(),
                               call.size, given);
    const std::int32_t code = call.text() || hasDefault ? 0 : 72;
    EXPECT_EQ(result, code);
    EXPECT_EQ(TSGetError(call.catalog->locale), code);
    EXPECT_EQ(output, wanted);
}

void RandomMessages::compare(const Call& call)
{
    switch (random_() % 4) {
    case 0:
        compareUnits<TSChar16>(call);
        break;
    case 1:
        compareUnits<TSChar32>(call);
        break;
    default:
        compareBytes(call);
        break;
    }
    if (HasFailure())
        ADD_FAILURE() << world_.names[call.source] << " to " << world_.names[call.target]
                      << ", size " << call.size << ", message " << call.which.first << '/'
                      << call.which.second;
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
                compare(anyCall(catalog.get(), texts, source, target));
        }
    }
}

} // namespace
} // namespace vlx::test
