// Runs of characters that are the same number in a code page and in Unicode, sixteen at a time. All
// that is made for one kind of processor stands here: SSE2, which every x86-64 has, and beside it
// the same by words of eight bytes, which any machine can do.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>

#include "chars/codepage.hpp"

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace vlx {

inline constexpr std::int32_t kBlock = 16;

// From this length on a text is worth the look at the tables that finds its plain characters.
inline constexpr std::int32_t kBulk = 64;

// The plain characters of a code page, or some of them: those with one byte, which is their Unicode
// value. They are none, the ASCII characters, or these and the upper half of Latin-1.
class PlainSet {
  public:
    static PlainSet none() { return PlainSet(kNone); }
    static PlainSet ascii() { return PlainSet(kAscii); }
    static PlainSet latin() { return PlainSet(kLatin); }

    bool isEmpty() const { return least_ == kNone; }
    bool has(char byte) const { return static_cast<signed char>(byte) >= least_; }
    bool has(TSChar16 unit) const { return unit <= 0xFF && has(static_cast<char>(unit)); }
    int least() const { return least_; }

  private:
    // The smallest plain byte, of bytes as signed numbers.
    enum Least : int { kNone = 128, kAscii = 0, kLatin = 0xA0 - 0x100 };

    explicit PlainSet(Least least) : least_(least) {}

    int least_;
};

// The plain characters for reading bytes and for writing them.
PlainSet plainBytes(const TSCodePageHeader& page);
PlainSet plainUnits(const TSObject* object);

// Whether every byte is a character of its own.
bool allAreSingle(const TSCodePageHeader& page);

template <class Unit>
std::uint64_t wordAt(const Unit* at)
{
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    return word;
}

// The units, of `bits` each, that come before the first one with a bit in a word from memory.
inline int unitsBefore(std::uint64_t word, int bits)
{
    const int clear = std::endian::native == std::endian::little ? std::countr_zero(word)
                                                                 : std::countl_zero(word);
    return clear / bits;
}

inline constexpr std::uint64_t kNotAsciiBytes = 0x8080808080808080;
inline constexpr std::uint64_t kNotAsciiUnits = 0xFF80FF80FF80FF80;

// The ASCII characters at the start of a block.
inline int asciiAtStart(const char* block)
{
    for (int at = 0; at < kBlock; at += 8)
        if (const std::uint64_t others = wordAt(block + at) & kNotAsciiBytes)
            return at + unitsBefore(others, 8);
    return kBlock;
}
inline int asciiAtStart(const TSChar16* block)
{
    for (int at = 0; at < kBlock; at += 4)
        if (const std::uint64_t others = wordAt(block + at) & kNotAsciiUnits)
            return at + unitsBefore(others, 16);
    return kBlock;
}

#if defined(__SSE2__)

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

inline int lowestBit(unsigned bits)
{
    return std::countr_zero(bits | 1u << kBlock);
}

// Widens a block, and gives the number of plain characters at its start. What is written behind
// them has no meaning.
inline int widenBlock(const char* block, TSChar16* output, PlainSet plain)
{
    const __m128i bytes = loadBlock(block);
    storeBlock(output, _mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    storeBlock(output + kBlock / 2, _mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
    return lowestBit(notPlain(bytes, plain));
}

// The same from 16-bit values to bytes.
inline int narrowBlock(const TSChar16* block, char* output, PlainSet plain)
{
    const __m128i low = loadBlock(block);
    const __m128i high = loadBlock(block + kBlock / 2);
    const __m128i bytes = _mm_packus_epi16(low, high);
    storeBlock(output, bytes);
    const __m128i zero = _mm_setzero_si128();
    const __m128i areBytes = _mm_packs_epi16(_mm_cmpeq_epi16(_mm_srli_epi16(low, 8), zero),
                                             _mm_cmpeq_epi16(_mm_srli_epi16(high, 8), zero));
    return lowestBit(notPlain(bytes, plain) |
                     (static_cast<unsigned>(_mm_movemask_epi8(areBytes)) ^ 0xFFFFu));
}

#else

inline constexpr bool kBlocksKnowLatin = false;

inline int widenBlock(const char* block, TSChar16* output, PlainSet)
{
    for (int i = 0; i < kBlock; ++i)
        output[i] = static_cast<std::uint8_t>(block[i]);
    return asciiAtStart(block);
}

inline int narrowBlock(const TSChar16* block, char* output, PlainSet)
{
    for (int i = 0; i < kBlock; ++i)
        output[i] = static_cast<char>(block[i]);
    return asciiAtStart(block);
}

#endif

} // namespace vlx
