// TSSetLocaleTextInfo: changes a text item of a record.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/update.hpp"

TS_TRACE_UNIT("tslstinf");

int32_t TSSetLocaleTextInfo(TSLocale* handle, int32_t item, const char* text, int32_t length,
                            uint32_t options)
{
    TS_TRACE(TSSetLocaleTextInfo);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~TS_OPT_CHAR_COUNT)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    length = vlx::updateLength(*locale, text, 0, length, options);
    if (length == 0)
        TS_RETURN(1);
    const int32_t code = vlx::updateItem(*locale, item, {text, length, vlx::kPlainText});
    if (code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, code, 0, "Unable to set item %d, err = %d", item, code);
    TS_RETURN(1);
}
