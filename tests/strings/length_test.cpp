// What the length of 16-bit and 32-bit text promises.
#include "strings/pages.hpp"

namespace vlx::test {
namespace {

class Length : public StringTest {};

TEST_F(Length, CountsTheUnitsBeforeTheTerminator)
{
    const TSChar16 unicode[] = {0xD800, 0xDC00, 'a', 0, 'b', 0};
    const TSChar32 packed[] = {0x8140, 0x40000000, 0, 'b', 0};
    EXPECT_EQ(TSStrlenU(&single_, unicode), 3);
    EXPECT_EQ(TSStrlenU(&single_, unicode + 3), 0);
    EXPECT_EQ(TSWcslen(&double_, packed), 2);
    EXPECT_EQ(TSWcslen(&double_, packed + 2), 0);
    EXPECT_EQ(single_.lastError, TS_ERR_NONE);
    EXPECT_EQ(double_.lastError, TS_ERR_NONE);
}

TEST_F(Length, NoLocaleIsTheDefaultLocale)
{
    const TSChar16 unicode[] = {'a', 0};
    const TSChar32 packed[] = {'a', 0};
    tsDefaultLocale = &single_;
    EXPECT_EQ(TSStrlenU(nullptr, unicode), 1);
    EXPECT_EQ(single_.lastError, TS_ERR_NONE);
    tsDefaultLocale = &double_;
    EXPECT_EQ(TSWcslen(nullptr, packed), 1);
    EXPECT_EQ(double_.lastError, TS_ERR_NONE);
}

} // namespace
} // namespace vlx::test
