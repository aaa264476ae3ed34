// TSMapStringW: the image of packed values under a mapping, by the tables of the code page.
#include "mapping/mapunits.hpp"
#include "mapping/packed.hpp"

TS_TRACE_UNIT("tsmapstw");

namespace {

int32_t mapText(const TSLocale& locale, const vlx::Mapping& mapping,
                vlx::MapTarget<TSChar32> target, vlx::MapSource<TSChar32> source)
{
    const vlx::PackedMap map(locale, mapping);
    const auto cased = [&](TSChar32 unit) { return map.cased(unit); };
    if (mapping.value == TS_MAP_DIGITS)
        return mapUnits(target, source, [&](TSChar32 unit) { return map.digit(unit); });
    if (mapping.isWidth() && (locale.flags & vlx::kLocaleSingleByte))
        return mapUnits(target, source, [](TSChar32 unit) { return unit; });
    if (mapping.value == TS_MAP_FULL_WIDTH)
        return mapUnits(target, source, [&](TSChar32 unit) { return map.wide(unit); });
    if (mapping.value == TS_MAP_HALF_WIDTH)
        return mapUnits(target, source, [&](TSChar32 unit) { return map.narrow(unit); });
    if (!mapping.usesPairs(locale))
        return mapUnits(target, source, cased);
    return mapPairs(
        locale.language, mapping.pairs(), target, source,
        [&](TSChar32 unit) { return map.unicode(unit); },
        [&](TSChar16 unicode) { return map.value(unicode); },
        [&](const auto& to, const auto& from) { return mapUnits(to, from, cased); });
}

} // namespace

int32_t TSMapStringW(TSLocale* handle, TSChar32* destination, int32_t size, const TSChar32* source,
                     int32_t length, uint32_t mapping)
{
    TS_TRACE(TSMapStringW);
    TSLocale* const locale = tsLocale(handle);
    const vlx::Mapping asked(mapping);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid mapping %#x", mapping);
    length = vlx::mappedLength(source, length);
    if (asked.isCopy())
        TS_RETURN(TSWcscpy(locale, destination, size, source, length));
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(mapText(*locale, asked, {destination, size}, {source, length}));
}
