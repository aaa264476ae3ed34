// TSSetLocale: the default locale.
#include "locale/make.hpp"

TS_TRACE_UNIT("tssetloc");

int32_t TSSetLocale(const char* name, uint32_t options)
{
    TS_TRACE(TSSetLocale);
    int32_t code = TS_ERR_NONE;
    TSLocale* const locale = TSGetLocale(name, options, &code);
    TS_RETURN(vlx::setDefaultLocale(locale, code));
}
