// The code page aliases: a text file that the library reads line by line as it stands.
#pragma once

#include <string>

#include "object.hpp"

namespace vlx::data {

// Whether the library would read all of the text and every alias is good for something: tokens not
// too long, no alias twice, code pages that exist.
void checkAliases(const std::string& text, const std::string& file, const Catalogue& catalogue,
                  Diagnostics& diagnostics);

} // namespace vlx::data
