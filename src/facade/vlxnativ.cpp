// The facade and the host's locale ids.
#include <cstdio>

#include "facade/facade.hpp"
#include "host/host.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT_OF("*", "vlxnls1");

namespace {

// Options of the library's own calls.
constexpr std::uint32_t kNameOptions = TS_LOCALE_USER | TS_LOCALE_FALLBACK;
constexpr std::uint32_t kNativeOptions = 1 | TS_LOCALE_FALLBACK; // 1: not the user's changes

constexpr int kObjectName = 36; // the longest name and its terminator

// Makes the default locale one of the same four objects.
std::int32_t setDefaultLike(TSLocale* locale, std::uint32_t options)
{
    char language[kObjectName] = "";
    char territory[kObjectName] = "";
    char codePage[kObjectName] = "";
    char sort[kObjectName] = "";
    NLS1_GetLocaleTextInfo(locale, TS_LI_LANGUAGE_OBJECT, language, kObjectName, 0);
    NLS1_GetLocaleTextInfo(locale, TS_LI_TERRITORY_OBJECT, territory, kObjectName, 0);
    NLS1_GetLocaleTextInfo(locale, TS_LI_CODEPAGE_OBJECT, codePage, kObjectName, 0);
    NLS1_GetLocaleTextInfo(locale, TS_LI_SORT_OBJECT, sort, kObjectName, 0);
    char name[4 * kObjectName];
    std::snprintf(name, sizeof name, "%s_%s.%s@%s", language, territory, codePage, sort);
    return TSSetLocale(name, options & kNameOptions);
}

} // namespace

int32_t NLS1_SetLocaleFromNative(const uint32_t* nativeId, uint32_t options)
{
    TS_TRACE(NLS1_SetLocaleFromNative);
    if (!vlx::facadeRuns()) {
        TS_PRINT(TRC1_ERRORS, "The library does not run");
        TS_RETURN(TS_ERR_NO_OBJECTS);
    }
    int32_t code = TS_ERR_NONE;
    TSLocale* locale = NLS1_ConvertNativeLocale(nativeId, options & kNativeOptions, &code);
    if (!locale)
        TS_RETURN(code);
    if (options & NLS1_PROCESS)
        code = setDefaultLike(locale, options);
    TSLocale** const current = options & NLS1_THREAD ? vlx::threadLocale() : nullptr;
    if (current) {
        TSLocale* const previous = *current;
        *current = locale;
        locale = previous;
    } else if (options & NLS1_THREAD) {
        code = TS_ERR_MEMORY;
    }
    if (locale)
        TSReleaseLocale(locale);
    TS_RETURN(code);
}

int32_t NLS1_SetNativeLocale(int32_t ids, int32_t codePage, uint32_t unused, uint32_t options)
{
    TS_TRACE(NLS1_SetNativeLocale);
    int32_t code = TS_ERR_NONE;
    TSLocale* const locale = NLS1_GetLocale(ids, codePage, options, &code);
    if (!locale)
        TS_RETURN(code);
    code = NLS1_SetNativeFromLocale(locale, unused, options);
    TSReleaseLocale(locale);
    TS_RETURN(code);
}

int32_t NLS1_SetNativeFromLocale(TSLocale* locale, uint32_t, uint32_t options)
{
    TS_TRACE(NLS1_SetNativeFromLocale);
    uint32_t native = 0;
    if (!TSConvertLocale(locale, &native, options)) {
        TS_PRINT(TRC1_ERRORS, "NLS1_ConvertLocale failed with rc = %d", TSGetError(locale));
        TS_RETURN(TS_ERR_NO_NATIVE);
    }
    if (!vlx::host::setThreadLocale(native)) {
        TS_PRINT(TRC1_ERRORS, "SetThreadLocale failed to set locale to %d",
                 static_cast<int>(native));
        TS_RETURN(TS_ERR_NO_NATIVE);
    }
    TS_RETURN(TS_ERR_NONE);
}

TSLocale* NLS1_ConvertNativeLocale(const uint32_t* nativeId, uint32_t options, int32_t* code)
{
    TS_TRACE(NLS1_ConvertNativeLocale);
    TSLocale* const none = nullptr;
    int32_t unused = TS_ERR_NONE;
    int32_t& result = code ? *code : unused;
    if (!vlx::facadeRuns())
        TS_FAIL(result, TS_ERR_NO_OBJECTS, none, "The library does not run");
    if (!nativeId)
        TS_FAIL(result, TS_ERR_ARGUMENT, none, "No native id");
    TSLocale* const locale = TSConvertNativeLocale(nativeId, options, &result);
    if (!locale)
        TS_PRINT(TRC1_ERRORS, "TSConvertNativeLocale failed for 0x%04X with rc %d", *nativeId,
                 result);
    TS_RETURN(locale);
}
