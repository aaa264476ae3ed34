// Sets of bytes: a look-up of sixteen lower halves gives sixteen rows of the set, and one of the
// upper halves the bits to look at in them. It needs SSSE3, which is asked for at run time.
#include "chars/byteset.hpp"

#include "chars/runs.hpp"

#if defined(VLX_SSE2)
#include <atomic>
#include <cpuid.h>
#include <tmmintrin.h>
#endif

namespace vlx {

ByteSet::ByteSet(const bool (&has)[0x100])
{
    for (unsigned byte = 0; byte < 0x100; ++byte) {
        std::uint8_t& row = (byte < 0x80 ? below_ : above_)[byte % kRows];
        if (has[byte])
            row = static_cast<std::uint8_t>(row | 1u << byte / kRows % 8);
    }
}

#if defined(VLX_SSE2)

namespace {

// Whether a block of bytes is in a set.
[[gnu::target("ssse3")]] bool isIn(__m128i bytes, __m128i below, __m128i above)
{
    const __m128i bitOfUpper = _mm_setr_epi8(1, 2, 4, 8, 16, 32, 64, -128, //
                                             1, 2, 4, 8, 16, 32, 64, -128);
    const __m128i half = _mm_set1_epi8(0x0F);
    const __m128i signAndHalf = _mm_set1_epi8(static_cast<char>(0x8F));
    // A byte with a sign looks nothing up.
    const __m128i low = _mm_shuffle_epi8(below, _mm_and_si128(bytes, signAndHalf));
    const __m128i flipped = _mm_xor_si128(bytes, _mm_set1_epi8(static_cast<char>(0x80)));
    const __m128i high = _mm_shuffle_epi8(above, _mm_and_si128(flipped, signAndHalf));
    const __m128i bits =
        _mm_shuffle_epi8(bitOfUpper, _mm_and_si128(_mm_srli_epi16(bytes, 4), half));
    const __m128i found = _mm_and_si128(_mm_or_si128(low, high), bits);
    return _mm_movemask_epi8(_mm_cmpeq_epi8(found, _mm_setzero_si128())) == 0;
}

[[gnu::target("ssse3")]] std::int32_t bytesIn(const std::uint8_t* bytes, std::int32_t length,
                                              __m128i below, __m128i above)
{
    std::int32_t at = 0;
    while (length - at >= kBlock && isIn(loadBlock(bytes + at), below, above))
        at += kBlock;
    return at;
}

[[gnu::target("ssse3")]] std::int32_t unitsIn(const TSChar16* units, std::int32_t length,
                                              __m128i below, __m128i above)
{
    std::int32_t at = 0;
    for (; length - at >= kBlock; at += kBlock) {
        const TSChar16* const block = units + at;
        const __m128i low = loadBlock(block);
        const __m128i high = loadBlock(block + kBlock / 2);
        const __m128i uppers = _mm_srli_epi16(_mm_or_si128(low, high), 8);
        if (_mm_movemask_epi8(_mm_cmpeq_epi16(uppers, _mm_setzero_si128())) != 0xFFFF ||
            !isIn(_mm_packus_epi16(low, high), below, above))
            break;
    }
    return at;
}

// Asked for at the first set. Asking takes long, where a hypervisor has to answer, and compilers
// ask for everything that they know when a library is loaded.
bool canShuffle()
{
    enum : std::uint8_t { kUnknown, kNo, kYes };
    static constinit std::atomic<std::uint8_t> known{kUnknown};
    std::uint8_t answer = known.load(std::memory_order_relaxed);
    if (answer == kUnknown) [[unlikely]] {
        unsigned a = 0;
        unsigned b = 0;
        unsigned c = 0;
        unsigned d = 0;
        answer = __get_cpuid(1, &a, &b, &c, &d) != 0 && (c & bit_SSSE3) != 0 ? kYes : kNo;
        known.store(answer, std::memory_order_relaxed);
    }
    return answer == kYes;
}

} // namespace

std::int32_t ByteSet::blocksIn(const std::uint8_t* bytes, std::int32_t length) const
{
    return canShuffle() ? bytesIn(bytes, length, loadBlock(below_), loadBlock(above_)) : 0;
}

std::int32_t ByteSet::blocksIn(const TSChar16* units, std::int32_t length) const
{
    return canShuffle() ? unitsIn(units, length, loadBlock(below_), loadBlock(above_)) : 0;
}

#else

std::int32_t ByteSet::blocksIn(const std::uint8_t*, std::int32_t) const
{
    return 0;
}

std::int32_t ByteSet::blocksIn(const TSChar16*, std::int32_t) const
{
    return 0;
}

#endif

} // namespace vlx
