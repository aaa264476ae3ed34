// The record behind a locale handle: four objects and a private copy of the values that a caller
// may change, in the code page and in Unicode.
#pragma once

#include <cstdint>

#include "frame/objman.hpp"
#include "tessera.h"

struct TSLocale {
    TSObject* language;
    TSObject* territory;
    TSObject* codePage;
    TSObject* sort;             // null for the binary sort
    std::uint32_t modifiedMask; // vlx::LocaleValue bits of what the caller has set
    std::uint16_t fractionDigits;
    std::uint16_t currencyDigits;
    std::uint16_t intlCurrencyDigits;
    std::uint16_t flags; // vlx::LocaleFlag bits
    std::uint8_t positiveSignPosition;
    std::uint8_t negativeSignPosition;
    std::uint8_t decimalPoint; // the five separators, each a single byte of the code page
    std::uint8_t thousandsSeparator;
    std::uint8_t listSeparator;
    std::uint8_t monetaryDecimalPoint;
    std::uint8_t monetaryThousandsSeparator;
    char* grouping; // the eight texts, in the code page, owned by the record
    char* currencySymbol;
    char* monetaryGrouping;
    char* positiveSign;
    char* negativeSign;
    char* timeFormat;
    char* dateFormat;
    char* longDateFormat;
    std::uint16_t modifiedMaskU; // a bit for each Unicode separator that the caller has set
    TSChar16 decimalPointU;      // the separators again, as Unicode
    TSChar16 thousandsSeparatorU;
    TSChar16 listSeparatorU;
    TSChar16 monetaryDecimalPointU;
    TSChar16 monetaryThousandsSeparatorU;
    TSChar16* groupingU; // the texts again, as Unicode
    TSChar16* currencySymbolU;
    TSChar16* monetaryGroupingU;
    TSChar16* positiveSignU;
    TSChar16* negativeSignU;
    TSChar16* timeFormatU;
    TSChar16* dateFormatU;
    TSChar16* longDateFormatU;
    std::int32_t lastError;
    std::uint8_t pageTraits; // vlx::PageTrait bits: what the code page's tables let loops do
    // Language_Territory.Codepage@Sort: four names of at most 33 characters and what parts them.
    char fullName[4 * TSObjDisk::kNameSize];
};

