// The grammar of locale names, `Language[_Territory][.Codepage][@Sort]`, in the three forms of a
// name.
#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

constexpr std::uint32_t kFallback = TS_LOCALE_FALLBACK;

struct NameCase {
    const char* what;
    const char* name;
    std::uint32_t options;
    std::int32_t code;
    const char* objects[4]; // language, territory, code page, sort; null is the binary sort
};

void PrintTo(const NameCase& row, std::ostream* out)
{
    *out << '"' << row.name << '"';
}

constexpr NameCase good(const char* what, const char* name, const char* language,
                        const char* territory, const char* codePage, const char* sort,
                        std::uint32_t options = 0)
{
    return {what, name, options, TS_ERR_NONE, {language, territory, codePage, sort}};
}

constexpr NameCase bad(const char* what, const char* name, std::int32_t code,
                       std::uint32_t options = 0)
{
    return {what, name, options, code, {}};
}

class NameTest : public WorldTest, public ::testing::WithParamInterface<NameCase> {};

TEST_P(NameTest, LeadsToItsObjectsInEveryForm)
{
    const NameCase& row = GetParam();
    for (const NameForm form : kNameForms) {
        SCOPED_TRACE(nameOf(form));
        std::int32_t code = kUntouched;
        const Handle locale = getLocale(form, row.name, row.options, &code);
        EXPECT_EQ(code, row.code);
        ASSERT_EQ(locale != nullptr, row.code == TS_ERR_NONE);
        if (!locale)
            continue;
        EXPECT_STREQ(locale->language->name, row.objects[0]);
        EXPECT_STREQ(locale->territory->name, row.objects[1]);
        EXPECT_STREQ(locale->codePage->name, row.objects[2]);
        if (row.objects[3]) {
            ASSERT_NE(locale->sort, nullptr);
            EXPECT_STREQ(locale->sort->name, row.objects[3]);
        } else {
            EXPECT_EQ(locale->sort, nullptr);
        }
        EXPECT_EQ((locale->flags & kLocaleBinarySort) != 0, row.objects[3] == nullptr);
    }
}

constexpr NameCase kPresentOrMissing[] = {
    good("NothingIsEnglish", "", "English", "Homeland", "Latin", "Dictionary"),
    good("Language", "German", "German", "Germany", "Double", "Phonebook"),
    good("Territory", "_Germany", "English", "Germany", "Latin", "Dictionary"),
    good("CodePage", ".Double", "English", "Homeland", "Double", "Dictionary"),
    good("Sort", "@Phonebook", "English", "Homeland", "Latin", "Phonebook"),
    good("LanguageTerritory", "German_Homeland", "German", "Homeland", "Double", "Phonebook"),
    good("LanguageCodePage", "German.Latin", "German", "Germany", "Latin", "Phonebook"),
    good("LanguageSort", "German@Dictionary", "German", "Germany", "Double", "Dictionary"),
    good("TerritoryCodePage", "_Germany.Double", "English", "Germany", "Double", "Dictionary"),
    good("TerritorySort", "_Germany@Phonebook", "English", "Germany", "Latin", "Phonebook"),
    good("CodePageSort", ".Double@Phonebook", "English", "Homeland", "Double", "Phonebook"),
    good("AllButSort", "German_Homeland.Latin", "German", "Homeland", "Latin", "Phonebook"),
    good("AllButCodePage", "German_Homeland@Dictionary", "German", "Homeland", "Double",
         "Dictionary"),
    good("AllButTerritory", "German.Latin@Dictionary", "German", "Germany", "Latin", "Dictionary"),
    good("AllButLanguage", "_Germany.Double@Phonebook", "English", "Germany", "Double",
         "Phonebook"),
    good("All", "German_Homeland.Latin@Dictionary", "German", "Homeland", "Latin", "Dictionary"),
};

