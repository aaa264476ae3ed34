// Every text of every locale can be written in its code page.
#include <algorithm>
#include <set>

#include "world/world.hpp"

namespace vlx::test {
namespace {

constexpr std::size_t kLongest = 31; // what times and amounts read into 32 bytes

bool isSeparator(int item)
{
    return (item >= TS_LI_DECIMAL_POINT && item <= TS_LI_LIST_SEPARATOR) ||
           item == TS_LI_MON_DECIMAL_POINT || item == TS_LI_MON_THOUSANDS_SEP;
}

// Those that hold text of the language or the territory, and no names of objects.
std::vector<int> textItems()
{
    std::vector<int> items = {TS_LI_LANGUAGE_CODE, TS_LI_LANGUAGE_NAME, TS_LI_TERRITORY_CODE,
                              TS_LI_TERRITORY_NAME};
    for (int item = TS_LI_DAY_1; item <= TS_LI_PM; ++item)
        items.push_back(item);
    for (int item = TS_LI_DECIMAL_POINT; item <= TS_LI_LONG_DATE_FORMAT; ++item)
        if (item != TS_LI_FRAC_DIGITS && item != TS_LI_MON_FRAC_DIGITS &&
            item != TS_LI_INT_FRAC_DIGITS &&
            !(item >= TS_LI_P_CS_PRECEDES && item <= TS_LI_N_SIGN_POSN))
            items.push_back(item);
    return items;
}

std::u16string decoded(const Locale& locale, const std::string& bytes)
{
    TSChar16 units[256];
    const std::int32_t count = TSStringToUnicode(units, 256, locale.get(), bytes.data(),
                                                 static_cast<std::int32_t>(bytes.size()), 0);
    EXPECT_EQ(TSGetError(locale.get()), TS_ERR_NONE);
    EXPECT_GE(count, 0);
    return {units, units + std::max(count, 0)};
}

class TextsWorld : public WorldTest {};

TEST_F(TextsWorld, NoneHasASubstitutionCharacter)
{
    const std::vector<int> items = textItems();
    EXPECT_EQ(items.size(), 4U + 42U + 5U + 9U);
    std::size_t texts = 0;
    for (const std::string& name : everyLocale()) {
        const Locale locale = open(name);
        ASSERT_NE(locale, nullptr);
        for (const int item : items) {
            SCOPED_TRACE(name + ", item " + std::to_string(item));
            const std::u16string units = unitsOf(locale, item);
            const std::string bytes = bytesOf(locale, item);
            EXPECT_EQ(units.find_first_of(u"?\x1A\xFFFD"), std::u16string::npos);
            EXPECT_EQ(bytes.find_first_of("?\x1A"), std::string::npos);
            EXPECT_LE(bytes.size(), kLongest);
            if (isSeparator(item) && bytes.empty())
                continue; // the next test
            EXPECT_TRUE(decoded(locale, bytes) == units);
            ++texts;
        }
    }
    EXPECT_GT(texts, items.size() * 114);
}

// A blank that does not break has two bytes in UTF-8, so it is no separator of bytes there.
TEST_F(TextsWorld, SeparatorsAreOneByteButInUtf8)
{
    std::set<std::string> without;
    for (const std::string& name : everyLocale()) {
        const Locale locale = open(name);
        ASSERT_NE(locale, nullptr);
        for (const int item : textItems())
            if (isSeparator(item) && bytesOf(locale, item).empty()) {
                without.insert(name);
                EXPECT_TRUE(unitsOf(locale, item) == u"\xA0");
            }
    }
    EXPECT_EQ(without, (std::set<std::string>{"Venda_SouthAfrica.UTF-8@General"}));
}

TEST_F(TextsWorld, NamesOfAKindAreDifferent)
{
    for (const std::string& name : everyLocale()) {
        SCOPED_TRACE(name);
        const Locale locale = open(name);
        ASSERT_NE(locale, nullptr);
        const auto expectDifferent = [&](int first, int count) {
            std::set<std::u16string> names;
            for (int i = 0; i < count; ++i)
                names.insert(unitsOf(locale, first + i));
            EXPECT_EQ(names.size(), static_cast<std::size_t>(count)) << "from item " << first;
            EXPECT_FALSE(names.contains(u""));
        };
        expectDifferent(TS_LI_DAY_1, 7);
        expectDifferent(TS_LI_ABDAY_1, 7);
        expectDifferent(TS_LI_MONTH_1, 12);
        expectDifferent(TS_LI_ABMONTH_1, 12);
        expectDifferent(TS_LI_AM, 2);
        EXPECT_EQ(unitsOf(locale, TS_LI_MONTH_13).size(), 0U);
        EXPECT_EQ(unitsOf(locale, TS_LI_ABMONTH_13).size(), 0U);
    }
}

} // namespace
} // namespace vlx::test
