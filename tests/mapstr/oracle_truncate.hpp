// Truncation once more, slow and literal.
#pragma once

#include "mapstr/oracle_mapstr.hpp"

namespace vlx::oracle {

// `string` is cut in place.
Outcome truncate(const Locale& locale, Bytes& string, std::int32_t wanted, std::uint32_t options);
Outcome truncateEx(const Locale& locale, Bytes& string, std::int32_t state, std::int32_t wanted,
                   std::uint32_t options);

} // namespace vlx::oracle
