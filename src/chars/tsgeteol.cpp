// TSGetEol: the first line end of a string.
#include "chars/eol.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsgeteol");

char* TSGetEol(TSLocale* handle, const char* string, int32_t length, uint32_t* type,
               int32_t* eolLength, uint32_t options)
{
    TS_TRACE(TSGetEol);
    TSLocale* const locale = tsLocale(handle);
    char* const none = nullptr;
    const uint32_t wanted = vlx::wantedEols(options & ~TS_OPT_CHAR_COUNT);
    if (!wanted) {
        *type = TS_EOL_BAD_OPTIONS;
        *eolLength = 0;
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    }
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, 0, length);
    else if (length < 0)
        length = vlx::unitsOf(string);
    vlx::EolSearch search(vlx::eolCharsOf<char>(tsCodePage(locale->codePage)), wanted);
    const char* const found =
        search.run(string, length, [&](int32_t offset, const char* set, int32_t setLength) {
            return TSStrcspn(locale, string + offset, length - offset, set, setLength, 0);
        });
    *type = search.type;
    *eolLength = search.length;
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(const_cast<char*>(found));
}
