// TSGetLocaleTextInfo: the text of an item in the locale's code page.
#include "frame/trace.hpp"
#include "locale/itemwalk.hpp"

TS_TRACE_UNIT("tslctinf");

int32_t TSGetLocaleTextInfo(TSLocale* handle, int32_t item, char* buffer, int32_t size,
                            uint32_t options)
{
    TS_TRACE(TSGetLocaleTextInfo);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~vlx::kTextQueryOptions)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    const bool useRecord = !(options & TS_OPT_OBJECT_VALUE);
    const auto query = openItem(*locale, vlx::itemText(*locale, item, useRecord), false);
    if (query.code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, query.code, -1, "Item %d has no text, err = %d", item,
                query.code);
    TS_RETURN(vlx::writeItemBytes(*locale, {query.text, *locale, false, query.namePage}, buffer,
                                  vlx::kNoState, vlx::cappedSize(query.text, size, 0),
                                  (options & TS_OPT_CHAR_COUNT) != 0));
}
