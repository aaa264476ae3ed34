// TSUngetCharEx: pushes a character of a state back.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "streams/stream.hpp"

TS_TRACE_UNIT("tsungchx");

int32_t TSUngetCharEx(TSStream* stream, TSLocale* handle, const char* character, int32_t state)
{
    TS_TRACE(TSUngetCharEx);
    TSLocale* const locale = tsLocale(handle);
    if (!vlx::isStateful(*locale))
        TS_RETURN(TSUngetChar(stream, locale, character));
    if (stream->isWriter)
        TS_FAIL(locale->lastError, TS_ERR_STREAM_DIRECTION, 0, "The stream is a writer");
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    if (vlx::isShiftOut(page, *character) || vlx::isShiftIn(page, *character)) {
        state = !vlx::isShiftOut(page, *character);
        ++character;
    }
    const int32_t length = state ? page.maxCharBytes : 1;
    locale->lastError = vlx::pushBackShifted(*stream, page, character, length);
    if (locale->lastError != TS_ERR_NONE)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "The buffer is full");
    TS_RETURN(1);
}
