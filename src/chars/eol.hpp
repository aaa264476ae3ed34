// Line ends: the line feed, the carriage return before a line feed, and two characters more. Each
// text form has its own four values.
#pragma once

#include <algorithm>
#include <cstdint>

#include "chars/form.hpp"
#include "frame/globals.hpp"
#include "strings/length.hpp"

namespace vlx {

inline constexpr std::uint32_t kAllEols = TS_EOL_LF | TS_EOL_CRLF | TS_EOL_3 | TS_EOL_4;

// The four characters of the line ends in one form.
template <class Unit>
struct EolChars {
    Unit lineFeed;
    Unit carriageReturn;
    Unit third;
    Unit fourth;
};

template <class Unit>
EolChars<Unit> eolCharsOf(const TSCodePageHeader& page)
{
    return {static_cast<Unit>(page.lineFeedChar), static_cast<Unit>(page.carriageReturnChar),
            static_cast<Unit>(page.lineEnd3Char), static_cast<Unit>(page.lineEnd4Char)};
}

inline constexpr EolChars<TSChar16> kUnicodeEols{0x000A, 0x000D, 0x2028, 0x2029};

// The masks that a search asks for; 0 for options that are refused.
inline std::uint32_t wantedEols(std::uint32_t options)
{
    if (options == 0)
        return TS_EOL_CRLF;
    if ((options & kAllEols) == kAllEols) // other bits are ignored then
        return kAllEols;
    return options & ~kAllEols ? 0 : options;
}

// The masks that are to be written; 0 for options that are refused.
inline std::uint32_t writtenEols(std::uint32_t options)
{
    if (options == 0)
        options = TS_EOL_PUT_DEFAULT;
    if (options & ~(kAllEols | TS_EOL_PUT_DEFAULT))
        return 0;
    return options & TS_EOL_PUT_DEFAULT ? options | TS_EOL_CRLF : options;
}

// A search: what it looks for and what it finds.
template <class Unit>
class EolSearch {
  public:
    EolSearch(const EolChars<Unit>& chars, std::uint32_t wanted) : chars_(chars), wanted_(wanted)
    {
        if (wants(TS_EOL_CRLF))
            set_[setLength_++] = chars.carriageReturn;
        if (wants(TS_EOL_CRLF | TS_EOL_LF))
            set_[setLength_++] = chars.lineFeed;
        if (wants(TS_EOL_3))
            set_[setLength_++] = chars.third;
        if (wants(TS_EOL_4))
            set_[setLength_++] = chars.fourth;
    }

    // Walks a string of `units`. `spanTo` gives the span from an offset to a unit of the set. The
    // place behind the line end, or null.
    template <class SpanTo>
    const Unit* run(const Unit* string, std::int32_t units, const SpanTo& spanTo)
    {
        std::int32_t offset = 0;
        while (offset < units) {
            offset += spanTo(offset, set_, setLength_);
            if (offset < units && matches(string + offset))
                return string + offset + length;
            ++offset; // a unit of the set that is no line end here
        }
        return nullptr;
    }

    std::uint32_t type = TS_EOL_NONE;
    std::int32_t length = 0;

  private:
    bool wants(std::uint32_t mask) const { return (wanted_ & mask) != 0; }

    // Deliberate: the unit behind a carriage return is read even where the string's length ends.
    bool matches(const Unit* at)
    {
        if (wants(TS_EOL_CRLF) && at[0] == chars_.carriageReturn && at[1] == chars_.lineFeed)
            return hit(TS_EOL_CRLF, 2);
        if (wants(TS_EOL_LF) && *at == chars_.lineFeed)
            return hit(TS_EOL_LF, 1);
        if (wants(TS_EOL_3) && *at == chars_.third)
            return hit(TS_EOL_3, 1);
        return wants(TS_EOL_4) && *at == chars_.fourth && hit(TS_EOL_4, 1);
    }

    bool hit(std::uint32_t mask, std::int32_t units)
    {
        type = mask;
        length = units;
        return true;
    }

    const EolChars<Unit> chars_;
    const std::uint32_t wanted_;
    Unit set_[4] = {};
    std::int32_t setLength_ = 0;
};

// Writes the wanted line ends in the order of the byte members and gives the place behind them.
inline char* putEols(char* output, const EolChars<char>& chars, std::uint32_t wanted)
{
    if (wanted & TS_EOL_4)
        *output++ = chars.fourth;
    if (wanted & TS_EOL_3)
        *output++ = chars.third;
    if (wanted & TS_EOL_LF)
        *output++ = chars.lineFeed;
    if (wanted & TS_EOL_CRLF) {
        *output++ = chars.carriageReturn;
        *output++ = chars.lineFeed;
    }
    return output;
}

// The same for arrays. Deliberate: their order is another one.
template <class Unit>
Unit* putEols(Unit* output, const EolChars<Unit>& chars, std::uint32_t wanted)
{
    if (wanted & TS_EOL_LF)
        *output++ = chars.lineFeed;
    if (wanted & TS_EOL_3)
        *output++ = chars.third;
    if (wanted & TS_EOL_4)
        *output++ = chars.fourth;
    if (wanted & TS_EOL_CRLF) {
        *output++ = chars.carriageReturn;
        *output++ = chars.lineFeed;
    }
    return output;
}

} // namespace vlx
