// Collation elements as a sort object holds them, one or two for a character, and the numbers that
// their weights get.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "sort_tailor.hpp"

namespace vlx::data {

// One element of an object. Where several elements of the order become one, its weights are the
// sequences of theirs; a sequence gets a number of its own.
struct HeldElement {
    std::vector<int> primaries; // several: a new weight behind the first of them
    std::vector<MinorWeight> secondaries;
    std::vector<MinorWeight> tertiaries;
    bool isSpecial = false; // a level 4 weight alone: the primaries are those of punctuation

    auto operator<=>(const HeldElement&) const = default;
};
using HeldElements = std::vector<HeldElement>; // 0, 1 or 2

// The elements of an order put into at most `limit`. A letter and its marks are always one.
HeldElements held(const CollationElements& elements, const SortWeights& weights, bool hasSpecials,
                  std::size_t limit);

struct HeldWeights {
    std::uint16_t weight1 = 0; // of a special element on level 4
    std::uint8_t weight2 = 0;
    std::uint8_t weight3 = 0;
};

// Numbers for all weights of the elements that an object holds. All but level 4 begin where keys
// stay in order: level 1 behind 0x0100, and the smallest of level 2 and 3 is the default one.
class SortNumbers {
  public:
    SortNumbers(const RootTable& root, const PageSet& pages, SortWeights& weights);

    void add(const HeldElement& element);
    // Once all elements are known. Complaints are about the object as a whole.
    std::vector<std::string> number();

    HeldWeights of(const HeldElement& element) const;
    std::uint16_t pageBase(unsigned page) const { return pageBases_[page]; } // of one by rule

  private:
    // Where a weight stands: the place of its page or of itself, and within the page; one such
    // step for each weight that it is made of.
    using Path = std::vector<std::pair<int, int>>;

    int anchorOf(unsigned page);
    bool isByRule(int primary) const;
    int placeOf(int primary) const { return places_[static_cast<std::size_t>(primary)]; }
    Path pathOf(const std::vector<int>& primaries) const;

    const RootTable& root_;
    PageSet pages_;
    SortWeights& weights_;
    std::array<int, 256> anchors_{}; // of pages by rule
    std::vector<int> places_;        // by primary
    std::map<std::vector<int>, std::uint16_t> primaries_;
    std::map<std::vector<int>, std::uint16_t> specials_;
    std::map<std::vector<MinorWeight>, std::uint8_t> secondaries_;
    std::map<std::vector<MinorWeight>, std::uint8_t> tertiaries_;
    std::array<std::uint16_t, 256> pageBases_{};
};

} // namespace vlx::data
