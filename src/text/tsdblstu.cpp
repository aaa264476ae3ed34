// TSDoubleToStringU: a double as 16-bit text.
#include "text/number.hpp"

TS_TRACE_UNIT("tsdblstu");

int32_t TSDoubleToStringU(TSLocale* handle, double value, TSChar16* destination, int32_t size,
                          uint32_t options)
{
    TS_TRACE(TSDoubleToStringU);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kDoubleOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    const vlx::Signs& signs = vlx::kAsciiSigns;
    const vlx::DoubleText<TSChar16> text(vlx::UnicodeReader{*locale, asked.ofObject}, signs, value);
    const vlx::Written written = vlx::putDouble(text, signs, value < 0, destination, 0,
                                                size - asked.terminated, asked.terminated);
    TS_STORE(locale->lastError, written.code, "Not all of the number was written, err = %d");
    TS_RETURN(written.count);
}
