// TSGetEolU: the first line end of a string of 16-bit values.
#include "chars/eol.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsgeteou");

TSChar16* TSGetEolU(TSLocale* handle, const TSChar16* string, int32_t length, uint32_t* type,
                    int32_t* eolLength, uint32_t options)
{
    TS_TRACE(TSGetEolU);
    TSLocale* const locale = tsLocale(handle);
    TSChar16* const none = nullptr;
    const uint32_t wanted = vlx::wantedEols(options & ~TS_OPT_CHAR_COUNT);
    if (!wanted) {
        *type = TS_EOL_BAD_OPTIONS;
        *eolLength = 0;
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    }
    if (length < 0)
        length = vlx::unitsOf(string);
    vlx::EolSearch search(vlx::kUnicodeEols, wanted);
    const TSChar16* const found =
        search.run(string, length, [&](int32_t offset, const TSChar16* set, int32_t setLength) {
            return TSStrcspnU(locale, string + offset, length - offset, set, setLength);
        });
    *type = search.type;
    *eolLength = search.length;
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(const_cast<TSChar16*>(found));
}
