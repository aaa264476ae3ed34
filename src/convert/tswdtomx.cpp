// TSWideToMbEx: packed values to stateful bytes of the same code page.
#include "convert/output.hpp"
#include "convert/pack.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tswdtomx");

int32_t TSWideToMbEx(TSLocale* handle, char* output, int32_t state, int32_t size,
                     const TSChar32* input, int32_t count, uint32_t options)
{
    TS_TRACE(TSWideToMbEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSWideToMb(locale, output, size, input, count, options));
    if (options & ~TS_OPT_CHAR_COUNT)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (count < 0)
        count = vlx::unitsOf(input) + 1;
    if (size <= 0)
        TS_RETURN(0);
    TS_RETURN(vlx::packedToBytes(*locale, output, state, size, input, count, options != 0));
}
