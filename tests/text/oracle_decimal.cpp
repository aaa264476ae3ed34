// The text of "%f" and the powers of ten by hand, so that no C library's own take part.
#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

#include "text/oracle_text.hpp"

namespace vlx::oracle {

namespace {

// The decimal digits of `number` times `factor`, 2 or 5, so many times.
std::string digitsOfProduct(std::uint64_t number, std::uint64_t factor, int times)
{
    constexpr std::uint64_t kBase = 1000000000;
    std::vector<std::uint64_t> groups; // of nine digits, the lowest first
    for (; number != 0; number /= kBase)
        groups.push_back(number % kBase);
    while (times > 0) {
        std::uint64_t step = 1; // at most 5 to the 13th, so that no product overflows
        for (int i = 0; i < 13 && times > 0; ++i, --times)
            step *= factor;
        std::uint64_t carry = 0;
        for (std::uint64_t& group : groups) {
            carry += group * step;
            group = carry % kBase;
            carry /= kBase;
        }
        for (; carry != 0; carry /= kBase)
            groups.push_back(carry % kBase);
    }
    std::string digits;
    for (auto group = groups.rbegin(); group != groups.rend(); ++group) {
        const std::string nine = std::to_string(*group);
        digits.append(9 - nine.size(), '0').append(nine);
    }
    return digits;
}

// The next whole number.
void countUp(std::string& digits)
{
    auto digit = digits.rbegin();
    for (; digit != digits.rend() && *digit == '9'; ++digit)
        *digit = '0';
    if (digit == digits.rend())
        digits.insert(0, "1");
    else
        ++*digit;
}

} // namespace

std::string fixedText(double value)
{
    constexpr int kFractionBits = 52;
    constexpr std::uint64_t kHidden = std::uint64_t{1} << kFractionBits;
    constexpr std::size_t kShown = 6;
    const auto bits = std::bit_cast<std::uint64_t>(value);
    const std::string sign = bits >> 63 != 0 ? "-" : "";
    const auto exponent = static_cast<int>(bits >> kFractionBits & 0x7FF);
    const std::uint64_t fraction = bits & (kHidden - 1);
    if (exponent == 0x7FF)
        return sign + (fraction != 0 ? "nan" : "inf");
    // The mantissa times a power of 2; where that is below 1, times one of 5 and a decimal point.
    const std::uint64_t mantissa = exponent != 0 ? kHidden | fraction : fraction;
    const int shift = std::max(exponent, 1) - 1075;
    std::string digits = digitsOfProduct(mantissa, shift < 0 ? 5 : 2, std::abs(shift));
    auto behindPoint = static_cast<std::size_t>(std::max(-shift, 0));
    if (behindPoint < kShown + 1) { // one to round by
        digits.append(kShown + 1 - behindPoint, '0');
        behindPoint = kShown + 1;
    }
    if (digits.size() <= behindPoint)
        digits.insert(0, behindPoint + 1 - digits.size(), '0');
    const std::string rest = digits.substr(digits.size() - behindPoint + kShown);
    digits.resize(digits.size() - rest.size());
    const std::string half = '5' + std::string(rest.size() - 1, '0');
    if (rest > half || (rest == half && (digits.back() - '0') % 2 == 1))
        countUp(digits);
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size() - kShown - 1));
    digits.insert(digits.size() - kShown, ".");
    return sign + digits;
}

double powerOfTen(std::int32_t exponent)
{
    if (exponent < -323)
        return 0;
    if (exponent > 308)
        return std::numeric_limits<double>::infinity();
    const std::string text = "1e" + std::to_string(exponent);
    double power = 0;
    std::from_chars(text.data(), text.data() + text.size(), power);
    // The two that pow() does not give as the nearest double.
    return exponent == 23 || exponent == 210 ? std::nextafter(power, 1e300) : power;
}

} // namespace vlx::oracle
