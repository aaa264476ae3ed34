// TSGetLocaleTextInfoW: the text of an item as packed values.
#include "frame/trace.hpp"
#include "locale/itemwalk.hpp"

TS_TRACE_UNIT("tslctinw");

int32_t TSGetLocaleTextInfoW(TSLocale* handle, int32_t item, TSChar32* buffer, int32_t size,
                             uint32_t options)
{
    TS_TRACE(TSGetLocaleTextInfoW);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~vlx::kTextQueryOptions) // TS_OPT_CHAR_COUNT means nothing here
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    const bool useRecord = !(options & TS_OPT_OBJECT_VALUE);
    const auto query = openItem(*locale, vlx::itemText(*locale, item, useRecord), false);
    if (query.code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, query.code, -1, "Item %d has no text, err = %d", item,
                query.code);
    const bool stateful = (locale->flags & vlx::kLocaleStateful) != 0;
    TS_RETURN(vlx::writeElements({query.text, *locale, stateful, query.namePage}, buffer,
                                 vlx::cappedSize(query.text, size, 0),
                                 [&](const vlx::ItemChar& character) {
                                     return vlx::packedValue(locale->codePage, character);
                                 }));
}
