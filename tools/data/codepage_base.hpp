// A code page source that is based on another one: what it does not say itself, the other says.
#pragma once

#include "codepage_check.hpp"
#include "codepage_source.hpp"

namespace vlx::data {

// Fills the source, which has been read, with what its base has beyond it. Both are not complete
// yet; `line` is where the source names its base.
void inherit(CodePageSource& source, SourcePlaces& places, const CodePageSource& base,
             const SourcePlaces& basePlaces, int line);

} // namespace vlx::data
