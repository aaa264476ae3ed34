// Sort sources to objects, and the dump and the check of what comes out.
#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "content.hpp"
#include "object.hpp"
#include "sort_root.hpp"

namespace vlx::data {

std::optional<SourceHead> readSortHead(const std::string& path, Diagnostics& diagnostics);

// Nothing comes back if the source has errors, or asks for what the format cannot hold without
// saying so; all of it is in the diagnostics then.
std::optional<Object> compileSort(const std::string& path, const RootTable& root,
                                  Diagnostics& diagnostics);

// `content` is section 1 of the object, as in content.hpp.
void dumpSort(const Bytes& content, std::ostream& out);
void lintSort(const Bytes& content, const std::string& file, Diagnostics& diagnostics);

} // namespace vlx::data
