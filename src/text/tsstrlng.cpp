// TSStringToLong: a whole number from text in the form of the locale.
#include "text/parse.hpp"

TS_TRACE_UNIT("tsstrlng");

int32_t TSStringToLong(TSLocale* handle, const char* string, int32_t length, char** end,
                       int32_t base, uint32_t options)
{
    TS_TRACE(TSStringToLong);
    TSLocale* const locale = tsLocale(handle);
    if (end)
        *end = vlx::writable(string);
    if (!vlx::isBase(base))
        TS_FAIL(locale->lastError, TS_ERR_BASE, 0, "Invalid base %d", base);
    if (options & ~(vlx::kParseLongOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, 0, length);
    const vlx::PlainReader reader{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    const vlx::Signs& signs = vlx::signsOf(*locale);
    vlx::NumberTexts<char> texts;
    takeTexts(texts, reader, reader, signs, vlx::plainDigits(*locale), options, false);
    const char* const limit = string + (length < 0 ? vlx::unitsOf(string) : length);

    const auto read = [&](const auto& tokens, const auto& text) {
        vlx::LongReader number(tokens, text, (options & TS_OPT_UNSIGNED) != 0, false);
        const int32_t value = number.read(base);
        if (end)
            *end = vlx::writable(number.end().at);
        return value;
    };
    int32_t value;
    if (locale->flags & vlx::kLocaleSingleByte)
        value = read(vlx::SingleTokens(*locale, texts, signs),
                     vlx::Text<vlx::SingleForm>{string, limit});
    else
        value = read(vlx::MultiTokens{*locale, texts}, vlx::Text<vlx::MultiForm>{string, limit});
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
