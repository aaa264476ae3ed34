// The translation between numbered code pages once more, slow and literal, on top of the oracle of
// the character model. It shares nothing with the library.
#pragma once

#include <optional>

#include "support/oracle_chars.hpp"

namespace vlx::oracle {

// A side of the call: null is raw 16-bit Unicode.
using Side = const Page*;

struct Translated {
    std::int32_t result = 0;
    std::int32_t consumed = 0;
    std::uint32_t error = 0;
};

// The memory at the output is written as the call would.
Translated translate(Side target, Bytes& output, std::int32_t size, Side source, Span input,
                     std::int32_t length, std::uint32_t options);

} // namespace vlx::oracle
