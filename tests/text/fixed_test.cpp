// The text of a double is that of "%f" for every double.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>

#include <gtest/gtest.h>

#include "text/amount.hpp"

namespace vlx::test {
namespace {

// Random bit patterns; VLX_PATTERNS asks for more of them.
constexpr long kPatterns = 200000;

long patterns()
{
    const char* const wanted = std::getenv("VLX_PATTERNS");
    return wanted ? std::strtol(wanted, nullptr, 10) : kPatterns;
}

bool isThatOfPrintf(double value)
{
    char expected[512];
    const int length = std::snprintf(expected, sizeof expected, "%f", value);
    const FixedText text(value);
    const std::int32_t whole = text.wholeLength();
    const bool hasPoint = std::strchr(expected, '.') != nullptr;
    return text.hasFraction() == hasPoint && whole == (hasPoint ? length - 7 : length) &&
           std::memcmp(text.begin(), expected, static_cast<std::size_t>(whole)) == 0 &&
           (!hasPoint || std::memcmp(text.fraction(), expected + whole + 1, 6) == 0);
}

void expectBoth(double value)
{
    EXPECT_PRED1(isThatOfPrintf, value) << std::hexfloat << value;
    EXPECT_PRED1(isThatOfPrintf, -value) << std::hexfloat << -value;
}

TEST(FixedText, IsThatOfPrintfForRandomBits)
{
    std::mt19937_64 random(4);
    for (long i = patterns(); i > 0 && !HasFailure(); --i) {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        EXPECT_PRED1(isThatOfPrintf, value) << std::hexfloat << value;
    }
}

TEST(FixedText, IsThatOfPrintfForRandomSizes)
{
    std::mt19937_64 random(5);
    for (long i = patterns(); i > 0 && !HasFailure(); --i)
        expectBoth(std::ldexp(static_cast<double>(random() >> 11),
                              static_cast<int>(random() % 160) - 120));
}

TEST(FixedText, IsThatOfPrintfForDecimals)
{
    std::mt19937_64 random(6);
    for (long i = patterns(); i > 0 && !HasFailure(); --i)
        expectBoth(static_cast<double>(random() >> random() % 64) /
                   std::pow(10.0, static_cast<int>(random() % 20)));
}

TEST(FixedText, IsThatOfPrintfAtTies)
{
    // Odd multiples of half a millionth that a double holds: binary fractions of few digits.
    for (int digits = 1; digits <= 60; ++digits)
        for (int odd = 1; odd < 2000; odd += 2)
            expectBoth(std::ldexp(odd, -digits));
    for (std::uint64_t i = 0; i < 2000; ++i) // .0000005 in front of the point, too
        expectBoth(static_cast<double>(i) + 1.0 / 64 / 15625);
}

TEST(FixedText, IsThatOfPrintfAtTheBoundaries)
{
    using Limits = std::numeric_limits<double>;
    for (const double value : {0.0, Limits::min(), Limits::denorm_min(), Limits::max(),
                               Limits::epsilon(), Limits::infinity(), Limits::quiet_NaN()})
        expectBoth(value);
    for (int exponent = -1074; exponent <= 1023; ++exponent) {
        const double power = std::ldexp(1.0, exponent);
        for (const double value :
             {power, std::nextafter(power, 0.0), std::nextafter(power, Limits::max())})
            expectBoth(value);
    }
    for (int exponent = -30; exponent <= 308; ++exponent) {
        const double power = std::pow(10.0, exponent);
        for (const double value : {power, std::nextafter(power, 0.0),
                                   std::nextafter(power, Limits::max()), power / 2, 5 * power})
            expectBoth(value);
    }
}

} // namespace
} // namespace vlx::test
