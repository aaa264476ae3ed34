// Times as the command line takes and shows them.
#pragma once

#include <string>

#include "tessera.h"

namespace vlx::cli {

// The fields of 2005-03-07, or 2005-03-07T13:05:09, with the seconds or without, and a blank for
// the T if wanted. Fails for anything else.
TSTimeFields timeOfIso(const std::string& text);

} // namespace vlx::cli
