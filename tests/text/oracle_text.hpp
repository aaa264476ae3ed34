// Numbers, money and times once more, slow and literal: text is built backward where the rule says
// so, marks are kept, every step is written out. On top of the oracles of the character model, of
// the string operations and of mapping; every write is checked against the memory that the caller
// gave.
//
// Text of every form is `Units` here: bytes, 16-bit units or 32-bit words.
#pragma once

#include <array>
#include <string>

#include "mapstr/oracle_mapstr.hpp"

namespace vlx::oracle {

enum class Member { kPlain, kEx, kUnicode, kPacked };

// What the functions see of a locale.
struct TextLocale {
    Locale base;
    Language pairs;
    bool ascii = true;
    // The record.
    std::array<std::uint32_t, 3> digits{};
    std::uint32_t flags = 0;
    std::array<std::uint32_t, 2> positions{};
    std::array<std::uint32_t, 5> separators{};
    std::array<std::uint32_t, 5> separatorsU{};
    std::array<Units, 8> texts;
    std::array<Units, 8> textsU;
    // The objects: the words of the territory and all texts, in the order of their words.
    std::array<std::uint32_t, 11> words{};
    std::array<Units, 11> territoryTexts;
    std::array<Units, 44> languageTexts;
};

// The queries: a number, and a text without its terminator.
std::int32_t numberItem(const TextLocale& locale, int item, bool ofObject);
Units textItem(const TextLocale& locale, Member member, int item, bool ofObject, std::int32_t state,
               std::int32_t size);

// The text of "%f", and 10 to a power as pow() has it.
std::string fixedText(double value);
double powerOfTen(std::int32_t exponent);

// The options.
inline constexpr std::uint32_t kObjectValue = 0x0001;
inline constexpr std::uint32_t kTerminated = 0x0008;
inline constexpr std::uint32_t kMapsDigits = 0x0010;
inline constexpr std::uint32_t kMonetary = 0x0020;
inline constexpr std::uint32_t kInternational = 0x0040;
inline constexpr std::uint32_t kUnsigned = 0x0080;
inline constexpr std::uint32_t kCounted = 0x4000;

// The codes of the character table.
struct Codes {
    std::uint32_t zero, minus, plus, list, open, close, blank, mark;
};
Codes codesOf(const TextLocale& locale, Member member);

// One group size of a list, as TSParseGroup gives it.
struct GroupList {
    GroupList(Units text, const Codes& codes);
    std::int32_t next();

    Units text; // terminated
    Codes codes;
    std::int32_t left;
    std::ptrdiff_t at = 0; // -1: null
};

// What a call writes into.
struct Target {
    Units& memory;
    std::int32_t state = 0;
    std::int32_t size = 0;
};
void put(Units& memory, std::ptrdiff_t position, std::uint32_t unit);

Outcome longToString(const TextLocale& locale, Member member, std::int32_t value,
                     const Target& target, std::uint32_t options);
Outcome doubleToString(const TextLocale& locale, Member member, double value, const Target& target,
                       std::uint32_t options);
Outcome currencyToString(const TextLocale& locale, Member member, double value,
                         const Target& target, std::uint32_t options);

// What a parser is given: all that may be read.
struct Source {
    const Units& text;
    std::int32_t state = 0;
    std::int32_t length = -1;
};

// What a parser returns and stores.
template <class Value>
struct Parsed {
    Value value{};
    std::int32_t error = 0;
    std::optional<std::ptrdiff_t> end;
    std::optional<std::int32_t> endState;
};
Parsed<std::int32_t> stringToLong(const TextLocale& locale, Member member, const Source& source,
                                  std::int32_t base, std::uint32_t options);
Parsed<double> stringToDouble(const TextLocale& locale, Member member, const Source& source,
                              std::uint32_t options);

// Seconds, minutes, hours, day, month, year, day of the week, day of the year.
using TimeFields = std::array<std::int32_t, 8>;

Outcome timeToString(const TextLocale& locale, Member member, const TimeFields& time,
                     const Target& target, const Source& pattern, std::uint32_t options);
Outcome stringToTime(const TextLocale& locale, Member member, TimeFields& time, const Source& text,
                     const Source& pattern, std::uint32_t options);

// What the rules share.
Bytes narrowBytes(const Units& units);
Units wideUnits(const Bytes& bytes);
std::ptrdiff_t lengthAt(const TextLocale& locale, const Units& text, std::ptrdiff_t at); // table
bool isShiftUnit(const TextLocale& locale, std::uint32_t unit);
std::int32_t lengthOf(const TextLocale& locale, Member member, const Source& source,
                      std::uint32_t options); // in units
bool isBytes(Member member);

// The letter of the pattern language that a unit is, 0 for none; the room of names and patterns.
char letterOf(const TextLocale& locale, Member member, std::uint32_t unit);
std::int32_t nameSize(Member member);
std::uint32_t unitAt(const Units& text, std::ptrdiff_t position);

} // namespace vlx::oracle
