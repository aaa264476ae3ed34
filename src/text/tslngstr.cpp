// TSLongToString: a whole number in the form of the locale.
#include "text/number.hpp"

TS_TRACE_UNIT("tslngstr");

int32_t TSLongToString(TSLocale* handle, int32_t value, char* destination, int32_t size,
                       uint32_t options)
{
    TS_TRACE(TSLongToString);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kLongOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    const vlx::Signs& signs = vlx::signsOf(*locale);
    const auto roomFor = [&](const vlx::LongText<char>& text, int32_t left) {
        return asked.counted ? vlx::bytesFromEnd(*locale, text.begin(), text.length(), 0,
                                                 static_cast<char>(signs.zero), left)
                             : left;
    };
    const vlx::Written written = vlx::putLong(vlx::PlainReader{*locale, asked.ofObject}, signs,
                                              value, (options & TS_OPT_UNSIGNED) != 0, destination,
                                              size - asked.terminated, asked.terminated, roomFor);
    TS_STORE(locale->lastError, written.code, "Not all of the number was written, err = %d");
    TS_RETURN(written.count); // every character is one byte
}
