// TSConversionRatio: the bytes of output that one character of input can need.
#include "chars/codepage.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT("tscnvrat");

int32_t TSConversionRatio(TSLocale* targetHandle, TSLocale* sourceHandle)
{
    TS_TRACE(TSConversionRatio);
    TSLocale* const target = tsLocale(targetHandle);
    const TSLocale* const source = tsLocale(sourceHandle);
    target->lastError = TS_ERR_NONE;
    if (target->codePage->id == source->codePage->id)
        TS_RETURN(1);
    const int32_t shift = target->flags & vlx::kLocaleStateful ? 1 : 0;
    TS_RETURN(tsCodePage(target->codePage).maxCharBytes + shift);
}
