// TSGetEolEx: the first line end of a stateful string.
#include "chars/eol.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsgeteox");

char* TSGetEolEx(TSLocale* handle, const char* string, int32_t state, int32_t length,
                 uint32_t* type, int32_t* eolLength, int32_t* newState, uint32_t options)
{
    TS_TRACE(TSGetEolEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSGetEol(locale, string, length, type, eolLength, options));
    char* const none = nullptr;
    const uint32_t wanted = vlx::wantedEols(options & ~TS_OPT_CHAR_COUNT);
    if (!wanted) {
        *type = TS_EOL_BAD_OPTIONS;
        *eolLength = 0;
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    }
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, state, length);
    else if (length < 0)
        length = vlx::unitsOf(string);
    vlx::EolSearch search(vlx::eolCharsOf<char>(tsCodePage(locale->codePage)), wanted);
    const char* const found =
        search.run(string, length, [&](int32_t offset, const char* set, int32_t setLength) {
            // A line end lies in the single-byte state, and so does what is behind it.
            const int32_t searched = offset == 0 ? state : 0;
            return TSStrcspnEx(locale, string + offset, searched, length - offset, set, 0,
                               setLength, 0);
        });
    *type = search.type;
    *eolLength = search.length;
    if (found && newState)
        *newState = 0;
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(const_cast<char*>(found));
}
