// Numbers, amounts and times of every locale in its own code page, written and read back.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>

#include "world/world.hpp"

namespace vlx::test {
namespace {

constexpr int kValues = 20; // of each kind in each locale
constexpr std::int32_t kRoom = 400;

class FormatsWorld : public WorldTest {
  protected:
    double anyDouble()
    {
        return std::ldexp(static_cast<double>(static_cast<std::int64_t>(random_())),
                          -static_cast<int>(20 + random_() % 40));
    }

    TSTimeFields anyTime()
    {
        const auto below = [&](unsigned limit) {
            return static_cast<std::int32_t>(random_() % limit);
        };
        return {.seconds = below(60),
                .minutes = below(60),
                .hours = below(24),
                .dayOfMonth = 1 + below(28),
                .month = below(12),
                .year = 100 + below(100),
                .dayOfWeek = below(7),
                .dayOfYear = 0};
    }

    std::mt19937_64 random_{11};
};

// White space ends a number, so that one whose separator is a blank does not read back as a whole.
void dropBlankSeparators(const Locale& locale)
{
    const auto drop = [&](int separator, int grouping) {
        const std::u16string text = unitsOf(locale, separator);
        if (text == u" " || text == u"\xA0") {
            EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), grouping, "99", 2, 0), 1);
        }
    };
    drop(TS_LI_THOUSANDS_SEP, TS_LI_GROUPING);
    drop(TS_LI_MON_THOUSANDS_SEP, TS_LI_MON_GROUPING);
}

// A value as "%f" and the digits shown leave it.
double shownValue(double value, int digits)
{
    char text[kRoom];
    std::snprintf(text, sizeof text, "%f", value);
    std::strchr(text, '.')[std::min(digits, 6) + 1] = 0;
    return std::strtod(text, nullptr);
}

TEST_F(FormatsWorld, NumbersReadBack)
{
    for (const std::string& name : everyLocale()) {
        SCOPED_TRACE(name);
        const Locale locale = open(name);
        ASSERT_NE(locale, nullptr);
        dropBlankSeparators(locale);
        for (int i = 0; i < kValues; ++i) {
            char text[kRoom];
            char* end = nullptr;
            const double value = anyDouble();
            const std::int32_t count = TSDoubleToString(locale.get(), value, text, kRoom, 0);
            ASSERT_GT(count, 0);
            const double shown = shownValue(value, numberOf(locale, TS_LI_FRAC_DIGITS));
            EXPECT_NEAR(TSStringToDouble(locale.get(), text, count, &end, 0), shown,
                        std::abs(shown) * 1e-14)
                << std::string(text, static_cast<std::size_t>(count));
            EXPECT_EQ(end, text + count);
        }
    }
}

// The place of the number in an amount: from the first digit to the last, and the point behind it.
std::string numberIn(const std::string& amount, const std::string& symbol)
{
    std::string text = amount;
    if (const std::size_t at = text.find(symbol); at != std::string::npos)
        text.replace(at, symbol.size(), symbol.size(), ' ');
    const std::size_t first = text.find_first_of("0123456789");
    const std::size_t last = text.find_last_of("0123456789");
    return text.substr(first, last + 2 - first);
}

