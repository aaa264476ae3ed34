// TSStringToUnicodeW: packed values to 16-bit values.
#include "convert/elements.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsstounw");

int32_t TSStringToUnicodeW(TSChar16* output, int32_t outputCount, TSLocale* handle,
                           const TSChar32* input, int32_t inputCount, uint32_t options)
{
    TS_TRACE(TSStringToUnicodeW);
    TSLocale* const locale = tsLocale(handle);
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (outputCount <= 0)
        TS_RETURN(0);
    const int32_t count = inputCount < 0 ? vlx::unitsOf(input) : inputCount;
    TS_RETURN(vlx::convertToUnits(output, outputCount,
                                  vlx::PackedSource{locale->codePage, input, input + count},
                                  wanted.terminate(), inputCount < 0));
}
