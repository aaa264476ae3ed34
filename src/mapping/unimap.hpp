// The lookups of string mapping: the built-in maps of Unicode values, the map values of a code
// page, and the pairs of a language. Nothing here allocates or keeps state.
#pragma once

#include <cstdint>

#include "chars/unipages.hpp"
#include "frame/objman.hpp"
#include "tessera.h"

namespace vlx {

// Told to be hidden, the tables are addressed directly and not through a table of addresses.
#pragma GCC visibility push(hidden)
extern const std::uint8_t uniLowerPages[kUniPages];
extern const std::uint8_t uniUpperPages[kUniPages];
extern const std::uint8_t uniFullWidthPages[kUniPages];
extern const std::uint8_t uniHalfWidthPages[kUniPages];
extern const std::int16_t uniDifferences[][kUniBlock]; // what is added to a value, of all four maps
extern const std::uint8_t uniDigitPages[kUniPages];
extern const std::uint8_t uniDigitBlocks[][kUniBlock];
#pragma GCC visibility pop

inline TSChar16 uniMapped(const std::uint8_t (&pages)[kUniPages], TSChar16 value)
{
    return static_cast<TSChar16>(value + uniEntry(pages, uniDifferences, value));
}

// The maps without a locale, for loops. A value without another form is its own image.
inline TSChar16 uniToLower(TSChar16 value)
{
    return uniMapped(uniLowerPages, value);
}
inline TSChar16 uniToUpper(TSChar16 value)
{
    return uniMapped(uniUpperPages, value);
}
inline TSChar16 uniToFullWidth(TSChar16 value)
{
    return uniMapped(uniFullWidthPages, value);
}
inline TSChar16 uniToHalfWidth(TSChar16 value)
{
    return uniMapped(uniHalfWidthPages, value);
}

// The ASCII digit of a digit, 0 of all other values.
inline TSChar16 uniDigit(TSChar16 value)
{
    return uniEntry(uniDigitPages, uniDigitBlocks, value);
}

// The two pair tables of a language.
enum class PairTable : std::uint8_t { kLower, kUpper };

// The values that may begin a pair of a table; with some others, since it keeps their low bytes.
class PairStarts {
  public:
    PairStarts(const TSObject* language, PairTable table);

    bool has(TSChar16 value) const { return starts_[value / kBits % kWords] >> value % kBits & 1; }

    // Whether no pair begins with an ASCII character.
    bool passAscii() const { return passAscii_; }

    // Whether ASCII characters and two characters in a row are never replaced.
    bool leaveAscii() const { return leaveAscii_; }

  private:
    static constexpr int kWords = 4;
    static constexpr int kBits = 64;

    std::uint64_t starts_[kWords] = {};
    bool passAscii_ = true;
    bool leaveAscii_ = true;
};

} // namespace vlx

// The maps with a locale, null for the default one, whose error they set to 0.
TSChar16 TSUniToLower(TSLocale* handle, TSChar16 value);
TSChar16 TSUniToUpper(TSLocale* handle, TSChar16 value);
TSChar16 TSUniToFullWidth(TSLocale* handle, TSChar16 value);
TSChar16 TSUniToHalfWidth(TSLocale* handle, TSChar16 value);

// The map value of a character longer than one byte; 0 if it has none.
TSChar32 TSCpMapValue(const TSObject* object, TSChar32 character);

// The character of a map value: the first byte that has it, or else the first pair's key, or else
// 0. The value 0 is sought as all others are.
TSChar32 TSCpUnmapValue(const TSObject* object, TSChar32 value);

// Looks a character, or two of them, up in a pair table; `second` is 0 for one character. Returns
// the number of results, 1 or 2, or 0 on a miss, which leaves both results alone.
std::int32_t TSLangMapPair(const TSObject* language, TSChar16 first, TSChar16 second,
                           TSChar16* result1, TSChar16* result2, vlx::PairTable table);
