// The values of a locale as formatters and parsers read them: each the current one of the record,
// or the one that the object holds. A text is cut to the room that its reader gives it, at a whole
// character, and has no terminator.
//
// The four readers deliver the same items in the four forms of text.
#pragma once

#include <cstdint>

#include <cstring>

#include "locale/items.hpp"
#include "locale/locale.hpp"
#include "tessera.h"

namespace vlx {

// A text in place, or in the buffer that was given for it.
template <class Unit>
struct ValueText {
    const Unit* at;
    std::int32_t length;
};

// The value of a numeric item.
inline std::int32_t numberItem(const TSLocale& locale, int item, bool ofObject)
{
    std::int32_t value = 0;
    itemNumber(locale, item, !ofObject, value);
    return value;
}

// The units of a text, at most `limit`.
inline std::int32_t boundedLength(const char* text, std::int32_t limit)
{
    const void* const end = std::memchr(text, 0, static_cast<std::size_t>(limit));
    return end ? static_cast<std::int32_t>(static_cast<const char*>(end) - text) : limit;
}

// Whether a value of a record can be taken as it stands there, a byte a character.
inline bool isPlainRecord(const TSLocale& locale, bool ofObject)
{
    return !ofObject && (locale.flags & kLocaleSingleByte);
}

// The separators: one character, which is one byte in a code page; 0 if there is none.
std::uint8_t byteSeparator(const TSLocale& locale, int item, bool ofObject);

// A text in a buffer of `size` units, of which one is the terminator's.
ValueText<char> plainItem(const TSLocale& locale, int item, bool ofObject, char* buffer,
                          std::int32_t size);
// Stateful text that begins in `state` and ends in the single-byte state.
ValueText<char> shiftItem(const TSLocale& locale, int item, bool ofObject, std::int32_t state,
                          char* buffer, std::int32_t size);
ValueText<TSChar16> unicodeItem(const TSLocale& locale, int item, bool ofObject, TSChar16* buffer,
                                std::int32_t size);
ValueText<TSChar32> packedItem(const TSLocale& locale, int item, bool ofObject, TSChar32* buffer,
                               std::int32_t size);

// Writes a name of the language, cut to `size` as a text in a buffer is, and gives its length.
std::int32_t putPlainName(const TSLocale& locale, int item, char* buffer, std::int32_t size);

// The longest of some names of the language that stands at a place: its number among them, the
// first of those that are equally long, and its length; -1 if none does. Names are cut to `size`.
struct NameMatch {
    std::int32_t index = -1;
    std::int32_t length = 0;
};
NameMatch matchPlainName(const TSLocale& locale, int firstItem, int items, const char* at,
                         const char* end, std::int32_t size);

struct PlainReader {
    static constexpr std::int32_t kNameSize = 32; // of names and patterns in times
    using Unit = char;
    const TSLocale& locale;
    bool ofObject;

    Unit separator(int item) const
    {
        if (isPlainRecord(locale, ofObject))
            return static_cast<char>(locale.*kLocaleSeparator[placeOf(kSeparatorItems, item)].byte);
        return static_cast<char>(byteSeparator(locale, item, ofObject));
    }
    ValueText<Unit> text(int item, Unit* buffer, std::int32_t size) const
    {
        const int place = placeOf(kTextItems, item);
        if (place < 0 || !isPlainRecord(locale, ofObject))
            return plainItem(locale, item, ofObject, buffer, size);
        const char* const text = locale.*kLocaleText[place].bytes;
        return {text, boundedLength(text, size - 1)};
    }
};

struct UnicodeReader {
    static constexpr std::int32_t kNameSize = 64; // of names and patterns in times
    using Unit = TSChar16;
    const TSLocale& locale;
    bool ofObject;

    Unit separator(int item) const
    {
        Unit buffer[2];
        const ValueText<Unit> text = unicodeItem(locale, item, ofObject, buffer, 2);
        return text.length ? *text.at : Unit{0};
    }
    ValueText<Unit> text(int item, Unit* buffer, std::int32_t size) const
    {
        return unicodeItem(locale, item, ofObject, buffer, size);
    }
};

struct PackedReader {
    static constexpr std::int32_t kNameSize = 128; // of names and patterns in times
    using Unit = TSChar32;
    const TSLocale& locale;
    bool ofObject;

    Unit separator(int item) const
    {
        Unit buffer[2];
        const ValueText<Unit> text = packedItem(locale, item, ofObject, buffer, 2);
        return text.length ? *text.at : Unit{0};
    }
    ValueText<Unit> text(int item, Unit* buffer, std::int32_t size) const
    {
        return packedItem(locale, item, ofObject, buffer, size);
    }
};

} // namespace vlx
