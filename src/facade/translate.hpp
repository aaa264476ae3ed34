// The walk of a translation between numbered code pages: where it reads, and where it writes.
//
// A source has `peek`, which gives the Unicode value of the character it stands on, or false at the
// end or before a character that the end cuts off; `take`, which steps over it; and `restIsBlank`,
// which tells whether nothing but blanks is left from that character on. Sources of several bytes
// have `bulk`, which gives many values at once and leaves the end of a text to the others. A target
// has `put`, which is false where the character does not fit.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "convert/decode.hpp"

namespace vlx {

using Byte = std::uint8_t;

// 16-bit values on any byte.
inline TSChar16 unitAt(const Byte* at)
{
    TSChar16 value;
    std::memcpy(&value, at, sizeof value);
    return value;
}
inline void putUnit(Byte* at, TSChar16 value)
{
    std::memcpy(at, &value, sizeof value);
}

inline constexpr TSChar16 kUnicodeBlank = 0x0020;

// From this length on a text is worth the look at the tables that tells what loops may rely on.
inline constexpr std::ptrdiff_t kBulkText = 64;

struct RawUnits { // 16-bit Unicode
    const Byte* at;
    const Byte* end;

    bool peek(TSChar16& value) const
    {
        if (at == end)
            return false;
        value = unitAt(at);
        return true;
    }
    void take() { at += 2; }
    bool restIsBlank() const
    {
        const Byte* unit = at;
        while (unit != end && unitAt(unit) == kUnicodeBlank)
            unit += 2;
        return unit == end;
    }
};

struct SingleBytes { // a page of one byte for each character
    const TSCodePageHeader* page;
    const Byte* at;
    const Byte* end;
    Byte blank;

    bool peek(TSChar16& value) const
    {
        if (at == end)
            return false;
        value = page->toUnicode[*at];
        return true;
    }
    void take() { ++at; }
    bool restIsBlank() const
    {
        const Byte* byte = at;
        while (byte != end && *byte == blank)
            ++byte;
        return byte == end;
    }
};

struct MultiBytes { // a page whose first bytes tell the length
    const TSObject* object;
    const Byte* at;
    const Byte* end;
    Byte blank;

    const TSCodePageHeader& page() const { return tsCodePage(object); }
    std::int32_t length(const Byte* byte) const { return page().charLength[*byte]; }

    std::int32_t bulk(TSChar16* values, std::int32_t room)
    {
        const unsigned traits = end - at < kBulkText ? 0 : pageTraitsOf(object);
        const char* from = reinterpret_cast<const char*>(at);
        const std::int32_t done =
            decodeMulti(object, traits, from, reinterpret_cast<const char*>(end), values, room);
        at = reinterpret_cast<const Byte*>(from);
        return done;
    }
    bool peek(TSChar16& value) const
    {
        if (at == end || length(at) > end - at)
            return false;
        value = length(at) == 1 ? TSChar16{page().toUnicode[*at]}
                                : TSCpMbToUnicode(object, reinterpret_cast<const char*>(at));
        return true;
    }
    void take() { at += length(at); }
    bool restIsBlank() const
    {
        const Byte* byte = at;
        while (byte != end && *byte == blank && length(byte) == 1)
            ++byte;
        return byte == end;
    }
};

struct ShiftedBytes { // a stateful page
    MultiBytes bytes;
    std::int32_t state = 0;

    std::int32_t step() const { return state ? bytes.page().maxCharBytes : 1; }

    // A loop for each state; any number of shift bytes may stand before a character. What the loops
    // need stands in locals, which the values that are stored cannot be.
    std::int32_t bulk(TSChar16* values, std::int32_t room)
    {
        if (bytes.object->id == kUtf8CodePage) // by rule
            return 0;
        const TSCodePageHeader& page = bytes.page();
        const UnicodeTrie trie(bytes.object);
        const Byte in = page.shiftIn;
        const Byte out = page.shiftOut;
        const std::ptrdiff_t longStep = page.maxCharBytes;
        const auto isShift = [in, out](Byte byte) { return byte == in || byte == out; };
        const Byte* from = bytes.at;
        // A character before it is whole.
        const Byte* const last =
            bytes.end - std::min<std::ptrdiff_t>(kLongestChar, bytes.end - from);
        TSChar16* to = values;
        TSChar16* const full = values + room;
        while (to != full && from < last) {
            if (isShift(*from)) {
                state = *from++ == in;
            } else if (state) {
                do {
                    *to++ = trie.pair(reinterpret_cast<const char*>(from));
                    from += longStep;
                } while (to != full && from < last && !isShift(*from));
            } else {
                do
                    *to++ = page.toUnicode[*from++];
                while (to != full && from < last && !isShift(*from));
            }
        }
        bytes.at = from;
        return static_cast<std::int32_t>(to - values);
    }

