// TSSetLocaleTextInfoEx: changes a text item of a record by stateful text.
#include "chars/form.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/update.hpp"

TS_TRACE_UNIT("tslstinx");

int32_t TSSetLocaleTextInfoEx(TSLocale* handle, int32_t item, const char* text, int32_t state,
                              int32_t length, uint32_t options)
{
    TS_TRACE(TSSetLocaleTextInfoEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSSetLocaleTextInfo(locale, item, text, length, options));
    if (options & ~TS_OPT_CHAR_COUNT)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    state = state ? 1 : 0;
    length = vlx::updateLength(*locale, text, state, length, options);
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    if (length > 0 && (vlx::isShiftIn(page, *text) || vlx::isShiftOut(page, *text))) {
        state = vlx::isShiftIn(page, *text);
        ++text;
        --length;
    }
    if (length == 0)
        TS_RETURN(1);
    const int32_t code = vlx::updateItem(*locale, item, {text, length, state});
    if (code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, code, 0, "Unable to set item %d, err = %d", item, code);
    TS_RETURN(1);
}
