// TSUnicodeToStringW: 16-bit values to packed values.
#include "convert/elements.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsunitow");

int32_t TSUnicodeToStringW(TSLocale* handle, TSChar32* output, int32_t outputCount,
                           const TSChar16* input, int32_t inputCount, uint32_t options)
{
    TS_TRACE(TSUnicodeToStringW);
    TSLocale* const locale = tsLocale(handle);
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (outputCount <= 0)
        TS_RETURN(0);
    const int32_t count = inputCount < 0 ? vlx::unitsOf(input) : inputCount;
    TS_RETURN(vlx::convertToElements(output, outputCount, vlx::UnicodeSource{input, input + count},
                                     wanted.terminate(), inputCount < 0, [&](TSChar16 value) {
                                         return TSCpUnicodeToWide(locale->codePage, value);
                                     }));
}
