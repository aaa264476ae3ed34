// What the members of string mapping share: the mapping that a call asks for, and what it reads of
// the locale.
#pragma once

#include <cstdint>

#include "chars/codepage.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/content.hpp"
#include "locale/locale.hpp"
#include "mapping/unimap.hpp"
#include "strings/length.hpp"

namespace vlx {

inline constexpr std::uint32_t kDigitType = 0x008; // in a type word: a decimal digit

// The characters whose type records move them to the other case, by their own case in a type word.
inline constexpr std::uint32_t kMapsToLower = 0x002;
inline constexpr std::uint32_t kMapsToUpper = 0x004;

inline const TSLanguageContent& languageOf(const TSLocale& locale)
{
    return *reinterpret_cast<const TSLanguageContent*>(locale.language->sections[0]);
}

inline bool hasUpperPairs(const TSLocale& locale)
{
    return languageOf(locale).upperPairCount != 0;
}

// A mapping is one value out of a list, and TS_OPT_CHAR_COUNT beside it.
struct Mapping {
    explicit Mapping(std::uint32_t mapping)
        : counted((mapping & TS_OPT_CHAR_COUNT) != 0), value(mapping & ~TS_OPT_CHAR_COUNT)
    {
    }

    bool isCopy() const { return value == 0 || value == TS_MAP_COPY; }
    bool isWidth() const { return value == TS_MAP_FULL_WIDTH || value == TS_MAP_HALF_WIDTH; }
    bool isUpper() const { return (value & ~TS_MAP_SIMPLE) == TS_MAP_UPPER; }
    bool isCase() const { return isUpper() || (value & ~TS_MAP_SIMPLE) == TS_MAP_LOWER; }
    bool isGood() const { return isCopy() || isWidth() || isCase() || value == TS_MAP_DIGITS; }

    // Whether a case mapping looks for pairs, and where.
    bool usesPairs(const TSLocale& locale) const
    {
        const TSLanguageContent& language = languageOf(locale);
        const unsigned count = isUpper() ? language.upperPairCount : language.lowerPairCount;
        return count != 0 && !(value & TS_MAP_SIMPLE);
    }
    PairTable pairs() const { return isUpper() ? PairTable::kUpper : PairTable::kLower; }

    // The case of a byte and of a longer character.
    const std::uint8_t* caseTable(const TSCodePageHeader& page) const
    {
        return isUpper() ? page.toUpper : page.toLower;
    }
    std::uint32_t caseBits() const { return isUpper() ? kMapsToUpper : kMapsToLower; }

    const bool counted; // sizes, lengths and results count characters
    const std::uint32_t value;
};

// The map value of a one-byte character.
inline TSChar32 byteMapValue(const TSObject* object, std::uint8_t byte)
{
    const auto* const values =
        reinterpret_cast<const Le32*>(object->sections[0] + tsCodePage(object).mapValuesOffset);
    return values[byte];
}

// The units of a source; a negative length takes in the terminator, which is mapped like the rest.
template <class Unit>
std::int32_t mappedLength(const Unit* source, std::int32_t length)
{
    return length < 0 ? unitsOf(source) + 1 : length;
}

} // namespace vlx
