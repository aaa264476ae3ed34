// Walking over text without shift bytes in runs: characters of one length that follow each other.
// In a run no place waits for the length of the character before, and what is sought in it can be
// sought many characters at a time.
#pragma once

#include "chars/runs.hpp"

namespace vlx {

// Behind the run of characters of `length` at `at`; `at` itself if the end cuts off the first one.
template <std::int32_t length>
const char* behindRun(const TSCodePageHeader& page, PlainSet plain, const char* at, const char* end,
                      Length<length>)
{
    if constexpr (length == 1)
        for (int run = kBlock; run == kBlock && end - at >= kBlock && plain.has(*at); at += run)
            run = plainAtStart(at, plain);
    while (end - at >= length && page.charLength[static_cast<std::uint8_t>(*at)] == length)
        at += length;
    return at;
}

// Calls `visit` with the begin, the end and the length of the characters of each run, as long as it
// gives true. Gives the end of the last run: whole characters alone are walked over.
template <class Visit>
const char* walkRuns(const TSCodePageHeader& page, PlainSet plain, const char* at, const char* end,
                     const Visit& visit)
{
    const char* behind = at;
    for (; at != end; at = behind) {
        const std::int32_t length = page.charLength[static_cast<std::uint8_t>(*at)];
        switch (length) {
        case 1:
            behind = behindRun(page, plain, at, end, Length<1>{});
            break;
        case 2:
            behind = behindRun(page, plain, at, end, Length<2>{});
            break;
        case 3:
            behind = behindRun(page, plain, at, end, Length<3>{});
            break;
        default:
            behind = behindRun(page, plain, at, end, Length<4>{});
            break;
        }
        if (behind == at || !visit(at, behind, length))
            break;
    }
    return behind;
}

} // namespace vlx
