// TSStrchrU: finds a 16-bit value.
#include "strings/find.hpp"

TS_TRACE_UNIT("tsstrchu");

TSChar16* TSStrchrU(TSLocale* handle, const TSChar16* string, int32_t length, TSChar16 value,
                    uint32_t options)
{
    TS_TRACE(TSStrchrU);
    TSLocale* const locale = tsLocale(handle);
    TSChar16* const none = nullptr;
    if (!vlx::findOptionsAreGood(options))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(const_cast<TSChar16*>(vlx::findUnit(string, length, value, vlx::wantsLast(options))));
}
