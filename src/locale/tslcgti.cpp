// TSLocaleGetTextItem: the text of an item in place.
#include "locale/items.hpp"

const void* TSLocaleGetTextItem(TSLocale* locale, int32_t item, int32_t useRecord, uint32_t* kind)
{
    const vlx::ItemText text = vlx::itemText(*locale, item, useRecord != 0);
    if (text)
        *kind = text.kind;
    return text.at;
}
