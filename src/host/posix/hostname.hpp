// Names of this host's locales and the numbers of the native locale table.
#pragma once

#include <cstddef>
#include <cstdint>

namespace vlx::host {

// The id of a locale name such as "de_CH.UTF-8"; a territory that has none gives its language's. 0
// if the language has none.
std::uint32_t localeIdOf(const char* name);

// The name of an id without a code page, "de_CH"; empty if there is none. `size` is 8 at least.
void localeNameOf(std::uint32_t id, char* name, std::size_t size);

} // namespace vlx::host
