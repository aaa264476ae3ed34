// Writing many characters at a time. Each function moves `at` over what it wrote before `end`, and
// gives the number of values it took. It leaves values whose characters might not fit, and others
// that it cannot be quick with, to whoever writes character by character.
#pragma once

#include <algorithm>
#include <cstdint>

#include "chars/runs.hpp"
#include "chars/tables.hpp"

namespace vlx {

// Enough for a shift byte, the longest character and a byte too much.
inline constexpr std::int32_t kMostBytes = 8;

// For a single-byte page.
inline std::int32_t encodeSingle(const TSObject* object, const TSChar16* values, std::int32_t count,
                                 char*& at, const char* end)
{
    if (object->id == kUtf8CodePage) // by rule
        return 0;
    count = static_cast<std::int32_t>(std::min<std::ptrdiff_t>(count, end - at));
    const PlainSet plain = count >= kBulk ? plainUnits(object) : PlainSet::none();
    const UnicodePages pages(object);
    char* const output = at;
    std::int32_t done = 0;
    while (done < count) {
        const std::int32_t size = std::min(count - done, kBlock);
        if (size < kBlock || plain.isEmpty() ||
            narrowBlock(values + done, output + done, plain) < kBlock) {
            char block[kBlock];
            TSChar32 all = 0;
            for (std::int32_t i = 0; i < size; ++i) {
                const TSChar32 character = pages.packed(values[done + i]);
                all |= character;
                block[i] = static_cast<char>(character);
            }
            if (all > 0xFF) // no page of single bytes after all
                break;
            std::copy_n(block, size, output + done);
        }
        done += size;
    }
    at += done;
    return done;
}

// For characters of different lengths. `put` writes one, perhaps with a byte too much behind it.
template <class Put>
std::int32_t encodeChars(PlainSet plain, const TSChar16* values, std::int32_t count, char*& at,
                         const char* end, const Put& put)
{
    // The values behind a block give as many bytes as the block did: they overwrite what the block
    // wrote too much. The value behind the last one here always fits, for the same reason.
    constexpr std::int32_t kAhead = 2 * kBlock;
    const TSChar16* from = values;
    const TSChar16* const behind = values + count;
    char* to = at;
    while (behind - from > 1 && end - to >= 2 * kMostBytes) {
        if (plain.has(*from) && behind - from > kAhead && end - to >= kAhead) {
            const int run = narrowBlock(from, to, plain);
            from += run;
            to += run;
            continue;
        }
        std::ptrdiff_t most = std::min(behind - from, (end - to) / kMostBytes) - 1;
        do
            to += put(*from++, to);
        while (--most > 0 && !plain.has(*from));
    }
    if (behind - from == 1 && end - to >= kMostBytes) {
        char bytes[kMostBytes];
        to = std::copy_n(bytes, put(*from++, bytes), to);
    }
    at = to;
    return static_cast<std::int32_t>(from - values);
}

// Writes a packed value. A value of one byte writes a second one, which has no meaning.
inline std::int32_t putPacked(TSChar32 value, char* output)
{
    if (value > 0xFFFF) [[unlikely]]
        return TSCpPutWide(output, value);
    const bool isDouble = value > 0xFF;
    output[0] = static_cast<char>(isDouble ? value >> 8 : value);
    output[1] = static_cast<char>(value);
    return 1 + isDouble;
}

inline std::int32_t putUtf8(TSChar16 value, char* output)
{
    if (value <= 0x7F) {
        output[0] = static_cast<char>(value);
        return 1;
    }
    if (value <= 0x7FF) {
        output[0] = static_cast<char>(0xC0 | value >> 6);
        output[1] = static_cast<char>(0x80 | (value & 0x3F));
        return 2;
    }
    output[0] = static_cast<char>(0xE0 | value >> 12);
    output[1] = static_cast<char>(0x80 | (value >> 6 & 0x3F));
    output[2] = static_cast<char>(0x80 | (value & 0x3F));
    return 3;
}

inline std::int32_t encodeMulti(const TSObject* object, const TSChar16* values, std::int32_t count,
                                char*& at, const char* end)
{
    const PlainSet plain = count >= kBulk ? plainUnits(object) : PlainSet::none();
    if (object->id == kUtf8CodePage)
        return encodeChars(plain, values, count, at, end, putUtf8);
    const UnicodePages pages(object);
    return encodeChars(plain, values, count, at, end, [&pages](TSChar16 value, char* output) {
        return putPacked(pages.packed(value), output);
    });
}

// For stateful text: a shift byte stands before each character of another size than the last.
inline std::int32_t encodeShifted(const TSObject* object, const TSChar16* values,
                                  std::int32_t count, char*& at, const char* end,
                                  std::int32_t& state)
{
    if (object->id == kUtf8CodePage)
        return 0;
    const TSCodePageHeader& page = tsCodePage(object);
    const UnicodePages pages(object);
    return encodeChars(PlainSet::none(), values, count, at, end, [&](TSChar16 value, char* output) {
        const TSChar32 character = pages.packed(value);
        const bool isMulti = character > 0xFF;
        if (isMulti == (state != 0))
            return putPacked(character, output);
        state = isMulti;
        *output = static_cast<char>(isMulti ? page.shiftIn : page.shiftOut);
        return 1 + putPacked(character, output + 1);
    });
}

// For text in a code page: with shift bytes if `shifts`, else `state` stays.
inline std::int32_t encode(const TSObject* object, const TSChar16* values, std::int32_t count,
                           char*& at, const char* end, bool shifts, std::int32_t& state)
{
    if (shifts)
        return encodeShifted(object, values, count, at, end, state);
    if (tsCodePage(object).maxCharBytes == 1 && object->id != kUtf8CodePage)
        return encodeSingle(object, values, count, at, end);
    return encodeMulti(object, values, count, at, end);
}

} // namespace vlx
