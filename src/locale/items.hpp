// What a locale knows, by item number, and where it stands: in the record, in its language or in
// its territory. The queries, the updates, the formatters and the parsers read it here.
#pragma once

#include <cstdint>

#include "locale/locale.hpp"

namespace vlx {

// The text of an item where it stands.
struct ItemText {
    const void* at = nullptr; // null: no such item, or the object of a default was not found
    std::uint32_t kind = 0;   // TS_TEXT_UNICODE, TS_TEXT_CODEPAGE or TS_TEXT_ASCII
    bool single = false;      // one character without a terminator
    bool stored = false;      // 16-bit text of an object: little-endian, on any address

    explicit operator bool() const { return at != nullptr; }

    // The units of 16-bit text.
    TSChar16 unit(std::int32_t index) const
    {
        return stored ? TSChar16{static_cast<const Le16*>(at)[index]}
                      : static_cast<const TSChar16*>(at)[index];
    }
    const char* bytes() const { return static_cast<const char*>(at); }
};

// The item's text, in the record if `useRecord` and the record has it, else in its object.
ItemText itemText(const TSLocale& locale, std::int32_t item, bool useRecord);

// The same, but text of the record in its 16-bit form.
ItemText itemTextU(const TSLocale& locale, std::int32_t item, bool useRecord);

// The text of a name of the language, TS_LI_DAY_1 to TS_LI_PM, which no record changes.
inline ItemText nameText(const TSLocale& locale, std::int32_t item)
{
    constexpr std::int32_t kWordsBehindItems = 9; // of the language's header
    const std::uint8_t* const content = locale.language->sections[0];
    const std::uint16_t offset = reinterpret_cast<const Le16*>(content)[item - kWordsBehindItems];
    return {content + offset, TS_TEXT_UNICODE, false, true};
}

// The value of a number item; false if there is no such item.
bool itemNumber(const TSLocale& locale, std::int32_t item, bool useRecord, std::int32_t& value);

// The items of a record's values, in the order of kLocaleSeparator, kLocaleText and the flags.
inline constexpr std::int32_t kSeparatorItems[kSeparators] = {
    TS_LI_DECIMAL_POINT, TS_LI_THOUSANDS_SEP, TS_LI_LIST_SEPARATOR, TS_LI_MON_DECIMAL_POINT,
    TS_LI_MON_THOUSANDS_SEP};
inline constexpr std::int32_t kTextItems[kLocaleTexts] = {
    TS_LI_GROUPING,      TS_LI_CURRENCY_SYMBOL, TS_LI_MON_GROUPING, TS_LI_POSITIVE_SIGN,
    TS_LI_NEGATIVE_SIGN, TS_LI_TIME_FORMAT,     TS_LI_DATE_FORMAT,  TS_LI_LONG_DATE_FORMAT};
inline constexpr std::int32_t kFlagItems[kLocaleFlags] = {
    TS_LI_P_CS_PRECEDES,  TS_LI_P_SEP_BY_SPACE,  TS_LI_N_CS_PRECEDES,
    TS_LI_N_SEP_BY_SPACE, TS_LI_TERRITORY_FLAG5, TS_LI_TERRITORY_FLAG6};

// The place of an item in one of these lists, or -1.
template <int Count>
constexpr int placeOf(const std::int32_t (&items)[Count], std::int32_t item)
{
    for (int i = 0; i < Count; ++i)
        if (items[i] == item)
            return i;
    return -1;
}

} // namespace vlx
