// TSStringToLongEx: a whole number from stateful text.
#include "text/parse.hpp"
#include "text/shifted.hpp"

TS_TRACE_UNIT("tsstrlnx");

int32_t TSStringToLongEx(TSLocale* handle, const char* string, int32_t state, int32_t length,
                         char** end, int32_t* endState, int32_t base, uint32_t options)
{
    TS_TRACE(TSStringToLongEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStringToLong(locale, string, length, end, base, options));
    if (end)
        *end = vlx::writable(string);
    if (endState)
        *endState = state;
    if (!vlx::isBase(base))
        TS_FAIL(locale->lastError, TS_ERR_BASE, 0, "Invalid base %d", base);
    if (options & ~(vlx::kParseLongOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, state, length);
    const bool ofObject = (options & TS_OPT_OBJECT_VALUE) != 0;
    vlx::NumberTexts<char> texts;
    takeTexts(texts, vlx::PlainReader{*locale, ofObject}, vlx::ShiftReader{*locale, ofObject},
              vlx::signsOf(*locale), vlx::digitsOf(*locale), options, false);
    const vlx::ShiftTokens tokens{*locale, texts};
    const vlx::Text<vlx::ShiftForm> text{
        string, string + (length < 0 ? vlx::unitsOf(string) : length), state};
    vlx::LongReader number(tokens, text, (options & TS_OPT_UNSIGNED) != 0, true);
    const int32_t value = number.read(base);
    if (end)
        *end = vlx::writable(number.end().at);
    if (endState)
        *endState = number.end().state;
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