constexpr NameCase kEmptyParts[] = {
    good("Territory", "_", "English", "Homeland", "Latin", "Dictionary"),
    good("CodePage", ".", "English", "Homeland", "Latin", "Dictionary"),
    good("Sort", "@", "English", "Homeland", "Latin", "Dictionary"),
    good("TerritoryCodePage", "_.", "English", "Homeland", "Latin", "Dictionary"),
    good("TerritorySort", "_@", "English", "Homeland", "Latin", "Dictionary"),
    good("CodePageSort", ".@", "English", "Homeland", "Latin", "Dictionary"),
    good("AllOfThem", "_.@", "English", "Homeland", "Latin", "Dictionary"),
    good("TerritoryBehindLanguage", "German_", "German", "Germany", "Double", "Phonebook"),
    good("CodePageBehindLanguage", "German.", "German", "Germany", "Double", "Phonebook"),
    good("SortBehindLanguage", "German@", "German", "Germany", "Double", "Phonebook"),
    good("AllBehindLanguage", "German_.@", "German", "Germany", "Double", "Phonebook"),
    good("CodePageBehindTerritory", "German_Homeland.", "German", "Homeland", "Double",
         "Phonebook"),
    good("SortBehindTerritory", "German_Homeland@", "German", "Homeland", "Double", "Phonebook"),
    good("SortBehindCodePage", "German_Homeland.Latin@", "German", "Homeland", "Latin",
         "Phonebook"),
    good("TerritoryBeforeCodePage", "German_.Latin", "German", "Germany", "Latin", "Phonebook"),
    good("CodePageBeforeSort", "German.@Dictionary", "German", "Germany", "Double", "Dictionary"),
};

constexpr NameCase kSpellings[] = {
    good("LowerCase", "german_homeland.latin@dictionary", "German", "Homeland", "Latin",
         "Dictionary"),
    good("UpperCase", "GERMAN_HOMELAND.LATIN@DICTIONARY", "German", "Homeland", "Latin",
         "Dictionary"),
    good("MixedCase", "gERMAN_hOMELAND.lATIN@dICTIONARY", "German", "Homeland", "Latin",
         "Dictionary"),
    good("UnderscoreInTerritory", "German_East_Land", "German", "East_Land", "Double", "Phonebook"),
    good("FullStopInCodePage", "German.Page.One", "German", "Germany", "Page.One", "Phonebook"),
    good("UnderscoreInCodePage", "German.Page_Two", "German", "Germany", "Page_Two", "Phonebook"),
    good("AllDelimitersInSort", "German@Sort_a.b@c", "German", "Germany", "Double", "Sort_a.b@c"),
    bad("LanguageCutShort", "Germa", TS_ERR_LANGUAGE),
    bad("LanguageTooLong", "Germans", TS_ERR_LANGUAGE),
    bad("BlankBeforeLanguage", " German", TS_ERR_LANGUAGE),
    bad("BlankBehindLanguage", "German ", TS_ERR_LANGUAGE),
    bad("TerritoryAsLanguage", "Homeland", TS_ERR_LANGUAGE),
    bad("TwoUnderscores", "German__Homeland", TS_ERR_TERRITORY),
    bad("UnderscoreBehindTerritory", "German_Homeland_", TS_ERR_TERRITORY),
    bad("TwoFullStops", "German..Latin", TS_ERR_CODEPAGE),
    bad("FullStopBehindCodePage", "German.Latin.", TS_ERR_CODEPAGE),
    bad("TerritoryBehindCodePage", "German.Latin_Homeland", TS_ERR_CODEPAGE),
    bad("TwoAts", "German@@Dictionary", TS_ERR_SORT),
    bad("AtBehindSort", "German@Dictionary@", TS_ERR_SORT),
    bad("CodePageBehindSort", "German@Dictionary.Latin", TS_ERR_SORT),
    bad("TerritoryBehindSort", "German@Dictionary_Homeland", TS_ERR_SORT),
    bad("ByteAbove127", "Germ\xE4n", TS_ERR_LANGUAGE),
};

