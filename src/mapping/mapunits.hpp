// Mapping of 16-bit and 32-bit text, where a character is a unit.
#pragma once

#include <algorithm>

#include "chars/runs.hpp"
#include "mapping/mapstr.hpp"
#include "mapping/pairruns.hpp"

namespace vlx {

template <class Unit>
struct MapSource {
    const Unit* units;
    std::int32_t length;
};
template <class Unit>
struct MapTarget {
    Unit* units;
    std::int32_t size;
};

// Maps unit by unit as far as both reach, and gives their number.
template <class Unit, class ImageOf>
std::int32_t mapUnits(MapTarget<Unit> target, MapSource<Unit> source, const ImageOf& imageOf)
{
    const std::int32_t count = std::max(std::min(target.size, source.length), 0);
    for (std::int32_t i = 0; i < count; ++i)
        target.units[i] = imageOf(source.units[i]);
    return count;
}

// Maps the case of 16-bit values, of which most are of Latin-1.
inline std::int32_t mapCaseUnits(MapTarget<TSChar16> target, MapSource<TSChar16> source, bool upper)
{
    constexpr std::int32_t kHalf = kBlock / 2;
    const std::int32_t count = std::max(std::min(target.size, source.length), 0);
    std::int32_t done = 0;
    while (done < count) {
        const TSChar16* const from = source.units + done;
        TSChar16* const to = target.units + done;
        const std::int32_t size = std::min(count - done, kHalf);
        if (size < kHalf || !areLatin(from))
            std::transform(from, from + size, to, upper ? uniToUpper : uniToLower);
        else if (upper)
            latinToUpper(from, to);
        else
            latinToLower(from, to);
        done += size;
    }
    return count;
}

// Case with the pairs of a language: `unicodeOf` and `unitOf` are the way to Unicode and back, and
// `mapRun` maps what no pair replaces. Stops before an image that does not fit whole.
template <class Unit, class UnicodeOf, class UnitOf, class MapRun>
std::int32_t mapPairs(const TSObject* language, PairTable table, MapTarget<Unit> target,
                      MapSource<Unit> source, const UnicodeOf& unicodeOf, const UnitOf& unitOf,
                      const MapRun& mapRun)
{
    const PairStarts starts(language, table);
    const PlainSet plain = PlainSet::ofUnits(starts.passAscii() ? kAsciiUnits : 0);
    std::int32_t written = 0;
    for (std::int32_t i = 0; i < source.length;) {
        const std::int32_t run =
            i + beforePair(starts, plain, source.units + i, source.length - i, unicodeOf);
        const std::int32_t room = target.size - written;
        const std::int32_t mapped = mapRun(MapTarget<Unit>{target.units + written, room},
                                           MapSource<Unit>{source.units + i, run - i});
        written += mapped;
        if (run == source.length || mapped < run - i)
            break;
        i = run;
        TSChar16 results[2];
        std::int32_t taken = 1;
        const TSChar16 first = unicodeOf(source.units[i]);
        std::int32_t count = TSLangMapPair(language, first, 0, &results[0], &results[1], table);
        if (count == 0 && i + 1 < source.length) {
            count = TSLangMapPair(language, first, unicodeOf(source.units[i + 1]), &results[0],
                                  &results[1], table);
            taken = count > 0 ? 2 : 1;
        }
        if (std::max(count, 1) > target.size - written)
            break;
        if (count == 0)
            written += mapRun(MapTarget<Unit>{target.units + written, 1},
                              MapSource<Unit>{source.units + i, 1});
        for (std::int32_t result = 0; result < count; ++result)
            target.units[written++] = unitOf(results[result]);
        i += taken;
    }
    return written;
}

} // namespace vlx
