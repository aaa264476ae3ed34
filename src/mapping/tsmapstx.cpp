// TSMapStringEx: the image of stateful text under a mapping.
#include "mapping/mapbytes.hpp"

TS_TRACE_UNIT("tsmapstx");

namespace {

int32_t mapShifted(const TSLocale& locale, const vlx::Mapping& mapping, char* destination,
                   int32_t state, int32_t size, const vlx::ShiftMap::Text& source)
{
    const bool usesPairs = mapping.isCase() && mapping.usesPairs(locale);
    const vlx::ShiftOutput output(tsCodePage(locale.codePage), state, destination, size);
    return vlx::mapText(vlx::ShiftMap{{locale.codePage}}, locale.language, mapping, usesPairs,
                        false, source, output);
}

} // namespace

int32_t TSMapStringEx(TSLocale* handle, char* destination, int32_t state, int32_t size,
                      const char* source, int32_t sourceState, int32_t length, uint32_t mapping)
{
    TS_TRACE(TSMapStringEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSMapString(locale, destination, size, source, length, mapping));
    const vlx::Mapping asked(mapping);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid mapping %#x", mapping);
    if (asked.isCopy())
        TS_RETURN(TSStrcpyEx(locale, destination, state, size, source, sourceState, length,
                             mapping & TS_OPT_CHAR_COUNT));
    locale->lastError = TS_ERR_NONE;
    if (asked.counted && length > 0)
        length = TSCpCharsToBytes(locale->codePage, source, sourceState, length);
    length = vlx::mappedLength(source, length);
    const vlx::ShiftMap::Text text{source, source + length, sourceState};
    if (!asked.counted)
        TS_RETURN(mapShifted(*locale, asked, destination, state, size, text));

    vlx::CountedArea area;
    const int32_t written =
        mapShifted(*locale, asked, area.bytes, state, vlx::CountedArea::capacityFor(size), text);
    TS_RETURN(area.handOver(vlx::ShiftForm{locale->codePage}, state, written, destination, size));
}
