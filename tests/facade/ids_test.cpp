// Locales by ids and by the host's ids, and the items that are handed on.
#include "facade/facade_fixture.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t pair(std::int32_t language, std::int32_t territory)
{
    return territory * 65536 + language;
}

class FacadeIds : public Facade {
  protected:
    std::string get(std::int32_t ids, std::int32_t codePage, std::uint32_t options = 0)
    {
        TSLocale* const locale = NLS1_GetLocale(ids, codePage, options, &code_);
        std::string name = nameOf(locale);
        if (locale)
            TSReleaseLocale(locale);
        return name;
    }

    // The names of the native table are not those of this directory; a fallback makes them fit.
    static constexpr std::uint32_t kGerman = 0x0407;
};

TEST_F(FacadeIds, APairIsALanguageAndATerritory)
{
    EXPECT_EQ(get(0x000A0002, 0), "German_America.Latin1@Book");
    EXPECT_EQ(code_, 0);
    EXPECT_EQ(get(pair(3, 20), 33), "Japanese_Germany.Shift@Binary");
    EXPECT_EQ(get(2, 31), "German_Germany.US@Book");
}

TEST_F(FacadeIds, TheLowHalfOfAPairIsTheLanguage)
{
    EXPECT_EQ(IdPair(0x00010002).language, 2);
    EXPECT_EQ(IdPair(0x00010002).territory, 1);
    LocaleDirectory directory = facadeDirectory();
    stop();
    directory.add(TerritorySpec{.id = 1, .name = "First"});
    start(directory);
    EXPECT_EQ(get(0x00010002, 0), "German_First.Latin1@Book");
}

TEST_F(FacadeIds, NoIdsAreTheLanguageEnglishAndItsDefaults)
{
    EXPECT_EQ(get(0, 0), "English_America.US@Plain");
    EXPECT_EQ(get(0, 30), "English_America.Latin1@Plain");
    EXPECT_EQ(get(pair(0, 20), 0), "English_Germany.US@Plain");
}

TEST_F(FacadeIds, UnknownIdsHaveCodesOfTheirOwn)
{
    Trace::setMask(TRC1_DETAIL);
    EXPECT_EQ(get(9, 30), "none");
    EXPECT_EQ(code_, 31);
    EXPECT_TRUE(Trace::printed("Invalid Language 9"));
    EXPECT_EQ(get(pair(2, 99), 77), "none");
    EXPECT_EQ(code_, 34);
    EXPECT_TRUE(Trace::printed("Invalid Territory 99"));
    EXPECT_EQ(get(2, 77), "none");
    EXPECT_EQ(code_, 30);
    EXPECT_TRUE(Trace::printed("Invalid Codepage 77"));
}

TEST_F(FacadeIds, ANegativePairIsTakenApartTowardsZero)
{
    EXPECT_EQ(get(-1, 0), "none"); // language -1, territory 0
    EXPECT_EQ(code_, 31);
    EXPECT_EQ(get(-65536, 0), "none"); // territory -1
    EXPECT_EQ(code_, 34);
    EXPECT_EQ(get(INT32_MIN, 0), "none");
    EXPECT_EQ(code_, 34);
}

TEST_F(FacadeIds, OptionsAreThoseOfTheLibrary)
{
    EXPECT_EQ(get(2, 0, TS_LOCALE_FALLBACK), "German_Germany.Latin1@Book");
    EXPECT_EQ(get(2, 0, 1), "none");
    EXPECT_EQ(code_, 2);
    EXPECT_EQ(NLS1_GetLocale(2, 0, 1, nullptr), nullptr);
}

TEST_F(FacadeIds, SetLocaleReplacesTheDefault)
{
    for (const std::uint32_t options : {0u, NLS1_PROCESS}) {
        EXPECT_EQ(NLS1_SetLocale(3, 33, options), 0);
        EXPECT_EQ(nameOf(tsDefaultLocale), "Japanese_Nippon.Shift@Binary");
        EXPECT_EQ(NLS1_SetLocale(2, 0, options), 0);
        EXPECT_EQ(nameOf(tsDefaultLocale), "German_Germany.Latin1@Book");
        EXPECT_EQ(NLS1_SetLocale(9, 0, options), 31);
        EXPECT_EQ(nameOf(tsDefaultLocale), "German_Germany.Latin1@Book");
    }
}

