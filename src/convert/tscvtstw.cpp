// TSConvertStringW: packed values of one code page to those of another.
#include "convert/elements.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tscvtstw");

int32_t TSConvertStringW(TSLocale* targetHandle, TSChar32* output, int32_t outputCount,
                         TSLocale* sourceHandle, const TSChar32* input, int32_t inputCount,
                         uint32_t options)
{
    TS_TRACE(TSConvertStringW);
    TSLocale* const target = tsLocale(targetHandle);
    const TSLocale* const source = tsLocale(sourceHandle);
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(target->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    target->lastError = TS_ERR_NONE;
    if (outputCount <= 0)
        TS_RETURN(0);
    const int32_t count = inputCount < 0 ? vlx::unitsOf(input) : inputCount;
    TS_RETURN(vlx::convertToElements(
        output, outputCount, vlx::PackedSource{source->codePage, input, input + count},
        wanted.terminate(), inputCount < 0,
        [&](TSChar16 value) { return TSCpUnicodeToWide(target->codePage, value); }));
}
