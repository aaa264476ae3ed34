// The language of time patterns: its letters in each family of code pages, and what its directives
// mean.
#pragma once

#include <algorithm>

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

// A number among the directives, as it is written: a field and its range. The numbers that have no
// range are in it always.
struct TimeNumber {
    std::int64_t value;
    int width;
    bool inRange;
};
// A width of 0: no number.
TimeNumber timeNumber(char letter, const TSTimeFields& time);

// A name among the directives: its item, 0 if the field is out of range.
bool isTimeName(char letter);
int timeName(char letter, const TSTimeFields& time);

// The digits of a number: as many as its width with leading zeros, or without them.
struct TimeDigits {
    char digits[4]; // ASCII
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
