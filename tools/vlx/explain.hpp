// Why two texts stand in the order in which they do: their collation elements, their keys, and
// where the keys part.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "elements.hpp"

namespace vlx::cli {

// What the sort makes of one of the texts. Without a sort, there is a key alone.
struct ExplainedText {
    std::string text; // UTF-8
    std::string key;
    std::vector<CollationElement> elements = {};
    std::array<WeightRun, kKeyLevels> runs = {};
};

// Where two keys part.
struct Parting {
    int order;             // -1, 0 or 1
    std::size_t level = 0; // from 0
    std::size_t index = 0; // of the weight in the level's run; without a sort, of the byte
};

class Explanation {
  public:
    // Two texts in UTF-8. Options are those of TSStrxfrm.
    Explanation(const Library& library, TSLocale* locale, const std::vector<std::string>& pair,
                std::uint32_t options);

    const ExplainedText& first() const { return texts_[0]; }
    const ExplainedText& second() const { return texts_[1]; }
    const Parting& parting() const { return parting_; }

    // What TSStrcoll says: -1, 0 or 1.
    int comparison() const;

    std::int32_t sortId() const { return sort_; } // 0 for the order of codes
    std::string sortName() const;
    bool hasLevels() const { return object_ != nullptr; }

  private:
    ExplainedText explained(const std::string& text) const;
    std::string keyOf(const Units& units) const;
    Units folded(const Units& units, const std::string& key) const;
    bool isSame(std::size_t level, const PlacedWeight& one, const PlacedWeight& other) const;
    Parting part() const;

    TSLocale* const locale_;
    const std::uint32_t options_;
    const std::int32_t sort_;
    std::unique_ptr<SortObject> object_;
    std::vector<ExplainedText> texts_;
    Parting parting_{0};
};

} // namespace vlx::cli
