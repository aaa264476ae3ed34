// A code page as an existing converter has it: which bytes are which 16-bit Unicode value and back.
#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace vlx::import {

struct ConverterTables {
    std::map<std::uint32_t, std::uint16_t> decode; // packed character to Unicode
    std::map<std::uint16_t, std::uint32_t> encode; // back, without fallbacks
    // Characters that are no single 16-bit value: above U+FFFF, or several values.
    std::map<std::uint32_t, std::u16string> impossible;
};

// `stateful` parts the characters of two bytes from the others by shift bytes. False if there is no
// such converter.
bool readIcu(const char* name, int maxBytes, bool stateful, ConverterTables& tables);
bool readIconv(const char* name, int maxBytes, bool stateful, ConverterTables& tables);

} // namespace vlx::import