constexpr NameCase kBinarySorts[] = {
    good("UpperCase", "German@BINARY", "German", "Germany", "Double", nullptr),
    good("LowerCase", "German@binary", "German", "Germany", "Double", nullptr),
    good("MixedCase", "German@Binary", "German", "Germany", "Double", nullptr),
    good("WithNothingElse", "@BINARY", "English", "Homeland", "Latin", nullptr),
    good("BehindAll", "German_Homeland.Latin@BINARY", "German", "Homeland", "Latin", nullptr),
    good("WithFallback", "German@BINARY", "German", "Germany", "Double", nullptr, kFallback),
    good("AsDefaultOfLanguage", "Plain", "Plain", "Homeland", "Latin", nullptr),
    good("LongerNameIsAnObject", "German@BINARYTREE", "German", "Germany", "Double", "BinaryTree"),
    bad("LongerNameIsNotListed", "German@BINARYX", TS_ERR_SORT),
    bad("ShorterNameIsNotListed", "German@BINAR", TS_ERR_SORT),
};

constexpr NameCase kUnlisted[] = {
    bad("Language", "Klingon", TS_ERR_LANGUAGE),
    bad("Territory", "German_Nowhere", TS_ERR_TERRITORY),
    bad("CodePage", "German.None", TS_ERR_CODEPAGE),
    bad("Sort", "German@None", TS_ERR_SORT),
    bad("AllTellTheLanguage", "Klingon_Nowhere.None@None", TS_ERR_LANGUAGE),
    bad("LastThreeTellTheTerritory", "German_Nowhere.None@None", TS_ERR_TERRITORY),
    bad("LastTwoTellTheCodePage", "German.None@None", TS_ERR_CODEPAGE),
    bad("SortBehindAll", "German_Homeland.Latin@None", TS_ERR_SORT),
    good("LanguageFallsBackToEnglish", "Klingon", "English", "Homeland", "Latin", "Dictionary",
         kFallback),
    good("OtherPartsStayBehindAFallenLanguage", "Klingon_Germany.Double@Phonebook", "English",
         "Germany", "Double", "Phonebook", kFallback),
    good("TerritoryFallsBackToTheLanguages", "German_Nowhere", "German", "Germany", "Double",
         "Phonebook", kFallback),
    good("CodePageFallsBackToTheLanguages", "German.None", "German", "Germany", "Double",
         "Phonebook", kFallback),
    good("SortFallsBackToTheLanguages", "German@None", "German", "Germany", "Double", "Phonebook",
         kFallback),
    good("SortFallsBackToBinary", "Plain@None", "Plain", "Homeland", "Latin", nullptr, kFallback),
    good("AllFallBack", "Klingon_Nowhere.None@None", "English", "Homeland", "Latin", "Dictionary",
         kFallback),
    good("FallbackLeavesAGoodNameAlone", "German_Homeland.Latin@Dictionary", "German", "Homeland",
         "Latin", "Dictionary", kFallback),
};

std::string caseName(const ::testing::TestParamInfo<NameCase>& info)
{
    return info.param.what;
}

INSTANTIATE_TEST_SUITE_P(PresentOrMissing, NameTest, ::testing::ValuesIn(kPresentOrMissing),
                         caseName);
INSTANTIATE_TEST_SUITE_P(EmptyParts, NameTest, ::testing::ValuesIn(kEmptyParts), caseName);
INSTANTIATE_TEST_SUITE_P(Spellings, NameTest, ::testing::ValuesIn(kSpellings), caseName);
INSTANTIATE_TEST_SUITE_P(BinarySorts, NameTest, ::testing::ValuesIn(kBinarySorts), caseName);
INSTANTIATE_TEST_SUITE_P(Unlisted, NameTest, ::testing::ValuesIn(kUnlisted), caseName);

