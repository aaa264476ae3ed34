// TSStringToUnicode: bytes to 16-bit values.
#include "convert/elements.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsstouni");

int32_t TSStringToUnicode(TSChar16* output, int32_t count, TSLocale* handle, const char* input,
                          int32_t length, uint32_t options)
{
    TS_TRACE(TSStringToUnicode);
    TSLocale* const locale = tsLocale(handle);
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (count <= 0)
        TS_RETURN(0);
    const int32_t bytes = vlx::inputBytes(*locale, input, 0, length, wanted.counted);
    TS_RETURN(vlx::withPlainSource(*locale, input, bytes, [&](const auto& text) {
        return convertToUnits(output, count, text, wanted.terminate(), length < 0);
    }));
}
