// TSNumChars: the number of characters of a string.
#include <algorithm>

#include "chars/stepping.hpp"

namespace {

constexpr int32_t kBlock = 8;
constexpr std::uint64_t kHighBits = 0x8080808080808080u;

// Whether every byte below 0x80 begins a character of one byte.
bool asciiIsSingle(const TSCodePageHeader& page)
{
    return std::all_of(page.charLength, page.charLength + 0x80,
                       [](std::uint8_t length) { return length == 1; });
}

// The bytes of whole blocks without a high bit at the start of a string.
int32_t asciiRun(const char* string, int32_t length)
{
    int32_t run = 0;
    for (; length - run >= kBlock; run += kBlock) {
        std::uint64_t block;
        std::memcpy(&block, string + run, kBlock);
        if (block & kHighBits)
            break;
    }
    return run;
}

} // namespace

int32_t TSNumChars(TSLocale* handle, const char* string, int32_t length, uint32_t)
{
    const TSLocale& locale = vlx::steppingLocale(handle);
    length = vlx::lengthOf(string, length);
    if (locale.flags & vlx::kLocaleSingleByte)
        return length;
    const TSCodePageHeader& page = vlx::pageOf(locale);
    // Runs of ASCII are counted a block at a time where that is worth the look at the table.
    constexpr int32_t kWorthIt = 64;
    const bool runs = length >= kWorthIt && asciiIsSingle(page);
    int32_t count = 0;
    for (int32_t offset = 0; offset < length; ++count) {
        if (runs && static_cast<signed char>(string[offset]) >= 0) {
            const int32_t run = asciiRun(string + offset, length - offset);
            offset += run;
            count += run;
            if (offset == length)
                break;
        }
        const int32_t step = vlx::charLengthAt(page, string + offset);
        if (step > length - offset) // cut off by the length
            break;
        offset += step;
    }
    return count;
}
