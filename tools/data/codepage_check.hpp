// The second half of reading a code page source: what can only be said when all of it is read.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "codepage_source.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

// A line of [encode]: the character, or kNoCharacter for a value that is decoded only.
struct EncodeLine {
    Packed character = 0;
    int line = 0;
};

// Where things stand in the source, and the lines of [encode], which the check takes in.
struct SourcePlaces {
    std::map<std::string, int, std::less<>> settings;
    std::map<Packed, int> cells;
    std::map<std::uint16_t, EncodeLine> encode;
    std::map<Packed, int> mapValues;
    std::set<Packed> unassigned; // the empty cells of its rows
};

// Reports what is missing or does not fit together, and fills the encode table.
void completeSource(CodePageSource& source, const SourcePlaces& places, Reporter& report);

} // namespace vlx::data
