// The language of time patterns: its letters in each family of code pages, and what its directives
// mean.
#pragma once

#include <algorithm>
#include <array>

#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"
#include "text/signs.hpp"
#include "text/token.hpp"

namespace vlx {

// The letters of the language by their byte, as ASCII; 0 for all else.
struct PatternTable {
    char letters[256];
};
extern const PatternTable kAsciiPattern;
extern const PatternTable kEbcdicPattern;
extern const PatternTable kEbcdicPattern930;

inline const PatternTable& plainPattern(const TSLocale& locale)
{
    return isAsciiBased(locale) ? kAsciiPattern : kEbcdicPattern;
}
inline const PatternTable& patternOf(const TSLocale& locale)
{
    return !isAsciiBased(locale) && locale.codePage->id == kKatakanaCodePage ? kEbcdicPattern930
                                                                             : plainPattern(locale);
}

// The letter that a unit stands for.
template <class Unit>
char letterOf(const PatternTable& table, Unit unit)
{
    // Deliberate: of a packed value the low byte alone counts.
    return table.letters[static_cast<std::uint8_t>(unit)];
}
inline char letterOf(const PatternTable& table, TSChar16 unit)
{
    return unit < 256 ? table.letters[unit] : '\0';
}

inline constexpr char kMark = '%';
inline constexpr char kFlag = '#';

// A directive at its mark: its letter, whether the flag mark is set, and the units of it all.
struct Directive {
    char letter;
    bool flag;
    std::int32_t length;
};

// False if the pattern ends before the letter.
template <class Unit>
bool readDirective(const PatternTable& table, const Unit* at, std::int32_t left,
                   Directive& directive)
{
    if (left < 2)
        return false;
    directive = {letterOf(table, at[1]), false, 2};
    if (directive.letter != kFlag)
        return true;
    if (left < 3)
        return false;
    directive = {letterOf(table, at[2]), true, 3};
    return true;
}

// What a directive writes.
enum class TimeText : std::uint8_t {
    kOther,  // no field
    kNumber, // a field and what is added to it
    kHour,   // of a half of the day
    kWeek,   // of the year
    kName,   // the name of a field, by its item
    kHalf    // of the day, by its name
};

constexpr bool isNumber(TimeText text)
{
    return text == TimeText::kNumber || text == TimeText::kHour || text == TimeText::kWeek;
}
constexpr bool isName(TimeText text)
{
    return text == TimeText::kName || text == TimeText::kHalf;
}

struct TimeDirective {
    std::int32_t TSTimeFields::*field;
    std::uint32_t most; // of the field, which has to be 0 at least
    std::int32_t base;  // added to the field: the number, or the item; of a week its first day
    std::uint8_t width; // of the number
    TimeText text;
};
inline constexpr int kLetters = 128;
extern const std::array<TimeDirective, kLetters> kTimeDirectives; // by letter

inline constexpr int kMostDigits = 4; // of a number

// A number as it is written, without a sign.
struct TimeNumber {
    std::uint32_t value;
    int width;
};

// The week of a day of the year, if weeks begin `start` days behind Sunday.
constexpr std::uint32_t weekOfYear(std::int32_t dayOfYear, std::int32_t dayOfWeek, int start)
{
    const std::int32_t day = (dayOfWeek + 7 - start) % 7;
    return static_cast<std::uint32_t>(dayOfYear / 7 + (dayOfYear % 7 >= day ? 1 : 0));
}

// The digits of a number: as many as its width with leading zeros, or without them.
struct TimeDigits {
    char digits[kMostDigits]; // ASCII
    int count;
};
TimeDigits timeDigits(const TimeNumber& number, bool flag);

// The items of a nested pattern.
inline constexpr int datePattern(bool flag)
{
    return flag ? TS_LI_LONG_DATE_FORMAT : TS_LI_DATE_FORMAT;
}

// Patterns that name each other end here.
inline constexpr int kDeepestPattern = 3;

} // namespace vlx
