// TSGetLocale and its forms: options, failures and the record that they make.
#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

class GetLocaleTest : public LocaleTest {};

class GetLocaleForm : public WorldTest, public ::testing::WithParamInterface<NameForm> {
  protected:
    Handle make(const std::string& name, std::uint32_t options = 0)
    {
        return getLocale(GetParam(), name, options, &code_);
    }
};

INSTANTIATE_TEST_SUITE_P(Forms, GetLocaleForm, ::testing::ValuesIn(kNameForms), formName);

TEST_P(GetLocaleForm, EveryOtherOptionBitIsRefusedBeforeAnyAllocation)
{
    make("English"); // loads the code page of names, which comes before the options
    const std::uint32_t calls = Allocator::calls(Slot::kAllocate);
    for (unsigned bit = 0; bit < 32; ++bit) {
        const std::uint32_t option = 1U << bit;
        if (option == TS_LOCALE_USER || option == TS_LOCALE_FALLBACK)
            continue;
        code_ = kUntouched;
        EXPECT_EQ(make("", option), nullptr) << bit;
        EXPECT_EQ(code_, TS_ERR_ARGUMENT) << bit;
        EXPECT_EQ(make("German", option | TS_LOCALE_FALLBACK), nullptr) << bit;
        EXPECT_EQ(code_, TS_ERR_ARGUMENT) << bit;
    }
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), calls);
}

TEST_P(GetLocaleForm, CodeMayBeNull)
{
    EXPECT_NE(getLocale(GetParam(), "German", 0, nullptr), nullptr);
    EXPECT_EQ(getLocale(GetParam(), "Klingon", 0, nullptr), nullptr);
    EXPECT_EQ(getLocale(GetParam(), "", 1, nullptr), nullptr);
}

TEST_P(GetLocaleForm, CodeIsClearedBySuccess)
{
    code_ = kUntouched;
    const Handle locale = make("German");
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_EQ(TSGetError(locale.get()), TS_ERR_NONE);
}

TEST_P(GetLocaleForm, NewRecordHasNoModifiedValue)
{
    const Handle locale = make("German");
    EXPECT_EQ(locale->modifiedMask, 0U);
    EXPECT_EQ(locale->modifiedMaskU, 0U);
}

TEST_P(GetLocaleForm, ValuesAreThoseOfTheTerritoryInTheCodePage)
{
    const LocaleDirectory directory = worldDirectory();
    const Handle locale = make("English_Germany.Shift@BINARY");
    const oracle::Page page = oracle::pageOf(directory.objects().at(8));
    const Content& territory = directory.objects().at(4).sections[0];
    EXPECT_EQ(valuesOf(*locale),
              oracle::freshValues(page, oracle::Span(territory.data(), territory.size()), true));
}

TEST_P(GetLocaleForm, FlagsTellOfASingleBytePage)
{
    EXPECT_EQ(make(".Latin")->flags & 0x1C0, 0x40);
}

TEST_P(GetLocaleForm, FlagsTellOfADoubleBytePage)
{
    EXPECT_EQ(make(".Double")->flags & 0x1C0, 0);
}

TEST_P(GetLocaleForm, FlagsTellOfAStatefulPage)
{
    EXPECT_EQ(make(".Shift")->flags & 0x1C0, 0x100);
}

TEST_P(GetLocaleForm, FlagsTellOfTheBinarySort)
{
    EXPECT_EQ(make("@BINARY")->flags & 0x1C0, 0xC0);
}

TEST_P(GetLocaleForm, EveryHandleHasTextsOfItsOwn)
{
    const Handle one = make("German");
    const Handle other = make("German");
    for (const LocaleText& text : kLocaleText) {
        EXPECT_NE((*one).*text.bytes, (*other).*text.bytes);
        EXPECT_NE((*one).*text.unicode, (*other).*text.unicode);
    }
}

TEST_P(GetLocaleForm, ReleaseGivesBackAllThatTheLocaleTook)
{
    make("German");
    const int blocks = Allocator::liveBlocks();
    Handle locale = make("German");
    EXPECT_EQ(Allocator::liveBlocks(), blocks + 17); // the record and two forms of eight texts
    EXPECT_EQ(TSReleaseLocale(locale.release()), 0);
    EXPECT_EQ(Allocator::liveBlocks(), blocks);
}

TEST_P(GetLocaleForm, FailureLeavesNothing)
{
    make("German.Double@Phonebook");
    make("_Homeland.Latin@Dictionary");
    const int blocks = Allocator::liveBlocks();
    for (const char* const name : {"Klingon", "German_Nowhere", "German.None", "German@None"})
        EXPECT_EQ(make(name), nullptr) << name;
    EXPECT_EQ(Allocator::liveBlocks(), blocks);
}

