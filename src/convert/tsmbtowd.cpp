// TSMbToWide: bytes to packed values of the same code page.
#include "convert/output.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsmbtowd");

int32_t TSMbToWide(TSLocale* handle, TSChar32* output, int32_t count, const char* input,
                   int32_t length, uint32_t options)
{
    TS_TRACE(TSMbToWide);
    TSLocale* const locale = tsLocale(handle);
    locale->lastError = TS_ERR_NONE;
    if (count <= 0 || length == 0)
        TS_RETURN(0);
    // Deliberate: options are not refused, and count only as this very value.
    const bool counted = options == TS_OPT_CHAR_COUNT;
    int32_t bytes = vlx::inputBytes(*locale, input, 0, length, counted);
    if (length < 0)
        ++bytes; // the terminator is converted too
    const vlx::MultiForm form{locale->codePage};
    vlx::Text<vlx::MultiForm> text{input, input + bytes};
    int32_t written = 0;
    for (; written < count && form.settle(text) && form.length(text) <= text.left(); ++written) {
        output[written] = form.value(text);
        text.at += form.length(text);
    }
    TS_RETURN(written);
}
