#include "catalog/catalog_fixture.hpp"

namespace vlx::test {

namespace {

// A language with a code: the text stands behind its content, and word 5 tells where.
ListedObject codedLanguage(const LanguageSpec& spec, const std::u16string& code)
{
    constexpr std::size_t kCodeOffset = 10;
    Content content = languageContent(spec);
    content[kCodeOffset] = static_cast<std::uint8_t>(content.size());
    content[kCodeOffset + 1] = static_cast<std::uint8_t>(content.size() >> 8);
    for (std::size_t i = 0; i <= code.size(); ++i) {
        content.push_back(static_cast<std::uint8_t>(code.c_str()[i]));
        content.push_back(static_cast<std::uint8_t>(code.c_str()[i] >> 8));
    }
    return {spec.id, TS_OBJ_LANGUAGE, spec.name, {content}};
}

void addCoded(LocaleDirectory& directory, std::uint16_t id, const std::string& name,
              std::uint16_t codePage, const std::u16string& language,
              const std::u16string& territory)
{
    directory.add(codedLanguage(LanguageSpec{id, name, id, codePage, 0}, language));
    TerritorySpec land{.id = id, .name = name};
    land.texts[kCode] = territory;
    directory.add(land);
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
