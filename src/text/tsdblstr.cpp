// TSDoubleToString: a double in the form of the locale.
#include "text/number.hpp"

TS_TRACE_UNIT("tsdblstr");

int32_t TSDoubleToString(TSLocale* handle, double value, char* destination, int32_t size,
                         uint32_t options)
{
    TS_TRACE(TSDoubleToString);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kDoubleOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    const vlx::Signs& signs = vlx::signsOf(*locale);
    const vlx::DoubleText<char> text(vlx::PlainReader{*locale, asked.ofObject}, signs, value);
    const vlx::Written written = vlx::putDouble(
        text, signs, value < 0, destination, 0,
        vlx::roomForDouble(*locale, text, signs, size - asked.terminated, asked), asked.terminated);
    const int32_t result = asked.counted && written.count > 0
                               ? TSNumChars(locale, destination, written.count, 0)
                               : written.count;
    TS_STORE(locale->lastError, written.code, "Not all of the number was written, err = %d");
    TS_RETURN(result);
}
