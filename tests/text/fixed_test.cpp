// The text of a double is that of "%f" for every double: its exact digits, rounded to even.
#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "text/amount.hpp"
#include "text/oracle_text.hpp"

namespace vlx::test {
namespace {

// Random bit patterns; VLX_PATTERNS asks for more of them.
constexpr long kPatterns = 200000;

long patterns()
{
    const char* const wanted = std::getenv("VLX_PATTERNS");
    return wanted ? std::strtol(wanted, nullptr, 10) : kPatterns;
}

bool isTheText(const FixedText& text, const std::string& expected)
{
    const std::size_t point = expected.find('.');
    const std::size_t whole = std::min(point, expected.size());
    if (text.hasFraction() != (point != std::string::npos) ||
        std::string(text.begin(), static_cast<std::size_t>(text.wholeLength())) !=
            expected.substr(0, whole))
        return false;
    return !text.hasFraction() ||
           std::string(text.fraction(), FixedText::kDigits) == expected.substr(point + 1);
}

bool isExact(double value)
{
    return isTheText(FixedText(value), oracle::fixedText(value));
}

void expectBoth(double value)
{
    EXPECT_PRED1(isExact, value) << std::hexfloat << value;
    EXPECT_PRED1(isExact, -value) << std::hexfloat << -value;
}

TEST(FixedText, IsExactForRandomBits)
{
    std::mt19937_64 random(4);
    for (long i = patterns(); i > 0 && !HasFailure(); --i) {
        const auto value = std::bit_cast<double>(random());
        EXPECT_PRED1(isExact, value) << std::hexfloat << value;
    }
}

TEST(FixedText, IsExactForRandomSizes)
{
    std::mt19937_64 random(5);
    for (long i = patterns(); i > 0 && !HasFailure(); --i)
        expectBoth(std::ldexp(static_cast<double>(random() >> 11),
                              static_cast<int>(random() % 160) - 120));
}

TEST(FixedText, IsExactForDecimals)
{
    std::mt19937_64 random(6);
    for (long i = patterns(); i > 0 && !HasFailure(); --i)
        expectBoth(static_cast<double>(random() >> random() % 64) /
                   std::pow(10.0, static_cast<int>(random() % 20)));
}

#ifdef __GLIBC__ // another library may have other texts for what is no number
TEST(FixedText, IsThatOfPrintf)
{
    std::mt19937_64 random(7);
    for (long i = patterns(); i > 0 && !HasFailure(); --i) {
        const auto value = std::bit_cast<double>(random());
        char expected[512];
        std::snprintf(expected, sizeof expected, "%f", value);
        EXPECT_TRUE(isTheText(FixedText(value), expected)) << std::hexfloat << value;
    }
    using Limits = std::numeric_limits<double>;
    for (const double value : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(),
                               -Limits::quiet_NaN(), -0.0}) {
        char expected[512];
        std::snprintf(expected, sizeof expected, "%f", value);
        EXPECT_TRUE(isTheText(FixedText(value), expected)) << value;
    }
}
#endif

TEST(FixedText, IsExactAtTies)
{
    // Odd multiples of half a millionth that a double holds: binary fractions of few digits.
    for (int digits = 1; digits <= 60; ++digits)
        for (int odd = 1; odd < 2000; odd += 2)
            expectBoth(std::ldexp(odd, -digits));
    for (std::uint64_t i = 0; i < 2000; ++i) // .0000005 in front of the point, too
        expectBoth(static_cast<double>(i) + 1.0 / 64 / 15625);
}

TEST(FixedText, IsExactAtTheBoundaries)
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
