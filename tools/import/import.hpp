// The importers: each turns public data into the readable sources under data/, once, by hand; what
// they write is committed and reviewed. Running one again gives exactly the committed files.
#pragma once

#include <string>

namespace vlx::import {

struct Options {
    std::string outputDirectory; // data/codepages, data/unicode
};

// Writes one source for each code page of the importer's table, from the converters of ICU or
// glibc, and prints how each compares with the other library's. False if a file could not be made;
// the reason is on stderr.
bool importCodePages(const Options& options);

// Writes the properties and case mappings of the characters that Unicode got after version 2.0,
// from ICU, into data/unicode.
bool importCharacters(const Options& options);

struct CldrOptions {
    std::string cldrDirectory = "/usr/share/unicode/cldr";
    std::string outputDirectory; // data/, with languages/ and territories/ below it
};

bool importCldr(const CldrOptions& options);

// Writes the root table and a source for each sort of the importer's table to sorts/ below data/.
bool importSorts(const CldrOptions& options);

} // namespace vlx::import
