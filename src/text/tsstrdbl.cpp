// TSStringToDouble: a double from text in the form of the locale.
#include "text/parse.hpp"

TS_TRACE_UNIT("tsstrdbl");

double TSStringToDouble(TSLocale* handle, const char* string, int32_t length, char** end,
                        uint32_t options)
{
    TS_TRACE(TSStringToDouble);
    TSLocale* const locale = tsLocale(handle);
    // Deliberate: refused options leave the end alone.
    if (options & ~(vlx::kParseDoubleOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0.0, "Invalid options %#x", options);
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, 0, length);
    const vlx::PlainReader reader{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    const vlx::Signs& signs = vlx::signsOf(*locale);
    vlx::NumberTexts<char> texts;
    takeTexts(texts, reader, reader, signs, vlx::plainDigits(*locale), options, true);
    const char* const limit = string + (length < 0 ? vlx::unitsOf(string) : length);

    const char* at = string;
    const auto read = [&](const auto& tokens, auto text) {
        const double value = readDouble(tokens, texts, signs, text);
        at = text.at;
        return value;
    };
    double value;
    if (locale->flags & vlx::kLocaleSingleByte)
        value = read(vlx::SingleTokens(*locale, texts, signs),
                     vlx::Text<vlx::SingleForm>{string, limit});
    else
        value = read(vlx::MultiTokens{*locale, texts}, vlx::Text<vlx::MultiForm>{string, limit});
    if (end)
        *end = vlx::writable(at);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
