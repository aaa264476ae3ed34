// The contents that the data compiler knows beside code pages: languages and territories. Each kind
// has the same four steps: the head of a source, its compilation, and the dump and the check of the
// section that comes out.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>

#include "object.hpp"

namespace vlx::data {

// What names a source: read before compiling, so that objects can refer to each other by name.
struct SourceHead {
    std::uint8_t type = 0;
    std::uint16_t id = 0;
    std::string name;
};

std::optional<SourceHead> readLanguageHead(const std::string& path, Diagnostics& diagnostics);
std::optional<SourceHead> readTerritoryHead(const std::string& path, Diagnostics& diagnostics);

// Nothing comes back if the source has errors; all of them are in the diagnostics then.
std::optional<Object> compileLanguage(const std::string& path, const Catalogue& catalogue,
                                      Diagnostics& diagnostics);
std::optional<Object> compileTerritory(const std::string& path, const Catalogue& catalogue,
                                       Diagnostics& diagnostics);

// `content` is section 1 of the object. A dump of damaged content ends early and reads nothing
// outside of it; the lint says what is wrong.
void dumpLanguage(const Bytes& content, std::ostream& out);
void dumpTerritory(const Bytes& content, std::ostream& out);
void lintLanguage(const Bytes& content, const std::string& file, Diagnostics& diagnostics);
void lintTerritory(const Bytes& content, const std::string& file, Diagnostics& diagnostics);

} // namespace vlx::data
