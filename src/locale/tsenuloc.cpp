// TSEnumLocales: every object of the locale directory.
#include "frame/trace.hpp"
#include "locale/enum.hpp"

TS_TRACE_UNIT("tsenuloc");

int32_t TSEnumLocales(TSEnumLocalesCallback callback, TSContext user)
{
    TS_TRACE(TSEnumLocales);
    vlx::enumObjects([&](int32_t type, const char* name) { return callback(user, type, name); });
    TS_RETURN(0);
}
