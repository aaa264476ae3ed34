// Where text without shift bytes is cut.
#pragma once

#include "chars/truncate.hpp"

namespace vlx {

// The blanks that end multi-byte text, as far as it was walked. Deliberate: a place of 0 is none,
// so that the first blank of a string stays.
struct BlankRun {
    // The character of `length` bytes at `offset`; the byte behind it can be read, too.
    void look(TraceGuard& tsTrace, const Blanks& blanks, const char* string, std::int32_t offset,
              std::int32_t length)
    {
        const char* const at = string + offset;
        const bool isBlank = length == 1 && blanks.isBlank(*at);
        if (isBlank) {
            TS_PRINT(TRC1_DETAIL, "Blank encountered at %d", offset);
        } else if (blanks.isFull(at, length)) {
            TS_PRINT(TRC1_DETAIL, "Full width blank encountered at %d", offset);
        } else {
            // Deliberate: one byte at the very end of the string does not keep the blanks before
            // it.
            if (position != 0 && !(length == 1 && at[1] == 0)) {
                position = 0;
                TS_PRINT(TRC1_DETAIL, "Blank position reset");
            }
            return;
        }
        if (position == 0) {
            position = offset;
            TS_PRINT(TRC1_DETAIL, "Blank position set to %d", offset);
        }
    }

    std::int32_t position = 0;
};

// Where the terminator of single-byte text goes.
inline std::int32_t cutSingle(TraceGuard& tsTrace, const char* string, std::int32_t size,
                              const Blanks& blanks)
{
    for (; size > 1 && blanks.isBlank(string[size - 2]); --size)
        TS_PRINT(TRC1_DETAIL, "Stripping blank at position %d", size - 2);
    return size - 1;
}

// Where the terminator of multi-byte text goes: at the character that reaches the size, or at the
// blanks before it. That character itself is not looked at.
inline std::int32_t cutMulti(TraceGuard& tsTrace, const TSCodePageHeader& page, const char* string,
                             std::int32_t size, const Blanks* blanks)
{
    BlankRun run;
    std::int32_t offset = 0;
    for (;;) {
        const std::int32_t length = page.charLength[static_cast<std::uint8_t>(string[offset])];
        if (length >= size - offset)
            break;
        if (blanks)
            run.look(tsTrace, *blanks, string, offset, length);
        offset += length;
    }
    if (run.position == 0)
        return offset;
    TS_PRINT(TRC1_DETAIL, "index set to %d", run.position);
    return run.position;
}

} // namespace vlx
