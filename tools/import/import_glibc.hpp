// The locale sources of glibc, for languages that CLDR lacks: the names of days and months in the
// section LC_TIME of a file such as ve_ZA.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vlx::import {

struct GlibcLocale {
    std::string revision; // of the file, as it says itself
    std::string date;
    std::vector<std::string> days, shortDays; // Sunday first
    std::vector<std::string> months, shortMonths;
    std::string am, pm; // empty where the source leaves them to others
};

// Nothing, with a complaint, if the file is not there or does not name seven days from Sunday on
// and twelve months.
std::optional<GlibcLocale> readGlibcLocale(const std::string& path, std::string& complaint);

} // namespace vlx::import
