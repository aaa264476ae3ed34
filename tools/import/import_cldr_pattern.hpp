// From the pattern languages of CLDR to the forms of a territory object.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlx::import {

// What had to be bent on the way, as sentences for the head of a source.
using Notes = std::vector<std::string>;

// A time or date pattern in the directives of the library; nothing if it has a field that the
// library has no directive for.
std::optional<std::string> timePattern(std::string_view cldr, Notes& notes);

// The grouping string of a number or currency pattern: "3;0" for `#,##0.00`.
std::string groupingOf(std::string_view cldr);

// How an amount is put together.
struct AmountForm {
    bool symbolPrecedes = false;
    bool symbolSpaced = false;
    int signPosition = 1;
};
struct AmountForms {
    AmountForm positive;
    AmountForm negative;
};
// A currency pattern without bidirectional marks. The positive sign, which is empty, is placed as
// the negative one.
AmountForms amountForms(std::string_view cldr, Notes& notes);

} // namespace vlx::import
