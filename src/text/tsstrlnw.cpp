// TSStringToLongW: a whole number from 32-bit text.
#include "text/parse.hpp"

TS_TRACE_UNIT("tsstrlnw");

int32_t TSStringToLongW(TSLocale* handle, const TSChar32* string, int32_t length, TSChar32** end,
                        int32_t base, uint32_t options)
{
    TS_TRACE(TSStringToLongW);
    TSLocale* const locale = tsLocale(handle);
    if (end)
        *end = vlx::writable(string);
    if (!vlx::isBase(base))
        TS_FAIL(locale->lastError, TS_ERR_BASE, 0, "Invalid base %d", base);
    if (options & ~(vlx::kParseLongOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    const vlx::PackedReader reader{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    vlx::NumberTexts<TSChar32> texts;
    takeTexts(texts, reader, reader, vlx::signsOf(*locale), vlx::digitsOf(*locale), options, false);
    const vlx::PackedTokens tokens{*locale, texts};
    const vlx::Text<vlx::PackedForm> text{string,
                                          string + (length < 0 ? vlx::unitsOf(string) : length)};
    vlx::LongReader number(tokens, text, (options & TS_OPT_UNSIGNED) != 0, false);
    const int32_t value = number.read(base);
    if (end)
        *end = vlx::writable(number.end().at);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
