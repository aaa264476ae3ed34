// TSConvertNativeLocale: the locale of a native id.
#include "frame/trace.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT("tscnvnat");

namespace {

constexpr std::uint32_t kNoOverride = 1;

} // namespace

TSLocale* TSConvertNativeLocale(const uint32_t* nativeId, uint32_t options, int32_t* code)
{
    TS_TRACE(TSConvertNativeLocale);
    TSLocale* const none = nullptr;
    int32_t unused = TS_ERR_NONE;
    int32_t& result = code ? *code : unused;
    if (options & ~(kNoOverride | TS_LOCALE_FALLBACK))
        TS_FAIL(result, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    char name[vlx::kLocaleNameSize];
    TSMapNativeLocale(nativeId, name, sizeof name);
    TSLocale* const locale = TSGetLocale(name, options & TS_LOCALE_FALLBACK, &result);
    if (locale)
        TSApplyNativeValues(nativeId, locale, options & kNoOverride);
    TS_RETURN(locale);
}
