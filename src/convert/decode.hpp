// Reading many characters at a time. Each function moves `at` over characters that stand whole
// before `end` and gives the number of values written, at most `room`. It takes what it can be
// quick with, and leaves the rest to whoever reads character by character: nothing of what the end
// of a text decides is decided here.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "chars/form.hpp"
#include "chars/runs.hpp"
#include "chars/tables.hpp"

namespace vlx {

inline constexpr std::int32_t kLongestChar = 4;
template <std::int32_t length>
inline constexpr std::integral_constant<std::int32_t, length> kLength{};

// Single-byte text.
inline std::int32_t decodeSingle(const TSObject* object, const char*& at, const char* end,
                                 TSChar16* values, std::int32_t room)
{
    const TSCodePageHeader& page = tsCodePage(object);
    const auto count = static_cast<std::int32_t>(std::min<std::ptrdiff_t>(end - at, room));
    if (count < kBulk || !allAreSingle(page))
        return 0;
    const PlainSet plain = plainBytes(page);
    const auto unicode = [&page](char byte) -> TSChar16 {
        return page.toUnicode[static_cast<std::uint8_t>(byte)];
    };
    std::int32_t done = 0;
    for (; count - done >= kBlock; done += kBlock)
        if (plain.isEmpty() || widenBlock(at + done, values + done, plain) < kBlock)
            std::transform(at + done, at + done + kBlock, values + done, unicode);
    std::transform(at + done, at + count, values + done, unicode);
    at += count;
    return count;
}

// Text whose characters have different lengths. `unicodeOf` reads a character of more than one byte.
template <class UnicodeOf>
std::int32_t decodeChars(const TSCodePageHeader& page, const char*& at, const char* end,
                         TSChar16* values, std::int32_t room, UnicodeOf unicodeOf)
{
    // So much text that the characters behind a block give as many values as the block did: they
    // overwrite what the block wrote too much.
    constexpr std::ptrdiff_t kAhead = kBlock + kBlock * kLongestChar;
    const PlainSet plain = end - at >= kBulk ? plainBytes(page) : PlainSet::none();
    const char* from = at;
    TSChar16* to = values;
    TSChar16* const full = values + room;
    // Characters of one length follow each other: a loop of their own, in which no place waits for
    // the length of the character before. False at a character that the end cuts off.
    const auto readAll = [&](auto lengthOfAll, const auto& read) {
        constexpr std::int32_t length = lengthOfAll;
        std::ptrdiff_t most = std::min((end - from) / length, full - to);
        if (most == 0)
            return false;
        do {
            *to++ = read(from);
            from += length;
        } while (--most > 0 && page.charLength[static_cast<std::uint8_t>(*from)] == length &&
                 !(length == 1 && plain.has(*from)));
        return true;
    };
    const auto singleUnicode = [&page](const char* byte) -> TSChar16 {
        return page.toUnicode[static_cast<std::uint8_t>(*byte)];
    };
    bool isWhole = true;
    while (isWhole && to != full && from != end) {
        if (plain.has(*from) && end - from >= kAhead && full - to >= kBlock) {
            const int run = widenBlock(from, to, plain);
            from += run;
            to += run;
            continue;
        }
        switch (page.charLength[static_cast<std::uint8_t>(*from)]) {
        case 1:
            isWhole = readAll(kLength<1>, singleUnicode);
            break;
        case 2:
            isWhole = readAll(kLength<2>, unicodeOf);
            break;
        case 3:
            isWhole = readAll(kLength<3>, unicodeOf);
            break;
        default:
            isWhole = readAll(kLength<4>, unicodeOf);
            break;
        }
    }
    at = from;
    return static_cast<std::int32_t>(to - values);
}

inline std::int32_t decodeMulti(const TSObject* object, const char*& at, const char* end,
                                TSChar16* values, std::int32_t room)
{
    const TSCodePageHeader& page = tsCodePage(object);
    if (object->id == kUtf8CodePage)
        return decodeChars(page, at, end, values, room, utf8ToUnicode);
    const UnicodeTrie trie(object);
    return decodeChars(page, at, end, values, room,
                       [trie](const char* character) { return trie.value(character); });
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
