// TSStringToDoubleEx: a double from stateful text.
#include "text/parse.hpp"
#include "text/shifted.hpp"

TS_TRACE_UNIT("tsstrdbx");

double TSStringToDoubleEx(TSLocale* handle, const char* string, int32_t state, int32_t length,
                          char** end, int32_t* endState, uint32_t options)
{
    TS_TRACE(TSStringToDoubleEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStringToDouble(locale, string, length, end, options));
    // Deliberate: refused options leave the end alone.
    if (options & ~(vlx::kParseDoubleOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0.0, "Invalid options %#x", options);
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, state, length);
    const bool ofObject = (options & TS_OPT_OBJECT_VALUE) != 0;
    const vlx::Signs& signs = vlx::signsOf(*locale);
    vlx::NumberTexts<char> texts;
    takeTexts(texts, vlx::PlainReader{*locale, ofObject}, vlx::ShiftReader{*locale, ofObject},
              signs, vlx::digitsOf(*locale), options, true);
    vlx::Text<vlx::ShiftForm> text{string, string + (length < 0 ? vlx::unitsOf(string) : length),
                                   state};
    const double value = readDouble(vlx::ShiftTokens{*locale, texts}, texts, signs, text);
    if (end)
        *end = vlx::writable(text.at);
    if (endState)
        *endState = text.state;
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
