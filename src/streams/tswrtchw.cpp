// TSWriteCharW: writes a packed value.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tswrtchw");

int32_t TSWriteCharW(TSStream* stream, TSLocale* handle, TSChar32 value)
{
    TS_TRACE(TSWriteCharW);
    TSLocale* const locale = tsLocale(handle);
    // A value may be shorter than its first byte or its state tell: zeros follow it then.
    char bytes[4] = {};
    const int32_t length = TSCpPutWide(bytes, value);
    TS_RETURN(vlx::isStateful(*locale) ? TSWriteCharEx(stream, locale, bytes, length > 1)
                                       : TSWriteChar(stream, locale, bytes));
}
