// TSStrcspnEx: the span of characters of stateful text that are not in the set.
#include "frame/trace.hpp"
#include "strings/span.hpp"

TS_TRACE_UNIT("tsstcspx");

int32_t TSStrcspnEx(TSLocale* handle, const char* string, int32_t state, int32_t length,
                    const char* set, int32_t setState, int32_t setLength, uint32_t options)
{
    TS_TRACE(TSStrcspnEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStrcspn(locale, string, length, set, setLength, options));
    const vlx::ShiftForm form{locale->codePage};
    const int32_t span =
        spanOf(form, vlx::spanText<vlx::ShiftForm>(*locale, string, length, options, state),
               vlx::spanText<vlx::ShiftForm>(*locale, set, setLength, options, setState), false);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(options & TS_OPT_CHAR_COUNT ? TSNumCharsEx(locale, string, state, span, 0) : span);
}
