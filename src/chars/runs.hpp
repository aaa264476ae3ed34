// Runs of characters that are the same number in a code page and in Unicode, sixteen at a time. All
// that is made for one kind of processor stands here: SSE2, which every x86-64 has, and beside it
// the same by words of eight bytes, which any machine can do; VLX_PORTABLE chooses that one.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "chars/codepage.hpp"

#if defined(__SSE2__) && !defined(VLX_PORTABLE)
#define VLX_SSE2
#include <emmintrin.h>
#endif

namespace vlx {

inline constexpr std::int32_t kBlock = 16;

// A length of characters, known to the compiler.
template <std::int32_t length>
using Length = std::integral_constant<std::int32_t, length>;

// What loops may rely on in the tables of a code page. A character is plain if it has one byte,
// which is its Unicode value.
enum PageTrait : std::uint8_t {
    kAsciiBytes = 0x01, // the bytes below 0x80 are plain
    kLatinBytes = 0x02, // so are those from 0xA0 on
    kAsciiUnits = 0x04, // the Unicode values below 0x80 become plain bytes
    kLatinUnits = 0x08, // so do those from 0xA0 to 0xFF
    kAllSingle = 0x10,  // every byte is a character
    kUtf8Lengths =
        0x20,          // UTF-8: of characters of some bytes, those from 0xE0 on have three or more
    kAsciiCase = 0x40, // the ASCII letters and no other ASCII characters have an upper case
};
std::uint8_t pageTraitsOf(const TSObject* object);

// The plain characters that a page is known to have: none, the ASCII characters, or these and the
// upper half of Latin-1.
class PlainSet {
  public:
    static PlainSet ofBytes(unsigned traits)
    {
        return {(traits & kAsciiBytes) != 0, (traits & kLatinBytes) != 0};
    }
    static PlainSet ofUnits(unsigned traits)
    {
        return {(traits & kAsciiUnits) != 0, (traits & kLatinUnits) != 0};
    }

    bool isEmpty() const { return least_ == kNone; }
    bool has(char byte) const { return static_cast<signed char>(byte) >= least_; }
    bool has(TSChar16 unit) const { return unit <= 0xFF && has(static_cast<char>(unit)); }
    int least() const { return least_; }

  private:
    // The smallest plain byte, of bytes as signed numbers.
    enum Least : int { kNone = 128, kAscii = 0, kLatin = 0xA0 - 0x100 };

    PlainSet(bool ascii, bool latin) : least_(!ascii ? kNone : latin ? kLatin : kAscii) {}

    int least_;
};

// Eight bytes of memory, in the order of the machine.
template <class Unit>
std::uint64_t wordAt(const Unit* at)
{
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// The units, of `bits` each, that come before the first one with a bit in a word from memory; all
// of the word's if there is none.
inline int unitsBefore(std::uint64_t word, int bits)
{
    const int clear = std::endian::native == std::endian::little ? std::countr_zero(word)
                                                                 : std::countl_zero(word);
    return clear / bits;
}

// The ASCII characters at the start of a word's units, for what is shorter than a block.
inline constexpr int kWordBytes = 8;
inline constexpr int kWordUnits = 4;
inline int asciiAtStart(const char* bytes)
{
    return unitsBefore(wordAt(bytes) & 0x8080808080808080, 8);
}
inline int asciiAtStart(const TSChar16* units)
{
    return unitsBefore(wordAt(units) & 0xFF80FF80FF80FF80, 16);
}

#if defined(VLX_SSE2)

inline constexpr bool kBlocksKnowLatin = true;

inline __m128i loadBlock(const void* at)
{
    return _mm_loadu_si128(static_cast<const __m128i*>(at));
}
inline void storeBlock(void* at, __m128i block)
{
    _mm_storeu_si128(static_cast<__m128i*>(at), block);
}

// The bytes that are not plain, as bits.
inline unsigned notPlain(__m128i bytes, PlainSet plain)
{
    const __m128i least = _mm_set1_epi8(static_cast<char>(plain.least()));
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_cmplt_epi8(bytes, least)));
}

// The plain characters at the start of a block, where a set has any.
inline int plainAtStart(const char* block, PlainSet plain)
{
    return std::countr_zero(notPlain(loadBlock(block), plain) | 1u << kBlock);
}
inline int plainAtStart(const TSChar16* block, PlainSet plain)
{
    const __m128i low = loadBlock(block);
    const __m128i high = loadBlock(block + kBlock / 2);
    const __m128i zero = _mm_setzero_si128();
    const __m128i areBytes = _mm_packs_epi16(_mm_cmpeq_epi16(_mm_srli_epi16(low, 8), zero),
                                             _mm_cmpeq_epi16(_mm_srli_epi16(high, 8), zero));
    const unsigned noBytes = static_cast<unsigned>(_mm_movemask_epi8(areBytes)) ^ 0xFFFFu;
    return std::countr_zero(notPlain(_mm_packus_epi16(low, high), plain) | noBytes | 1u << kBlock);
}

