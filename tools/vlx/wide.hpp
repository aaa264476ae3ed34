// Text of the shell and of the terminal, which is UTF-8, as the 16-bit text that the library takes.
#pragma once

#include <string>
#include <string_view>

#include "tessera.h"

namespace vlx::cli {

using Units = std::basic_string<TSChar16>;

// A character above U+FFFF, and a broken one, becomes U+FFFD.
Units unitsOf(std::string_view utf8);
std::string utf8Of(const TSChar16* units, std::int32_t count);

} // namespace vlx::cli
