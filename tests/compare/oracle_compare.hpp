// Comparison by code once more, slow and literal.
#pragma once

#include "mapstr/oracle_mapstr.hpp"

namespace vlx::oracle {

// `memory` is false where every allocation fails.
struct Comparison {
    const Locale& locale;
    const Language& language;
    bool memory = true;

    Outcome plain(const Text& text1, const Text& text2, std::uint32_t options) const;
    Outcome shifted(const Text& text1, const Text& text2, std::uint32_t options) const;
    Outcome units(const Units& first, std::int32_t length1, const Units& second,
                  std::int32_t length2, std::uint32_t options) const;
    Outcome packed(const Units& first, std::int32_t length1, const Units& second,
                   std::int32_t length2, std::uint32_t options) const;
};

} // namespace vlx::oracle
