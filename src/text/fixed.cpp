#include "text/fixed.hpp"

#include <bit>
#include <charconv>
#include <cstring>

namespace vlx {

namespace {

constexpr std::uint32_t kMillion = 1000000;

// A double by its bits.
struct DoubleParts {
    explicit DoubleParts(double value)
        : bits(std::bit_cast<std::uint64_t>(value)),
          exponent(static_cast<int>(bits >> kFractionBits & kEndless)),
          fraction(bits & ((std::uint64_t{1} << kFractionBits) - 1))
    {
    }

    bool isNegative() const { return bits >> 63 != 0; }
    bool isFinite() const { return exponent != kEndless; }
    bool isNumber() const { return isFinite() || fraction == 0; }
    double magnitude() const { return std::bit_cast<double>(bits & ~(std::uint64_t{1} << 63)); }

    static constexpr int kFractionBits = 52;
    static constexpr int kEndless = 0x7FF; // the exponent of what is not finite
    static constexpr int kBias = 1023 + kFractionBits;

    const std::uint64_t bits;
    const int exponent;
    const std::uint64_t fraction;
};

// A whole number of any double's size, from its low digits to the high ones.
class LargeNumber {
  public:
    // `number` times two to the power of `shift`.
    LargeNumber(std::uint64_t number, int shift)
    {
        const int low = shift % 32;
        std::uint32_t* const at = limbs_ + shift / 32;
        at[0] = static_cast<std::uint32_t>(number << low);
        at[1] = static_cast<std::uint32_t>(number << low >> 32);
        at[2] = low == 0 ? 0 : static_cast<std::uint32_t>(number >> (64 - low));
        used_ = shift / 32 + 3;
    }

    // Writes the number, of at most `room` digits, and returns how many these are.
    std::int32_t write(char* text, std::int32_t room)
    {
        std::int32_t first = room;
        while (hasDigits()) {
            std::uint32_t nine = divide();
            for (int i = 0; i < kDigitsAtOnce && first > 0; ++i, nine /= 10)
                text[--first] = static_cast<char>('0' + nine % 10);
        }
        while (first < room && text[first] == '0')
            ++first;
        std::memmove(text, text + first, static_cast<std::size_t>(room - first));
        return room - first;
    }

  private:
    static constexpr int kLimbs = 1024 / 32 + 2;
    static constexpr int kDigitsAtOnce = 9;
    static constexpr std::uint32_t kDivisor = 1000000000;

    bool hasDigits()
    {
        while (used_ > 0 && limbs_[used_ - 1] == 0)
            --used_;
        return used_ > 0;
    }

    // Divides by 10^9 and gives the rest.
    std::uint32_t divide()
    {
        std::uint64_t rest = 0;
        for (int i = used_ - 1; i >= 0; --i) {
            const std::uint64_t both = rest << 32 | limbs_[i];
            limbs_[i] = static_cast<std::uint32_t>(both / kDivisor);
            rest = both % kDivisor;
        }
        return static_cast<std::uint32_t>(rest);
    }

    std::uint32_t limbs_[kLimbs] = {};
    int used_;
};

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
    const DoubleParts parts(value);
    char* at = text_;
    if (parts.isNegative())
        *at++ = '-';
    const double magnitude = parts.magnitude();
    if (magnitude < kWholeLimit) [[likely]]
        writeSmall(at, magnitude);
    else if (parts.isFinite())
        writeLarge(at, parts.fraction | std::uint64_t{1} << DoubleParts::kFractionBits,
                   parts.exponent - DoubleParts::kBias);
    else
        writeName(at, parts.isNumber() ? "inf" : "nan");
}

void FixedText::writeSmall(char* at, double magnitude)
{
    auto whole = static_cast<std::uint64_t>(magnitude);
    std::uint32_t fraction = millionths(magnitude - static_cast<double>(whole));
    if (fraction == kMillion) {
        ++whole;
        fraction = 0;
    }
    writeFraction(std::to_chars(at, at + 20, whole).ptr, fraction);
}

// What is that large has no fraction.
void FixedText::writeLarge(char* at, std::uint64_t number, int shift)
{
    const std::int32_t digits = LargeNumber(number, shift).write(at, kMostWhole - 1);
    writeFraction(at + digits, 0);
}

void FixedText::writeFraction(char* at, std::uint32_t fraction)
{
    whole_ = static_cast<std::int32_t>(at - text_);
    hasFraction_ = true;
    *at = '.';
    for (char* digit = at + kDigits; digit > at; --digit) {
        *digit = static_cast<char>('0' + fraction % 10);
        fraction /= 10;
    }
}

void FixedText::writeName(char* at, const char* name)
{
    std::memcpy(at, name, 3);
    whole_ = static_cast<std::int32_t>(at + 3 - text_);
    hasFraction_ = false;
}

} // namespace vlx
