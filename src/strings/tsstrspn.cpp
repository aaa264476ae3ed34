// TSStrspn: the span of characters that are in the set.
#include "frame/trace.hpp"
#include "strings/span.hpp"

TS_TRACE_UNIT("tsstrspn");

int32_t TSStrspn(TSLocale* handle, const char* string, int32_t length, const char* set,
                 int32_t setLength, uint32_t options)
{
    TS_TRACE(TSStrspn);
    TSLocale* const locale = tsLocale(handle);
    const int32_t span = vlx::withPlainForm(*locale, [&](const auto& form) {
        using Form = std::decay_t<decltype(form)>;
        return spanOf(form, vlx::spanText<Form>(*locale, string, length, options),
                      vlx::spanText<Form>(*locale, set, setLength, options), true);
    });
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(options & TS_OPT_CHAR_COUNT ? TSNumChars(locale, string, span, 0) : span);
}
