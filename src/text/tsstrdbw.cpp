// TSStringToDoubleW: a double from 32-bit text.
#include "text/parse.hpp"

TS_TRACE_UNIT("tsstrdbw");

double TSStringToDoubleW(TSLocale* handle, const TSChar32* string, int32_t length, TSChar32** end,
                         uint32_t options)
{
    TS_TRACE(TSStringToDoubleW);
    TSLocale* const locale = tsLocale(handle);
    // Deliberate: refused options leave the end alone.
    if (options & ~(vlx::kParseDoubleOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0.0, "Invalid options %#x", options);
    const vlx::PackedReader reader{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    const vlx::Signs& signs = vlx::signsOf(*locale);
    vlx::NumberTexts<TSChar32> texts;
    takeTexts(texts, reader, reader, signs, vlx::digitsOf(*locale), options, true);
    vlx::Text<vlx::PackedForm> text{string, string + (length < 0 ? vlx::unitsOf(string) : length)};
    const double value = readDouble(vlx::PackedTokens{*locale, texts}, texts, signs, text);
    if (end)
        *end = vlx::writable(text.at);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
