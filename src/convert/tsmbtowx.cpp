// TSMbToWideEx: stateful bytes to packed values of the same code page.
#include "convert/output.hpp"
#include "convert/source.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsmbtowx");

int32_t TSMbToWideEx(TSLocale* handle, TSChar32* output, int32_t count, const char* input,
                     int32_t state, int32_t length, uint32_t options)
{
    TS_TRACE(TSMbToWideEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSMbToWide(locale, output, count, input, length, options));
    locale->lastError = TS_ERR_NONE;
    if (count <= 0 || length == 0)
        TS_RETURN(0);
    // Deliberate: options are not refused, and count only as this very value.
    const bool counted = options == TS_OPT_CHAR_COUNT;
    int32_t bytes = vlx::inputBytes(*locale, input, state, length, counted);
    if (length < 0)
        ++bytes; // the terminator is converted too
    vlx::ShiftSource source{locale->codePage, input, input + bytes, state};
    int32_t written = 0;
    for (; written < count && source.settle(); ++written) {
        output[written] = TSCpGetWideEx(locale->codePage, source.at, source.state);
        source.at += source.step();
    }
    TS_RETURN(written);
}
