// TSStringToDoubleU: a double from 16-bit text.
#include "text/parse.hpp"

TS_TRACE_UNIT("tsstrdbu");

double TSStringToDoubleU(TSLocale* handle, const TSChar16* string, int32_t length, TSChar16** end,
                         uint32_t options)
{
    TS_TRACE(TSStringToDoubleU);
    TSLocale* const locale = tsLocale(handle);
    // Deliberate: refused options leave the end alone.
    if (options & ~(vlx::kParseDoubleOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0.0, "Invalid options %#x", options);
    const vlx::UnicodeReader reader{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    const vlx::Signs& signs = vlx::kAsciiSigns;
    vlx::NumberTexts<TSChar16> texts;
    takeTexts(texts, reader, reader, signs, vlx::kAsciiDigits, options, true);
    vlx::Text<vlx::UnicodeForm> text{string, string + (length < 0 ? vlx::unitsOf(string) : length)};
    const double value = readDouble(vlx::UnicodeTokens{*locale, texts}, texts, signs, text);
    if (end)
        *end = vlx::writable(text.at);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
