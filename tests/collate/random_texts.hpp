// Pairs of random texts for a call, and its options.
#pragma once

#include <ostream>

#include "collate/sort_world.hpp"

namespace vlx::test {

std::uint32_t anyCollationOptions(Random& random);

// Whether all allocations of a call fail.
inline bool failsNow(Random& random)
{
    return random() % 16 == 0;
}

// Where the two strings of a call stand.
struct Areas {
    GuardedArea first;
    GuardedArea second;
};
Areas& areas();

// Two texts of bytes; the second one often begins like the first.
struct BytePair {
    BytePair(SortWorld& sorted, Random& random);

    const char* placeFirst(Random& random) const;
    const char* placeSecond(Random& random) const;

    oracle::Bytes first;
    oracle::Bytes second;
    oracle::Text text1;
    oracle::Text text2;
};
std::ostream& operator<<(std::ostream& out, const BytePair& pair);

template <class Unit>
struct UnitPair {
    UnitPair(SortWorld& sorted, Random& random)
    {
        constexpr bool kPacked = sizeof(Unit) == 4;
        first = sorted.world.units(random, anyCount(random), kPacked);
        for (std::uint64_t blanks = random() % 3; blanks > 0 && isTerminated(first); --blanks)
            first.insert(first.end() - 1, kPacked ? random() % 2 == 0 ? 0x20 : 0x40 : 0x2000);
        if (!kPacked && !first.empty() && random() % 32 == 0)
            first[random() % first.size()] = 0xFFFF; // can be lost where it is read ahead
        second = sorted.variantOf(random, first, kPacked);
        if (random() % 4 == 0)
            sorted.insertTwins(random, first, second, kPacked);
        length1 = anyLength(random, first.size(), isTerminated(first));
        length2 = anyLength(random, second.size(), isTerminated(second));
    }

    static std::int32_t anyCount(Random& random)
    {
        return random() % 16 == 0 ? pick(random, 8, 40) : pick(random, 0, 7);
    }

    const Unit* placeFirst(Random& random) const
    {
        return areas().first.place(narrowed<Unit>(first), anyGuard(random));
    }
    const Unit* placeSecond(Random& random) const
    {
        return areas().second.place(narrowed<Unit>(second), anyGuard(random));
    }

    oracle::Units first;
    oracle::Units second;
    std::int32_t length1;
    std::int32_t length2;
};

template <class Unit>
std::ostream& operator<<(std::ostream& out, const UnitPair<Unit>& pair)
{
    const auto print = [&](const char* name, const oracle::Units& units, std::int32_t length) {
        out << name << std::hex;
        for (const std::uint32_t unit : units)
            out << ' ' << unit;
        out << std::dec << ", length " << length;
    };
    print("string1", pair.first, pair.length1);
    print(", string2", pair.second, pair.length2);
    return out;
}

} // namespace vlx::test
