// TSGetLocaleTextInfoU: the text of an item as 16-bit Unicode.
#include "frame/trace.hpp"
#include "locale/itemwalk.hpp"

TS_TRACE_UNIT("tslctinu");

int32_t TSGetLocaleTextInfoU(TSLocale* handle, int32_t item, TSChar16* buffer, int32_t size,
                             uint32_t options)
{
    TS_TRACE(TSGetLocaleTextInfoU);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~vlx::kTextQueryOptions) // TS_OPT_CHAR_COUNT means nothing here
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    const bool useRecord = !(options & TS_OPT_OBJECT_VALUE);
    const auto query = openItem(*locale, vlx::itemTextU(*locale, item, useRecord), true);
    if (query.code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, query.code, -1, "Item %d has no text, err = %d", item,
                query.code);
    TS_RETURN(vlx::writeElements({query.text, *locale, false, query.namePage}, buffer,
                                 vlx::cappedSize(query.text, size, 0),
                                 [](const vlx::ItemChar& character) { return character.unicode; }));
}
