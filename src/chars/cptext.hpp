// Whole texts of a code page to 16-bit Unicode and back.
#pragma once

#include <cstdint>

#include "frame/objman.hpp"
#include "tessera.h"

// Writes the Unicode values of a text, which follows shift bytes in a stateful code page and begins
// in the single-byte state, or only counts them if `target` is null. A NUL ends the text, and what
// it or the length cuts off is left out. Nothing terminates the result. Gives the elements stored;
// -1 for a length of -1 and an empty text.
std::int32_t TSCpTextToUnicode(const TSObject* object, const char* text, std::int32_t length,
                               TSChar16* target);

// Writes the bytes of 16-bit text, up to a zero element or the length, or only counts them if
// `target` is null. A stateful text ends in the single-byte state; in other code pages a NUL
// follows, which the count leaves out. `state` is the one that the bytes begin in. A negative
// length is up to the zero element.
std::int32_t TSCpTextFromUnicode(const TSObject* object, const TSChar16* text, std::int32_t state,
                                 std::int32_t length, char* target);
