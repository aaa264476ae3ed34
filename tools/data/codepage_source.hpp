// The readable source of a code page, data/codepages/NAME.cp, and what it means: which characters
// the page has and which of them a Unicode value becomes. docs/format-codepage.md describes it.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "content.hpp"
#include "object.hpp"

namespace vlx::data {

// A character as a packed value: its bytes, the first one the most significant.
using Packed = std::uint32_t;

inline constexpr Packed kNoCharacter = 0xFFFFFFFF;

int packedLength(Packed character);

struct CodePageSource {
    std::uint16_t id = 0;
    std::string name;
    std::string basedOn; // the source that says what this one does not, or empty
    bool asciiFamily = true;
    bool utf8 = false; // by rule; the tables are empty then
    int maxBytes = 1;
    std::uint8_t substitution = 0;
    std::uint8_t lineFeed = 0;
    std::uint8_t carriageReturn = 0;
    std::uint8_t lineEnd3 = 0;
    std::uint8_t lineEnd4 = 0;
    std::uint8_t shiftIn = 0; // 0 in a page without shift bytes
    std::uint8_t shiftOut = 0;

    std::map<Packed, std::uint16_t> decode;
    std::map<std::uint16_t, Packed> encode;
    // Width forms that do not follow from Unicode; kNoCharacter where there is none.
    std::map<Packed, Packed> mapValues;

    bool stateful() const { return shiftIn != 0; }
};

std::optional<SourceHead> readCodePageHead(const std::string& path, Diagnostics& diagnostics);

// Reads the source, and the one that it is based on, and checks all that can be said of it alone.
// The encode table is complete: what the source says, and the reverse of the decode table where
// that is unique.
std::optional<CodePageSource> readCodePageSource(const std::string& path, Diagnostics& diagnostics);

} // namespace vlx::data
