// Random calls of collation, keys and search: a page, a language and a sort that fits the
// characters of the page's texts, with every feature of the format.
#pragma once

#include "collate/oracle_collate.hpp"
#include "compare/memory.hpp"
#include "mapstr/world.hpp"
#include "support/sort_builder.hpp"

namespace vlx::test {

class SortWorld {
  public:
    SortWorld(Random& random, PageShape shape);

    // Takes another sort.
    void resort(Random& random);

    // The record of a call, with the sort or without it; now and then the sort has lost what its
    // load had found out.
    TSLocale* handle(Random& random);

    const oracle::SortObject* sort() const { return isBinary_ ? nullptr : &*reference_; }
    oracle::Collation oracle(bool memory) const
    {
        return {world.reference, world.pairs, sort(), memory};
    }

    // Texts that begin like another one.
    oracle::Bytes variantOf(Random& random, const oracle::Bytes& text, std::int32_t state) const;
    oracle::Units variantOf(Random& random, const oracle::Units& units, bool packed) const;

    // Puts an expansion into one text and two letters of the same elements into the other, where
    // both still agree.
    void insertTwins(Random& random, oracle::Bytes& first, oracle::Bytes& second) const;
    void insertTwins(Random& random, oracle::Units& first, oracle::Units& second,
                     bool packed) const;

    World world;

  private:
    struct Character {
        TSChar16 unicode;
        oracle::Bytes bytes;
    };
    struct Twins {
        Character expansion;
        Character letters[2];
    };

    void chooseValues(Random& random);
    void choosePage(Random& random, SortBuilder& sort, unsigned high);
    void chooseTwins(Random& random, SortBuilder& sort);
    void chooseContractions(Random& random, SortBuilder& sort);
    Weights weights(Random& random) const;
    std::uint8_t directions(Random& random) const;
    TSChar16 anyValue(Random& random) const;
    void build(Random& random);

    std::vector<TSChar16> values_; // of the texts
    std::vector<Character> characters_;
    bool isFlat_ = false; // most letters have the same weights
    std::vector<Twins> twins_;
    int backward_ = 0; // how much of it is
    bool hasSpecials_ = false;
    std::uint8_t directions_ = 0xF;
    SortBuilder fast_;
    TSObject slow_{}; // the same, without its traits
    std::optional<oracle::SortObject> reference_;
    bool isBinary_ = false;
};

// The number of calls of a comparison with the oracle; VLX_RANDOM_CALLS can ask for more.
int wantedCalls();

// Runs `check` on one world after another, as callInWorlds does.
using SortCheck = bool (*)(SortWorld& world, Random& random);
void callInSortWorlds(SortCheck check);

} // namespace vlx::test
