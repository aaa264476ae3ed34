// TSLocaleGetTextItemU: the text of an item in place, the record's in its 16-bit form.
#include "locale/items.hpp"

const void* TSLocaleGetTextItemU(TSLocale* locale, int32_t item, int32_t useRecord, uint32_t* kind)
{
    const vlx::ItemText text = vlx::itemTextU(*locale, item, useRecord != 0);
    if (text)
        *kind = text.kind;
    return text.at;
}
