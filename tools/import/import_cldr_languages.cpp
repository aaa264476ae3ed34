// The languages that are imported. The ids up to 41 are those of the library's table of native ids,
// with the sorts that belong to them there; from 42 on they are our own, in the order of the names
// in the table of native locales.
#include "import_cldr_table.hpp"

namespace vlx::import {

namespace {

using Substitutes = std::vector<Substitute>;
using Pairs = std::vector<CasePair>;

// What stands for characters that are younger than the code pages.
const Substitutes kArabicYeh = {{"\u06CC", "\u064A"}, {"\u0654", ""}};
const Substitutes kCommaBelow = {{"ț", "ţ"}, {"ș", "ş"}};
const Substitutes kApostrophe = {{"\u02BC", "'"}};
// The Vietnamese page has letters and tone marks apart.
const Substitutes kToneMarks = {
    {"ả", "a\u0309"}, {"ậ", "â\u0323"}, {"ủ", "u\u0309"}, {"ứ", "ư\u0301"}};

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
        {14, "SimplifiedChinese", "zh", "China", "MS936", "Binary", "Simplified Chinese"},
        {15, "Albanian", "sq", "Albania", "MS1250", "General"},
        {16, "Arabic", "ar", "SaudiArabia", "MS1256", "General"},
        {17, "Bulgarian", "bg", "Bulgaria", "MS1251", "General"},
        {18, "Byelorussian", "be", "Belarus", "MS1251", "General"},
        {19, "Catalan", "ca", "Catalonia", "MS1252", "General"},
        {20, "Croatian", "hr", "Croatia", "MS1250", "Croatian"},
        {21, "Czech", "cs", "CzechRepublic", "MS1250", "Czech"},
        {22, "Dutch", "nl", "Netherlands", "MS1252", "General"},
        {23, "Estonian", "et", "Estonia", "MS1257", "Estonian"},
        {24, "Farsi", "fa", "Iran", "MS1256", "General", nullptr, kArabicYeh},
        {25, "Greek", "el", "Greece", "MS1253", "General"},
        {26, "Hebrew", "he", "Israel", "MS1255", "General"},
        {27, "Hungarian", "hu", "Hungary", "MS1250", "Hungarian"},
        {28, "Korean", "ko", "Korea", "MS949", "Binary"},
        {29, "Latvian", "lv", "Latvia", "MS1257", "Latvian"},
        {30, "Lithuanian", "lt", "Lithuania", "MS1257", "Lithuanian"},
        {31, "Macedonian", "mk", "Macedonia", "MS1251", "General"},
        {32, "Romanian", "ro", "Romania", "MS1250", "Romanian", nullptr, kCommaBelow},
        {33, "Russian", "ru", "Russia", "MS1251", "General"},
        {34, "Serbian", "sr_Latn", "Yugoslavia", "MS1250", "General", "Serbian (Latin)"},
        {35, "SerbianCyrillic", "sr", "Yugoslavia", "MS1251", "General", "Serbian (Cyrillic)"},
        {36, "Slovak", "sk", "Slovakia", "MS1250", "Slovak"},
        {37, "Slovenian", "sl", "Slovenia", "MS1250", "Slovenian"},
        {38, "Thai", "th", "Thailand", "MS874", "Thai"},
        {39, "Turkish", "tr", "Turkey", "MS1254", "Turkish", nullptr, {}, kDottedI, kTurkishLower},
        {40, "Ukrainian", "uk", "Ukraine", "MS1251", "Ukrainian", nullptr, kApostrophe},
        {41, "Vietnamese", "vi", "VietNam", "MS1258", "Vietnamese", nullptr, kToneMarks},
        {42, "Icelandic", "is", "Iceland", "MS1252", "Icelandic"},
        {43, "Polish", "pl", "Poland", "MS1250", "Polish"},
        {44, "Rhaeto-Romanic", "rm", "Romansh-Switzerland", "MS1252", "General"},
        {45, "Urdu", "ur", "Pakistan", "MS1256", "General", nullptr, kArabicYeh},
        {46, "Indonesian", "id", "Indonesia", "MS1252", "General"},
        {47, "Maori", "mi", "NewZealand", "MS1257", "General", "Maori"},
        {48, "Laotian", "lo", "Laos", "UTF-8", "General"},
        {49, "Kampuchean", "km", "Cambodia", "UTF-8", "General"},
        {50, "Basque", "eu", "BasqueCountry", "MS1252", "General"},
        {51, "Sorbian", "hsb", "Germany", "MS1250", "General"},
        {56, "Xhosa", "xh", "SouthAfrica", "MS1252", "General"},
        {57, "Zulu", "zu", "SouthAfrica", "MS1252", "General"},
        {58, "Afrikaans", "af", "SouthAfrica", "MS1252", "General"},
        {59, "Faeroese", "fo", "FaeroeIslands", "MS1252", "DanishNorwegian"},
        {60, "Hindi", "hi", "India", "UTF-8", "General"},
        {61, "Maltese", "mt", "Malta", "UTF-8", "General"},
        {62, "Sami", "se", "Norway", "ISO8859-10", "General"},
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
