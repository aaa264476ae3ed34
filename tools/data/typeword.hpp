// The type word of a Unicode value, made from its properties: class in bits 0 to 9, direction in
// bits 10 to 21, form in bits 22 to 31.
#pragma once

#include <cstdint>
#include <string>

namespace vlx::data {

// The class field, as it stands in the word.
inline constexpr std::uint32_t kAlphabetic = 0x001;
inline constexpr std::uint32_t kUpperCase = 0x002;
inline constexpr std::uint32_t kLowerCase = 0x004;
inline constexpr std::uint32_t kDecimalDigit = 0x008;
inline constexpr std::uint32_t kHexDigit = 0x010;
inline constexpr std::uint32_t kPunctuation = 0x020;
inline constexpr std::uint32_t kWhiteSpace = 0x040;
inline constexpr std::uint32_t kBlank = 0x080;
inline constexpr std::uint32_t kControl = 0x100;
inline constexpr std::uint32_t kSevenBit = 0x200;

// The form field, before it is shifted to bit 22.
inline constexpr std::uint32_t kNonspacing = 0x001;
inline constexpr std::uint32_t kDiacritic = 0x002;
inline constexpr std::uint32_t kVowelMark = 0x004;
inline constexpr std::uint32_t kSymbol = 0x008;
inline constexpr std::uint32_t kKatakana = 0x010;
inline constexpr std::uint32_t kHiragana = 0x020;
inline constexpr std::uint32_t kHalfWidth = 0x040;
inline constexpr std::uint32_t kFullWidth = 0x080;
inline constexpr std::uint32_t kIdeograph = 0x100;
inline constexpr std::uint32_t kKashida = 0x200;
inline constexpr int kDirectionShift = 10;
inline constexpr int kFormShift = 22;

inline constexpr std::uint32_t kHalfWidthWord = kHalfWidth << kFormShift;
// An ideograph from left to right, as those of Unicode are.
inline constexpr std::uint32_t kUserDefinedWord =
    kIdeograph << kFormShift | 2u << kDirectionShift | kAlphabetic;
inline constexpr std::uint32_t kNoDirectionWord = 1u << kDirectionShift; // of an unassigned value

// A row of the property table. `flags` are the letters that the table's head explains.
struct Properties {
    std::string category;
    std::string direction;
    std::string flags;

    bool has(char flag) const { return flags.find(flag) != std::string::npos; }
};

// True if the direction is one that the rules know.
bool knownDirection(const std::string& direction);

// The word by the rules alone, for an assigned value of a table run.
std::uint32_t ruleWord(std::uint16_t value, const Properties& properties);

// Values whose word does not come from the rules: the ranges without a table, and single values.
// False if the value belongs to a table run.
bool fixedWord(std::uint16_t value, std::uint32_t& word);

// True for the values that digit mapping turns into ASCII digits.
bool isMappedDigit(std::uint16_t value);

} // namespace vlx::data
