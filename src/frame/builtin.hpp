// The data of the three built-in objects: the language English, the territory UnitedStates and the
// code page US-ASCII.
#pragma once

#include <array>
#include <cstdint>

#include "chars/cpfile.hpp"
#include "locale/content.hpp"

namespace vlx {

// Section 1 of the built-in objects, and of the code page section 3 too: see builtin.cpp.
extern const std::uint8_t* const kBuiltinLanguage;
extern const std::uint8_t* const kBuiltinTerritory;
extern const TSCodePageHeader kBuiltinCodePage;

inline constexpr int kBuiltinLanguageSize = 578;

// Unicode to US-ASCII as a code page file would hold it in section 3. The offsets of the built-in
// header's pages are made for it.
extern const std::array<std::uint8_t, 259> kAsciiFromUnicode;

} // namespace vlx
