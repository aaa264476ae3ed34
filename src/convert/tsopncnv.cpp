// TSOpenConversion: a conversion of text that comes in slices.
#include <cstring>

#include "convert/handle.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT("tsopncnv");

TSConversion* TSOpenConversion(TSLocale* targetHandle, TSLocale* sourceHandle)
{
    TS_TRACE(TSOpenConversion);
    TSLocale* const target = tsLocale(targetHandle);
    TSConversion* const none = nullptr;
    auto* const conversion = static_cast<TSConversion*>(vlx::allocate(sizeof(TSConversion)));
    if (!conversion)
        TS_FAIL(target->lastError, TS_ERR_MEMORY, none, "Unable to allocate %d bytes",
                static_cast<int>(sizeof(TSConversion)));
    std::memset(conversion, 0, sizeof *conversion);
    conversion->sourceLocale = tsLocale(sourceHandle);
    conversion->targetLocale = target;
    target->lastError = TS_ERR_NONE;
    TS_RETURN(conversion);
}
