// Runs of text that no pair of a language begins in, most of which is ASCII.
#pragma once

#include <type_traits>

#include "chars/runs.hpp"
#include "mapping/unimap.hpp"

namespace vlx {

// The units before the first one that may begin a pair. `unicodeOf` is their way to Unicode, and
// `plain` are characters that begin none.
template <class Unit, class UnicodeOf>
std::int32_t beforePair(const PairStarts& starts, PlainSet plain, const Unit* units,
                        std::int32_t count, const UnicodeOf& unicodeOf)
{
    std::int32_t run = 0;
    const auto passPlain = [&] {
        if constexpr (!std::is_same_v<Unit, TSChar32>) {
            int passed = plain.isEmpty() ? 0 : kBlock;
            for (; passed == kBlock && count - run >= kBlock; run += passed)
                passed = plainAtStart(units + run, plain);
        }
    };
    const auto isPlain = [&](Unit unit) {
        if constexpr (std::is_same_v<Unit, TSChar32>)
            return false;
        else
            return plain.has(unit);
    };
    for (passPlain(); run < count; passPlain()) {
        do {
            if (starts.has(unicodeOf(units[run])))
                return run;
            ++run;
        } while (run < count && !isPlain(units[run]));
    }
    return run;
}

} // namespace vlx
