// The territories that are imported. Most ids are those of ISO 3166-1. 57, 125, 134, 725 and 757 to
// 759 are private numbers for a further language of a country; 442, which ISO has for Luxembourg,
// is Lithuania in the library's table of native locales, so that Luxembourg has 443, which ISO
// leaves free.
#include "import_cldr_table.hpp"

namespace vlx::import {

namespace {

// The library answers for the United States without any data too, and both answers shall agree.
void asBuiltIn(TerritoryValues& values, Notes& notes)
{
    values.forms.positive.signPosition = 3;
    values.forms.negative.signPosition = 0;
    values.longDate = "%A, %B %d, %Y";
    values.flag0 = values.flag5 = values.flag6 = true;
    notes.emplace_back("as the library's built-in territory has it: parentheses around a negative "
                       "amount, two digits for the day in the long date, the carried flags, the "
                       "positive sign position");
}

} // namespace

const std::vector<TerritoryRow>& territoryRows()
{
    static const std::vector<TerritoryRow> rows = {
        {8, "Albania", "sq_AL", "MS1250"},
        {12, "Algeria", "ar_DZ", "MS1256"},
        {29, "TheCarribean", "en_BB", "MS1252", "Caribbean"},
        {32, "Argentina", "es_AR", "MS1252"},
        {36, "Australia", "en_AU", "MS1252"},
        {40, "Austria", "de_AT", "MS1252"},
        {48, "Bahrain", "ar_BH", "MS1256"},
        {56, "Dutch-Belgium", "nl_BE", "MS1252"},
        {57, "French-Belgium", "fr_BE", "MS1252"},
        {68, "Boliva", "es_BO", "MS1252"},
        {76, "Brazil", "pt_BR", "MS1252"},
        {100, "Bulgaria", "bg_BG", "MS1251"},
        {112, "Belarus", "be_BY", "MS1251"},
        {116, "Cambodia", "km_KH", "UTF-8"},
        {124, "Canada", "en_CA", "MS1252"},
        {125, "French-Canada", "fr_CA", "MS1252"},
        {134, "Catalonia", "ca_ES", "MS1252", "Catalonia"},
        {152, "Chile", "es_CL", "MS1252"},
        {156, "China", "zh_Hans_CN", "MS936", nullptr, {{"¥", "￥"}}},
        {158, "Taiwan", "zh_Hant_TW", "MS950"},
        {170, "Columbia", "es_CO", "MS1252"},
        {188, "CostaRica", "es_CR", "MS1252"},
        {191, "Croatia", "hr_HR", "MS1250"},
        {203, "CzechRepublic", "cs_CZ", "MS1250"},
        {208, "Denmark", "da_DK", "MS1252"},
        {214, "DominicanRepublic", "es_DO", "MS1252"},
        {218, "Ecuador", "es_EC", "MS1252"},
        {233, "Estonia", "et_EE", "MS1257"},
        {234, "FaeroeIslands", "fo_FO", "MS1252"},
        {246, "Finland", "fi_FI", "MS1252"},
        {250, "France", "fr_FR", "MS1252"},
        {276, "Germany", "de_DE", "MS1252"},
        {300, "Greece", "el_GR", "MS1253"},
        {320, "Guatemala", "es_GT", "MS1252"},
        {344, "HongKong", "zh_Hant_HK", "MS950"},
        {348, "Hungary", "hu_HU", "MS1250"},
        {352, "Iceland", "is_IS", "MS1252"},
        {356, "India", "hi_IN", "UTF-8"},
        {360, "Indonesia", "id_ID", "MS1252"},
        {364, "Iran", "fa_IR", "MS1256", nullptr, {{"\u06CC", "\u064A"}}},
        {368, "Iraq", "ar_IQ", "MS1256"},
        {372, "Ireland", "en_IE", "MS1252"},
        {376, "Israel", "he_IL", "MS1255"},
        {380, "Italy", "it_IT", "MS1252"},
        {388, "Jamaica", "en_JM", "MS1252"},
        {392, "Japan", "ja_JP", "MS932"},
        {400, "Jordan", "ar_JO", "MS1256"},
        {410, "Korea", "ko_KR", "MS949", nullptr, {{"₩", "￦"}}},
        {414, "Kuwait", "ar_KW", "MS1256"},
        {418, "Laos", "lo_LA", "UTF-8"},
        {422, "Lebanon", "ar_LB", "MS1256"},
        {428, "Latvia", "lv_LV", "MS1257"},
        {434, "Libya", "ar_LY", "MS1256"},
        {442, "Lithuania", "lt_LT", "MS1257"},
        {443, "Luxembourg", "fr_LU", "MS1252"},
        {470, "Malta", "mt_MT", "UTF-8"},
        {484, "Mexico", "es_MX", "MS1252"},
        {498, "Moldavia", "ro_MD", "MS1250"},
        {504, "Morocco", "ar_MA", "MS1256"},
        {512, "Oman", "ar_OM", "MS1256"},
        {528, "Netherlands", "nl_NL", "MS1252"},
        {554, "NewZealand", "en_NZ", "MS1252"},
        {578, "Norway", "nb_NO", "MS1252"},
        {586, "Pakistan", "ur_PK", "MS1256"},
        {591, "Panama", "es_PA", "MS1252"},
        {600, "Paraguay", "es_PY", "MS1252"},
        {604, "Peru", "es_PE", "MS1252"},
        {616, "Poland", "pl_PL", "MS1250"},
        {620, "Portugal", "pt_PT", "MS1252"},
        {634, "Qatar", "ar_QA", "MS1256"},
        {642, "Romania", "ro_RO", "MS1250"},
        {643, "Russia", "ru_RU", "MS1251"},
        {682, "SaudiArabia", "ar_SA", "MS1256"},
        {702, "Singapore", "zh_Hans_SG", "MS936"},
        {703, "Slovakia", "sk_SK", "MS1250"},
        {704, "VietNam", "vi_VN", "MS1258"},
        {705, "Slovenia", "sl_SI", "MS1250"},
        {710, "SouthAfrica", "en_ZA", "MS1252"},
        {724, "Spain", "es_ES", "MS1252"},
        {725, "BasqueCountry", "eu_ES", "MS1252", "Basque Country"},
        {752, "Sweden", "sv_SE", "MS1252"},
        {756, "German-Switzerland", "de_CH", "MS1252"},
        {757, "French-Switzerland", "fr_CH", "MS1252"},
        {758, "Italian-Switzerland", "it_CH", "MS1252"},
        {759, "Romansh-Switzerland", "rm_CH", "MS1252"},
        {760, "Syria", "ar_SY", "MS1256"},
        {764, "Thailand", "th_TH", "MS874"},
        {784, "UnitedArabEmirates", "ar_AE", "MS1256"},
        {788, "Tunisia", "ar_TN", "MS1256"},
        {792, "Turkey", "tr_TR", "MS1254"},
        {804, "Ukraine", "uk_UA", "MS1251"},
        {807, "Macedonia", "mk_MK", "MS1251"},
        {818, "Egypt", "ar_EG", "MS1256"},
        {826, "UnitedKingdom", "en_GB", "MS1252"},
        {840, "UnitedStates", "en_US", "MS1252", nullptr, {}, asBuiltIn},
        {858, "Uruguay", "es_UY", "MS1252"},
        {862, "Venezuela", "es_VE", "MS1252"},
        {887, "Yemen", "ar_YE", "MS1256"},
        {891, "Yugoslavia", "sr_Latn_RS", "MS1250"},
    };
    return rows;
}

} // namespace vlx::import
