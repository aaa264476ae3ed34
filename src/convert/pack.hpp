// Packed values as bytes of the same code page, with or without shift bytes.
#pragma once

#include <cstdint>

#include "chars/form.hpp"
#include "strings/length.hpp"

namespace vlx {

// Writes values until the count or the size ends. `state` is -1 where no shift bytes are written.
// Gives the bytes, or the values if `counted`.
inline std::int32_t packedToBytes(const TSLocale& locale, char* output, std::int32_t state,
                                  std::int32_t size, const TSChar32* input, std::int32_t count,
                                  bool counted)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    std::int32_t written = 0;
    std::int32_t index = 0;
    for (; index < count; ++index) {
        char bytes[5];
        std::int32_t length = 0;
        const bool multi = input[index] > 0xFF;
        if (state >= 0 && multi != (state != 0)) {
            bytes[length++] = static_cast<char>(multi ? page.shiftIn : page.shiftOut);
            state = multi;
        }
        length += TSCpPutWide(bytes + length, input[index]);
        // Deliberate: a size in characters stops behind it, so one value more is written than the
        // result tells; callers give the room.
        if (counted ? index > size : length > size - written)
            break;
        for (std::int32_t i = 0; i < length; ++i)
            output[written++] = bytes[i];
    }
    if (!counted)
        return written;
    return index < size ? index : size;
}

} // namespace vlx