inline void widenBlock(const char* block, TSChar16* output)
{
    const __m128i bytes = loadBlock(block);
    storeBlock(output, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    storeBlock(output + kBlock / 2, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
}

// Values above 0xFF have no meaning here.
inline void narrowBlock(const TSChar16* block, char* output)
{
    storeBlock(output, _mm_packus_epi16(loadBlock(block), loadBlock(block + kBlock / 2)));
}

// Both for the units of a word.
inline void narrowWord(const TSChar16* units, char* output)
{
    const __m128i word = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(units));
    const int bytes = _mm_cvtsi128_si32(_mm_packus_epi16(word, word));
    std::memcpy(output, &bytes, kWordUnits);
}
inline void widenWord(const char* bytes, TSChar16* output)
{
    const __m128i word = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(bytes));
    storeBlock(output, _mm_unpacklo_epi8(word, _mm_setzero_si128()));
}

// The units of a block before its first zero.
inline int unitsBeforeZero(const TSChar16* block)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i areZero = _mm_packs_epi16(_mm_cmpeq_epi16(loadBlock(block), zero),
                                            _mm_cmpeq_epi16(loadBlock(block + kBlock / 2), zero));
    return std::countr_zero(static_cast<unsigned>(_mm_movemask_epi8(areZero)) | 1u << kBlock);
}

