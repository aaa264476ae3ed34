// TSWideToMb: packed values to bytes of the same code page.
#include <algorithm>

#include "convert/output.hpp"
#include "convert/pack.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tswdtomb");

int32_t TSWideToMb(TSLocale* handle, char* output, int32_t size, const TSChar32* input,
                   int32_t count, uint32_t options)
{
    TS_TRACE(TSWideToMb);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~TS_OPT_CHAR_COUNT)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (count < 0)
        count = vlx::unitsOf(input) + 1;
    if (size <= 0)
        TS_RETURN(0);
    if (!(locale->flags & vlx::kLocaleSingleByte))
        TS_RETURN(vlx::packedToBytes(*locale, output, -1, size, input, count, options != 0));
    // Each value takes one place; what a longer one writes behind it the next one overwrites.
    count = std::min(count, size);
    for (int32_t i = 0; i < count; ++i) {
        char bytes[4];
        const int32_t length = std::min(TSCpPutWide(bytes, input[i]), size - i);
        std::copy(bytes, bytes + length, output + i);
    }
    TS_RETURN(count);
}
