// A locale directory as a whole: writing a file of it, listing it, checking it.
#pragma once

#include <filesystem>
#include <iosfwd>
#include <string>

#include "object.hpp"

namespace vlx::data {

// Through a file beside it and a rename, so that a reader finds the old content or the new.
void writeFile(const std::filesystem::path& path, const Bytes& content, Diagnostics& diagnostics);

// A line for each object of the control file: type, id, name, section sizes, fingerprint.
void listDirectory(const std::string& directory, std::ostream& out, Diagnostics& diagnostics);

// Prints an object file or a control file as readable text. The file name tells the type.
void dumpFile(const std::string& path, std::ostream& out, Diagnostics& diagnostics);

// Checks everything that the library takes for granted when it uses the directory. `exceptions` is
// a file that lists the characters which are one way on purpose, or empty.
void lintDirectory(const std::string& directory, const std::string& exceptions,
                   Diagnostics& diagnostics);

} // namespace vlx::data