TEST_P(GetLocaleForm, MissingFileOfALanguageGivesBuiltInData)
{
    MemoryHost::erase(LocaleDirectory::fileOf(kDirectory, TS_OBJ_LANGUAGE, 2));
    // The built-in data asks for the objects of id 1, which this directory lacks.
    EXPECT_EQ(make("German"), nullptr);
    EXPECT_EQ(code_, TS_ERR_TERRITORY);
    const Handle locale = make("German_Homeland.Latin");
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_STREQ(locale->language->name, "German");
    EXPECT_EQ(locale->sort, nullptr);
}

TEST_P(GetLocaleForm, MissingFileOfATerritoryGivesBuiltInData)
{
    MemoryHost::erase(LocaleDirectory::fileOf(kDirectory, TS_OBJ_TERRITORY, 11));
    const Handle locale = make("German");
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_STREQ(locale->territory->name, "Germany");
    EXPECT_STREQ(locale->currencySymbol, "$");
}

TEST_P(GetLocaleForm, MissingFileOfACodePageGivesBuiltInData)
{
    MemoryHost::erase(LocaleDirectory::fileOf(kDirectory, TS_OBJ_CODEPAGE, 21));
    const Handle locale = make("German");
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(code_, TS_ERR_NONE);
    EXPECT_STREQ(locale->codePage->name, "Double");
    EXPECT_EQ(locale->flags & 0x140, 0x40);
}

TEST_P(GetLocaleForm, MissingFileOfASortIsAnotherFailure)
{
    MemoryHost::erase(LocaleDirectory::fileOf(kDirectory, TS_OBJ_SORT, 2));
    EXPECT_EQ(make("German"), nullptr);
    EXPECT_EQ(code_, TS_ERR_NO_OBJECTS);
    EXPECT_EQ(make("German", TS_LOCALE_FALLBACK), nullptr);
    EXPECT_EQ(code_, TS_ERR_NO_OBJECTS);
}

class StrictTest : public LocaleTest, public ::testing::WithParamInterface<int> {};

TEST_P(StrictTest, MissingFileIsAnotherFailureWithAndWithoutFallback)
{
    ASSERT_EQ(start(worldDirectory(), TS_STRICT_OBJECTS), TS_ERR_NONE);
    constexpr unsigned kIds[] = {2, 11, 21, 2};
    const auto type = static_cast<unsigned>(GetParam());
    MemoryHost::erase(LocaleDirectory::fileOf(kDirectory, type, kIds[type]));
    for (const std::uint32_t options : {0U, TS_LOCALE_FALLBACK}) {
        EXPECT_EQ(make("German", options), nullptr);
        EXPECT_EQ(code_, TS_ERR_NO_OBJECTS);
    }
}

std::string typeName(const ::testing::TestParamInfo<int>& info)
{
    constexpr const char* kTypes[] = {"Language", "Territory", "CodePage", "Sort"};
    return kTypes[info.param];
}
INSTANTIATE_TEST_SUITE_P(Types, StrictTest, ::testing::Range(0, 4), typeName);

TEST_F(GetLocaleTest, NullNameActsAsTheEmptyName)
{
    ASSERT_EQ(start(worldDirectory()), TS_ERR_NONE);
    const Handle bytes(TSGetLocale(nullptr, 0, &code_));
    const Handle unicode(TSGetLocaleU(nullptr, 0, &code_));
    const Handle packed(TSGetLocaleW(nullptr, 0, &code_));
    for (const Handle* const locale : {&bytes, &unicode, &packed}) {
        ASSERT_NE(*locale, nullptr);
        EXPECT_STREQ((*locale)->language->name, "English");
    }
}

TEST_F(GetLocaleTest, DefaultsThatAreNotListedAreToldByTheirKind)
{
    WorldPages pages;
    LocaleDirectory directory;
    directory.add(LanguageSpec{1, "NoTerritory", 99, 20, 0})
        .add(LanguageSpec{2, "NoCodePage", 1, 99, 0})
        .add(LanguageSpec{3, "NoSort", 1, 20, 99})
        .add(TerritorySpec{})
        .add("Latin", pages.latin)
        .add(SortSpec{});
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_EQ(make("NoTerritory"), nullptr);
    EXPECT_EQ(code_, TS_ERR_TERRITORY);
    EXPECT_EQ(make("NoCodePage"), nullptr);
    EXPECT_EQ(code_, TS_ERR_CODEPAGE);
    EXPECT_EQ(make("NoSort"), nullptr);
    EXPECT_EQ(code_, TS_ERR_SORT);
    EXPECT_NE(make("NoTerritory_Testland"), nullptr);
    EXPECT_NE(make("NoCodePage.Latin"), nullptr);
    EXPECT_NE(make("NoSort@BINARY"), nullptr);
}

