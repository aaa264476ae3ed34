// An order of characters: the root table as the rules of a language change it.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "sort_root.hpp"
#include "sort_rules.hpp"
#include "sort_weights.hpp"

namespace vlx::data {

// What a rule has placed.
struct PlacedText {
    std::u16string text; // composed
    int line = 0;
};

class TailoredOrder {
  public:
    // Characters off the pages go by rule: they have a level 1 weight alone.
    TailoredOrder(const RootTable& root, const PageSet& pages);

    // Every error is told at the line of its rule.
    void apply(const std::vector<SortRule>& rules, Reporter& report);

    // The elements of a text. Precomposed characters have those of their parts, so a rule on a
    // letter holds for the letter with further marks too.
    CollationElements elementsOf(std::u16string_view text);
    const std::vector<PlacedText>& placed() const { return placed_; } // in the order of the rules
    const RootTable& root() const { return root_; }
    SortWeights& weights() { return weights_; }
    bool isBackwards() const { return isBackwards_; } // [backwards 2]
    bool hasSpecials() const { return hasSpecials_; } // [alternate shifted]

  private:
    CollationElement unlisted(char16_t character);
    void applySetting(const SortRule& rule, Reporter& report);
    bool takeSetting(const SortRule& rule);
    void applyRelation(const SortRule& rule, Reporter& report);
    bool movePlace(Strength strength);
    void setCases(std::u16string_view text);
    void suppressContractions(std::u16string_view first);
    CollationElements match(std::u16string& text, std::size_t& at);
    void joinSyllables(CollationElements& elements);
    std::u16string composed(std::u16string_view decomposed) const;

    const RootTable& root_;
    PageSet pages_;
    SortWeights weights_;
    std::map<std::u16string, CollationElements, std::less<>> entries_; // by decomposed text
    std::size_t longest_ = 1;
    std::map<int, int> jamo_; // by primary: the code of the letter
    std::vector<PlacedText> placed_;
    CollationElements place_; // next to which the next relation puts something
    bool isAhead_ = false;    // ahead of it
    bool isBackwards_ = false;
    bool hasSpecials_ = false;
};

} // namespace vlx::data
