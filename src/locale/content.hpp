// Section 1 of language and territory objects. All text is 16-bit Unicode with a terminator; an
// offset counts bytes from the first byte of the content.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/endian.hpp"

// One replacement of a case mapping: a character or a pair of characters by one or two others.
// `second` and `result2` are 0 where there is none.
struct TSLanguagePair {
    vlx::Le16 first;
    vlx::Le16 second;
    vlx::Le16 result1;
    vlx::Le16 result2;
};
static_assert(sizeof(TSLanguagePair) == 8);

struct TSLanguageContent {
    static constexpr int kFirstText = 5; // words 5 to 48 are the offsets of texts
    static constexpr int kTexts = 44;
    static constexpr int kDays = 7;
    static constexpr int kMonths = 13;

    vlx::Le16 defaultTerritory;
    vlx::Le16 defaultCodePage;
    vlx::Le16 defaultSort; // 0 is the binary sort, which has no object
    vlx::Le16 upperPairCount;
    vlx::Le16 lowerPairCount;
    vlx::Le16 code;
    vlx::Le16 name;
    vlx::Le16 dayNames[kDays]; // Sunday first
    vlx::Le16 shortDayNames[kDays];
    vlx::Le16 monthNames[kMonths]; // the thirteenth is empty in calendars of twelve months
    vlx::Le16 shortMonthNames[kMonths];
    vlx::Le16 am;
    vlx::Le16 pm;
    vlx::Le16 upperPairs; // behind the strings
    vlx::Le16 lowerPairs;
};
static_assert(sizeof(TSLanguageContent) == 102);
static_assert(offsetof(TSLanguageContent, upperPairCount) == 6);
static_assert(offsetof(TSLanguageContent, code) == 2 * TSLanguageContent::kFirstText);
static_assert(offsetof(TSLanguageContent, name) == 12);
static_assert(offsetof(TSLanguageContent, dayNames) == 14);
static_assert(offsetof(TSLanguageContent, shortDayNames) == 28);
static_assert(offsetof(TSLanguageContent, monthNames) == 42);
static_assert(offsetof(TSLanguageContent, shortMonthNames) == 68);
static_assert(offsetof(TSLanguageContent, am) == 94);
static_assert(offsetof(TSLanguageContent, pm) == 96);
static_assert(offsetof(TSLanguageContent, upperPairs) == 98);
static_assert(offsetof(TSLanguageContent, lowerPairs) == 100);

// The strings stand in the order of their offsets, with no gaps: a string's length, terminator
// included, is the difference between the next word and its own.
struct TSTerritoryContent {
    static constexpr int kFirstText = 11; // words 11 to 21 are the offsets of texts
    static constexpr int kTexts = 11;

    vlx::Le16 decimalPoint;
    vlx::Le16 thousandsSeparator;
    vlx::Le16 listSeparator;
    vlx::Le16 monetaryDecimalPoint;
    vlx::Le16 monetaryThousandsSeparator;
    vlx::Le16 fractionDigits;
    vlx::Le16 currencyDigits;
    vlx::Le16 intlCurrencyDigits;
    std::uint8_t positiveSignPosition;
    std::uint8_t negativeSignPosition;
    vlx::Le16 word9; // carried, not interpreted
    vlx::Le16 flags;
    vlx::Le16 code;
    vlx::Le16 name;
    vlx::Le16 grouping; // sizes from the right, parted by ';'; a final 0 repeats the last one
    vlx::Le16 monetaryGrouping;
    vlx::Le16 currencySymbol;
    vlx::Le16 intlCurrencySymbol;
    vlx::Le16 positiveSign;
    vlx::Le16 negativeSign;
    vlx::Le16 timeFormat;
    vlx::Le16 dateFormat;
    vlx::Le16 longDateFormat;
    vlx::Le16 end; // of the strings
};
static_assert(sizeof(TSTerritoryContent) == 46);
static_assert(offsetof(TSTerritoryContent, positiveSignPosition) == 16);
static_assert(offsetof(TSTerritoryContent, word9) == 18);
static_assert(offsetof(TSTerritoryContent, flags) == 20);
static_assert(offsetof(TSTerritoryContent, code) == 2 * TSTerritoryContent::kFirstText);
static_assert(offsetof(TSTerritoryContent, currencySymbol) == 30);
static_assert(offsetof(TSTerritoryContent, longDateFormat) == 42);
static_assert(offsetof(TSTerritoryContent, end) == 44);

namespace vlx {

// Bits of TSTerritoryContent::flags. Flags 0, 5 and 6 are carried for the caller.
enum TerritoryFlag : std::uint16_t {
    kTerritoryFlag0 = 0x0001,
    kPositiveSymbolPrecedes = 0x0002,
    kPositiveSymbolSpaced = 0x0004,
    kNegativeSymbolPrecedes = 0x0008,
    kNegativeSymbolSpaced = 0x0010,
    kTerritoryFlag5 = 0x0020,
    kTerritoryFlag6 = 0x0040,
};

} // namespace vlx
