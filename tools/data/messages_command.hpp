// The steps of `vlx-data catalog`.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "messages.hpp"

namespace vlx::data {

struct CatalogOptions {
    std::vector<std::string> files; // one source, or the catalogs to look at
    std::string localeDirectory;
    std::string output;
    std::string order;                 // "little", "big" or empty for this machine's
    std::string locale;                // for a .po file, or instead of the source's
    std::vector<std::string> contexts; // "CONTEXT=NUMBER" of a .po file
};

void buildCatalog(const CatalogOptions& options, Diagnostics& diagnostics);
void dumpCatalog(const CatalogOptions& options, std::ostream& out, Diagnostics& diagnostics);

// Checks catalogs, and each but the first against the first. Sources and .po files can stand for
// compiled ones.
void lintCatalogs(const CatalogOptions& options, Diagnostics& diagnostics);

} // namespace vlx::data
