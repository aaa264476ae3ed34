// The walk over an item's text that the text queries share.
#pragma once

#include <cstring>

#include "chars/form.hpp"
#include "frame/globals.hpp"
#include "locale/items.hpp"

namespace vlx {

// A character of an item's text: its bytes in the locale's code page, or a Unicode value.
struct ItemChar {
    const char* bytes;
    std::int32_t length; // 0: it is a Unicode value
    TSChar16 unicode;
};

// The packed value of a character.
inline TSChar32 packedValue(const TSObject* page, const ItemChar& character)
{
    if (character.length == 0)
        return TSCpUnicodeToWide(page, character.unicode);
    TSChar32 value = 0;
    for (std::int32_t i = 0; i < character.length; ++i)
        value = value << 8 | static_cast<std::uint8_t>(character.bytes[i]);
    return value;
}

// Steps through the text of an item in any kind.
class ItemWalk {
  public:
    // `namePage` turns the bytes of an object's name into Unicode; null where they are text of the
    // code page.
    ItemWalk(const ItemText& text, const TSLocale& locale, bool followsShifts,
             const TSObject* namePage)
        : text_(text), object_(locale.codePage), namePage_(namePage), followsShifts_(followsShifts)
    {
        if (text.kind == TS_TEXT_UNICODE)
            return;
        bytes_.at = text.bytes();
        bytes_.end = bytes_.at + (text.single ? 1 : std::strlen(bytes_.at));
    }

    // Moves to the next character; false at the end of the text, and before a cut character.
    bool next(ItemChar& character)
    {
        if (text_.kind == TS_TEXT_UNICODE)
            return nextUnit(character);
        if (namePage_)
            return nextOfName(character);
        return followsShifts_ ? nextBytes(ShiftForm{object_}, character)
                              : nextBytes(MultiForm{object_}, character);
    }

  private:
    bool nextUnit(ItemChar& character)
    {
        if (text_.single && index_ > 0)
            return false;
        character = {nullptr, 0, text_.unit(index_)};
        ++index_;
        return character.unicode != 0;
    }

    bool nextOfName(ItemChar& character)
    {
        if (bytes_.at == bytes_.end)
            return false;
        const auto byte = static_cast<std::uint8_t>(*bytes_.at++);
        character = {nullptr, 0, tsCodePage(namePage_).toUnicode[byte]};
        return true;
    }

    template <class Form>
    bool nextBytes(const Form& form, ItemChar& character)
    {
        Text<Form> text{bytes_.at, bytes_.end, bytes_.state};
        if (!form.settle(text) || *text.at == 0 || form.length(text) > text.left())
            return false;
        character = {text.at, form.length(text), 0};
        bytes_ = {text.at + character.length, text.end, text.state};
        return true;
    }

    const ItemText text_;
    const TSObject* const object_;
    const TSObject* const namePage_;
    const bool followsShifts_;
    Text<ShiftForm> bytes_{nullptr, nullptr};
    std::int32_t index_ = 0;
};

// What a text query looks at, once its options are good.
struct ItemQuery {
    ItemText text;
    const TSObject* namePage = nullptr;
    std::int32_t code = TS_ERR_NONE;
};

// Names are ASCII, so an ASCII-based code page has their bytes as they are; `unicode` asks for
// their Unicode values in any code page.
inline ItemQuery openItem(const TSLocale& locale, const ItemText& text, bool unicode)
{
    ItemQuery query{text};
    if (!text) {
        query.code = TS_ERR_ITEM;
        return query;
    }
    const bool asciiBased = (tsCodePage(locale.codePage).cpFlags & kAsciiFamily) != 0;
    if (text.kind != TS_TEXT_ASCII || (asciiBased && !unicode))
        return query;
    std::int32_t code = TS_ERR_NONE;
    query.namePage = asciiBased ? locale.codePage : asciiPage(&code);
    if (!query.namePage)
        query.code = TS_ERR_CODEPAGE;
    return query;
}

// Deliberate: the one-character items have no terminator in the record, so a size above 2 is 2.
inline std::int32_t cappedSize(const ItemText& text, std::int32_t size, std::int32_t state)
{
    constexpr std::int32_t kCharacterAndTerminator = 2;
    return text.single && size > kCharacterAndTerminator ? kCharacterAndTerminator + state : size;
}

// Writes an item's text and a terminator as elements, at most `size` of them, and gives their
// number. `elementOf` makes the element of a character.
template <class Element, class ElementOf>
std::int32_t writeElements(ItemWalk walk, Element* buffer, std::int32_t size,
                           const ElementOf& elementOf)
{
    std::int32_t written = 0;
    for (ItemChar character; written + 1 < size && walk.next(character);)
        buffer[written++] = elementOf(character);
    buffer[written++] = 0;
    return written;
}

// Writes an item's text and a terminator as bytes of the locale's code page. `state` is the shift
// state of the output, -1 where it takes no shift bytes. The size is in bytes, or in characters if
// `counted`; so is the result.
std::int32_t writeItemBytes(const TSLocale& locale, ItemWalk walk, char* buffer, std::int32_t state,
                            std::int32_t size, bool counted);

inline constexpr std::int32_t kNoState = -1;
inline constexpr std::uint32_t kTextQueryOptions = TS_OPT_OBJECT_VALUE | TS_OPT_CHAR_COUNT;

} // namespace vlx
