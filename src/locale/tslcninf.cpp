// TSGetLocaleNumInfo: the value of a number item.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/items.hpp"

TS_TRACE_UNIT("tslcninf");

int32_t TSGetLocaleNumInfo(TSLocale* handle, int32_t item, uint32_t options)
{
    TS_TRACE(TSGetLocaleNumInfo);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~TS_OPT_OBJECT_VALUE)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    int32_t value = -1;
    if (!vlx::itemNumber(*locale, item, options == 0, value))
        TS_FAIL(locale->lastError, TS_ERR_ITEM, -1, "No number has item %d", item);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
