// Writing many characters at a time. Each function moves `at` over what it wrote before `end`, and
// gives the number of values it took. It stops early where a character might not fit or it cannot
// be quick, and whoever writes character by character goes on.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "chars/runs.hpp"
#include "chars/tables.hpp"

namespace vlx {

// Enough for a shift byte, the longest character and what may be written too much.
inline constexpr std::int32_t kMostBytes = 8;

// For a single-byte page.
inline std::int32_t encodeSingle(const TSObject* object, unsigned traits, const TSChar16* values,
                                 std::int32_t count, char*& at, const char* end)
{
    if (object->id == kUtf8CodePage) // by rule
        return 0;
    const PlainSet plain = PlainSet::ofUnits(traits);
    const UnicodePages pages(object);
    count = static_cast<std::int32_t>(std::min<std::ptrdiff_t>(count, end - at));
    char* const output = at;
    std::int32_t done = 0;
    while (done < count) {
        const TSChar16* const from = values + done;
        const std::int32_t left = count - done;
        if (left >= kBlock && !plain.isEmpty() && plainAtStart(from, plain) == kBlock) {
            narrowBlock(from, output + done);
            done += kBlock;
            continue;
        }
        if (left < kBlock && left >= kWordUnits && !plain.isEmpty() &&
            asciiAtStart(from) == kWordUnits) {
            narrowWord(from, output + done);
            done += kWordUnits;
            continue;
        }
        const std::int32_t size =
            left >= kBlock ? kBlock : std::min<std::int32_t>(left, kWordUnits);
        char block[kBlock];
        TSChar32 all = 0;
        for (std::int32_t i = 0; i < size; ++i) {
            // NOLINTNEXTLINE(clang-analyzer-core.CallAndMessage): so many values are given
            const TSChar32 character = pages.packed(from[i]);
            all |= character;
            block[i] = static_cast<char>(character);
        }
        if (all > 0xFF) // no page of single bytes after all
            break;
        std::copy_n(block, size, output + done);
        done += size;
    }
    at += done;
    return done;
}

// For characters of different lengths. `put` writes one, and perhaps a byte behind it. `putRun`
// writes what it has a quicker way for, and leaves the room and two values.
template <class Put, class PutRun>
std::int32_t encodeChars(PlainSet plain, const TSChar16* values, std::int32_t count, char*& at,
                         const char* end, Put put, PutRun putRun)
{
    // While there is so much room the next value fits, and overwrites a byte too much.
    constexpr std::ptrdiff_t kRoom = 2 * kMostBytes;
    const TSChar16* from = values;
    const TSChar16* const behind = values + count;
    char* to = at;
    while (behind - from > 1 && end - to >= kRoom) {
        if (behind - from >= kBlock && plain.has(*from)) {
            const int run = plainAtStart(from, plain);
            if (run == kBlock || end - to >= kBlock + kRoom)
                narrowBlock(from, to);
            else
                copyRun(from, to, run);
            from += run;
            to += run;
            continue;
        }
        if (behind - from >= kWordUnits && plain.has(*from)) {
            const int run = asciiAtStart(from);
            if (run == kWordUnits)
                narrowWord(from, to);
            else
                for (int i = 0; i < run; ++i)
                    to[i] = static_cast<char>(from[i]);
            from += run;
            to += run;
            if (run != 0)
                continue;
        }
        putRun(from, behind, to, end - kRoom);
        std::ptrdiff_t most = std::min(behind - from, (end - to) / kMostBytes) - 1;
        do
            to += put(*from++, to);
        while (--most > 0 && !(plain.has(*from) && behind - from >= kWordUnits));
    }
    if (behind - from == 1 && end - to >= kMostBytes) {
        char bytes[kMostBytes];
        const std::int32_t length = put(*from++, bytes);
        for (std::int32_t i = 0; i < length; ++i)
            *to++ = bytes[i];
    }
    at = to;
    return static_cast<std::int32_t>(from - values);
}

// These write a value, with at most one byte behind it that has no meaning, and give its length.
inline std::int32_t putPacked(TSChar32 value, char* output)
{
    if (value <= 0xFF) {
        *output = static_cast<char>(value);
        return 1;
    }
    if (value > 0xFFFF) [[unlikely]]
        return TSCpPutWide(output, value);
    output[0] = static_cast<char>(value >> 8);
    output[1] = static_cast<char>(value);
    return 2;
}

inline std::int32_t putUtf8(TSChar16 value, char* output)
{
    if (value > 0x7FF) {
        const auto byte = [value](int shift) { return std::uint32_t{value} >> shift & 0x3F; };
        const bool isLittle = std::endian::native == std::endian::little;
        const std::uint32_t word = isLittle ? 0x8080E0 | value >> 12 | byte(6) << 8 | byte(0) << 16
                                            : unicodeToUtf8(value) << 8;
        std::memcpy(output, &word, sizeof word);
        return 3;
    }
    if (value <= 0x7F) {
        *output = static_cast<char>(value);
        return 1;
    }
    const TSChar32 packed = unicodeToUtf8(value);
    output[0] = static_cast<char>(packed >> 8);
    output[1] = static_cast<char>(packed);
    return 2;
}

// Characters of three bytes, four at a time.
inline void putTriples(const TSChar16*& from, const TSChar16* behind, char*& to, const char* end)
{
    constexpr std::uint64_t kOnes = 0x0001000100010001;
    while (behind - from > kWordUnits + 1 && end - to >= 3 * kWordUnits) {
        // A unit below 0x800 has none of these bits.
        const std::uint64_t bits = wordAt(from) & 0xF800 * kOnes;
        if (((bits - kOnes) & ~bits & 0x8000 * kOnes) != 0)
            break;
        for (int i = 0; i < kWordUnits; ++i)
            to += putUtf8(*from++, to);
    }
}

// For pages whose characters follow no rule.
inline void putNoRun(const TSChar16*&, const TSChar16*, char*&, const char*) {}

inline std::int32_t encodeMulti(const TSObject* object, unsigned traits, const TSChar16* values,
                                std::int32_t count, char*& at, const char* end)
{
    const PlainSet plain = PlainSet::ofUnits(traits);
    if (object->id == kUtf8CodePage)
        return encodeChars(plain, values, count, at, end, putUtf8, putTriples);
    const UnicodePages pages(object);
    return encodeChars(
        plain, values, count, at, end,
        [pages](TSChar16 value, char* output) { return putPacked(pages.packed(value), output); },
        putNoRun);
}

// For stateful text: a shift byte stands before each character of another size than the last.
inline std::int32_t encodeShifted(const TSObject* object, const TSChar16* values,
                                  std::int32_t count, char*& at, const char* end,
                                  std::int32_t& state)
{
    if (object->id == kUtf8CodePage) // by rule
        return 0;
    const TSCodePageHeader& page = tsCodePage(object);
    const UnicodePages pages(object);
    return encodeChars(
        PlainSet::ofUnits(0), values, count, at, end,
        [&](TSChar16 value, char* output) {
            const TSChar32 character = pages.packed(value);
            const bool isMulti = character > 0xFF;
            if (isMulti == (state != 0))
                return putPacked(character, output);
            state = isMulti;
            *output = static_cast<char>(isMulti ? page.shiftIn : page.shiftOut);
            return 1 + putPacked(character, output + 1);
        },
        putNoRun);
}

// Where shift bytes are written; else the state stays.
struct Encoding {
    const TSObject* object;
    unsigned traits;
    bool shifts;
};

inline std::int32_t encode(const Encoding& encoding, const TSChar16* values, std::int32_t count,
                           char*& at, const char* end, std::int32_t& state)
{
    const auto [object, traits, shifts] = encoding;
    if (shifts)
        return encodeShifted(object, values, count, at, end, state);
    if (tsCodePage(object).maxCharBytes == 1 && object->id != kUtf8CodePage)
        return encodeSingle(object, traits, values, count, at, end);
    return encodeMulti(object, traits, values, count, at, end);
}

} // namespace vlx