namespace vlx {

// Bits of TSLocale::flags. The first six follow the territory.
enum LocaleFlag : std::uint16_t {
    kLocalePositiveSymbolPrecedes = 0x0001,
    kLocalePositiveSymbolSpaced = 0x0002,
    kLocaleNegativeSymbolPrecedes = 0x0004,
    kLocaleNegativeSymbolSpaced = 0x0008,
    kLocaleTerritoryFlag5 = 0x0010,
    kLocaleTerritoryFlag6 = 0x0020,
    kLocaleSingleByte = 0x0040, // `maxCharBytes` of the code page is 1
    kLocaleBinarySort = 0x0080, // no sort object
    kLocaleStateful = 0x0100,   // a shift-sensitive code page
};

// Bits of TSLocale::modifiedMask, one for each value that a caller can change.
enum LocaleValue : std::uint32_t {
    kFractionDigits = 0x000001,
    kCurrencyDigits = 0x000002,
    kIntlCurrencyDigits = 0x000004,
    kFirstFlag = 0x000008, // six bits, in the order of the flags
    kPositiveSignPosition = 0x000200,
    kNegativeSignPosition = 0x000400,
    kFirstSeparator = 0x000800, // five bits, in the order of the fields
    kFirstText = 0x010000,      // eight bits, in the order of the fields
};
inline constexpr int kLocaleFlags = 6;
inline constexpr int kSeparators = 5;
inline constexpr int kLocaleTexts = 8;

// One of the texts of a record, in both forms.
struct LocaleText {
    char* TSLocale::*bytes;
    TSChar16* TSLocale::*unicode;
};
inline constexpr LocaleText kLocaleText[kLocaleTexts] = {
    {&TSLocale::grouping, &TSLocale::groupingU},
    {&TSLocale::currencySymbol, &TSLocale::currencySymbolU},
    {&TSLocale::monetaryGrouping, &TSLocale::monetaryGroupingU},
    {&TSLocale::positiveSign, &TSLocale::positiveSignU},
    {&TSLocale::negativeSign, &TSLocale::negativeSignU},
    {&TSLocale::timeFormat, &TSLocale::timeFormatU},
    {&TSLocale::dateFormat, &TSLocale::dateFormatU},
    {&TSLocale::longDateFormat, &TSLocale::longDateFormatU},
};

// One of the separators of a record, in both forms.
struct LocaleSeparator {
    std::uint8_t TSLocale::*byte;
    TSChar16 TSLocale::*unicode;
};
inline constexpr LocaleSeparator kLocaleSeparator[kSeparators] = {
    {&TSLocale::decimalPoint, &TSLocale::decimalPointU},
    {&TSLocale::thousandsSeparator, &TSLocale::thousandsSeparatorU},
    {&TSLocale::listSeparator, &TSLocale::listSeparatorU},
    {&TSLocale::monetaryDecimalPoint, &TSLocale::monetaryDecimalPointU},
    {&TSLocale::monetaryThousandsSeparator, &TSLocale::monetaryThousandsSeparatorU},
};

// Buffers of locale names have this size; longer names are cut or allocated.
inline constexpr std::uint32_t kLocaleNameSize = 132;

// Where TSGetUserLocale has the name from.
inline constexpr std::int32_t kUserLocaleOfVariable = 1;
inline constexpr std::int32_t kUserLocaleOfHost = 2;

// Sets the single-byte and the stateful flag and the traits by the record's code page.
void setCodePageFlags(TSLocale& locale);

// Composes the full name anew; whoever replaces an object of the record calls it.
void setFullName(TSLocale& locale);

// The code page object that is the ASCII of object names. Null without it, with the lookup's code.
const TSObject* asciiPage(std::int32_t* code);

} // namespace vlx

// Fills every value whose bit of `modifiedMask` is clear from the territory; 0 or 20, which leaves
// the record partly filled.
std::int32_t TSLocaleSetModifiable(TSLocale* locale);

// Replaces the territory or the code page of a live record. 0, 20 without memory, 36 if a separator
// is no single byte in the new code page; after a failure the record is as it was.
std::int32_t TSChangeTerritory(TSLocale* locale, TSObject* territory);
std::int32_t TSChangeCodePage(TSLocale* locale, TSObject* codePage);

// Frees each code page text of `other` that is not the one of `kept`.
void TSFreeReplacedStrings(const TSLocale* kept, const TSLocale* other);

// Recodes a terminated text and returns the bytes written, terminator included.
std::int32_t TSRecodeString(const TSObject* from, const TSObject* to, const char* text,
                            char* destination);

// Object names are ASCII: these convert between them and 16-bit text by the code page object of
// id 367. Both return the units or bytes read and write a terminator; -1 without that object, with
// the code of its lookup, and from Unicode without a text too. `size` counts the elements of
// `target` with its terminator.
std::int32_t TSNameFromUnicode(const TSChar16* source, std::int32_t count, char* target,
                               std::uint32_t size, std::int32_t* code);
std::int32_t TSNameToUnicode(const char* source, std::int32_t count, TSChar16* target,
                             std::uint32_t size);

// The name of the user's locale, cut to `size`, and where it came from: the variable TS_LANG or
// the host.
std::int32_t TSGetUserLocale(char* buffer, std::uint32_t size);

// The locale name of a native id, "Unknown" if it is not listed; `buffer` has at least 8 bytes.
char* TSMapNativeLocale(const std::uint32_t* nativeId, char* buffer, std::uint32_t size);

// Overlays the host's settings for a native id on a record, without the user's own if `noOverride`
// is not 0. What the host does not tell stays as it is.
void TSApplyNativeValues(const std::uint32_t* nativeId, TSLocale* locale, std::uint32_t noOverride);

// Rewrites a date or time picture of the host into a format of this library. `target` has room for
// three units for each of the picture and a zero.
void TSNativeTimeFormat(const TSChar16* picture, TSChar16* target);
