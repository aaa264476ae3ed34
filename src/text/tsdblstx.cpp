// TSDoubleToStringEx: a double in stateful text.
#include "text/number.hpp"

TS_TRACE_UNIT("tsdblstx");

int32_t TSDoubleToStringEx(TSLocale* handle, double value, char* destination, int32_t state,
                           int32_t size, uint32_t options)
{
    TS_TRACE(TSDoubleToStringEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSDoubleToString(locale, value, destination, size, options));
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kDoubleOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    size -= asked.terminated;
    if (state && !asked.counted && size < (asked.terminated ? 1 : 2))
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room for a shift byte");
    const vlx::Signs& signs = vlx::signsOf(*locale);
    const vlx::DoubleText<char> text(vlx::PlainReader{*locale, asked.ofObject}, signs, value);
    int32_t count = 0;
    if (state) {
        *destination = static_cast<char>(tsCodePage(locale->codePage).shiftOut);
        // Deliberate: where characters are counted the number overwrites the shift byte.
        count = asked.counted ? 0 : 1;
    }
    const vlx::Written written =
        vlx::putDouble(text, signs, value < 0, destination, count,
                       vlx::roomForDouble(*locale, text, signs, size, asked), asked.terminated);
    const int32_t result = asked.counted && written.count > 0
                               ? TSNumChars(locale, destination, written.count, 0)
                               : written.count;
    TS_STORE(locale->lastError, written.code, "Not all of the number was written, err = %d");
    TS_RETURN(result);
}
