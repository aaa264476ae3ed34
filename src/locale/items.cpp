// Where each locale item stands.
#include "locale/items.hpp"

#include "chars/codepage.hpp"
#include "frame/globals.hpp"
#include "locale/content.hpp"

namespace vlx {
namespace {

constexpr char kBinarySortName[] = "Binary";

// Header words of the language, beside those of its names.
constexpr int kLanguageCodeWord = 5;
constexpr int kLanguageNameWord = 6;

// Header words of the territory. The separators are words 0 to 4 themselves.
constexpr int kTerritoryCodeWord = 11;
constexpr int kTerritoryNameWord = 12;
constexpr int kIntlCurrencyWord = 16;
constexpr int kTextWord[kLocaleTexts] = {13, 15, 14, 17, 18, 19, 20, 21};

const TSTerritoryContent& territoryOf(const TSLocale& locale)
{
    return *reinterpret_cast<const TSTerritoryContent*>(locale.territory->sections[0]);
}
const TSLanguageContent& languageOf(const TSLocale& locale)
{
    return *reinterpret_cast<const TSLanguageContent*>(locale.language->sections[0]);
}

// The text that a header word of an object's content points to.
ItemText contentText(const TSObject* object, int word)
{
    const std::uint8_t* const content = object->sections[0];
    const std::uint16_t offset = reinterpret_cast<const Le16*>(content)[word];
    return {content + offset, TS_TEXT_UNICODE, false, true};
}

// A header word that is a character itself.
ItemText contentCharacter(const TSObject* object, int word)
{
    return {object->sections[0] + word * static_cast<int>(sizeof(Le16)), TS_TEXT_UNICODE, true,
            true};
}

ItemText objectName(const char* name)
{
    return {name, TS_TEXT_ASCII, false, false};
}

// The name of a default of the language. It is not loaded for that.
ItemText defaultName(std::uint16_t type, std::uint16_t id)
{
    std::int32_t code = TS_ERR_NONE;
    const TSObject* const object = TSGetObjFromID(tsGlobals->objectManager, type, id, 1, &code);
    if (object) // an empty range of the table answers with another type
        return object->type == type ? objectName(object->name) : ItemText{};
    return type == TS_OBJ_SORT && code == TS_ERR_NONE ? objectName(kBinarySortName) : ItemText{};
}

// The items that have one source only.
ItemText fixedText(const TSLocale& locale, std::int32_t item)
{
    if (item >= TS_LI_DAY_1 && item <= TS_LI_PM)
        return nameText(locale, item);
    const TSLanguageContent& language = languageOf(locale);
    switch (item) {
    case TS_LI_LANGUAGE_OBJECT:
        return objectName(locale.language->name);
    case TS_LI_LANGUAGE_CODE:
        return contentText(locale.language, kLanguageCodeWord);
    case TS_LI_LANGUAGE_NAME:
        return contentText(locale.language, kLanguageNameWord);
    case TS_LI_TERRITORY_OBJECT:
        return objectName(locale.territory->name);
    case TS_LI_TERRITORY_CODE:
        return contentText(locale.territory, kTerritoryCodeWord);
    case TS_LI_TERRITORY_NAME:
        return contentText(locale.territory, kTerritoryNameWord);
    case TS_LI_CODEPAGE_OBJECT:
        return objectName(locale.codePage->name);
    case TS_LI_SORT_OBJECT:
        return objectName(locale.sort ? locale.sort->name : kBinarySortName);
    case TS_LI_DEFAULT_TERRITORY_OBJECT:
        return defaultName(TS_OBJ_TERRITORY, language.defaultTerritory);
    case TS_LI_DEFAULT_CODEPAGE_OBJECT:
        return defaultName(TS_OBJ_CODEPAGE, language.defaultCodePage);
    case TS_LI_DEFAULT_SORT_OBJECT:
        return defaultName(TS_OBJ_SORT, language.defaultSort);
    case TS_LI_INT_CURRENCY_SYMBOL:
        return contentText(locale.territory, kIntlCurrencyWord);
    case TS_LI_LOCALE_NAME:
        return objectName(locale.fullName);
    default:
        return {};
    }
}

// A number that the territory has and the record may have changed.
std::int32_t flagOf(const TSLocale& locale, int index, bool useRecord)
{
    // The record has the territory's flags 1 to 6 as its flags 0 to 5.
    return useRecord ? locale.flags >> index & 1 : territoryOf(locale).flags >> (index + 1) & 1;
}

char* append(char* at, const char* text)
{
    while (*text)
        *at++ = *text++;
    return at;
}

} // namespace

ItemText itemText(const TSLocale& locale, std::int32_t item, bool useRecord)
{
    if (const int index = placeOf(kSeparatorItems, item); index >= 0)
        return useRecord ? ItemText{&(locale.*kLocaleSeparator[index].byte), TS_TEXT_CODEPAGE, true,
                                    false}
                         : contentCharacter(locale.territory, index);
    if (const int index = placeOf(kTextItems, item); index >= 0)
        return useRecord ? ItemText{locale.*kLocaleText[index].bytes, TS_TEXT_CODEPAGE}
                         : contentText(locale.territory, kTextWord[index]);
    return fixedText(locale, item);
}

ItemText itemTextU(const TSLocale& locale, std::int32_t item, bool useRecord)
{
    if (const int index = placeOf(kSeparatorItems, item); useRecord && index >= 0)
        return {&(locale.*kLocaleSeparator[index].unicode), TS_TEXT_UNICODE, true, false};
    if (const int index = placeOf(kTextItems, item); useRecord && index >= 0)
        return {locale.*kLocaleText[index].unicode, TS_TEXT_UNICODE};
    return itemText(locale, item, useRecord);
}

bool itemNumber(const TSLocale& locale, std::int32_t item, bool useRecord, std::int32_t& value)
{
    const TSTerritoryContent& territory = territoryOf(locale);
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    const auto chosen = [useRecord](std::int32_t own, std::int32_t ofTerritory) {
        return useRecord ? own : ofTerritory;
    };
    if (const int index = placeOf(kFlagItems, item); index >= 0) {
        value = flagOf(locale, index, useRecord);
        return true;
    }
    switch (item) {
    case TS_LI_LANGUAGE_ID:
        value = locale.language->id;
        return true;
    case TS_LI_TERRITORY_ID:
        value = locale.territory->id;
        return true;
    case TS_LI_CODEPAGE_ID:
        value = locale.codePage->id;
        return true;
    case TS_LI_SORT_ID:
        value = locale.sort ? locale.sort->id : 0;
        return true;
    case TS_LI_TERRITORY_FLAG0:
        value = territory.flags & 1;
        return true;
    case TS_LI_FRAC_DIGITS:
        value = chosen(locale.fractionDigits, territory.fractionDigits);
        return true;
    case TS_LI_MON_FRAC_DIGITS:
        value = chosen(locale.currencyDigits, territory.currencyDigits);
        return true;
    case TS_LI_INT_FRAC_DIGITS:
        value = chosen(locale.intlCurrencyDigits, territory.intlCurrencyDigits);
        return true;
    case TS_LI_P_SIGN_POSN:
        value = chosen(locale.positiveSignPosition, territory.positiveSignPosition);
        return true;
    case TS_LI_N_SIGN_POSN:
        value = chosen(locale.negativeSignPosition, territory.negativeSignPosition);
        return true;
    case TS_LI_TERRITORY_WORD9: // whatever the options
        value = territory.word9;
        return true;
    case TS_LI_MAX_CHAR_SIZE:
        value = page.maxCharBytes;
        return true;
    case TS_LI_ASCII_BASED:
        value = page.cpFlags & kAsciiFamily ? 1 : 0;
        return true;
    case TS_LI_SHIFT_SENSITIVE:
        value = locale.flags & kLocaleStateful ? 1 : 0;
        return true;
    default:
        return false;
    }
}

void setFullName(TSLocale& locale)
{
    char* at = append(locale.fullName, locale.language->name);
    *at++ = '_';
    at = append(at, locale.territory->name);
    *at++ = '.';
    at = append(at, locale.codePage->name);
    *at++ = '@';
    at = append(at, locale.sort ? locale.sort->name : kBinarySortName);
    *at = 0;
}

} // namespace vlx
