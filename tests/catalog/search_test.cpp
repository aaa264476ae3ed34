// The search for a catalog by templates.
#include "catalog/catalog_fixture.hpp"

namespace vlx::test {
namespace {

class SearchCatalog : public CatalogTest {
  protected:
    SearchCatalog() { Trace::setMask(TRC1_INPUTS); }

    using Paths = std::vector<std::string>;

    // The paths of one search pass that finds nothing.
    Paths tried(const char* templates, const char* name = "msgs")
    {
        triedPaths();
        EXPECT_EQ(TSOpenCatalog(locale_.get(), templates, name, TS_CATALOG_SEARCH_ONCE), nullptr);
        EXPECT_EQ(TSGetError(locale_.get()), 71);
        return triedPaths();
    }
};

TEST_F(SearchCatalog, ANameAloneIsTheOnlyPath)
{
    EXPECT_EQ(tried(nullptr), Paths{"msgs"});
    EXPECT_EQ(tried(""), Paths{"msgs"});
}

TEST_F(SearchCatalog, ATemplateIsExpanded)
{
    const Paths wanted{"C:\\cat\\EN_USA\\msgs", "msgs"};
    EXPECT_EQ(tried("C:\\cat\\%L\\%N;"), wanted);
    EXPECT_EQ(tried("C:\\cat\\%L\\%N"), wanted); // the list adds a ';'
}

TEST_F(SearchCatalog, CodesAndOtherSequences)
{
    EXPECT_EQ(tried("%l;%t;%x;%%;%;a%"), (Paths{"EN", "USA", "%x", "%", "%", "a%", "msgs"}));
}

TEST_F(SearchCatalog, APercentSignThatStaysLeavesTheNextCharacterItsMeaning)
{
    EXPECT_EQ(tried("%x%l;%%N"), (Paths{"%xEN", "%N", "msgs"}));
}

TEST_F(SearchCatalog, AnEmptyCodeAddsNothing)
{
    locale_ = make("Bare_Bare");
    EXPECT_EQ(tried("a%lb;%L;%t"), (Paths{"ab", "_", "msgs"}));
}

TEST_F(SearchCatalog, AnEmptyPathIsSkipped)
{
    EXPECT_EQ(tried(";;a;;b;;"), (Paths{"a", "b", "msgs"}));
}

TEST_F(SearchCatalog, TheNameIsATemplateToo)
{
    EXPECT_EQ(tried(nullptr, "a;%l"), (Paths{"a", "EN"}));
}

TEST_F(SearchCatalog, TheVariableComesBetweenTemplatesAndName)
{
    MemoryHost::setEnvironment("TS_NLSPATH", "e1/%N;e2");
    EXPECT_EQ(tried("t"), (Paths{"t", "e1/msgs", "e2", "msgs"}));
    MemoryHost::setEnvironment("TS_NLSPATH", "");
    EXPECT_EQ(tried("t"), (Paths{"t", "msgs"}));
}

TEST_F(SearchCatalog, TheVariableIsCutAt511Bytes)
{
    std::string value;
    for (int i = 0; i < 128; ++i)
        value += "abc;"; // 512 bytes
    for (const std::string& tail : {std::string("xyz"), std::string()}) {
        MemoryHost::setEnvironment("TS_NLSPATH", value + tail);
        Paths wanted(128, "abc");
        wanted.emplace_back("msgs");
        EXPECT_EQ(tried(nullptr), wanted);
    }
    value.resize(510);
    MemoryHost::setEnvironment("TS_NLSPATH", value + "defgh");
    EXPECT_EQ(tried(nullptr)[127], "abd");
}

TEST_F(SearchCatalog, TheFirstFileEndsTheSearch)
{
    MemoryHost::put("b", smallCatalog().bytes());
    MemoryHost::put("c", smallCatalog().bytes());
    triedPaths();
    const Catalog catalog(TSOpenCatalog(locale_.get(), "a;b;c", "msgs", 0));
    EXPECT_TRUE(catalog);
    EXPECT_EQ(triedPaths(), (Paths{"a", "b"}));
    EXPECT_EQ(TSGetError(locale_.get()), 0);
}

TEST_F(SearchCatalog, TheSecondPassHasTheCodesOfTheDefaultLanguage)
{
    MemoryHost::put("DF/msgs", smallCatalog().bytes());
    {
        const Catalog catalog(TSOpenCatalog(locale_.get(), "%l/%N", "msgs", 0));
        ASSERT_TRUE(catalog);
        EXPECT_EQ(catalog->locale, locale_.get());
        EXPECT_EQ(message(catalog.get(), 1, 2), "two");
    }
    forgetLocaleOfSecondPass();
}

TEST_F(SearchCatalog, WithoutALocaleForTheSecondPassItIs71)
{
    loadAll();
    triedPaths();
    const std::int32_t codes[] = {20, 20, 71}; // two files are tried, then the locale is made
    for (std::uint32_t n = 1; n <= std::size(codes); ++n) {
        Allocator::failAllocation(n);
        EXPECT_EQ(TSOpenCatalog(locale_.get(), "%l", "msgs", 0), nullptr);
        EXPECT_EQ(TSGetError(locale_.get()), codes[n - 1]) << n;
        Allocator::failAllocation(0);
    }
    EXPECT_EQ(triedPaths(), (Paths{"EN", "EN", "msgs", "EN", "msgs"}));
    EXPECT_EQ(TSOpenCatalog(locale_.get(), "%l", "msgs", 0), nullptr);
    EXPECT_EQ(triedPaths(), (Paths{"EN", "msgs", "DF", "msgs"}));
    forgetLocaleOfSecondPass();
}

TEST_F(SearchCatalog, PathsThatPass256BytesAreSkipped)
{
    const std::string fits(255, 'a');
    EXPECT_EQ(tried((fits + ";" + fits + "b;c").c_str()), (Paths{fits, "c", "msgs"}));
    const std::string almost(252, 'a');
    EXPECT_EQ(tried((almost + "%t;" + almost + "%tb;" + almost + "%N").c_str()),
              (Paths{almost + "USA", "msgs"}));
}

TEST_F(SearchCatalog, ATrailByteIsNoDelimiter)
{
    locale_ = make("Wide_Wide");
    // 0x8A42 is a character; its second byte is no path delimiter, and neither is that of 0x813B.
    EXPECT_EQ(tried("\x8A\x42;\x81\x3Bz;\x81\x25N"),
              (Paths{"\x8A\x42", "\x81\x3Bz", "\x81\x25N", "msgs"}));
    EXPECT_EQ(tried("%L"), (Paths{"\x8A\x42_W", "msgs"}));
}

TEST_F(SearchCatalog, AnElementThatEndsInsideACharacterHarmsNoOther)
{
    locale_ = make("Wide_Wide");
    EXPECT_EQ(tried("a\x8A", "b\x8A"), (Paths{"a\x8A", "b\x8A"}));
}

TEST_F(SearchCatalog, ShiftBytesOfAPathAreItsOwn)
{
    locale_ = make("Codes_Codes.Shift");
    // The yen is 0x4243 between 0x0E and 0x0F; the first path gets a shift byte of its own at the
    // end of the character, the second no more than it needs.
    EXPECT_EQ(tried("\x0E\x42\x43\x0F;\x0E\x42\x43\x0F\x0E\x42\x43\x0F!"),
              (Paths{"\x0E\x42\x43\x0F", "\x0E\x42\x43\x42\x43\x0F!", "msgs"}));
    EXPECT_EQ(tried("a%N", "\x0E\x42\x43\x0F"), (Paths{"a\x0E\x42\x43\x0F", "\x0E\x42\x43\x0F"}));
}

TEST_F(SearchCatalog, AClosingShiftByteHasRoomInThePath)
{
    locale_ = make("Codes_Codes.Shift");
    const std::string yen = "\x0E\x42\x43";
    EXPECT_EQ(tried((std::string(251, 'a') + yen + "\x0F").c_str()),
              (Paths{std::string(251, 'a') + yen + "\x0F", "msgs"}));
    EXPECT_EQ(tried((std::string(252, 'a') + yen + "\x0F").c_str()), Paths{"msgs"});
}

TEST_F(SearchCatalog, UnicodeAndPackedTemplatesAreThoseOfTheCodePage)
{
    locale_ = make("Wide_Wide");
    triedPaths();
    EXPECT_EQ(TSOpenCatalogU(locale_.get(), units(u"%L/%N;\u5186"), units(u"n\u5186"),
                             TS_CATALOG_SEARCH_ONCE),
              nullptr);
    EXPECT_EQ(TSGetError(locale_.get()), 71);
    const Paths wanted{"\x8A\x42_W/n\x8A\x42", "\x8A\x42", "n\x8A\x42"};
    EXPECT_EQ(triedPaths(), wanted);
    const std::u32string name{U'n', 0x8A42};
    const std::u32string templates{'%', 'L', '/', '%', 'N', ';', 0x8A42};
    EXPECT_EQ(TSOpenCatalogW(locale_.get(), units(templates), units(name), TS_CATALOG_SEARCH_ONCE),
              nullptr);
    EXPECT_EQ(triedPaths(), wanted);
    EXPECT_EQ(TSOpenCatalogU(locale_.get(), nullptr, units(u"x"), TS_CATALOG_SEARCH_ONCE), nullptr);
    EXPECT_EQ(triedPaths(), Paths{"x"});
}

TEST_F(SearchCatalog, WideNamesInAStatefulCodePage)
{
    locale_ = make("Codes_Codes.Shift");
    triedPaths();
    EXPECT_EQ(TSOpenCatalogU(locale_.get(), nullptr, units(u"\u5186"), TS_CATALOG_SEARCH_ONCE),
              nullptr);
    EXPECT_EQ(triedPaths(), Paths{"\x0E\x42\x43\x0F"});
    const std::u32string name{0x4243};
    EXPECT_EQ(TSOpenCatalogW(locale_.get(), nullptr, units(name), TS_CATALOG_SEARCH_ONCE), nullptr);
    EXPECT_EQ(triedPaths(), Paths{"\x0E\x42\x43\x0F"});
}

} // namespace
} // namespace vlx::test
