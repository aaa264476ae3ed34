// TSMapStringU: the image of 16-bit text under a mapping, by the built-in tables.
#include "chars/unitypes.hpp"
#include "mapping/mapunits.hpp"

TS_TRACE_UNIT("tsmapstu");

namespace {

using vlx::Mapping;

// Both the type and the digit table have to know a digit.
TSChar16 digitOf(TSChar16 value)
{
    const TSChar16 digit = vlx::uniDigit(value);
    return digit != 0 && (vlx::uniTypeWord(value) & vlx::kDigitType) ? digit : value;
}

int32_t mapCase(const TSLocale& locale, const Mapping& mapping, vlx::MapTarget<TSChar16> target,
                vlx::MapSource<TSChar16> source)
{
    const auto mapRun = [&](const auto& to, const auto& from) {
        return mapCaseUnits(to, from, mapping.isUpper());
    };
    if (!mapping.usesPairs(locale))
        return mapRun(target, source);
    const auto same = [](TSChar16 value) { return value; };
    return mapPairs(locale.language, mapping.pairs(), target, source, same, same, mapRun);
}

int32_t mapText(const TSLocale& locale, const Mapping& mapping, vlx::MapTarget<TSChar16> target,
                vlx::MapSource<TSChar16> source)
{
    switch (mapping.value) {
    case TS_MAP_FULL_WIDTH:
        return mapUnits(target, source, [](TSChar16 unit) { return vlx::uniToFullWidth(unit); });
    case TS_MAP_HALF_WIDTH:
        return mapUnits(target, source, [](TSChar16 unit) { return vlx::uniToHalfWidth(unit); });
    case TS_MAP_DIGITS:
        return mapUnits(target, source, digitOf);
    default:
        return mapCase(locale, mapping, target, source);
    }
}

} // namespace

int32_t TSMapStringU(TSLocale* handle, TSChar16* destination, int32_t size, const TSChar16* source,
                     int32_t length, uint32_t mapping)
{
    TS_TRACE(TSMapStringU);
    TSLocale* const locale = tsLocale(handle);
    const Mapping asked(mapping);
    if (!asked.isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid mapping %#x", mapping);
    if (asked.isCopy())
        TS_RETURN(TSStrcpyU(locale, destination, size, source, length));
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(
        mapText(*locale, asked, {destination, size}, {source, vlx::mappedLength(source, length)}));
}
