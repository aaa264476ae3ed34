// What the importer brings in: one row for each language and territory, with all that CLDR does not
// know and all that has to be bent. A further object is a further row.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "import_cldr_fit.hpp"

namespace vlx::import {

// An entry of a pair table: one or two characters and what they become.
struct CasePair {
    std::string from;
    std::string to;
};

struct LanguageRow {
    std::uint16_t id;
    const char* object;
    const char* locale;
    const char* territory;
    const char* codePage;
    const char* sort;                  // of the importer's table of sorts, or Binary
    const char* displayName = nullptr; // where the English name of the locale will not do
    std::vector<Substitute> substitutes = {};
    std::vector<CasePair> upperPairs = {}; // from SpecialCasing of Unicode 15
    std::vector<CasePair> lowerPairs = {};
};

// The values of a territory as its source holds them.
struct TerritoryValues {
    std::string code;
    std::string displayName;
    std::string decimal, group, list;
    std::string grouping;
    int fractionDigits = 2;
    std::string currencyDecimal, currencyGroup;
    std::string currencyGrouping;
    std::string symbol, currency;
    int currencyDigits = 2;
    AmountForms forms;
    std::string positiveSign, negativeSign;
    std::string time, date, longDate;
    bool flag0 = false, flag5 = false, flag6 = false;
};

struct TerritoryRow {
    std::uint16_t id;
    const char* object;
    const char* locale;
    const char* codePage;
    const char* displayName = nullptr; // where the English name of the country will not do
    std::vector<Substitute> substitutes = {};
    void (*bend)(TerritoryValues&, Notes&) = nullptr; // the last word over what CLDR says
};

// In the order of their ids. Names of objects are those of the library's table of native locales,
// misspellings included.
const std::vector<LanguageRow>& languageRows();
// The languages that CLDR lacks: `locale` is a locale source of glibc.
const std::vector<LanguageRow>& glibcLanguageRows();
const std::vector<TerritoryRow>& territoryRows();

} // namespace vlx::import
