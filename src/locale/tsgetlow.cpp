// TSGetLocaleW: a locale from a name of 32-bit values. It has no trace.
#include "locale/make.hpp"

TSLocale* TSGetLocaleW(const TSChar32* name, uint32_t options, int32_t* code)
{
    if (options & TS_LOCALE_USER)
        return TSGetLocale(nullptr, options, code);
    int32_t unused = TS_ERR_NONE;
    int32_t& result = code ? *code : unused;
    result = TS_ERR_ARGUMENT;
    if (options & ~vlx::kLocaleOptions)
        return nullptr;
    result = TS_ERR_MEMORY;
    TSLocale* const locale = vlx::newLocale();
    if (!locale)
        return nullptr;

    constexpr TSChar32 kEmpty = 0;
    using Maker = vlx::LocaleMaker<vlx::PackedName>;
    if (!Maker(*locale, name ? name : &kEmpty, options, result, nullptr).make()) {
        TSReleaseLocale(locale);
        return nullptr;
    }
    result = TS_ERR_NONE;
    return locale;
}
