// TSCloseConversion: the end of a conversion handle; what is pending is dropped.
#include "convert/handle.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsclscnv");

int32_t TSCloseConversion(TSConversion* conversion)
{
    TS_TRACE(TSCloseConversion);
    if (vlx::release(conversion))
        TS_RETURN(TS_ERR_NONE);
    TS_PRINT(TRC1_ERRORS, "Unable to free the conversion");
    TS_RETURN(TS_ERR_FREE);
}
