// The short way of the plain parsers, for the text that nearly all numbers are: decimal digits
// behind a sign or none, up to the terminator, in a single-byte code page and with the record's own
// values. Every other text takes the long way from its start.
#pragma once

#include "text/token.hpp"

namespace vlx {

// What the bytes of such a text are told by.
class UsualBytes {
  public:
    static bool isFor(const TSLocale& locale, std::int32_t length, std::uint32_t options)
    {
        return options == 0 && length < 0 && (locale.flags & kLocaleSingleByte);
    }

    explicit UsualBytes(const TSLocale& locale)
        : types_(tsCodePage(locale.codePage).charType), signs_(signsOf(locale))
    {
    }

    // Blanks come before all else, and what follows them is not usual.
    bool isBlank(char byte) const { return (types_[valueOf(byte)] & kBlankType) != 0; }

    // The value of a digit, above 9 for all else.
    std::uint32_t digit(char byte) const { return valueOf(byte) - signs_.zero; }

    // Whether a separator would pass for a digit or a sign.
    bool isAmbiguous(std::uint8_t separator) const
    {
        return separator - std::uint32_t{signs_.zero} <= 9 || separator == signs_.plus ||
               separator == signs_.minus;
    }

    // Moves behind a sign; true if it is that of a negative number.
    bool takeSign(const char*& at) const
    {
        const std::uint32_t byte = valueOf(*at);
        if ((byte != signs_.plus && byte != signs_.minus) || isBlank(*at))
            return false;
        ++at;
        return byte == signs_.minus;
    }

  private:
    const Le32* const types_;
    const Signs& signs_;
};

} // namespace vlx