TEST_F(GetLocaleTest, EnglishIsLookedUpByNameAndMayBeMissing)
{
    WorldPages pages;
    LocaleDirectory directory;
    directory.add(LanguageSpec{1, "German", 1, 20, 0})
        .add(TerritorySpec{})
        .add("Latin", pages.latin);
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    for (const std::uint32_t options : {0U, TS_LOCALE_FALLBACK}) {
        EXPECT_EQ(make("", options), nullptr);
        EXPECT_EQ(code_, TS_ERR_LANGUAGE);
    }
    EXPECT_EQ(make("Klingon", TS_LOCALE_FALLBACK), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
}

TEST_F(GetLocaleTest, LanguageOfAnEmptyRangeOfTerritoriesIsNoTerritory)
{
    WorldPages pages;
    LocaleDirectory directory;
    directory.add(LanguageSpec{5, "English", 5, 20, 0}).add("Latin", pages.latin);
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_EQ(make(""), nullptr);
    EXPECT_EQ(code_, TS_ERR_TERRITORY);
}

TEST_F(GetLocaleTest, TerritoryOfAnEmptyRangeOfCodePagesIsNoCodePage)
{
    LocaleDirectory directory;
    directory.add(LanguageSpec{5, "English", 7, 7, 0}).add(TerritorySpec{.id = 7});
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_EQ(make(""), nullptr);
    EXPECT_EQ(code_, TS_ERR_CODEPAGE);
}

TEST_F(GetLocaleTest, CodePageOfAnEmptyRangeOfSortsIsKeptAsTheSort)
{
    WorldPages pages;
    LocaleDirectory directory;
    directory.add(LanguageSpec{5, "English", 7, 20, 20})
        .add(TerritorySpec{.id = 7})
        .add("Latin", pages.latin);
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    const Handle locale = make("");
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(locale->sort, locale->codePage);
    EXPECT_EQ(locale->flags & kLocaleBinarySort, 0);
}

TEST_F(GetLocaleTest, TerritoryOfAnEmptyRangeOfCodePagesIsNoCodePageOfNames)
{
    LocaleDirectory directory;
    directory.add(LanguageSpec{5, "English", 367, 367, 0}).add(TerritorySpec{.id = 367});
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_EQ(getLocale(NameForm::kUnicode, "English", 0, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_NO_OBJECTS);
}

TEST_F(GetLocaleTest, FirstOfTwoEqualNamesIsTaken)
{
    WorldPages pages;
    LocaleDirectory directory;
    directory.add(LanguageSpec{5, "English", 7, 20, 0})
        .add(TerritorySpec{.id = 7, .name = "Twin"})
        .add(TerritorySpec{.id = 8, .name = "TWIN"})
        .add("Latin", pages.latin);
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_EQ(make("_twin")->territory->id, 7);
}

TEST_F(GetLocaleTest, NameOfThirtyThreeCharactersIsFound)
{
    WorldPages pages;
    const std::string name(33, 'L');
    LocaleDirectory directory;
    directory.add(LanguageSpec{5, name, 7, 20, 0})
        .add(TerritorySpec{.id = 7})
        .add("Latin", pages.latin);
    ASSERT_EQ(start(directory), TS_ERR_NONE);
    EXPECT_STREQ(make(name)->language->name, name.c_str());
    EXPECT_EQ(make(name + "L"), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
}

class BuiltinTest : public LocaleTest {
  protected:
    BuiltinTest() { EXPECT_EQ(start(), TS_ERR_NO_CONTROL_FILE); }
};

TEST_F(BuiltinTest, EmptyNameIsTheBuiltInLocaleInEveryForm)
{
    for (const NameForm form : kNameForms) {
        SCOPED_TRACE(nameOf(form));
        const Handle locale = getLocale(form, "", 0, &code_);
        ASSERT_NE(locale, nullptr);
        EXPECT_STREQ(locale->language->name, "English");
        EXPECT_STREQ(locale->territory->name, "UnitedStates");
        EXPECT_STREQ(locale->codePage->name, "US-ASCII");
        EXPECT_EQ(locale->sort, nullptr);
        EXPECT_EQ(locale->flags, 0x01 | 0x04 | 0x10 | 0x20 | 0x40 | 0x80);
    }
}

TEST_F(BuiltinTest, FullNameIsTheBuiltInLocale)
{
    EXPECT_NE(make("english_unitedstates.us-ascii@binary"), nullptr);
    EXPECT_EQ(make("German"), nullptr);
    EXPECT_EQ(code_, TS_ERR_LANGUAGE);
    EXPECT_NE(make("German_Germany.MS1252@German", TS_LOCALE_FALLBACK), nullptr);
}

TEST_F(BuiltinTest, UnicodeNameHasNoCodePageOfNames)
{
    EXPECT_EQ(getLocale(NameForm::kUnicode, "English", 0, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_NO_OBJECTS);
    EXPECT_EQ(getLocale(NameForm::kUnicode, std::string(10000, 'x'), 0, &code_), nullptr);
    EXPECT_EQ(code_, TS_ERR_NO_OBJECTS);
}

TEST_F(BuiltinTest, PackedNameNeedsNoCodePageOfNames)
{
    EXPECT_NE(getLocale(NameForm::kPacked, "English", 0, &code_), nullptr);
}

} // namespace

} // namespace vlx::test
