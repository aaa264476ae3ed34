// TSStringToLongU: a whole number from 16-bit text.
#include "text/parse.hpp"

TS_TRACE_UNIT("tsstrlnu");

int32_t TSStringToLongU(TSLocale* handle, const TSChar16* string, int32_t length, TSChar16** end,
                        int32_t base, uint32_t options)
{
    TS_TRACE(TSStringToLongU);
    TSLocale* const locale = tsLocale(handle);
    if (end)
        *end = vlx::writable(string);
    if (!vlx::isBase(base))
        TS_FAIL(locale->lastError, TS_ERR_BASE, 0, "Invalid base %d", base);
    if (options & ~(vlx::kParseLongOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    const vlx::UnicodeReader reader{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    vlx::NumberTexts<TSChar16> texts;
    takeTexts(texts, reader, reader, vlx::kAsciiSigns, vlx::kAsciiDigits, options, false);
    const vlx::UnicodeTokens tokens{*locale, texts};
    const vlx::Text<vlx::UnicodeForm> text{string,
                                           string + (length < 0 ? vlx::unitsOf(string) : length)};
    vlx::LongReader number(tokens, text, (options & TS_OPT_UNSIGNED) != 0, false);
    const int32_t value = number.read(base);
    if (end)
        *end = vlx::writable(number.end().at);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
