// What the importer of sorts brings in: one row for each sort.
#pragma once

#include <cstdint>
#include <span>

namespace vlx::import {

// What a language meets: without Tibetan, Myanmar, Hangul letters, Mongolian, Chinese radicals and
// rare symbols, which go by rule then. That makes its sort smaller by a sixth.
inline constexpr const char* kLanguagePages = "00-06 0E 1E-1F 20-27 30-33 F9-FB FE-FF";

struct SortRow {
    std::uint16_t id;
    const char* object;
    const char* title;
    const char* locale;                 // the CLDR file under collation/; null for rules of our own
    const char* type;                   // of the collation in that file
    const char* rules;                  // of our own, or null
    const char* left;                   // a line of the rules that is left out; may be null
    const char* remark;                 // why, or what else a reader should know; may be null
    const char* keys;                   // further lines of the source, in its language
    const char* pages = kLanguagePages; // with records; null for those of the root table
};

std::span<const SortRow> sortRows();

} // namespace vlx::import
