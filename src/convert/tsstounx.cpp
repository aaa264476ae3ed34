// TSStringToUnicodeEx: stateful bytes to 16-bit values.
#include "convert/elements.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsstounx");

int32_t TSStringToUnicodeEx(TSChar16* output, int32_t count, TSLocale* handle, const char* input,
                            int32_t state, int32_t length, uint32_t options)
{
    TS_TRACE(TSStringToUnicodeEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStringToUnicode(output, count, locale, input, length, options));
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (count <= 0)
        TS_RETURN(0);
    const int32_t bytes = vlx::inputBytes(*locale, input, state, length, wanted.counted);
    TS_RETURN(vlx::convertToUnits(output, count,
                                  vlx::ShiftSource{locale->codePage, input, input + bytes, state},
                                  wanted.terminate(), length < 0));
}
