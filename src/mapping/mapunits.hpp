// Mapping of 16-bit and 32-bit text, where a character is a unit.
#pragma once

#include <algorithm>

#include "mapping/mapstr.hpp"

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

// Case with the pairs of a language: `unicodeOf` and `unitOf` are the way to Unicode and back, and
// `imageOf` is the case of what no pair replaces. Stops before an image that does not fit whole.
template <class Unit, class UnicodeOf, class UnitOf, class ImageOf>
std::int32_t mapPairs(const TSObject* language, PairTable table, MapTarget<Unit> target,
                      MapSource<Unit> source, const UnicodeOf& unicodeOf, const UnitOf& unitOf,
                      const ImageOf& imageOf)
{
    std::int32_t written = 0;
    for (std::int32_t i = 0; i < source.length;) {
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
            target.units[written++] = imageOf(source.units[i]);
        for (std::int32_t result = 0; result < count; ++result)
            target.units[written++] = unitOf(results[result]);
        i += taken;
    }
    return written;
}

} // namespace vlx
