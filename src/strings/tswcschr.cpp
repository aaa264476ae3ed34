// TSWcschr: finds a packed value.
#include "strings/find.hpp"

TS_TRACE_UNIT("tswcschr");

TSChar32* TSWcschr(TSLocale* handle, const TSChar32* string, int32_t length, TSChar32 value,
                   uint32_t options)
{
    TS_TRACE(TSWcschr);
    TSLocale* const locale = tsLocale(handle);
    TSChar32* const none = nullptr;
    if (!vlx::findOptionsAreGood(options))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(const_cast<TSChar32*>(vlx::findUnit(string, length, value, vlx::wantsLast(options))));
}
