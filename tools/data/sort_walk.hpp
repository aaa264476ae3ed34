// Texts by a sort object, as the library orders them: the comparison by elements and the key.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "sort_view.hpp"

namespace vlx::data {

class SortWalk {
  public:
    // The tables lie inside the content, as the lint has proved.
    explicit SortWalk(const SortView& view);

    struct Element {
        unsigned weight1 = 0;
        unsigned weight2 = 0;
        unsigned weight3 = 0;
        unsigned weight4 = 0;
    };
    // What one or two characters come to.
    struct Step {
        int elements = 0; // 0 to 2
        Element first;
        Element second;
        unsigned directions = 0;
        std::size_t characters = 1;
    };
    // Of what begins at `at`, a contraction if it is one.
    Step stepAt(std::u16string_view text, std::size_t at) const;

    // -1, 0 or 1.
    int compare(std::u16string_view text1, std::u16string_view text2) const;
    std::string key(std::u16string_view text) const;

  private:
    Step characterStep(char16_t character) const;

    const SortView& view_;
    std::map<char16_t, TSSortExpansion> expansions_; // the first one of each character
    std::map<std::pair<char16_t, char16_t>, TSSortContraction> contractions_;
};

} // namespace vlx::data
