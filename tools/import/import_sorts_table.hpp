// What the importer of sorts brings in: one row for each sort.
#pragma once

#include <cstdint>
#include <span>

namespace vlx::import {

struct SortRow {
    std::uint16_t id;
    const char* object;
    const char* title;
    const char* locale; // the CLDR file under collation/; null for rules of our own
    const char* type;   // of the collation in that file
    const char* rules;  // of our own, or null
    const char* left;   // a line of the rules that is left out; may be null
    const char* remark; // why, or what else a reader should know; may be null
    const char* keys;   // further lines of the source, in its language
};

std::span<const SortRow> sortRows();

} // namespace vlx::import
