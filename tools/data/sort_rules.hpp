// The rules of a sort, in the syntax of LDML tailorings: how a language changes the root order.
// docs/format-sort.md tells what of the syntax is taken.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sourcefile.hpp"

namespace vlx::data {

// How much two neighbours of an order differ.
enum class Strength { kPrimary = 1, kSecondary, kTertiary, kIdentical };

struct SortRule {
    enum Kind { kReset, kRelation, kSetting };

    Kind kind = kSetting;
    int line = 0;
    // A relation; of a reset kPrimary with [before 1] and otherwise kIdentical.
    Strength strength = Strength::kIdentical;
    std::u16string text;      // what is placed, or the place of a reset
    std::u16string extension; // what follows text in the weights
    // A setting such as [caseFirst upper]: its words, the last one whole if it is a set.
    std::vector<std::string> words;
};

// Reads all rules; what is no rule is reported at its line. Line 1 of the text is `firstLine`.
std::vector<SortRule> parseSortRules(std::string_view text, int firstLine, Reporter& report);

// The characters of a set such as "[เ-ไ ເ]"; nothing if it is none.
std::optional<std::u16string> parseSortSet(std::string_view text);

} // namespace vlx::data
