// The sources of languages and territories as files: fixed order and layout, so that a second run
// gives the same bytes and a new version of CLDR a readable diff.
#pragma once

#include <string>
#include <vector>

#include "import_cldr_table.hpp"

namespace vlx::import {

// Where the values of a source come from, for its head.
struct Origin {
    std::string source; // "CLDR 41, locale en"
    std::string copyright;
    std::string licence;
    std::string codePage;
};

struct LanguageValues {
    std::string code;
    std::string displayName;
    std::vector<std::string> days, shortDays;
    std::vector<std::string> months, shortMonths;
    std::string am, pm;
};

std::string languageSource(const LanguageRow& row, const LanguageValues& values,
                           const Origin& origin, const Notes& notes);
std::string territorySource(const TerritoryRow& row, const TerritoryValues& values,
                            const Origin& origin, const Notes& notes);

} // namespace vlx::import
