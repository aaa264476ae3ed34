// The control file: the choice of the locale directory and the reading of the object table.
#pragma once

#include <cstdint>

struct TSObjManager;

namespace vlx {

// Finds the control file, keeps its directory in the manager and fills the object table from it. 0,
// or the code of what failed: 20 without memory, 1003 a name that is too long or a read, 2000 a bad
// header, or why the last file tried did not open.
std::int32_t readControl(TSObjManager& manager, const char* directory);

} // namespace vlx