    bool peek(TSChar16& value)
    {
        const TSCodePageHeader& page = bytes.page();
        for (; bytes.at != bytes.end; ++bytes.at) {
            if (*bytes.at == page.shiftIn)
                state = 1;
            else if (*bytes.at == page.shiftOut)
                state = 0;
            else
                break;
        }
        if (bytes.at == bytes.end || step() > bytes.end - bytes.at)
            return false;
        value = step() == 1
                    ? TSChar16{page.toUnicode[*bytes.at]}
                    : TSCpMbToUnicode(bytes.object, reinterpret_cast<const char*>(bytes.at));
        return true;
    }
    void take() { bytes.at += step(); }
    bool restIsBlank() const { return state == 0 ? bytes.restIsBlank() : bytes.at == bytes.end; }
};

// What a translation has written so far, and the room that it has.
struct Written {
    Byte* output;
    std::int64_t size;      // of the room, in bytes, or in characters if `counted`
    bool counted;           // lengths count characters
    std::int64_t bytes = 0; // written
    std::int64_t count = 0; // characters; one that did not fit is counted, too
    std::int32_t state = 0; // of a shift sensitive target
};

// Deliberate: the room is tested when the value is stored, and its elements are compared with the
// size as it was given, so that one element past that number is written and not counted as bytes.
struct UnitsTarget {
    Written& to;

    // Takes what a source has at once, where the output is good for 16-bit values.
    template <class Source>
    void take(Source& source)
    {
        if (reinterpret_cast<std::uintptr_t>(to.output) % sizeof(TSChar16) != 0)
            return;
        to.count =
            source.bulk(reinterpret_cast<TSChar16*>(to.output), static_cast<std::int32_t>(to.size));
        to.bytes = 2 * to.count;
    }

    bool put(TSChar16 value)
    {
        putUnit(to.output + 2 * to.count, value);
        if (++to.count > to.size)
            return false;
        to.bytes += 2;
        return true;
    }
};

// Deliberate: as above, with the first byte of each character.
struct FirstByteTarget {
    Written& to;
    const TSObject* object;

    bool put(TSChar16 value)
    {
        char bytes[4];
        TSCpUnicodeToMb(object, value, bytes);
        to.output[to.count] = static_cast<Byte>(bytes[0]);
        if (++to.count > to.size)
            return false;
        ++to.bytes;
        return true;
    }
};

struct CharacterTarget {
    Written& to;
    const TSObject* object;
    const bool shifts;

    bool put(TSChar16 value)
    {
        char bytes[4];
        const std::int32_t length = TSCpUnicodeToMb(object, value, bytes);
        const bool multi = length > 1;
        const bool shift = shifts && multi != (to.state != 0);
        ++to.count;
        if (to.counted ? to.count > to.size : to.bytes + length + (shift ? 1 : 0) > to.size)
            return false;
        if (shift) {
            const TSCodePageHeader& page = tsCodePage(object);
            to.output[to.bytes++] = multi ? page.shiftIn : page.shiftOut;
            to.state = multi;
        }
        std::memcpy(to.output + to.bytes, bytes, static_cast<std::size_t>(length));
        to.bytes += length;
        return true;
    }
};

// Moves characters until the input or the room ends; true if it was the room.
template <class Source, class Target>
bool translateWhile(Source& source, Target target)
{
    for (TSChar16 value; source.peek(value); source.take())
        if (!target.put(value))
            return true;
    return false;
}

} // namespace vlx
