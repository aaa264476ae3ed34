// The languages that are imported. The ids up to 41 are those of the library's table of native ids,
// with the sorts that belong to them there; from 42 on they are our own, in the order of the names
// in the table of native locales.
#include "import_cldr_table.hpp"

namespace vlx::import {

namespace {

using Substitutes = std::vector<Substitute>;
using Pairs = std::vector<CasePair>;

// What stands for characters that are younger than the code pages.
const Substitutes kApostrophe = {{"\u02BC", "'"}};

const Pairs kSharpS = {{"ß", "SS"}};
const Pairs kDottedI = {{"i", "İ"}};
const Pairs kTurkishLower = {{"I", "ı"}, {"İ", "i"}};

} // namespace

const std::vector<LanguageRow>& languageRows()
{
    static const std::vector<LanguageRow> rows = {
        {1, "English", "en", "UnitedStates", "MS1252", "General"},
        {2, "German", "de", "Germany", "MS1252", "General", nullptr, {}, kSharpS},
        {3, "French", "fr", "France", "MS1252", "General"},
        {4, "Spanish", "es", "Spain", "MS1252", "Spanish"},
        {5, "Italian", "it", "Italy", "MS1252", "General"},
        {6, "Portuguese", "pt_PT", "Portugal", "MS1252", "General", "Portuguese"},
        {7, "Norwegian", "nb", "Norway", "MS1252", "DanishNorwegian", "Norwegian"},
        {8, "Swedish", "sv", "Sweden", "MS1252", "Swedish"},
        {9, "Danish", "da", "Denmark", "MS1252", "DanishNorwegian"},
        {10, "Finnish", "fi", "Finland", "MS1252", "Finnish"},
        {11, "Japanese", "ja", "Japan", "MS932", "Binary"},
        {12, "CanadianFrench", "fr_CA", "French-Canada", "MS1252", "General"},
        {13, "TraditionalChinese", "zh_Hant", "Taiwan", "MS950", "Binary"},
        {17, "Bulgarian", "bg", "Bulgaria", "MS1251", "General"},
        {18, "Byelorussian", "be", "Belarus", "MS1251", "General"},
        {19, "Catalan", "ca", "Catalonia", "MS1252", "General"},
        {22, "Dutch", "nl", "Netherlands", "MS1252", "General"},
        {31, "Macedonian", "mk", "Macedonia", "MS1251", "General"},
        {33, "Russian", "ru", "Russia", "MS1251", "General"},
        {35, "SerbianCyrillic", "sr", "Yugoslavia", "MS1251", "General", "Serbian (Cyrillic)"},
        {39, "Turkish", "tr", "Turkey", "MS1254", "Turkish", nullptr, {}, kDottedI, kTurkishLower},
        {40, "Ukrainian", "uk", "Ukraine", "MS1251", "Ukrainian", nullptr, kApostrophe},
        {42, "Icelandic", "is", "Iceland", "MS1252", "Icelandic"},
        {44, "Rhaeto-Romanic", "rm", "German-Switzerland", "MS1252", "General"},
        {46, "Indonesian", "id", "Indonesia", "MS1252", "General"},
        {48, "Laotian", "lo", "Laos", "UTF-8", "General"},
        {49, "Kampuchean", "km", "Cambodia", "UTF-8", "General"},
        {50, "Basque", "eu", "Spain", "MS1252", "General"},
        {56, "Xhosa", "xh", "SouthAfrica", "MS1252", "General"},
        {57, "Zulu", "zu", "SouthAfrica", "MS1252", "General"},
        {58, "Afrikaans", "af", "SouthAfrica", "MS1252", "General"},
        {59, "Faeroese", "fo", "FaeroeIslands", "MS1252", "DanishNorwegian"},
        {60, "Hindi", "hi", "India", "UTF-8", "General"},
        {61, "Maltese", "mt", "Malta", "UTF-8", "General"},
        {63, "ScotsGaelic", "gd", "UnitedKingdom", "MS1252", "General"},
        {64, "Norwegian(Nynorsk)", "nn", "Norway", "MS1252", "DanishNorwegian"},
    };
    return rows;
}

const std::vector<LanguageRow>& glibcLanguageRows()
{
    static const std::vector<LanguageRow> rows = {
        {52, "Sutu", "st_ZA", "SouthAfrica", "MS1252", "General"},
        {53, "Tsonga", "ts_ZA", "SouthAfrica", "MS1252", "General"},
        {54, "Tswana", "tn_ZA", "SouthAfrica", "MS1252", "General"},
        {55, "Venda", "ve_ZA", "SouthAfrica", "UTF-8", "General"},
    };
    return rows;
}

} // namespace vlx::import
