// TSSetLocaleW: the default locale.
#include "locale/make.hpp"

TS_TRACE_UNIT("tssetlow");

int32_t TSSetLocaleW(const TSChar32* name, uint32_t options)
{
    TS_TRACE(TSSetLocaleW);
    int32_t code = TS_ERR_NONE;
    TSLocale* const locale = TSGetLocaleW(name, options, &code);
    TS_RETURN(vlx::setDefaultLocale(locale, code));
}
