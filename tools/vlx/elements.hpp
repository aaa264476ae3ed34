// The collation elements of a text, read from the sort object of a locale, and the runs of weights
// that make its key.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "keyshow.hpp"
#include "library.hpp"
#include "sort_view.hpp"
#include "sort_walk.hpp"
#include "wide.hpp"

namespace vlx::cli {

// What one or two characters count on each level; 0 is nothing.
struct CollationElement {
    Units characters; // empty for the second element of an expansion
    std::array<unsigned, kKeyLevels> weights;
    unsigned position;   // of the last character, from 1
    unsigned directions; // bits of vlx::forwardBit()
};

// A weight in a run, and where it comes from.
struct PlacedWeight {
    unsigned weight;
    std::size_t element;
};
using WeightRun = std::vector<PlacedWeight>;

class SortObject {
  public:
    // Fails if the directory has no such object, or one that is damaged.
    SortObject(const Library& library, std::int32_t id);

    std::vector<CollationElement> elementsOf(const Units& text) const;

    // The weights of a key, level by level, with the default weights that it has not at the ends of
    // levels 2 and 3.
    std::array<WeightRun, kKeyLevels> runsOf(const std::vector<CollationElement>& elements) const;

    // The number of weights of a level that are in the key.
    std::size_t sizeInKey(const WeightRun& run, std::size_t level) const;

    // The key that the library should make of a text.
    std::string keyOf(const Units& text) const;

  private:
    void require(const Units& text) const;

    const data::Bytes content_;
    const data::SortView view_;
    const data::SortWalk walk_;
};

} // namespace vlx::cli
