// Date and time formats of this host as pictures of the host contract.
#pragma once

#include <cstdint>

namespace vlx::host {

// Writes the picture of a format of strftime(), terminated; `twelveHours` is what %r stands for.
// False if a conversion or a character has no picture, or it does not fit `size`.
bool pictureOf(const char* format, const char* twelveHours, char* picture, std::uint32_t size);

} // namespace vlx::host
