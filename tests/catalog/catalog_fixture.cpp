#include "catalog/catalog_fixture.hpp"

#include "support/object_builder.hpp"

namespace vlx::test {

namespace {

void addCoded(LocaleDirectory& directory, std::uint16_t id, const std::string& name,
              std::uint16_t codePage, const std::u16string& language,
              const std::u16string& territory)
{
    LanguageContent content = LanguageContent::sample();
    content.territory = id;
    content.codePage = codePage;
    content.texts[0] = language;
    directory.add(ListedObject{id, TS_OBJ_LANGUAGE, name, {content.bytes()}});
    TerritoryContent land = TerritoryContent::sample();
    land.texts[TerritoryContent::kCode] = territory;
    directory.add(ListedObject{id, TS_OBJ_TERRITORY, name, {land.bytes()}});
}

LocaleDirectory catalogDirectory()
{
    LocaleDirectory directory;
    addCoded(directory, 5, "English", 20, u"DF", u"DFT"); // of the second pass
    addCoded(directory, 6, "Codes", 20, u"EN", u"USA");
    addCoded(directory, 7, "Bare", 20, u"", u"");
    addCoded(directory, 8, "Wide", 21, std::u16string(1, kYen), u"W");
    const WorldPages pages;
    directory.add("Latin", pages.latin)
        .add("Double", pages.doubleByte)
        .add("Shift", pages.shifting)
        .add("UTF8", pages.utf8);
    return directory;
}

} // namespace

void CloseCatalog::operator()(TSCatalog* catalog) const
{
    TSLocale* const left = catalog->catalogLocale;
    EXPECT_EQ(TSCloseCatalog(catalog), TS_ERR_NONE);
    if (left)
        TSReleaseLocale(left);
}

std::ostream& operator<<(std::ostream& out, Form form)
{
    return out << (form == Form::kSlim ? "slim" : "preloaded");
}

CatalogTest::CatalogTest()
{
    EXPECT_EQ(start(catalogDirectory()), TS_ERR_NONE);
    locale_ = make("Codes_Codes");
    EXPECT_TRUE(locale_);
}

CatalogTest::~CatalogTest()
{
    MemoryHost::clearEnvironment();
}

Catalog CatalogTest::openBytes(const std::vector<std::uint8_t>& bytes, Form form, TSLocale* locale)
{
    MemoryHost::put("msgs", bytes);
    return Catalog(TSOpenCatalog(locale, nullptr, "msgs", flagsOf(form)));
}

Catalog CatalogTest::open(const CatalogFile& file, Form form, const std::string& locale)
{
    locale_ = make(locale);
    return openBytes(file.bytes(), form, locale_.get());
}

std::optional<std::string> CatalogTest::message(TSCatalog* catalog, std::int32_t set,
                                                std::int32_t number, const char* defaultText,
                                                std::int32_t size)
{
    std::vector<char> output(static_cast<std::size_t>(size) + 1, '#');
    if (TSGetMessage(catalog, set, number, output.data(), size, defaultText) != TS_ERR_NONE)
        return std::nullopt;
    EXPECT_EQ(output.back(), '#');
    return std::string(output.data());
}

std::vector<std::string> CatalogTest::triedPaths()
{
    constexpr std::string_view kOpening = "Opening file ";
    std::vector<std::string> paths;
    for (const TraceRecord& record : Trace::records())
        if (record.kind == TraceKind::kPrint && record.text.starts_with(kOpening))
            paths.push_back(record.text.substr(kOpening.size()));
    Trace::clear();
    return paths;
}

void CatalogTest::forgetLocaleOfSecondPass()
{
    Allocator::reset();
}

CatalogFile smallCatalog()
{
    return {.locale = "Codes_Codes.Latin",
            .sets = {{1, {{1, "one"}, {2, "two"}, {7, "seven"}}},
                     {5, {{3, "five three"}, {900, "far"}}}}};
}

} // namespace vlx::test
