// TSReleaseLocale: the end of a locale handle.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT("tsrelloc");

int32_t TSReleaseLocale(TSLocale* locale)
{
    TS_TRACE(TSReleaseLocale);
    int32_t result = TS_ERR_NONE;
    const auto give = [&result](void* memory) { // every block is tried
        if (memory && !vlx::release(memory))
            result = TS_ERR_FAILED;
    };
    for (const vlx::LocaleText& text : vlx::kLocaleText)
        give(locale->*text.bytes);
    for (const vlx::LocaleText& text : vlx::kLocaleText)
        give(locale->*text.unicode);
    give(locale);
    TS_RETURN(result);
}
