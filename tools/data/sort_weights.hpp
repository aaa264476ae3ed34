// Weights of collation elements while an order is being made: they are places in lists, where a
// rule can put a new one between two others. Numbers come last, see sort_numbers.hpp.
#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "sort_root.hpp"

namespace vlx::data {

// Indexes into SortWeights; 0 is no weight.
struct CollationElement {
    int primary = 0;
    int secondary = 0;
    int tertiary = 0;

    auto operator<=>(const CollationElement&) const = default;
};
using CollationElements = std::vector<CollationElement>;

enum class LetterCase { kLower, kMixed, kUpper }; // kLower: or without case

// A level 2 or 3 weight as a value: what it is in the root table, and its rank among the tailored
// ones behind that. The case comes first where [caseFirst upper] asks for it, and else is 0.
struct MinorWeight {
    int letterCase = 0;
    int root = 0;
    int rank = 0;

    auto operator<=>(const MinorWeight&) const = default;
};

class SortWeights {
  public:
    explicit SortWeights(const RootTable& root);

    CollationElement elementOf(const RootElement& root);
    int primaryOf(std::uint32_t root); // a weight of the table, or one by code from kIdeographs on

    // New weights next to those of an element, which has a weight on that level. The levels below
    // are common.
    CollationElement behindPrimary(const CollationElement& element);
    CollationElement aheadOfPrimary(const CollationElement& element);
    CollationElement behindSecondary(const CollationElement& element);
    CollationElement behindTertiary(const CollationElement& element);

    LetterCase caseOf(int tertiary) const
    {
        return tertiaries_.weights[index(tertiary)].letterCase;
    }
    void setCase(CollationElement& element, LetterCase letterCase);

    // The groups in their new order; the kinds that are no script stay in front. False if a name is
    // no group.
    bool reorder(const std::vector<std::string>& names);
    void setUpperFirst() { upperFirst_ = true; }

    // What the order has come to.
    std::vector<int> primaryPlaces() const; // by primary; of equal root weights ascending
    std::size_t primaryCount() const { return primaries_.size(); }
    std::uint32_t rootOf(int primary) const { return primaries_[index(primary)].root; }
    bool isTailored(int primary) const { return primaries_[index(primary)].isTailored; }
    bool isVariable(int primary) const; // a blank or punctuation
    MinorWeight secondaryValue(int secondary) const;
    MinorWeight tertiaryValue(int tertiary) const;

  private:
    struct Primary {
        std::uint32_t root = 0; // of a tailored one that of its neighbour
        std::size_t group = 0;
        bool isTailored = false;
    };
    // A level 2 or 3 weight. A tailored one stands in a list: those behind the same root weight of
    // the same letter.
    struct Minor {
        int root = 0;
        LetterCase letterCase = LetterCase::kLower;
        int list = -1;
    };
    using ListKey = std::array<int, 3>; // primary, secondary (0 on level 2), root weight
    struct Level {
        std::vector<Minor> weights{{}};
        std::map<std::pair<int, LetterCase>, int> rootIds;
        std::map<ListKey, int> lists;
    };

    static std::size_t index(int id) { return static_cast<std::size_t>(id); }
    std::size_t groupOf(std::uint32_t root) const;
    CollationElement newPrimary(int neighbour, std::ptrdiff_t offset);
    int idOf(Level& level, int root, LetterCase letterCase);
    int insertBehind(Level& level, int weight, ListKey key);
    int rankOf(const Minor& minor, int id) const;

    std::vector<RootGroup> groups_;
    std::vector<std::size_t> groupRanks_; // by group: its place after [reorder]
    std::vector<Primary> primaries_{{}};
    std::vector<int> order_; // of the primaries, without [reorder]
    std::map<std::uint32_t, int> primaryIds_;
    Level secondaries_;
    Level tertiaries_;
    std::vector<std::vector<int>> lists_;
    bool upperFirst_ = false;
};

} // namespace vlx::data
