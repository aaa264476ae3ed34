// Numbers, money and times of the objects that are compiled in. Their code page makes bytes of the
// header out of Unicode, so that only the 16-bit members show the texts as they are.
#include <string>

#include <gtest/gtest.h>

#include "tessera.h"

namespace vlx::test {
namespace {

constexpr TSTimeFields kTime{9, 5, 13, 7, 2, 105, 1, 65}; // Monday, 7 March 2005, 13:05:09

class BuiltIn : public testing::Test {
  protected:
    BuiltIn()
    {
        EXPECT_EQ(TSInit("no such directory", nullptr, nullptr, nullptr, nullptr, 0, 0),
                  TS_ERR_NO_CONTROL_FILE);
        EXPECT_EQ(TSSetLocale("", 0), TS_ERR_NONE);
    }
    ~BuiltIn() override { TSTerm(); }

    template <class Call>
    static std::u16string written(const Call& call)
    {
        TSChar16 units[100];
        const std::int32_t count = call(units);
        return std::u16string(units, units + count);
    }

    static std::u16string money(double value, std::uint32_t options = 0, std::int32_t size = 100)
    {
        return written(
            [&](TSChar16* to) { return TSCurrencyToStringU(nullptr, value, to, size, options); });
    }

    static std::u16string time(const std::u16string& pattern, const TSTimeFields& fields = kTime)
    {
        return written([&](TSChar16* to) {
            return TSTimeToStringU(nullptr, &fields, to, 100, unitsOf(pattern), -1, 0);
        });
    }

    static const TSChar16* unitsOf(const std::u16string& text)
    {
        return reinterpret_cast<const TSChar16*>(text.c_str());
    }
};

TEST_F(BuiltIn, WritesAmounts)
{
    EXPECT_EQ(money(1234.5), u"$1,234.50");
    EXPECT_EQ(money(-1234.5), u"($1,234.50)");
    EXPECT_EQ(money(1234.5, TS_OPT_INTERNATIONAL), u"USD1,234.50");
    EXPECT_EQ(money(0), u"$0.00");
    EXPECT_EQ(money(1.999), u"$1.99");
    EXPECT_EQ(money(-123), u"($123.00)");
    EXPECT_EQ(money(1234.5, 0, 3), u"$1,");
    EXPECT_EQ(TSGetError(nullptr), TS_ERR_BUFFER);
}

TEST_F(BuiltIn, WritesTimes)
{
    EXPECT_EQ(time(u"%#I:%M:%S %p"), u"1:05:09 PM");
    TSTimeFields night = kTime;
    night.hours = 0;
    EXPECT_EQ(time(u"%#I:%M:%S %p", night), u"12:05:09 AM");
    EXPECT_EQ(time(u"%A, %B %d, %Y"), u"Monday, March 07, 2005");
    EXPECT_EQ(time(u"%c"), u"3/7/05 1:05:09 PM");
}

TEST_F(BuiltIn, ReadsNumbersAndTimes)
{
    EXPECT_EQ(TSStringToDoubleU(nullptr, unitsOf(u"1,234,567.25"), -1, nullptr, 0), 1234567.25);
    EXPECT_EQ(TSStringToLongU(nullptr, unitsOf(u"1,2,3,4,5,6,7"), -1, nullptr, 10, 0), 1234567);
    TSTimeFields fields{};
    EXPECT_EQ(TSStringToTimeU(nullptr, &fields, unitsOf(u"3/7/05 12:05:09 AM"), -1, unitsOf(u"%c"),
                              -1, 0),
              18);
    EXPECT_EQ(fields.hours, 0);
    EXPECT_EQ(fields.month, 2);
    EXPECT_EQ(fields.year, 5);
}

} // namespace
} // namespace vlx::test
