#include "typeword.hpp"

#include <algorithm>
#include <array>
#include <iterator>

#include "width.hpp"

namespace vlx::data {

namespace {

struct Run {
    std::uint16_t first;
    std::uint16_t last;
};

struct FixedRun {
    std::uint16_t first;
    std::uint16_t last;
    std::uint32_t word;
};

constexpr const char* kDirections[] = {"L",  "R", "EN", "ES", "ET", "AN",
                                       "CS", "B", "S",  "WS", "ON"};

constexpr Run kDigits[] = {
    {0x0030, 0x0039}, {0x00B2, 0x00B3}, {0x00B9, 0x00B9}, {0x0660, 0x0669}, {0x06F0, 0x06F9},
    {0x0966, 0x096F}, {0x09E6, 0x09EF}, {0x0A66, 0x0A6F}, {0x0AE6, 0x0AEF}, {0x0B66, 0x0B6F},
    {0x0BE7, 0x0BEF}, {0x0C66, 0x0C6F}, {0x0CE6, 0x0CEF}, {0x0D66, 0x0D6F}, {0x0E50, 0x0E59},
    {0x0ED0, 0x0ED9}, {0x0F20, 0x0F29}, {0x2070, 0x2070}, {0x2074, 0x2079}, {0x2080, 0x2089},
    {0xFF10, 0xFF19},
};
constexpr Run kRaisedDigits[] = {
    {0x00B2, 0x00B3}, {0x00B9, 0x00B9}, {0x2070, 0x2070}, {0x2074, 0x2079}, {0x2080, 0x2089},
};

// Single values stand before the range that holds them.
constexpr FixedRun kFixed[] = {
    {0x06FA, 0x0900, 0x00000400},
    {0x0EDE, 0x109F, 0x00000400},
    {0x11FA, 0x1DFF, 0x00000400},
    {0x2212, 0x2213, 0x02008020},
    // Deliberate: infinity is the one mathematical sign without the symbol bit.
    {0x221E, 0x221E, 0x00200020},
    {0x2200, 0x22F1, 0x02200020},
    {0x27BF, 0x2FFF, 0x00000400},
    {0x33FF, 0x4DFF, 0x00000400},
    {0x4E00, 0x9FA5, 0x40000801},
    {0x9FA6, 0xABFF, 0x00000400},
    {0xAC00, 0xD7A3, 0x00000801},
    {0xD7A4, 0xF8FF, 0x00000400},
    {0xF900, 0xFA2D, 0x40000801},
    {0xFA2E, 0xFAFF, 0x00000400},
    // Deliberate: two assigned letters answer as if they were not assigned.
    {0xFBE9, 0xFBE9, 0x00000400},
    {0xFCE1, 0xFCE1, 0x00000400},
    {0xFBD3, 0xFD3D, 0x00001001},
    // Deliberate: the replacement character has no property at all.
    {0xFFFD, 0xFFFD, 0x00000400},
};

bool within(std::uint16_t value, Run run)
{
    return value >= run.first && value <= run.last;
}

template <std::size_t N>
bool withinAny(std::uint16_t value, const Run (&runs)[N])
{
    return std::any_of(std::begin(runs), std::end(runs),
                       [value](Run run) { return within(value, run); });
}

bool isMark(const Properties& properties)
{
    return properties.category == "Mn" || properties.category == "Me" ||
           properties.category == "Mc";
}

std::uint32_t classOf(std::uint16_t value, const Properties& properties)
{
    std::uint32_t bits = value < 0x80 ? kSevenBit : 0;
    if (properties.category == "Cc" || properties.category == "Cf") {
        bits |= kControl;
        if (within(value, {0x0009, 0x000D}))
            bits |= kWhiteSpace;
        if (value == 0x0009)
            bits |= kBlank;
        return bits;
    }
    if (properties.category == "Zs")
        return bits | kWhiteSpace | kBlank;
    if (isMappedDigit(value))
        bits |= kDecimalDigit;
    else if (properties.has('A') || properties.has('I'))
        bits |= kAlphabetic;
    else
        bits |= kPunctuation;
    if (properties.has('H'))
        bits |= kHexDigit;
    if (properties.category == "Lu" || within(value, {0x2160, 0x216F}))
        bits |= kUpperCase;
    if (properties.category == "Ll" || within(value, {0x2170, 0x217F}))
        bits |= kLowerCase;
    return bits;
}

std::uint32_t directionOf(std::uint16_t value, const Properties& properties)
{
    if (properties.category == "Cc" && value != 0x0009)
        return 1;
    const auto* const found =
        std::find(std::begin(kDirections), std::end(kDirections), properties.direction);
    return 2u << (found - std::begin(kDirections));
}

std::uint32_t markForm(const Properties& properties)
{
    const std::uint32_t vowel = properties.has('A') ? kVowelMark : 0u;
    if (properties.category == "Mc")
        return vowel;
    return kNonspacing | (properties.has('M') ? kDiacritic : vowel);
}

bool isSymbol(std::uint16_t value, const Properties& properties, std::uint32_t classBits)
{
    // The apostrophe and the hyphen are part of words.
    if (isMark(properties) || value == 0x0640 || value == 0x0027 || value == 0x002D)
        return false;
    return (classBits & (kPunctuation | kWhiteSpace)) || withinAny(value, kRaisedDigits);
}

// In Latin, Greek, Cyrillic and Arabic, which stand below 0700, a letter with a stroke, a hook or
// dots is a letter with a diacritic too, although it has no decomposition.
bool isPrecomposed(std::uint16_t value, const Properties& properties)
{
    if (!properties.has('A') || isMark(properties))
        return false;
    return properties.has('C') || (value < 0x0700 && properties.has('W'));
}

std::uint32_t kanaForm(std::uint16_t value, const Properties& properties)
{
    // Neither the middle dots nor the circled letters are kana.
    if (value == 0x30FB || value == 0xFF65 || properties.category == "So")
        return 0;
    return (properties.has('K') || properties.has('B') ? kKatakana : 0u) |
           (properties.has('G') || properties.has('B') ? kHiragana : 0u);
}

std::uint32_t widthForm(std::uint16_t value)
{
    std::uint32_t bits = toFullWidth(value) != value ? kHalfWidth : 0u;
    if (toHalfWidth(value) != value || within(value, {0x30A1, 0x30FA}))
        bits |= kFullWidth;
    return bits;
}

std::uint32_t formOf(std::uint16_t value, const Properties& properties, std::uint32_t classBits)
{
    std::uint32_t bits = isSymbol(value, properties, classBits) ? kSymbol : 0u;
    if (isMark(properties))
        bits |= markForm(properties);
    if (isPrecomposed(value, properties))
        bits |= kNonspacing | kDiacritic;
    if (value == 0x0640)
        bits |= kKashida | kNonspacing;
    bits |= kanaForm(value, properties) | widthForm(value);
    return properties.has('I') ? bits | kIdeograph : bits;
}

} // namespace

bool knownDirection(const std::string& direction)
{
    return std::find(std::begin(kDirections), std::end(kDirections), direction) !=
           std::end(kDirections);
}

std::uint32_t ruleWord(std::uint16_t value, const Properties& properties)
{
    const std::uint32_t classBits = classOf(value, properties);
    return classBits | directionOf(value, properties) << kDirectionShift |
           formOf(value, properties, classBits) << kFormShift;
}

bool fixedWord(std::uint16_t value, std::uint32_t& word)
{
    for (const FixedRun& run : kFixed) {
        if (within(value, {run.first, run.last})) {
            word = run.word;
            return true;
        }
    }
    return false;
}

bool isMappedDigit(std::uint16_t value)
{
    return withinAny(value, kDigits);
}

} // namespace vlx::data
