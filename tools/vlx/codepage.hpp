// A code page as a user names it.
#pragma once

#include <string>

#include "library.hpp"

namespace vlx::cli {

// A locale for its code page alone.
struct CodePage {
    std::string name;
    LocaleHandle locale;
};

// Opens the code page of a name, of a further name, or of an id; fails if there is none.
CodePage openCodePage(const Library& library, const std::string& name);

} // namespace vlx::cli
