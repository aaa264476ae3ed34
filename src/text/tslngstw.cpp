// TSLongToStringW: a whole number as 32-bit text.
#include "text/number.hpp"

TS_TRACE_UNIT("tslngstw");

int32_t TSLongToStringW(TSLocale* handle, int32_t value, TSChar32* destination, int32_t size,
                        uint32_t options)
{
    TS_TRACE(TSLongToStringW);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kLongOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    const vlx::Written written =
        vlx::putLong(vlx::PackedReader{*locale, asked.ofObject}, vlx::signsOf(*locale), value,
                     (options & TS_OPT_UNSIGNED) != 0, destination, size - asked.terminated,
                     asked.terminated, vlx::kSameRoom);
    TS_STORE(locale->lastError, written.code, "Not all of the number was written, err = %d");
    TS_RETURN(written.count);
}
