// What the tokens of a number are told by: digits and letters, separators, signs.
#pragma once

#include "text/signs.hpp"
#include "text/values.hpp"

namespace vlx {

// Tokens; 0 to 35 are digits and letters.
enum NumberToken : std::int32_t {
    kTokenNone = -1, // nothing recognised, and the place is as it was
    kTokenExponentD = 13,
    kTokenExponentE = 14,
    kTokenBaseMark = 33, // the letter X
    kTokenPlus = 40,
    kTokenMinus = 41,
    kTokenGroup = 42,
    kTokenPoint = 43,
    kTokenBlank = 44,
};

// The values of digits and letters by byte, -1 for all else.
struct DigitTable {
    std::int8_t values[256];
};
extern const DigitTable kAsciiDigits;
extern const DigitTable kEbcdicDigits;
extern const DigitTable kEbcdicDigits930; // small letters stand elsewhere there

inline constexpr std::uint16_t kKatakanaCodePage = 930;

// The tables of the plain members, and of those that know code page 930.
inline const DigitTable& plainDigits(const TSLocale& locale)
{
    return isAsciiBased(locale) ? kAsciiDigits : kEbcdicDigits;
}
inline const DigitTable& digitsOf(const TSLocale& locale)
{
    return !isAsciiBased(locale) && locale.codePage->id == kKatakanaCodePage ? kEbcdicDigits930
                                                                             : plainDigits(locale);
}

// What the tokens of one call are read by.
template <class Unit>
struct NumberTexts {
    Unit group;
    Unit point;
    bool hasPoint; // without it there is no token for one
    ValueText<Unit> plus;
    ValueText<Unit> minus;
    bool mapsDigits;
    const DigitTable* digits;
    Unit room[4][32];

    // The signs that every number can have.
    void takeFixedSigns(const Signs& signs)
    {
        room[2][0] = static_cast<Unit>(signs.plus);
        room[3][0] = static_cast<Unit>(signs.minus);
        plus = {room[2], 1};
        minus = {room[3], 1};
    }
};

// Fetches the texts of a call. `signReader` reads the monetary signs.
template <class Reader, class SignReader>
void takeTexts(NumberTexts<typename Reader::Unit>& texts, const Reader& reader,
               const SignReader& signReader, const Signs& signs, const DigitTable& digits,
               std::uint32_t options, bool hasPoint)
{
    const bool monetary = (options & TS_OPT_MONETARY) != 0;
    texts.group = monetary ? reader.separator(TS_LI_MON_THOUSANDS_SEP)
                           : reader.separator(TS_LI_THOUSANDS_SEP);
    texts.hasPoint = hasPoint;
    texts.point = texts.group;
    if (hasPoint)
        texts.point = monetary ? reader.separator(TS_LI_MON_DECIMAL_POINT)
                               : reader.separator(TS_LI_DECIMAL_POINT);
    texts.mapsDigits = (options & TS_OPT_MAP_DIGITS) != 0;
    texts.digits = &digits;
    if (monetary) {
        texts.plus = signReader.text(TS_LI_POSITIVE_SIGN, texts.room[0], 32);
        texts.minus = signReader.text(TS_LI_NEGATIVE_SIGN, texts.room[1], 32);
    } else {
        texts.takeFixedSigns(signs);
    }
}

} // namespace vlx
