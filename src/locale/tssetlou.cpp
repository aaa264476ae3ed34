// TSSetLocaleU: the default locale.
#include "locale/make.hpp"

TS_TRACE_UNIT("tssetlou");

int32_t TSSetLocaleU(const TSChar16* name, uint32_t options)
{
    TS_TRACE(TSSetLocaleU);
    int32_t code = TS_ERR_NONE;
    TSLocale* const locale = TSGetLocaleU(name, options, &code);
    TS_RETURN(vlx::setDefaultLocale(locale, code));
}
