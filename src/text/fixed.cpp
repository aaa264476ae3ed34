#include "text/fixed.hpp"

#include <charconv>
#include <cmath>

namespace vlx {

namespace {

constexpr std::uint32_t kMillion = 1000000;

// A fraction below 1 in millionths, rounded to even.
std::uint32_t millionths(double fraction)
{
    // The product is `product` and an error that a double holds exactly: the fraction is cut into
    // halves of at most 27 bits, so that neither half is rounded when it is multiplied.
    constexpr double kSplitter = 134217729; // 2^27 + 1
    const double product = fraction * kMillion;
    const double spread = fraction * kSplitter;
    const double high = spread - (spread - fraction);
    const double low = fraction - high;
    const double error = (high * kMillion - product) + low * kMillion;

    const auto below = static_cast<std::uint32_t>(product);
    const double rest = product - below;
    // A rest that is not one half is further from it than the error is large.
    const bool up = rest > 0.5 || (rest == 0.5 && (error > 0 || (error == 0 && below % 2 == 1)));
    return below + up;
}

} // namespace

FixedText::FixedText(double value)
{
    constexpr double kWholeLimit = 18446744073709551616.0; // of 64 bits
    if (std::abs(value) < kWholeLimit) [[likely]]
        writeSmall(value);
    else
        writeAny(value);
}

void FixedText::writeSmall(double value)
{
    const double magnitude = std::abs(value);
    auto whole = static_cast<std::uint64_t>(magnitude);
    std::uint32_t fraction = millionths(magnitude - static_cast<double>(whole));
    if (fraction == kMillion) {
        ++whole;
        fraction = 0;
    }
    char* at = text_;
    if (std::signbit(value))
        *at++ = '-';
    at = std::to_chars(at, at + 20, whole).ptr;
    whole_ = static_cast<std::int32_t>(at - text_);
    hasFraction_ = true;
    *at = '.';
    for (char* digit = at + kDigits; digit > at; --digit) {
        *digit = static_cast<char>('0' + fraction % 10);
        fraction /= 10;
    }
}

void FixedText::writeAny(double value)
{
    const auto result =
        std::to_chars(text_, text_ + sizeof text_, value, std::chars_format::fixed, kDigits);
    const auto length = static_cast<std::int32_t>(result.ptr - text_);
    hasFraction_ = length > kDigits && text_[length - kDigits - 1] == '.';
    whole_ = hasFraction_ ? length - kDigits - 1 : length;
}

} // namespace vlx
