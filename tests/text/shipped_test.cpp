// The locales that ship: what is written for a value reads back as it, to the digits that are
// shown, and no call of these families touches the allocator.
#include <array>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "frame/globals.hpp"
#include "locale/locale.hpp"
#include "support/allocator.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

constexpr int kValues = 20; // of each kind in each territory

// Names of languages and of territories.
using Names = std::array<std::vector<std::string>, 2>;

std::int32_t collect(TSContext user, std::int32_t type, const char* name)
{
    if (type == TS_OBJ_LANGUAGE || type == TS_OBJ_TERRITORY)
        (*reinterpret_cast<Names*>(user))[static_cast<std::size_t>(type)].emplace_back(name);
    return 1;
}

// All territories, each with the language and the code page given.
class Shipped : public testing::Test {
  protected:
    Shipped()
    {
        EXPECT_EQ(TSInit(VLX_LOCALE, Allocator::allocate, Allocator::free,
                         Allocator::allocateObject, Allocator::freeObject, 0, 0),
                  TS_ERR_NONE);
        TSEnumLocales(collect, reinterpret_cast<TSContext>(&names_));
        EXPECT_GT(names_[TS_OBJ_TERRITORY].size(), 0U);
    }
    ~Shipped() override
    {
        TSTerm();
        Allocator::reset();
    }

    // Calls `check` for the locale of every territory, and looks at the allocator around it.
    template <class Check>
    void forEach(const std::string& language, const char* codePage, const Check& check)
    {
        for (const std::string& territory : names_[TS_OBJ_TERRITORY]) {
            const std::string name = language + '_' + territory + '.' + codePage;
            std::int32_t code = 0;
            TSLocale* const locale = TSGetLocale(name.c_str(), 0, &code);
            ASSERT_NE(locale, nullptr) << name << ", code " << code;
            const std::uint32_t calls = allCalls();
            SCOPED_TRACE(name);
            dropBlankSeparators(*locale);
            check(locale);
            EXPECT_EQ(allCalls(), calls);
            TSReleaseLocale(locale);
        }
    }

    // White space ends a number, so that a separator which is one does not read back.
    static void dropBlankSeparators(TSLocale& locale)
    {
        constexpr std::uint32_t kBlank = 0x40;
        for (const int index : {1, 4}) { // of numbers, of money
            const LocaleSeparator& separator = kLocaleSeparator[index];
            if (TSGetCharTypeU(&locale, locale.*separator.unicode, TS_CT_CLASS) & kBlank) {
                locale.*separator.byte = 0;
                locale.*separator.unicode = 0;
            }
        }
    }

    static std::uint32_t allCalls()
    {
        return Allocator::calls(Slot::kAllocate) + Allocator::calls(Slot::kAllocateObject) +
               Allocator::calls(Slot::kFree) + Allocator::calls(Slot::kFreeObject);
    }

    // A value as "%f" and the digits shown leave it.
    static double shownValue(double value, std::int32_t digits)
    {
        char text[400];
        std::snprintf(text, sizeof text, "%f", value);
        char* const point = std::strchr(text, '.');
        point[std::min(digits, 6) + 1] = 0;
        return std::strtod(text, nullptr);
    }

    double anyDouble()
    {
        return std::ldexp(static_cast<double>(static_cast<std::int64_t>(random_())),
                          -static_cast<int>(20 + random_() % 40));
    }

    Names names_;
    std::mt19937_64 random_{7};
};

TEST_F(Shipped, NumbersReadBack)
{
    for (const char* const codePage : {"UTF-8", "MS1252", "IBM1047", "MS932", "IBM930"})
        forEach("English", codePage, [&](TSLocale* locale) {
            for (int i = 0; i < kValues; ++i) {
                char text[400];
                char* end = nullptr;
                const double value = anyDouble();
                ASSERT_GT(TSDoubleToString(locale, value, text, sizeof text, TS_OPT_TERMINATE), 0);
                const double shown = shownValue(value, locale->fractionDigits);
                EXPECT_NEAR(TSStringToDouble(locale, text, -1, &end, 0), shown,
                            std::abs(shown) * 1e-14)
                    << text;
                EXPECT_EQ(*end, 0) << text;
                const auto whole = static_cast<std::int32_t>(random_()) >> random_() % 31;
                ASSERT_GT(TSLongToString(locale, whole, text, sizeof text, TS_OPT_TERMINATE), 0);
                EXPECT_EQ(TSStringToLong(locale, text, -1, &end, 10, 0), whole) << text;
                EXPECT_EQ(*end, 0) << text;
            }
        });
}

TEST_F(Shipped, MoneyReadsBackWithoutItsSymbol)
{
    forEach("English", "UTF-8", [&](TSLocale* locale) {
        for (int i = 0; i < kValues; ++i) {
            TSChar16 text[400];
            const double value = std::abs(anyDouble());
            const std::int32_t count = TSCurrencyToStringU(locale, value, text, 400, 0);
            ASSERT_GT(count, 0);
            // The number begins with the first digit.
            std::int32_t from = 0;
            while (from < count && (text[from] < '0' || text[from] > '9'))
                ++from;
            TSChar16* end = nullptr;
            const double shown = shownValue(value, locale->currencyDigits);
            EXPECT_NEAR(TSStringToDoubleU(locale, text + from, count - from, &end, TS_OPT_MONETARY),
                        shown, std::abs(shown) * 1e-14);
        }
    });
}

TEST_F(Shipped, TimesReadBack)
{
    const std::basic_string<TSChar16> patterns[] = {
        {'%', 'x'}, {'%', '#', 'x'}, {'%', 'X'}, {'%', 'c'}, {'%', '#', 'c'}};
    for (const std::string& language : names_[TS_OBJ_LANGUAGE])
        forEach(language, "UTF-8", [&](TSLocale* locale) {
            for (int i = 0; i < kValues; ++i) {
                TSTimeFields time{};
                time.seconds = static_cast<std::int32_t>(random_() % 60);
                time.minutes = static_cast<std::int32_t>(random_() % 60);
                time.hours = static_cast<std::int32_t>(random_() % 24);
                time.dayOfMonth = static_cast<std::int32_t>(1 + random_() % 28);
                time.month = static_cast<std::int32_t>(random_() % 12);
                time.year = static_cast<std::int32_t>(100 + random_() % 100);
                time.dayOfWeek = static_cast<std::int32_t>(random_() % 7);
                const auto& pattern = patterns[static_cast<std::size_t>(i) % std::size(patterns)];
                const auto length = static_cast<std::int32_t>(pattern.size());
                TSChar16 text[400];
                const std::int32_t count =
                    TSTimeToStringU(locale, &time, text, 400, pattern.data(), length, 0);
                ASSERT_GT(count, 0);
                ASSERT_EQ(TSGetError(locale), TS_ERR_NONE);
                TSTimeFields read = time;
                EXPECT_EQ(TSStringToTimeU(locale, &read, text, count, pattern.data(), length, 0),
                          count);
                // What a pattern does not show stays; a year of two digits is one of the last
                // century.
                EXPECT_EQ(read.seconds, time.seconds);
                EXPECT_EQ(read.minutes, time.minutes);
                EXPECT_EQ(read.hours, time.hours);
                EXPECT_EQ(read.dayOfMonth, time.dayOfMonth);
                EXPECT_EQ(read.month, time.month);
                EXPECT_EQ(read.year % 100, time.year % 100);
                EXPECT_EQ(read.dayOfWeek, time.dayOfWeek);
            }
        });
}

} // namespace
} // namespace vlx::test
