// The values of a locale as formatters and parsers read them: each the current one of the record,
// or the one that the object holds. A text is cut to the room that its reader gives it, at a whole
// character, and has no terminator.
//
// The four readers deliver the same items in the four forms of text.
#pragma once

#include <cstdint>

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
std::int32_t numberItem(const TSLocale& locale, int item, bool ofObject);

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

// Whether the first character of a name of the language stands at a place; an empty name may seem
// to.
bool plainNameBegins(const TSLocale& locale, int item, const char* at, const char* end);

struct PlainReader {
    static constexpr std::int32_t kNameSize = 32; // of names and patterns in times
    using Unit = char;
    const TSLocale& locale;
    bool ofObject;

    Unit separator(int item) const
    {
        return static_cast<char>(byteSeparator(locale, item, ofObject));
    }
    ValueText<Unit> text(int item, Unit* buffer, std::int32_t size) const
    {
        return plainItem(locale, item, ofObject, buffer, size);
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
