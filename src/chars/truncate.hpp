// What the two members of truncation share: the size that counts, and the blanks to be taken away.
#pragma once

#include <algorithm>
#include <cstring>

#include "chars/form.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"

namespace vlx {

// A positive size in bytes, no larger than the string of `length` bytes and its terminator need.
inline std::int32_t truncationSize(const TSLocale& locale, const char* string, std::int32_t state,
                                   std::int32_t length, std::int32_t size, std::uint32_t options)
{
    const std::int32_t whole = length + 1;
    if (options & TS_OPT_CHAR_COUNT) // no string has more characters than bytes
        size = TSCpCharsToBytesWithin(locale.codePage, string, state, std::min(size, whole), whole);
    return std::min(size, whole);
}

// The blanks of a locale: a byte, and the full-width one if the options ask for it. Deliberate:
// also for stateful text it is what plain mapping gives, as long as the length table says.
class Blanks {
  public:
    Blanks(TSLocale* locale, std::uint32_t options)
        : blank_(tsCodePage(locale->codePage).cpFlags & kAsciiFamily ? '\x20' : '\x40')
    {
        if ((options & TS_OPT_IGNORE_WIDTH) == TS_OPT_IGNORE_WIDTH)
            fullLength_ = TSMapString(locale, full_, sizeof full_, &blank_, 1, TS_MAP_FULL_WIDTH);
    }

    bool isBlank(char byte) const { return byte == blank_; }
    bool isFull(const char* character, std::int32_t length) const
    {
        return length == fullLength_ &&
               std::memcmp(character, full_, static_cast<std::size_t>(length)) == 0;
    }

  private:
    const char blank_;
    char full_[4] = {};
    std::int32_t fullLength_ = 0;
};

} // namespace vlx
