// TSUnicodeToStringEx: 16-bit values to stateful bytes.
#include "convert/output.hpp"
#include "convert/source.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsunitox");

int32_t TSUnicodeToStringEx(TSLocale* handle, char* output, int32_t state, int32_t size,
                            const TSChar16* input, int32_t count, uint32_t options)
{
    TS_TRACE(TSUnicodeToStringEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSUnicodeToString(locale, output, size, input, count, options));
    const vlx::ConversionOptions wanted(options);
    if (!wanted.good())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (size <= 0)
        TS_RETURN(0);
    const int32_t units = count < 0 ? vlx::unitsOf(input) : count;
    TS_RETURN(convertTo(vlx::ByteOutput(*locale, output, state, size, wanted),
                        vlx::UnicodeSource{input, input + units}, count < 0));
}
