// The whole way from a source directory to a locale directory.
#pragma once

#include <string>
#include <vector>

#include "object.hpp"

namespace vlx::data {

struct BuildOptions {
    std::string sourceDirectory; // with codepages/, languages/, territories/, unicode/, alias.txt
    std::string outputDirectory; // made if it does not exist
    // Names of objects; all if empty. Other objects that the output directory has stay in it.
    std::vector<std::string> only;
};

// Writes control.nls, the object files and alias.txt. Every error of every source is reported, and
// nothing is written if there is one. The output depends on the sources alone.
bool build(const BuildOptions& options, Diagnostics& diagnostics);

} // namespace vlx::data
