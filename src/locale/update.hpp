// What the updates of a record share. Each gives the error code, and leaves the record as it was
// after a failure unless it says otherwise.
#pragma once

#include <cstdint>

#include "locale/items.hpp"

namespace vlx {

// The text of an update, its length known.
struct UpdateText {
    const char* text;
    std::int32_t length; // bytes, at least 1
    std::int32_t state;  // of its first byte; kPlainText where shift bytes mean nothing
};
inline constexpr std::int32_t kPlainText = -1;

// The bytes of a length that the caller gave.
std::int32_t updateLength(const TSLocale& locale, const char* text, std::int32_t state,
                          std::int32_t length, std::uint32_t options);

// Puts an object in its place. A null is the binary sort.
std::int32_t replaceObject(TSLocale& locale, std::uint16_t type, TSObject* object);

// What a lookup for an update failed with: TS_ERR_MEMORY or TS_ERR_NOT_FOUND; 0 if it did not.
std::int32_t lookupFailure(const TSObject* object, std::uint16_t type, std::int32_t code);

// Changes the item: an object's name, a separator or a text. TS_ERR_MEMORY may leave a text in the
// code page without its 16-bit form.
std::int32_t updateItem(TSLocale& locale, std::int32_t item, const UpdateText& text);

// Changes the 16-bit form of a text alone, to `count` elements and a zero. They may lie in the
// record.
std::int32_t updateTwin(TSLocale& locale, int index, const TSChar16* elements, std::int32_t count);

inline void setModified(TSLocale& locale, std::uint32_t first, int index)
{
    locale.modifiedMask |= first << index;
}

// Bits of TSLocale::modifiedMaskU: the separators, then the texts.
inline void setModifiedU(TSLocale& locale, int bit)
{
    locale.modifiedMaskU = static_cast<std::uint16_t>(locale.modifiedMaskU | 1u << bit);
}

// The type of the object that a name item names, or -1.
constexpr int typeOfNameItem(std::int32_t item)
{
    switch (item) {
    case TS_LI_LANGUAGE_OBJECT:
        return TS_OBJ_LANGUAGE;
    case TS_LI_TERRITORY_OBJECT:
        return TS_OBJ_TERRITORY;
    case TS_LI_CODEPAGE_OBJECT:
        return TS_OBJ_CODEPAGE;
    case TS_LI_SORT_OBJECT:
        return TS_OBJ_SORT;
    default:
        return -1;
    }
}

} // namespace vlx
