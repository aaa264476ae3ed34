// Code page sources to objects, and the dump and the check of what comes out.
#pragma once

#include <iosfwd>
#include <optional>
#include <set>
#include <string>

#include "characters.hpp"
#include "codepage_source.hpp"
#include "object.hpp"

namespace vlx::data {

// Nothing comes back if the page does not fit the format; the reasons are in the diagnostics.
std::optional<Object> compileCodePage(const CodePageSource& source, const std::string& file,
                                      const CharacterData& characters, Diagnostics& diagnostics);

// `id` tells UTF-8, which has tables of its own kind.
void dumpCodePage(const std::vector<Bytes>& sections, std::uint16_t id, std::ostream& out);

// Characters that are meant to be one way, as lines of file name, Unicode value and bytes:
// "cp_00932.nls 00A5 5C".
using LintExceptions = std::set<std::string>;

// Proves what the library takes for granted.
void lintCodePage(const std::vector<Bytes>& sections, std::uint16_t id, const std::string& file,
                  const LintExceptions& exceptions, Diagnostics& diagnostics);

} // namespace vlx::data
