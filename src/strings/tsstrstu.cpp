// TSStrstrU: finds a 16-bit string in another one.
#include "strings/search.hpp"

TS_TRACE_UNIT("tsstrstu");

TSChar16* TSStrstrU(TSLocale* handle, const TSChar16* string1, int32_t length1,
                    const TSChar16* string2, int32_t length2, uint32_t options)
{
    TS_TRACE(TSStrstrU);
    TSLocale* const locale = tsLocale(handle);
    const TSChar16* found = nullptr;
    if (!vlx::SearchOptions(options).isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, const_cast<TSChar16*>(found),
                "Invalid options %#x", options);
    if (length1 < 0)
        length1 = vlx::unitsOf(string1);
    if (length2 < 0)
        length2 = vlx::unitsOf(string2);
    const TSChar16* const last = string1 + (length1 - length2);
    if (length2 == 0)
        found = string1;
    else if (length1 < length2)
        found = nullptr;
    else if (options == 0)
        found = vlx::findSame(string1, last, string2, length2);
    else
        found = vlx::findPlace(string1, last, [&](const TSChar16* at) {
            return TSStrcollU(locale, at, length2, string2, length2, options) == 0;
        });
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(const_cast<TSChar16*>(found));
}
