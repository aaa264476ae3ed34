// The user's locale on a POSIX host: what LANG says, and which locale of the directory that is.
// None of these locales has to be installed; one that is adds its own settings, and the objects are
// the same.
#include <cstdlib>
#include <set>

#include "support/process.hpp"
#include "world/world.hpp"

namespace vlx::test {
namespace {

struct LanguageSetting {
    const char* lang;
    const char* name;
};

constexpr LanguageSetting kSettings[] = {
    {"C", "English_UnitedStates.MS1252@General"},
    {"POSIX", "English_UnitedStates.MS1252@General"},
    {"C.UTF-8", "English_UnitedStates.MS1252@General"},
    {"en_US.UTF-8", "English_UnitedStates.MS1252@General"},
    {"en_GB.UTF-8", "English_UnitedKingdom.MS1252@General"},
    {"en_AU.UTF-8", "English_Australia.MS1252@General"},
    {"en_CA.UTF-8", "English_Canada.MS1252@General"},
    {"en_NZ", "English_NewZealand.MS1252@General"},
    {"en_IE@euro", "English_Ireland.MS1252@General"},
    {"en_ZA.UTF-8", "English_SouthAfrica.MS1252@General"},
    {"en_IN", "English_UnitedStates.MS1252@General"}, // no id of its own: that of the language
    {"de_DE.UTF-8", "German_Germany.MS1252@General"},
    {"de_DE.ISO-8859-15@euro", "German_Germany.MS1252@General"},
    {"de_AT.UTF-8", "German_Germany.MS1252@General"}, // its id has no name
    {"de_CH.UTF-8", "German_German-Switzerland.MS1252@General"},
    {"de_LU.UTF-8", "German_Luxembourg.MS1252@General"},
    {"fr_FR.UTF-8", "French_France.MS1252@General"},
    {"fr_BE.UTF-8", "French_French-Belgium.MS1252@General"},
    {"fr_CA.UTF-8", "CanadianFrench_French-Canada.MS1252@General"},
    {"fr_CH.UTF-8", "French_French-Switzerland.MS1252@General"},
    {"fr_LU.UTF-8", "French_Luxembourg.MS1252@General"},
    {"es_ES.UTF-8", "Spanish_Spain.MS1252@Spanish"},
    {"es_MX.UTF-8", "Spanish_Mexico.MS1252@Spanish"},
    {"es_AR.UTF-8", "Spanish_Argentina.MS1252@Spanish"},
    {"es_CL.UTF-8", "Spanish_Chile.MS1252@Spanish"},
    {"es_BO.UTF-8", "Spanish_Boliva.MS1252@Spanish"},
    {"es_CO.UTF-8", "Spanish_Columbia.MS1252@Spanish"},
    {"es_CR.UTF-8", "Spanish_CostaRica.MS1252@Spanish"},
    {"es_DO.UTF-8", "Spanish_DominicanRepublic.MS1252@Spanish"},
    {"es_EC.UTF-8", "Spanish_Ecuador.MS1252@Spanish"},
    {"es_GT.UTF-8", "Spanish_Guatemala.MS1252@Spanish"},
    {"es_PA.UTF-8", "Spanish_Panama.MS1252@Spanish"},
    {"es_PE.UTF-8", "Spanish_Peru.MS1252@Spanish"},
    {"es_PY.UTF-8", "Spanish_Paraguay.MS1252@Spanish"},
    {"es_UY.UTF-8", "Spanish_Uruguay.MS1252@Spanish"},
    {"es_VE.UTF-8", "Spanish_Venezuela.MS1252@Spanish"},
    {"it_IT.UTF-8", "Italian_Italy.MS1252@General"},
    {"it_CH.UTF-8", "Italian_Italian-Switzerland.MS1252@General"},
    {"pt_PT.UTF-8", "Portuguese_Portugal.MS1252@General"},
    {"pt_BR.UTF-8", "Portuguese_Brazil.MS1252@General"},
    {"nl_NL.UTF-8", "Dutch_Netherlands.MS1252@General"},
    {"nl_BE.UTF-8", "Dutch_Dutch-Belgium.MS1252@General"},
    {"nb_NO.UTF-8", "Norwegian_Norway.MS1252@DanishNorwegian"},
    {"no_NO", "Norwegian_Norway.MS1252@DanishNorwegian"},
    {"nn_NO.UTF-8", "Norwegian(Nynorsk)_Norway.MS1252@DanishNorwegian"},
    {"sv_SE.UTF-8", "Swedish_Sweden.MS1252@Swedish"},
    {"da_DK.UTF-8", "Danish_Denmark.MS1252@DanishNorwegian"},
    {"fi_FI.UTF-8", "Finnish_Finland.MS1252@Finnish"},
    {"is_IS.UTF-8", "Icelandic_Iceland.MS1252@Icelandic"},
    {"fo_FO.UTF-8", "Faeroese_FaeroeIslands.MS1250@DanishNorwegian"},
    {"se_NO", "Sami_Norway.ISO8859-10@General"},
    {"ja_JP.UTF-8", "Japanese_Japan.MS932@Binary"},
    {"ja_JP.eucJP", "Japanese_Japan.MS932@Binary"},
    {"zh_CN.GB18030", "SimplifiedChinese_China.MS936@Binary"},
    {"zh_SG.UTF-8", "SimplifiedChinese_Singapore.MS936@Binary"},
    {"zh_TW.Big5", "TraditionalChinese_Taiwan.MS950@Binary"},
    {"zh_HK.UTF-8", "TraditionalChinese_HongKong.MS950@Binary"},
    {"ko_KR.UTF-8", "Korean_Korea.MS949@Binary"},
    {"ar_SA.UTF-8", "Arabic_SaudiArabia.MS1256@General"},
    {"ar_EG.UTF-8", "Arabic_Egypt.MS1256@General"},
    {"ar_MA.UTF-8", "Arabic_Morocco.MS1256@General"},
    {"ar_AE.UTF-8", "Arabic_UnitedArabEmirates.MS1256@General"},
    {"bg_BG.UTF-8", "Bulgarian_Bulgaria.MS1251@General"},
    {"be_BY.UTF-8", "Byelorussian_Belarus.MS1251@General"},
    {"ca_ES.UTF-8", "Catalan_Catalonia.MS1252@General"},
    {"hr_HR.UTF-8", "Croatian_Croatia.MS1250@Croatian"},
    {"cs_CZ.UTF-8", "Czech_CzechRepublic.MS1250@Czech"},
    {"et_EE.UTF-8", "Estonian_Estonia.MS1257@Estonian"},
    {"el_GR.UTF-8", "Greek_Greece.MS1253@General"},
    {"he_IL.UTF-8", "Hebrew_Israel.MS1255@General"},
    {"iw_IL", "Hebrew_Israel.MS1255@General"},
    {"hu_HU.UTF-8", "Hungarian_Hungary.MS1250@Hungarian"},
    {"lv_LV.UTF-8", "Latvian_Latvia.MS1257@Latvian"},
    {"lt_LT.UTF-8", "Lithuanian_Lithuania.MS1257@Lithuanian"},
    {"mk_MK.UTF-8", "Macedonian_Macedonia.MS1251@General"},
    {"mt_MT.UTF-8", "Maltese_Malta.UTF-8@General"},
    {"pl_PL.UTF-8", "Polish_Poland.MS1250@Polish"},
    {"ro_RO.UTF-8", "Romanian_Romania.MS1250@Romanian"},
    {"ru_RU.KOI8-R", "Russian_Russia.MS1251@General"},
    {"sk_SK.UTF-8", "Slovak_Slovakia.MS1250@Slovak"},
    {"sl_SI.UTF-8", "Slovenian_Slovenia.MS1250@Slovenian"},
    {"sq_AL.UTF-8", "Albanian_Albania.MS1250@General"},
    {"sr_RS.UTF-8@latin", "Serbian_Yugoslavia.MS1250@General"},
    {"th_TH.UTF-8", "Thai_Thailand.MS874@Thai"},
    {"tr_TR.UTF-8", "Turkish_Turkey.MS1254@Turkish"},
    {"uk_UA.UTF-8", "Ukrainian_Ukraine.MS1251@Ukrainian"},
    {"vi_VN.UTF-8", "Vietnamese_VietNam.MS1258@Vietnamese"},
    {"ur_PK", "Urdu_Pakistan.MS1256@General"},
    {"fa_IR", "Farsi_Iran.MS1256@General"},
    {"hi_IN.UTF-8", "Hindi_India.UTF-8@General"},
    {"id_ID.UTF-8", "Indonesian_Indonesia.MS1252@General"},
    {"mi_NZ.UTF-8", "Maori_NewZealand.MS1257@General"},
    {"lo_LA", "Laotian_Laos.UTF-8@General"},
    {"km_KH.UTF-8", "Kampuchean_Cambodia.UTF-8@General"},
    {"eu_ES.UTF-8", "Basque_BasqueCountry.MS1252@General"},
    {"hsb_DE.UTF-8", "Sorbian_Germany.MS1250@General"},
    {"gd_GB.UTF-8", "ScotsGaelic_UnitedKingdom.MS1252@General"},
    {"af_ZA.UTF-8", "Afrikaans_SouthAfrica.MS1252@General"},
    {"st_ZA.UTF-8", "Sutu_SouthAfrica.MS1252@General"},
    {"ts_ZA", "Tsonga_SouthAfrica.MS1252@General"},
    {"tn_ZA", "Tswana_SouthAfrica.MS1252@General"},
    {"ve_ZA", "Venda_SouthAfrica.UTF-8@General"},
    {"xh_ZA.UTF-8", "Xhosa_SouthAfrica.MS1252@General"},
    {"zu_ZA.UTF-8", "Zulu_SouthAfrica.MS1252@General"},
    {"rm_CH", "Rhaeto-Romanic_Romansh-Switzerland.MS1252@General"},
};

class UserWorld : public WorldTest {
  protected:
    UserWorld()
    {
        for (const char* const name : {"TS_LANG", "LC_ALL", "LC_MESSAGES", "LANG"})
            clearProcessVariable(name);
    }
};

TEST_F(UserWorld, LangLeadsToALocale)
{
    EXPECT_GE(std::size(kSettings), 60U);
    for (const auto& [lang, name] : kSettings) {
        SCOPED_TRACE(lang);
        setProcessVariable("LANG", lang);
        std::int32_t code = -1;
        const Locale locale(TSGetLocale(nullptr, TS_LOCALE_USER, &code));
        EXPECT_EQ(code, TS_ERR_NONE);
        EXPECT_EQ(fullName(locale), name);
    }
}

TEST_F(UserWorld, LangOfALanguageWithoutAnIdNeedsTheFallback)
{
    for (const char* const lang : {"tlh_QO.UTF-8", "cy_GB.UTF-8", "am_ET", "_US"}) {
        SCOPED_TRACE(lang);
        setProcessVariable("LANG", lang);
        std::int32_t code = -1;
        EXPECT_EQ(TSGetLocale(nullptr, TS_LOCALE_USER, &code), nullptr);
        EXPECT_EQ(code, TS_ERR_LANGUAGE);
        const Locale locale(TSGetLocale(nullptr, TS_LOCALE_USER | TS_LOCALE_FALLBACK, &code));
        EXPECT_EQ(fullName(locale), "English_UnitedStates.MS1252@General");
    }
}

TEST_F(UserWorld, VariableOfOurOwnComesFirst)
{
    setProcessVariable("LANG", "de_DE.UTF-8");
    setProcessVariable("TS_LANG", "Polish");
    const Locale locale(TSGetLocale(nullptr, TS_LOCALE_USER, nullptr));
    EXPECT_EQ(fullName(locale), "Polish_Poland.MS1250@Polish");
}

} // namespace
} // namespace vlx::test
