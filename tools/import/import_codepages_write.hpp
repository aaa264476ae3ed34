// The text of a code page source, as docs/format-codepage.md describes it.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "converter.hpp"
#include "import_codepages_table.hpp"

namespace vlx::import {

struct ImportedPage {
    const PageFamily& family;
    const PageRow& row;
    std::vector<const char*> corrections; // what was done to the converter's table, in words
    ConverterTables tables;
};

void writePage(std::ostream& out, const ImportedPage& page);

// The page with line feed and next line exchanged, as a source that is based on the other.
void writeTwin(std::ostream& out, const ImportedPage& page);
std::string twinName(const PageRow& row);

Origin otherThan(Origin origin);

} // namespace vlx::import
