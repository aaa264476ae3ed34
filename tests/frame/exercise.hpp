// Reads everything that a loaded object can be read for, to see that bad data lead nowhere.
#pragma once

#include <cstdint>

#include "frame/objman.hpp"
#include "support/object_builder.hpp"

namespace vlx::test {

// All primitives of a code page, over every first byte with some trail bytes and the ends of every
// run of Unicode values. False after a failure that was reported: a character was read further than
// it is long, or a length is none.
bool exercisePage(const TSObject& page);

// All texts and tables of a language or territory of the size that its section has. False if one
// leads outside.
bool exerciseLanguage(const std::uint8_t* content, std::uint32_t size);
bool exerciseTerritory(const std::uint8_t* content, std::uint32_t size);

// The size of an object's section 1: of a heap block of contents, or of the file it is mapped from.
std::uint32_t contentSize(const TSObject& object, const Bytes& file);

} // namespace vlx::test
