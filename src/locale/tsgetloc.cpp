// TSGetLocale: a locale from a name.
#include "host/host.hpp"
#include "locale/make.hpp"

TS_TRACE_UNIT("tsgetloc");

TSLocale* TSGetLocale(const char* name, uint32_t options, int32_t* code)
{
    TS_TRACE(TSGetLocale);
    TSLocale* const none = nullptr;
    int32_t unused = TS_ERR_NONE;
    int32_t& result = code ? *code : unused;
    result = TS_ERR_NONE;
    if (options & ~vlx::kLocaleOptions)
        TS_FAIL(result, TS_ERR_ARGUMENT, none, "Invalid options %#x", options);
    TSLocale* const locale = vlx::newLocale();
    if (!locale)
        TS_FAIL(result, TS_ERR_MEMORY, none, "Unable to allocate %d bytes for locale",
                static_cast<int>(sizeof(TSLocale)));

    char userName[vlx::kLocaleNameSize];
    bool fromHost = false;
    if (options & TS_LOCALE_USER) {
        fromHost = TSGetUserLocale(userName, sizeof userName) == vlx::kUserLocaleOfHost;
        name = userName;
    }
    using Maker = vlx::LocaleMaker<vlx::ByteName>;
    if (!Maker(*locale, name ? name : "", options, result, &tsTrace).make()) {
        TSReleaseLocale(locale);
        TS_RETURN(none);
    }
    if (fromHost) {
        const std::uint32_t nativeId = vlx::host::userLocaleId();
        TSApplyNativeValues(&nativeId, locale, 0);
    }
    result = TS_ERR_NONE;
    TS_RETURN(locale);
}