class LongNameTest : public WorldTest {
  protected:
    void expectCode(const std::string& name, std::int32_t wanted, std::uint32_t options = 0)
    {
        for (const NameForm form : kNameForms) {
            SCOPED_TRACE(nameOf(form));
            std::int32_t code = kUntouched;
            const Handle locale = getLocale(form, name, options, &code);
            EXPECT_EQ(code, wanted);
            EXPECT_EQ(locale != nullptr, wanted == TS_ERR_NONE);
        }
    }

    const std::string long_ = std::string(10000, 'x');
};

TEST_F(LongNameTest, OfALanguageIsNotListed)
{
    expectCode(long_, TS_ERR_LANGUAGE);
}

TEST_F(LongNameTest, OfATerritoryIsNotListed)
{
    expectCode("German_" + long_, TS_ERR_TERRITORY);
}

TEST_F(LongNameTest, OfACodePageIsNotListed)
{
    expectCode("German." + long_, TS_ERR_CODEPAGE);
}

TEST_F(LongNameTest, OfASortIsNotListed)
{
    expectCode("German@" + long_, TS_ERR_SORT);
}

TEST_F(LongNameTest, FallsBackInEveryPart)
{
    expectCode(long_ + "_" + long_ + "." + long_ + "@" + long_, TS_ERR_NONE, kFallback);
}

TEST_F(LongNameTest, OfDelimitersAloneIsATerritory)
{
    expectCode(std::string(10000, '_'), TS_ERR_TERRITORY);
}

TEST_F(LongNameTest, IsReadBehindTheBufferOfUsualNames)
{
    for (std::size_t length = 120; length < 145; ++length)
        expectCode("German@" + std::string(length - 7, 'x'), TS_ERR_SORT);
}

// The low byte of a 32-bit value counts for a lookup, the whole value for delimiters and the end.
class PackedNameTest : public WorldTest {
  protected:
    Handle make(const std::u32string& name) { return Handle(TSGetLocaleW(units(name), 0, &code_)); }
};

TEST_F(PackedNameTest, LowBytesFindAnObject)
{
    const Handle locale = make(U"\x0147\x0265rm\x0361n");
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "German");
}

TEST_F(PackedNameTest, LowByteOfADelimiterDelimitsNothing)
{
    EXPECT_EQ(make(U"German\x015FHomeland"), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
}

TEST_F(PackedNameTest, LowByteOfADelimiterIsPartOfAName)
{
    const Handle locale = make(U"German_East\x015FLand");
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->territory->name, "East_Land");
}

TEST_F(PackedNameTest, LowByteOfZeroCountsAsTheTerminatorOfAPart)
{
    const Handle locale = make(U"German\x0100_Homeland@BINARY\x0200");
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "German");
    EXPECT_STREQ(locale->territory->name, "Homeland");
    EXPECT_EQ(locale->sort, nullptr);
}

TEST_F(PackedNameTest, LowByteOfZeroEndsNothingInsideAName)
{
    EXPECT_EQ(make(U"German\x0100x"), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
}

TEST_F(PackedNameTest, AllBitsOfAValueButTheLowByteAreDropped)
{
    std::u32string name = packedName("German");
    for (char32_t& value : name)
        value |= 0xFFFFFF00;
    const Handle locale = make(name);
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->language->name, "German");
}

// A 16-bit name goes through the code page of names.
class UnicodeNameTest : public WorldTest {};

TEST_F(UnicodeNameTest, UnitThatTheCodePageOfNamesLacksIsItsSubstitute)
{
    EXPECT_EQ(TSGetLocaleU(units(u"Germ\u0161n"), 0, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
}

TEST_F(UnicodeNameTest, LowByteOfAUnitDoesNotCount)
{
    EXPECT_EQ(TSGetLocaleU(units(u"\u0147erman"), 0, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
}

} // namespace

} // namespace vlx::test