// The first `run` values of a block as bytes. The output has room for a block, whose other bytes
// stay as they are.
inline void narrowStart(const TSChar16* block, char* output, int run)
{
    const __m128i places = _mm_setr_epi8(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
    const __m128i areOfRun = _mm_cmpgt_epi8(_mm_set1_epi8(static_cast<char>(run)), places);
    const __m128i bytes = _mm_packus_epi16(loadBlock(block), loadBlock(block + kBlock / 2));
    storeBlock(output, _mm_or_si128(_mm_and_si128(areOfRun, bytes),
                                    _mm_andnot_si128(areOfRun, loadBlock(output))));
}

inline __m128i asciiUpper(__m128i bytes)
{
    // The letters become the largest of all signed numbers.
    const __m128i shifted = _mm_add_epi8(bytes, _mm_set1_epi8(127 - 'z'));
    const __m128i areLetters = _mm_cmpgt_epi8(shifted, _mm_set1_epi8(127 - 26));
    return _mm_sub_epi8(bytes, _mm_and_si128(areLetters, _mm_set1_epi8('a' - 'A')));
}

// Whether two blocks are the same but for the case of ASCII letters.
inline bool areSameButForCase(const char* block1, const char* block2)
{
    const __m128i same =
        _mm_cmpeq_epi8(asciiUpper(loadBlock(block1)), asciiUpper(loadBlock(block2)));
    return _mm_movemask_epi8(same) == 0xFFFF;
}

// Whether the values of half a block are all below 0x100.
inline bool areLatin(const TSChar16* half)
{
    const __m128i highs = _mm_srli_epi16(loadBlock(half), 8);
    return _mm_movemask_epi8(_mm_cmpeq_epi16(highs, _mm_setzero_si128())) == 0xFFFF;
}

inline __m128i areWithin(__m128i values, short first, short last)
{
    const __m128i offsets = _mm_sub_epi16(values, _mm_set1_epi16(first));
    const __m128i above = _mm_subs_epu16(offsets, _mm_set1_epi16(static_cast<short>(last - first)));
    return _mm_cmpeq_epi16(above, _mm_setzero_si128());
}

// Which values are letters of one case: of ASCII, or accented ones, among which a sign stands.
inline __m128i lettersOf(__m128i values, bool upper)
{
    const short first = upper ? 0x41 : 0x61;
    const short accented = upper ? 0xC0 : 0xE0;
    const __m128i sign =
        _mm_cmpeq_epi16(values, _mm_set1_epi16(static_cast<short>(accented + 0x17)));
    const __m128i all =
        _mm_or_si128(areWithin(values, first, static_cast<short>(first + 25)),
                     areWithin(values, accented, static_cast<short>(accented + 30)));
    return _mm_andnot_si128(sign, all);
}

// The case of half a block of values below 0x100.
inline void latinToLower(const TSChar16* half, TSChar16* output)
{
    const __m128i values = loadBlock(half);
    const __m128i letters = lettersOf(values, true);
    storeBlock(output, _mm_add_epi16(values, _mm_and_si128(letters, _mm_set1_epi16(0x20))));
}
inline void latinToUpper(const TSChar16* half, TSChar16* output)
{
    const __m128i values = loadBlock(half);
    const __m128i letters = lettersOf(values, false);
    const __m128i last = _mm_cmpeq_epi16(values, _mm_set1_epi16(0xFF)); // U+00FF becomes U+0178
    const __m128i images = _mm_sub_epi16(values, _mm_and_si128(letters, _mm_set1_epi16(0x20)));
    storeBlock(output, _mm_add_epi16(images, _mm_and_si128(last, _mm_set1_epi16(0x178 - 0xFF))));
}

// The number of 16-bit words before the first one that is `word`, each as it stands in memory;
// `count` if none is.
inline std::ptrdiff_t findWord(const void* words, std::ptrdiff_t count, std::uint16_t word)
{
    constexpr std::ptrdiff_t kWords = kBlock / 2;
    const auto* const at = static_cast<const std::uint16_t*>(words);
    const auto found = [at, all = _mm_set1_epi16(static_cast<short>(word))](std::ptrdiff_t index) {
        return _mm_cmpeq_epi16(loadBlock(at + index), all);
    };
    std::ptrdiff_t index = 0;
    for (; count - index >= 4 * kWords; index += 4 * kWords) {
        const __m128i any =
            _mm_or_si128(_mm_or_si128(found(index), found(index + kWords)),
                         _mm_or_si128(found(index + 2 * kWords), found(index + 3 * kWords)));
        if (_mm_movemask_epi8(any) != 0)
            break;
    }
    for (; count - index >= kWords; index += kWords)
        if (const int bits = _mm_movemask_epi8(found(index)))
            return index + std::countr_zero(static_cast<unsigned>(bits)) / 2;
    while (index < count && std::memcmp(at + index, &word, sizeof word) != 0)
        ++index;
    return index;
}

#else

inline constexpr bool kBlocksKnowLatin = false;

inline bool areSameButForCase(const char* block1, const char* block2)
{
    return std::memcmp(block1, block2, kBlock) == 0;
}

inline bool areLatin(const TSChar16*)
{
    return false;
}
inline void latinToLower(const TSChar16*, TSChar16*) {}
inline void latinToUpper(const TSChar16*, TSChar16*) {}

inline std::ptrdiff_t findWord(const void* words, std::ptrdiff_t count, std::uint16_t word)
{
    const auto* const at = static_cast<const char*>(words);
    std::ptrdiff_t index = 0;
    while (index < count && std::memcmp(at + index * 2, &word, sizeof word) != 0)
        ++index;
    return index;
}

inline int plainAtStart(const char* block, PlainSet)
{
    const int first = asciiAtStart(block);
    return first < kWordBytes ? first : first + asciiAtStart(block + kWordBytes);
}
inline int plainAtStart(const TSChar16* block, PlainSet)
{
    int at = 0;
    int run = kWordUnits;
    for (; at < kBlock && run == kWordUnits; at += run)
        run = asciiAtStart(block + at);
    return at;
}

inline void widenBlock(const char* block, TSChar16* output)
{
    for (int i = 0; i < kBlock; ++i)
        output[i] = static_cast<std::uint8_t>(block[i]);
}

inline void narrowBlock(const TSChar16* block, char* output)
{
    for (int i = 0; i < kBlock; ++i)
        output[i] = static_cast<char>(block[i]);
}

inline void widenWord(const char* bytes, TSChar16* output)
{
    for (int i = 0; i < kWordBytes; ++i)
        output[i] = static_cast<std::uint8_t>(bytes[i]);
}

inline void narrowWord(const TSChar16* units, char* output)
{
    for (int i = 0; i < kWordUnits; ++i)
        output[i] = static_cast<char>(units[i]);
}

inline int unitsBeforeZero(const TSChar16* block)
{
    return static_cast<int>(findWord(block, kBlock, 0));
}

inline void narrowStart(const TSChar16* block, char* output, int run)
{
    TSChar16 units[kBlock];
    std::memcpy(units, block, sizeof units);
    for (int i = 0; i < run; ++i)
        output[i] = static_cast<char>(units[i]);
}

#endif

// Copies `count` units from one form to the other.
template <int count, class From, class To>
void copyUnits(const From* from, To* to)
{
    From taken[count];
    To given[count];
    std::memcpy(taken, from, sizeof taken);
    for (int i = 0; i < count; ++i)
        given[i] = static_cast<To>(static_cast<std::make_unsigned_t<From>>(taken[i]));
    std::memcpy(to, given, sizeof given);
}

// The same for the plain characters at the start of a block, and nothing behind them: both ends of
// the run by themselves, which may overlap.
template <class From, class To>
void copyRun(const From* from, To* to, int run)
{
    constexpr int kHalf = kBlock / 2;
    constexpr int kQuarter = kBlock / 4;
    if (run >= kHalf) {
        copyUnits<kHalf>(from, to);
        copyUnits<kHalf>(from + run - kHalf, to + run - kHalf);
    } else if (run >= kQuarter) {
        copyUnits<kQuarter>(from, to);
        copyUnits<kQuarter>(from + run - kQuarter, to + run - kQuarter);
    } else {
        for (int i = 0; i < run; ++i)
            copyUnits<1>(from + i, to + i);
    }
}

} // namespace vlx