TEST_F(FacadeIds, SetLocaleOfAThreadAloneIs2)
{
    TSLocale* const own = NLS1_PrivateFunction_GetThreadLocale();
    const std::string before = nameOf(tsDefaultLocale);
    EXPECT_EQ(NLS1_SetLocale(3, 33, NLS1_THREAD), 2);
    EXPECT_EQ(NLS1_SetLocale(9, 33, NLS1_THREAD), 31);
    EXPECT_EQ(NLS1_PrivateFunction_GetThreadLocale(), own);
    EXPECT_EQ(nameOf(tsDefaultLocale), before);
}

TEST_F(FacadeIds, TheLanguageLookupForgetsTheCodeOfTheThread)
{
    EXPECT_EQ(NLS1_SetLocale(3, 0, NLS1_THREAD | NLS1_PROCESS), 0);
    EXPECT_EQ(nameOf(tsDefaultLocale), "Japanese_Nippon.Double@Binary");
    EXPECT_EQ(NLS1_SetLocale(0, 33, NLS1_THREAD | NLS1_PROCESS), 2);
    EXPECT_EQ(nameOf(tsDefaultLocale), "Japanese_Nippon.Double@Binary");
}

TEST_F(FacadeIds, ANativeIdBecomesTheLocaleOfTheThread)
{
    TSLocale* const own = NLS1_PrivateFunction_GetThreadLocale();
    const std::string before = nameOf(tsDefaultLocale);
    EXPECT_EQ(NLS1_SetLocaleFromNative(&kGerman, NLS1_THREAD | TS_LOCALE_FALLBACK), 0);
    EXPECT_NE(NLS1_PrivateFunction_GetThreadLocale(), own);
    EXPECT_EQ(nameOf(NLS1_PrivateFunction_GetThreadLocale()), "German_Germany.Latin1@Book");
    EXPECT_EQ(nameOf(tsDefaultLocale), before);
}

TEST_F(FacadeIds, ANativeIdBecomesTheDefault)
{
    const std::string before = nameOf(NLS1_PrivateFunction_GetThreadLocale());
    EXPECT_EQ(NLS1_SetLocaleFromNative(&kGerman, NLS1_PROCESS | TS_LOCALE_FALLBACK), 0);
    EXPECT_EQ(nameOf(tsDefaultLocale), "German_Germany.Latin1@Book");
    EXPECT_EQ(nameOf(NLS1_PrivateFunction_GetThreadLocale()), before);
    EXPECT_EQ(NLS1_SetLocaleFromNative(&kGerman, TS_LOCALE_FALLBACK), 0); // tried alone
}

TEST_F(FacadeIds, AThreadWithoutALocaleTakesANativeOne)
{
    TermThread(threadLocale());
    *threadLocale() = nullptr;
    EXPECT_EQ(NLS1_SetLocaleFromNative(&kGerman, NLS1_THREAD | TS_LOCALE_FALLBACK), 0);
    EXPECT_EQ(nameOf(NLS1_PrivateFunction_GetThreadLocale()), "German_Germany.Latin1@Book");
}

TEST_F(FacadeIds, AnUnknownNativeIdIsTracedByItsNumber)
{
    Trace::setMask(TRC1_ERRORS);
    const std::uint32_t unknown = 0x0437;
    EXPECT_EQ(NLS1_ConvertNativeLocale(&unknown, 0, &code_), nullptr);
    EXPECT_EQ(code_, 31);
    EXPECT_TRUE(Trace::printed("TSConvertNativeLocale failed for 0x0437 with rc 31"));
    EXPECT_EQ(NLS1_SetLocaleFromNative(&unknown, NLS1_THREAD), 31);
}

TEST_F(FacadeIds, ANullNativeIdIsRefused)
{
    Trace::setMask(TRC1_ERRORS);
    EXPECT_EQ(NLS1_ConvertNativeLocale(nullptr, 0, &code_), nullptr);
    EXPECT_EQ(code_, 2);
    EXPECT_EQ(NLS1_SetLocaleFromNative(nullptr, NLS1_THREAD), 2);
}

