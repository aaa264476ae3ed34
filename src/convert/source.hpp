// Where a conversion reads: each source gives the Unicode values of its text one by one.
//
//     bulk    some values at once, as many as are quickly had; gives their number
//     next    the next value; false at the end, or before a character that the end cuts off
//     whole   whether all of the text was given
#pragma once

#include <cstdint>

#include "convert/decode.hpp"

namespace vlx {

// Bytes of a single-byte page. A byte whose length is not 1 asks the multi-byte table.
struct SingleSource {
    const TSObject* object;
    unsigned traits; // of the code page
    const char* at;
    const char* end;

    std::int32_t bulk(TSChar16* values, std::int32_t room)
    {
        return decodeSingle(object, traits, at, end, values, room);
    }
    bool next(TSChar16& value)
    {
        if (at == end)
            return false;
        const TSCodePageHeader& page = tsCodePage(object);
        const auto byte = static_cast<std::uint8_t>(*at);
        const std::int32_t length = page.charLength[byte];
        if (length == 1) [[likely]]
            value = page.toUnicode[byte];
        else
            value = length <= end - at ? TSCpMbToUnicode(object, at) : kNoUnicode;
        ++at;
        return true;
    }
    bool whole() const { return at == end; }
};

// Bytes of a page without states.
struct MultiSource {
    const TSObject* object;
    unsigned traits;
    const char* at;
    const char* end;

    std::int32_t bulk(TSChar16* values, std::int32_t room)
    {
        return decodeMulti(object, traits, at, end, values, room);
    }
    bool next(TSChar16& value)
    {
        if (at == end)
            return false;
        const TSCodePageHeader& page = tsCodePage(object);
        const auto byte = static_cast<std::uint8_t>(*at);
        const std::int32_t length = page.charLength[byte];
        if (length > end - at)
            return false;
        value = length == 1 ? TSChar16{page.toUnicode[byte]} : TSCpMbToUnicode(object, at);
        at += length;
        return true;
    }
    bool whole() const { return at == end; }
};

// Stateful bytes: before each character one shift byte is passed.
struct ShiftSource {
    const TSObject* object;
    const char* at;
    const char* end;
    std::int32_t state;

    std::int32_t bulk(TSChar16* values, std::int32_t room)
    {
        return decodeShifted(object, at, end, state, values, room);
    }
    bool next(TSChar16& value)
    {
        if (!settle())
            return false;
        const TSCodePageHeader& page = tsCodePage(object);
        value = state ? TSCpMbToUnicode(object, at)
                      : TSChar16{page.toUnicode[static_cast<std::uint8_t>(*at)]};
        at += step();
        return true;
    }

    // Moves to the next whole character, behind a shift byte.
    bool settle()
    {
        if (at == end)
            return false;
        const TSCodePageHeader& page = tsCodePage(object);
        if (isShiftIn(page, *at) || isShiftOut(page, *at)) {
            state = isShiftIn(page, *at);
            if (++at == end)
                return false;
        }
        return step() <= end - at;
    }
    std::int32_t step() const { return state ? tsCodePage(object).maxCharBytes : 1; }
    bool whole() const { return at == end; }
};

struct UnicodeSource {
    const TSChar16* at;
    const TSChar16* end;

    bool next(TSChar16& value)
    {
        if (at == end)
            return false;
        value = *at++;
        return true;
    }
    bool whole() const { return at == end; }
};

struct PackedSource {
    const TSObject* object;
    const TSChar32* at;
    const TSChar32* end;

    std::int32_t bulk(TSChar16*, std::int32_t) { return 0; }
    bool next(TSChar16& value)
    {
        if (at == end)
            return false;
        value = PackedForm{object}.unicode({at++, end});
        return true;
    }
    bool whole() const { return at == end; }
};

// Reads values until the source or the room ends, and gives their number.
template <class Source>
std::int32_t readValues(Source& source, TSChar16* values, std::int32_t room)
{
    std::int32_t count = source.bulk(values, room);
    while (count < room && source.next(values[count]))
        ++count;
    return count;
}

// Calls `member` with the source of a locale's plain text.
template <class Member>
auto withPlainSource(const TSLocale& locale, const char* input, std::int32_t length,
                     const Member& member)
{
    const char* const end = input + length;
    if (locale.flags & kLocaleSingleByte)
        return member(SingleSource{locale.codePage, locale.pageTraits, input, end});
    return member(MultiSource{locale.codePage, locale.pageTraits, input, end});
}

} // namespace vlx
