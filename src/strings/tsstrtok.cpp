// TSStrtok: the next token of a string.
#include "frame/trace.hpp"
#include "strings/token.hpp"

TS_TRACE_UNIT("tsstrtok");

char* TSStrtok(TSLocale* handle, char* string, int32_t* length, const char* delimiters,
               int32_t delimiterLength, char** next, uint32_t options)
{
    TS_TRACE(TSStrtok);
    TSLocale* const locale = tsLocale(handle);
    locale->lastError = TS_ERR_NONE;
    *next = nullptr;
    if (!string) {
        *length = 0;
        TS_RETURN(string);
    }
    const bool counted = (options & TS_OPT_CHAR_COUNT) != 0;
    const auto bytesOf = [&](const char* text, int32_t count) {
        if (count < 0)
            return vlx::unitsOf(text);
        return counted ? TSCpCharsToBytes(locale->codePage, text, 0, count) : count;
    };
    *length = bytesOf(string, *length);
    delimiterLength = bytesOf(delimiters, delimiterLength);
    char* const token = vlx::withPlainForm(*locale, [&](const auto& form) {
        using Form = std::decay_t<decltype(form)>;
        return nextToken(form, string, *length, vlx::SpanText<Form>{delimiters, delimiterLength},
                         *next);
    });
    if (counted && *length > 0)
        *length = TSNumChars(locale, *next, *length, 0);
    TS_RETURN(token);
}
