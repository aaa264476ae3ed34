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

const std::vector<LanguageRow>& languageRows()
{
    static const std::vector<LanguageRow> rows = {
        {1, "English", "en", "UnitedStates", "MS1252", "General", {}, {}, {}},
        {2, "German", "de", "Germany", "MS1252", "General", {}, {{"ß", "SS"}}, {}},
        {3, "French", "fr", "France", "MS1252", "General", {}, {}, {}},
        {11, "Japanese", "ja", "Japan", "MS932", "Binary", {}, {}, {}},
        {13, "TraditionalChinese", "zh_Hant", "Taiwan", "MS950", "Binary", {}, {}, {}},
        {33, "Russian", "ru", "Russia", "MS1251", "General", {}, {}, {}},
        {39,
         "Turkish",
         "tr",
         "Turkey",
         "MS1254",
         "Turkish",
         {},
         {{"i", "İ"}},
         {{"I", "ı"}, {"İ", "i"}}},
    };
    return rows;
}

const std::vector<TerritoryRow>& territoryRows()
{
    static const std::vector<TerritoryRow> rows = {
        {158, "Taiwan", "zh_Hant_TW", "MS950", {}, nullptr},
        {250, "France", "fr_FR", "MS1252", {}, nullptr},
        {276, "Germany", "de_DE", "MS1252", {}, nullptr},
        {392, "Japan", "ja_JP", "MS932", {}, nullptr},
        {643, "Russia", "ru_RU", "MS1251", {}, nullptr},
        {792, "Turkey", "tr_TR", "MS1254", {}, nullptr},
        {840, "UnitedStates", "en_US", "MS1252", {}, asBuiltIn},
    };
    return rows;
}

} // namespace vlx::import