TEST_F(FacadeIds, TheHostsLocaleOfTheThreadIsSet)
{
    LocaleDirectory directory = facadeDirectory();
    stop();
    directory.add(TerritorySpec{.id = 276, .name = "Land"});
    start(directory);
    // Language 2 and territory 276 are a row of the table, code page 1252 is missing here.
    EXPECT_EQ(NLS1_SetNativeLocale(pair(2, 276), 0, 0, TS_LOCALE_FALLBACK), 0);
    EXPECT_EQ(MemoryHost::threadLocaleId(), 0x0407u);
    Trace::setMask(TRC1_ERRORS);
    EXPECT_EQ(NLS1_SetNativeLocale(pair(2, 276), 0, 0, 0), 32);
    EXPECT_TRUE(Trace::printed("NLS1_ConvertLocale failed with rc = 32"));
    EXPECT_EQ(NLS1_SetNativeLocale(9, 0, 0, 0), 31);
    MemoryHost::failCall(1);
    EXPECT_EQ(NLS1_SetNativeFromLocale(nullptr, 0, TS_LOCALE_FALLBACK), 32);
    EXPECT_TRUE(Trace::printed("SetThreadLocale failed to set locale to "));
}

TEST_F(FacadeIds, TheDefaultCodePageIsANumberHere)
{
    TSLocale* const locale = NLS1_GetLocale(2, 31, 0, &code_);
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(NLS1_GetLocaleNumInfo(locale, TS_LI_DEFAULT_CODEPAGE_OBJECT, 0), 30);
    EXPECT_EQ(NLS1_GetLocaleNumInfo(locale, TS_LI_CODEPAGE_ID, 0), 31);
    EXPECT_EQ(NLS1_GetLocaleNumInfo(locale, 0, 0), -1);
    EXPECT_EQ(TSGetError(locale), 35);

    EXPECT_EQ(NLS1_SetLocaleNumInfo(locale, TS_LI_DEFAULT_CODEPAGE_OBJECT, 0, 0), 0);
    EXPECT_EQ(NLS1_SetLocaleNumInfo(locale, TS_LI_DEFAULT_CODEPAGE_OBJECT, -5, 0), 0);
    Trace::setMask(TRC1_DETAIL);
    EXPECT_EQ(NLS1_SetLocaleNumInfo(locale, TS_LI_DEFAULT_CODEPAGE_OBJECT, 77, 0), 37);
    EXPECT_TRUE(Trace::printed("Invalid Codepage 77"));
    // The library has no default of a language to set.
    EXPECT_EQ(NLS1_SetLocaleNumInfo(locale, TS_LI_DEFAULT_CODEPAGE_OBJECT, 32, 0), 0);
    EXPECT_EQ(TSGetError(locale), 35);
    EXPECT_EQ(NLS1_SetLocaleNumInfo(locale, TS_LI_FRAC_DIGITS, 7, 0), 1);
    EXPECT_EQ(NLS1_GetLocaleNumInfo(locale, TS_LI_FRAC_DIGITS, 0), 7);
    TSReleaseLocale(locale);
}

TEST_F(FacadeIds, TextItemsAreHandedOn)
{
    TSLocale* const locale = NLS1_GetLocale(2, 0, 0, &code_);
    ASSERT_NE(locale, nullptr);
    char bytes[20];
    TSChar16 units[20];
    TSChar32 packed[20];
    EXPECT_EQ(NLS1_SetLocaleTextInfo(locale, TS_LI_CURRENCY_SYMBOL, "DM", -1, 0), 1);
    EXPECT_EQ(NLS1_GetLocaleTextInfo(locale, TS_LI_CURRENCY_SYMBOL, bytes, 20, 0), 3);
    EXPECT_STREQ(bytes, "DM");
    EXPECT_EQ(NLS1_SetLocaleTextInfoEx(locale, TS_LI_CURRENCY_SYMBOL, "EUR", 0, -1, 0), 1);
    EXPECT_EQ(NLS1_GetLocaleTextInfoEx(locale, TS_LI_CURRENCY_SYMBOL, bytes, 0, 20, 0), 4);
    EXPECT_STREQ(bytes, "EUR");
    const TSChar16 pound[] = {'P', 0};
    EXPECT_EQ(NLS1_SetLocaleTextInfoU(locale, TS_LI_CURRENCY_SYMBOL, pound, -1, 0), 1);
    EXPECT_EQ(NLS1_GetLocaleTextInfoU(locale, TS_LI_CURRENCY_SYMBOL, units, 20, 0), 2);
    EXPECT_EQ(units[0], 'P');
    const TSChar32 yen[] = {'Y', 0};
    EXPECT_EQ(NLS1_SetLocaleTextInfoW(locale, TS_LI_CURRENCY_SYMBOL, yen, -1, 0), 1);
    EXPECT_EQ(NLS1_GetLocaleTextInfoW(locale, TS_LI_CURRENCY_SYMBOL, packed, 20, 0), 2);
    EXPECT_EQ(packed[0], 'Y');
    TSReleaseLocale(locale);
}

} // namespace
} // namespace vlx::test