TEST_F(FormatsWorld, AmountsReadBackWithoutTheirSymbol)
{
    for (const std::string& name : everyLocale()) {
        SCOPED_TRACE(name);
        const Locale locale = open(name);
        ASSERT_NE(locale, nullptr);
        dropBlankSeparators(locale);
        for (const std::uint32_t form : {0U, TS_OPT_INTERNATIONAL}) {
            const std::string symbol =
                bytesOf(locale, form ? TS_LI_INT_CURRENCY_SYMBOL : TS_LI_CURRENCY_SYMBOL);
            for (int i = 0; i < kValues; ++i) {
                char text[kRoom];
                const double value = anyDouble();
                const std::int32_t count =
                    TSCurrencyToString(locale.get(), value, text, kRoom, form);
                ASSERT_GT(count, 0);
                ASSERT_EQ(TSGetError(locale.get()), TS_ERR_NONE);
                const std::string amount(text, static_cast<std::size_t>(count));
                SCOPED_TRACE(amount);
                EXPECT_NE(amount.find(symbol), std::string::npos);
                const std::string sign = bytesOf(locale, TS_LI_NEGATIVE_SIGN);
                EXPECT_EQ(amount.find_first_of("(" + sign) != std::string::npos, value < 0);
                const std::string number = numberIn(amount, symbol);
                char* end = nullptr;
                const double shown =
                    shownValue(std::abs(value), numberOf(locale, form ? TS_LI_INT_FRAC_DIGITS
                                                                      : TS_LI_MON_FRAC_DIGITS));
                EXPECT_NEAR(
                    TSStringToDouble(locale.get(), number.c_str(), -1, &end, TS_OPT_MONETARY),
                    shown, std::abs(shown) * 1e-14);
                EXPECT_GT(end, number.c_str() + number.find_last_of("0123456789"));
            }
        }
    }
}

// What a pattern does not show stays as it is; a year of two digits is one of the last century.
void expectSame(const TSTimeFields& read, const TSTimeFields& time)
{
    EXPECT_EQ(read.seconds, time.seconds);
    EXPECT_EQ(read.minutes, time.minutes);
    EXPECT_EQ(read.hours, time.hours);
    EXPECT_EQ(read.dayOfMonth, time.dayOfMonth);
    EXPECT_EQ(read.month, time.month);
    EXPECT_EQ(read.year % 100, time.year % 100);
    EXPECT_EQ(read.dayOfWeek, time.dayOfWeek);
}

TEST_F(FormatsWorld, TimesReadBack)
{
    for (const std::string& name : everyLocale()) {
        const Locale locale = open(name);
        ASSERT_NE(locale, nullptr);
        for (const char* const pattern : {"%x", "%#x", "%X", "%c", "%#c", "%a %b %A %B %p"})
            for (int i = 0; i < kValues; ++i) {
                const TSTimeFields time = anyTime();
                char text[kRoom];
                const std::int32_t count =
                    TSTimeToString(locale.get(), &time, text, kRoom, pattern, -1, 0);
                ASSERT_GT(count, 0);
                SCOPED_TRACE(name + ": " + std::string(text, static_cast<std::size_t>(count)));
                ASSERT_EQ(TSGetError(locale.get()), TS_ERR_NONE);
                TSTimeFields read = time;
                read.month = -1; // each of these patterns but the time's own shows the month
                if (std::strcmp(pattern, "%X") == 0)
                    read.month = time.month;
                EXPECT_EQ(TSStringToTime(locale.get(), &read, text, count, pattern, -1, 0), count);
                expectSame(read, time);
            }
    }
}

// All names, so that none is taken for another that it begins like.
TEST_F(FormatsWorld, EveryDayAndMonthReadsBack)
{
    for (const std::string& name : everyLocale()) {
        SCOPED_TRACE(name);
        const Locale locale = open(name);
        ASSERT_NE(locale, nullptr);
        for (const char* const pattern : {"%A%B", "%a%b", "%B%A", "%b%a"})
            for (int i = 0; i < 7 * 12; ++i) {
                TSTimeFields time{};
                time.dayOfWeek = i % 7;
                time.month = i % 12;
                char text[kRoom];
                const std::int32_t count =
                    TSTimeToString(locale.get(), &time, text, kRoom, pattern, -1, 0);
                ASSERT_GT(count, 0);
                TSTimeFields read{};
                EXPECT_EQ(TSStringToTime(locale.get(), &read, text, count, pattern, -1, 0), count);
                EXPECT_EQ(read.dayOfWeek, time.dayOfWeek);
                EXPECT_EQ(read.month, time.month);
            }
    }
}

} // namespace
} // namespace vlx::test
