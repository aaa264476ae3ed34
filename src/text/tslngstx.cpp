// TSLongToStringEx: a whole number in stateful text.
#include "text/number.hpp"

TS_TRACE_UNIT("tslngstx");

int32_t TSLongToStringEx(TSLocale* handle, int32_t value, char* destination, int32_t state,
                         int32_t size, uint32_t options)
{
    TS_TRACE(TSLongToStringEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSLongToString(locale, value, destination, size, options));
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kLongOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    size -= asked.terminated;
    char* at = destination;
    if (state) {
        if (!asked.counted && size < (asked.terminated ? 1 : 2))
            TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room for a shift byte");
        *at++ = static_cast<char>(tsCodePage(locale->codePage).shiftOut);
        size -= !asked.counted; // it is no character
    }
    const vlx::Signs& signs = vlx::signsOf(*locale);
    const auto roomFor = [&](const vlx::LongText<char>& text, int32_t left) {
        return asked.counted ? vlx::bytesFromEnd(*locale, text.begin(), text.length(), 0,
                                                 static_cast<char>(signs.zero), left)
                             : left;
    };
    const vlx::Written written =
        vlx::putLong(vlx::PlainReader{*locale, asked.ofObject}, signs, value,
                     (options & TS_OPT_UNSIGNED) != 0, at, size, asked.terminated, roomFor);
    const auto bytes = static_cast<int32_t>(at - destination) + written.count;
    const int32_t result =
        asked.counted ? TSNumCharsEx(locale, destination, state, bytes, 0) : bytes;
    TS_STORE(locale->lastError, written.code, "Not all of the number was written, err = %d");
    TS_RETURN(result);
}
