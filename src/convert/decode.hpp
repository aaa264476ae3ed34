// Reading many characters at a time. Each function moves `at` over characters that stand whole
// before `end` and gives the number of values written, at most `room`. It stops early where it
// cannot be quick, and whoever reads character by character goes on.
#pragma once

#include <algorithm>
#include <cstdint>

#include "chars/form.hpp"
#include "chars/runs.hpp"
#include "chars/tables.hpp"

namespace vlx {

inline constexpr std::int32_t kLongestChar = 4;

// Single-byte text.
inline std::int32_t decodeSingle(const TSObject* object, unsigned traits, const char*& at,
                                 const char* end, TSChar16* values, std::int32_t room)
{
    if (!(traits & kAllSingle))
        return 0;
    const TSCodePageHeader& page = tsCodePage(object);
    const PlainSet plain = PlainSet::ofBytes(traits);
    const auto count = static_cast<std::int32_t>(std::min<std::ptrdiff_t>(end - at, room));
    const auto unicode = [&page](char byte) -> TSChar16 {
        return page.toUnicode[static_cast<std::uint8_t>(byte)];
    };
    std::int32_t done = 0;
    for (; count - done >= kBlock; done += kBlock) {
        const char* const block = at + done;
        if (!plain.isEmpty() && plainAtStart(block, plain) == kBlock)
            widenBlock(block, values + done);
        else
            std::transform(block, block + kBlock, values + done, unicode);
    }
    std::transform(at + done, at + count, values + done, unicode);
    at += count;
    return count;
}

// Text whose characters have different lengths, to its end or to a character that the end cuts off.
// `unicodeOf` reads a character of a length above one.
template <class UnicodeOf>
std::int32_t decodeChars(const TSCodePageHeader& page, PlainSet plain, const char*& at,
                         const char* end, TSChar16* values, std::int32_t room, UnicodeOf unicodeOf)
{
    const char* from = at;
    TSChar16* to = values;
    TSChar16* const full = values + room;
    const auto readPlain = [&] {
        const int run = plainAtStart(from, plain);
        // A whole block is written if the characters behind the run will overwrite the rest.
        if (end - from - run >= (kBlock - run) * kLongestChar)
            widenBlock(from, to);
        else
            copyRun(from, to, run);
        from += run;
        to += run;
    };
    // Characters of one length follow each other: a loop of their own, in which no place waits for
    // the length of the character before.
    const auto readAll = [&](auto length, const auto& read) {
        std::ptrdiff_t most = std::min((end - from) / length, full - to);
        do {
            *to++ = read(from, length);
            from += length;
        } while (--most > 0 && page.charLength[static_cast<std::uint8_t>(*from)] == length);
    };
    const auto readSingle = [&page](const char* byte, auto) -> TSChar16 {
        return page.toUnicode[static_cast<std::uint8_t>(*byte)];
    };
    while (to != full && end - from >= 2 * kBlock) {
        if (plain.has(*from) && full - to >= kBlock) {
            readPlain();
            continue;
        }
        switch (page.charLength[static_cast<std::uint8_t>(*from)]) {
        case 1:
            readAll(Length<1>{}, readSingle);
            break;
        case 2:
            readAll(Length<2>{}, unicodeOf);
            break;
        case 3:
            readAll(Length<3>{}, unicodeOf);
            break;
        default:
            readAll(Length<4>{}, unicodeOf);
            break;
        }
    }
    // The last ones, and short texts, up to a character that the end cuts off: runs by words, the
    // others one by one.
    while (to != full && from != end) {
        if (!plain.isEmpty() && end - from >= kWordBytes && full - to >= kWordBytes) {
            const int run = asciiAtStart(from);
            if (run == kWordBytes)
                widenWord(from, to);
            else
                for (int i = 0; i < run; ++i)
                    to[i] = static_cast<std::uint8_t>(from[i]);
            from += run;
            to += run;
            if (run == kWordBytes)
                continue;
        }
        const std::int32_t length = page.charLength[static_cast<std::uint8_t>(*from)];
        if (length > end - from)
            break;
        *to++ = length == 1   ? readSingle(from, Length<1>{})
                : length == 2 ? unicodeOf(from, Length<2>{})
                              : unicodeOf(from, Length<3>{}); // and four, which are read alike
        from += length;
    }
    at = from;
    return static_cast<std::int32_t>(to - values);
}

inline std::int32_t decodeMulti(const TSObject* object, unsigned traits, const char*& at,
                                const char* end, TSChar16* values, std::int32_t room)
{
    const TSCodePageHeader& page = tsCodePage(object);
    const PlainSet plain = PlainSet::ofBytes(traits);
    if (traits & kUtf8Lengths)
        return decodeChars(page, plain, at, end, values, room, [](const char* lead, auto length) {
            return length == 2 ? utf8Pair(lead) : utf8Triple(lead);
        });
    if (object->id == kUtf8CodePage)
        return decodeChars(page, plain, at, end, values, room,
                           [](const char* lead, auto) { return utf8ToUnicode(lead); });
    const UnicodeTrie trie(object);
    return decodeChars(page, plain, at, end, values, room,
                       [trie](const char* lead, auto) { return trie.value(lead); });
}

// Stateful text, with a loop for each state. One shift byte is passed before a character; a second
// one is a character.
inline std::int32_t decodeShifted(const TSObject* object, const char*& at, const char* end,
                                  std::int32_t& state, TSChar16* values, std::int32_t room)
{
    if (object->id == kUtf8CodePage) // by rule
        return 0;
    const TSCodePageHeader& page = tsCodePage(object);
    const UnicodeTrie trie(object);
    const std::int32_t step = page.maxCharBytes;
    const auto isShift = [&page](char byte) {
        return isShiftIn(page, byte) || isShiftOut(page, byte);
    };
    const char* from = at;
    std::int32_t done = 0;
    // A shift byte and a character behind it are whole.
    while (done < room && end - from > kLongestChar) {
        if (isShift(*from))
            state = isShiftIn(page, *from++);
        if (state) {
            do {
                values[done++] = trie.value(from);
                from += step;
            } while (done < room && end - from > kLongestChar && !isShift(*from));
        } else {
            do
                values[done++] = page.toUnicode[static_cast<std::uint8_t>(*from++)];
            while (done < room && end - from > kLongestChar && !isShift(*from));
        }
    }
    at = from;
    return done;
}

} // namespace vlx
