// TSGetLocaleTextInfoEx: the text of an item in a stateful code page.
#include "frame/trace.hpp"
#include "locale/itemwalk.hpp"

TS_TRACE_UNIT("tslctinx");

int32_t TSGetLocaleTextInfoEx(TSLocale* handle, int32_t item, char* buffer, int32_t state,
                              int32_t size, uint32_t options)
{
    TS_TRACE(TSGetLocaleTextInfoEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSGetLocaleTextInfo(locale, item, buffer, size, options));
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
    const int32_t begin = state ? 1 : 0;
    TS_RETURN(vlx::writeItemBytes(*locale, {query.text, *locale, true, query.namePage}, buffer,
                                  begin, vlx::cappedSize(query.text, size, begin),
                                  (options & TS_OPT_CHAR_COUNT) != 0));
}
