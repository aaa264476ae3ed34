// Locale records on a code page, for functions that look at nothing else of a locale.
#pragma once

#include "frame/objman.hpp"
#include "locale/locale.hpp"

namespace vlx::test {

// A record with the binary sort, the code page and the flags that follow from it. The error code is
// one that no function of the character model sets.
TSLocale localeOn(TSObject& codePage);

inline constexpr std::int32_t kUntouchedError = 4711;

} // namespace vlx::test
