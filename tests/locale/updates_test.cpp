// Updates item by item, and the record after a failure.
#include "locale/update_fixture.hpp"

namespace vlx::test {

namespace {

using namespace std::string_literals;

constexpr std::int32_t kSeparatorNumbers[] = {59, 60, 61, 66, 67};

TEST_F(UpdateTest, DigitsTakeTheLowSixteenBits)
{
    const Handle locale = on("Latin");
    const std::int32_t items[] = {TS_LI_FRAC_DIGITS, TS_LI_MON_FRAC_DIGITS, TS_LI_INT_FRAC_DIGITS};
    for (std::size_t i = 0; i < 3; ++i) {
        const std::uint32_t before = locale->modifiedMask;
        EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), items[i], 0x1FFFF), 1);
        EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), items[i], 0), 0xFFFF);
        EXPECT_EQ(locale->modifiedMask, before | 1u << i);
        EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), items[i], -1), 1);
        EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), items[i], 0), 0xFFFF);
    }
}

TEST_F(UpdateTest, FlagsTakeZeroAndOne)
{
    const Handle locale = on("Latin");
    const std::int32_t items[] = {73, 74, 75, 76, 82, 83};
    for (std::size_t i = 0; i < std::size(items); ++i) {
        for (const std::int32_t value : {1, 0, 1}) {
            EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), items[i], value), 1);
            EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), items[i], 0), value);
            EXPECT_EQ(locale->flags >> i & 1, value);
        }
        EXPECT_NE(locale->modifiedMask & 0x8u << i, 0u);
        for (const std::int32_t value : {2, -1, 0x10001})
            expectRefused(*locale, TS_ERR_NOT_FOUND,
                          [&] { return TSSetLocaleNumInfo(locale.get(), items[i], value); });
    }
}

TEST_F(UpdateTest, SignPositionsTakeZeroToFour)
{
    const Handle locale = on("Latin");
    for (const std::int32_t item : {TS_LI_P_SIGN_POSN, TS_LI_N_SIGN_POSN}) {
        for (std::int32_t value = 0; value <= 4; ++value) {
            EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), item, value), 1);
            EXPECT_EQ(TSGetLocaleNumInfo(locale.get(), item, 0), value);
        }
        for (const std::int32_t value : {5, -1, 256})
            expectRefused(*locale, TS_ERR_NOT_FOUND,
                          [&] { return TSSetLocaleNumInfo(locale.get(), item, value); });
    }
    EXPECT_EQ(locale->modifiedMask, 0x600u);
}

TEST_F(UpdateTest, ObjectsAreReplacedByTheirIds)
{
    const Handle locale = on("Latin");
    EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_LANGUAGE_ID, 2), 1);
    EXPECT_STREQ(locale->language->name, "German");
    EXPECT_STREQ(locale->territory->name, "Homeland");
    EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_TERRITORY_ID, 0x5000B), 1);
    EXPECT_STREQ(locale->territory->name, "Germany");
    EXPECT_EQ(locale->decimalPoint, ',');
    EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_CODEPAGE_ID, 57352), 1);
    EXPECT_STREQ(locale->codePage->name, "UTF8");
    EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_SORT_ID, 0), 1);
    EXPECT_EQ(locale->sort, nullptr);
    EXPECT_NE(locale->flags & kLocaleBinarySort, 0);
    EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_SORT_ID, 2), 1);
    EXPECT_STREQ(locale->sort->name, "Phonebook");
    EXPECT_EQ(locale->flags & kLocaleBinarySort, 0);
    EXPECT_EQ(locale->modifiedMask, 0u);
}

TEST_F(UpdateTest, ObjectsThatAreNotListedAreRefused)
{
    const Handle locale = on("Latin");
    for (const std::int32_t item :
         {TS_LI_LANGUAGE_ID, TS_LI_TERRITORY_ID, TS_LI_CODEPAGE_ID, TS_LI_SORT_ID})
        expectRefused(*locale, TS_ERR_NOT_FOUND,
                      [&] { return TSSetLocaleNumInfo(locale.get(), item, 1234); });
    for (const std::int32_t item :
         {TS_LI_LANGUAGE_OBJECT, TS_LI_TERRITORY_OBJECT, TS_LI_CODEPAGE_OBJECT, TS_LI_SORT_OBJECT})
        expectRefused(*locale, TS_ERR_NOT_FOUND,
                      [&] { return TSSetLocaleTextInfo(locale.get(), item, "Atlantis", -1, 0); });
}

TEST_F(UpdateTest, OwnCodePageIsASuccessWithNothingDone)
{
    const Handle locale = on("Latin");
    const std::string image = imageOf(*locale);
    const std::uint32_t calls = Allocator::calls(Slot::kAllocate);
    EXPECT_EQ(TSSetLocaleNumInfo(locale.get(), TS_LI_CODEPAGE_ID, 20), 1);
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CODEPAGE_OBJECT, "LATIN", -1, 0), 1);
    EXPECT_EQ(imageOf(*locale), image);
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), calls);
}

TEST_F(UpdateTest, CodePageWithoutTheSeparatorsIsRefusedAsAWhole)
{
    const Handle locale = on("Latin");
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_LIST_SEPARATOR, "\xE4", -1, 0), 1);
    expectRefused(*locale, TS_ERR_SEPARATOR,
                  [&] { return TSSetLocaleNumInfo(locale.get(), TS_LI_CODEPAGE_ID, 57352); });
    expectRefused(*locale, TS_ERR_SEPARATOR, [&] {
        return TSSetLocaleTextInfo(locale.get(), TS_LI_CODEPAGE_OBJECT, "UTF8", -1, 0);
    });
    EXPECT_STREQ(locale->fullName, "English_Homeland.Latin@Dictionary");
}

TEST_F(UpdateTest, UnknownItemsAreTold)
{
    const Handle locale = on("Shift");
    for (const std::int32_t item : {-1, 0, 3, 13, 14, 15, 16, 58, 65, 84, 85, 88, 89, 1000}) {
        expectRefused(*locale, TS_ERR_ITEM,
                      [&] { return TSSetLocaleNumInfo(locale.get(), item, 1); });
        expectRefused(*locale, TS_ERR_ITEM,
                      [&] { return TSSetLocaleTextInfo(locale.get(), item, "x", -1, 0); });
        expectRefused(*locale, TS_ERR_ITEM,
                      [&] { return TSSetLocaleTextInfoEx(locale.get(), item, "x", 0, -1, 0); });
        const TSChar32 packed[] = {'x', 0};
        expectRefused(*locale, TS_ERR_ITEM,
                      [&] { return TSSetLocaleTextInfoW(locale.get(), item, packed, -1, 0); });
        expectRefused(*locale, TS_ERR_NOT_FOUND,
                      [&] { return TSSetLocaleTextInfoU(locale.get(), item, u(u"x"), -1, 0); });
    }
    expectRefused(*locale, TS_ERR_ITEM,
                  [&] { return TSSetLocaleNumInfo(locale.get(), TS_LI_DECIMAL_POINT, '.'); });
    expectRefused(*locale, TS_ERR_ITEM,
                  [&] { return TSSetLocaleTextInfo(locale.get(), TS_LI_FRAC_DIGITS, "2", -1, 0); });
}

TEST_F(UpdateTest, OptionsThatAreNotAcceptedAreRefused)
{
    const Handle locale = on("Shift");
    const TSChar32 packed[] = {'x', 0};
    for (const std::uint32_t options : {1u, 2u, 8u, 0x4001u, 0x80000000u}) {
        expectRefused(*locale, TS_ERR_ARGUMENT,
                      [&] { return TSSetLocaleTextInfo(locale.get(), 64, "x", -1, options); });
        expectRefused(*locale, TS_ERR_ARGUMENT,
                      [&] { return TSSetLocaleTextInfoEx(locale.get(), 64, "x", 0, -1, options); });
        expectRefused(*locale, TS_ERR_ARGUMENT,
                      [&] { return TSSetLocaleTextInfoU(locale.get(), 64, u(u"x"), -1, options); });
        expectRefused(*locale, TS_ERR_ARGUMENT,
                      [&] { return TSSetLocaleTextInfoW(locale.get(), 64, packed, -1, options); });
    }
}

TEST_F(UpdateTest, NullHandleIsTheDefaultLocaleWithBadOptionsToo)
{
    ASSERT_EQ(TSSetLocale("English.Latin", 0), TS_ERR_NONE);
    EXPECT_EQ(TSSetLocaleTextInfo(nullptr, TS_LI_CURRENCY_SYMBOL, "FF", -1, 0), 1);
    EXPECT_STREQ(tsDefaultLocale->currencySymbol, "FF");
    EXPECT_EQ(TSSetLocaleNumInfo(nullptr, TS_LI_FRAC_DIGITS, 7), 1);
    EXPECT_EQ(tsDefaultLocale->fractionDigits, 7);
    EXPECT_EQ(TSSetLocaleTextInfo(nullptr, TS_LI_CURRENCY_SYMBOL, "FF", -1, 2), 0);
    EXPECT_EQ(TSGetError(nullptr), TS_ERR_ARGUMENT);
}

TEST_F(UpdateTest, EmptyTextChangesNothingWhateverTheItem)
{
    const Handle locale = on("Shift");
    const oracle::Values before = valuesOf(*locale);
    const TSChar32 packed[] = {0};
    for (const std::int32_t item : {0, 2, 59, 60, 64, 63, 88, 1000}) {
        EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), item, "x", 0, 0), 1);
        EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), item, "", -1, 0), 1);
        EXPECT_EQ(TSSetLocaleTextInfoEx(locale.get(), item, "", 1, -1, 0), 1);
        EXPECT_EQ(TSSetLocaleTextInfoEx(locale.get(), item, "\x0E", 0, -1, 0), 1);
        EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), item, u(u""), -1, 0), 1);
        EXPECT_EQ(TSSetLocaleTextInfoW(locale.get(), item, packed, -1, 0), 1);
        EXPECT_EQ(TSGetError(locale.get()), TS_ERR_NONE);
    }
    EXPECT_EQ(valuesOf(*locale), before);
}

TEST_F(UpdateTest, SeparatorsAreTheFirstByteInBothForms)
{
    const Handle locale = on("Latin");
    for (int i = 0; i < kSeparators; ++i) {
        EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), kSeparatorNumbers[i], "\xE4xyz", -1, 0), 1);
        EXPECT_EQ((*locale).*kLocaleSeparator[i].byte, 0xE4);
        EXPECT_EQ((*locale).*kLocaleSeparator[i].unicode, 0x00E4);
        const char own[] = {static_cast<char>('a' + i), 0};
        EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), kSeparatorNumbers[i], own, -1, 0), 1);
        EXPECT_EQ((*locale).*kLocaleSeparator[i].byte, 'a' + i);
        EXPECT_EQ((*locale).*kLocaleSeparator[i].unicode, 'a' + i);
        EXPECT_NE(locale->modifiedMask & 0x800u << i, 0u);
        EXPECT_NE(locale->modifiedMaskU & 1u << i, 0u);
    }
}

TEST_F(UpdateTest, DecimalPointEqualToTheThousandsSeparatorIsRefused)
{
    const Handle locale = on("Latin");
    for (const auto& [item, other] : {std::pair{TS_LI_DECIMAL_POINT, ","},
                                      {TS_LI_THOUSANDS_SEP, "."},
                                      {TS_LI_MON_DECIMAL_POINT, "'"},
                                      {TS_LI_MON_THOUSANDS_SEP, ":"}})
        expectRefused(*locale, TS_ERR_NOT_FOUND, [&, item = item, other = other] {
            return TSSetLocaleTextInfo(locale.get(), item, other, -1, 0);
        });
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_LIST_SEPARATOR, ".", -1, 0), 1);
}

TEST_F(UpdateTest, DigitsAreNoSeparatorsButOfLists)
{
    const Handle ascii = on("Latin");
    const Handle ebcdicLocale = on("Ebcdic");
    for (char digit = 0; digit <= 9; ++digit) {
        const char inAscii[] = {static_cast<char>('0' + digit), 0};
        const char inEbcdic[] = {static_cast<char>(0xF0 + digit), 0};
        for (const std::int32_t item : kSeparatorNumbers) {
            const std::int32_t result = item == TS_LI_LIST_SEPARATOR ? 1 : 0;
            EXPECT_EQ(TSSetLocaleTextInfo(ascii.get(), item, inAscii, -1, 0), result);
            EXPECT_EQ(TSSetLocaleTextInfo(ebcdicLocale.get(), item, inEbcdic, -1, 0), result);
        }
    }
    EXPECT_EQ(TSSetLocaleTextInfo(ebcdicLocale.get(), TS_LI_DECIMAL_POINT, "5", -1, 0), 1);
    EXPECT_EQ(TSSetLocaleTextInfo(ascii.get(), TS_LI_DECIMAL_POINT, "\xF5", -1, 0), 1);
}

TEST_F(UpdateTest, ThousandsSeparatorMayBeNoneAndADecimalPointMayNot)
{
    const Handle locale = on("Latin");
    for (const std::int32_t item : {TS_LI_THOUSANDS_SEP, TS_LI_MON_THOUSANDS_SEP}) {
        EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), item, "", 1, 0), 1);
        EXPECT_EQ(text(locale.get(), item), "\0"s);
    }
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_LIST_SEPARATOR, "", 1, 0), 1);
    for (const std::int32_t item : {TS_LI_DECIMAL_POINT, TS_LI_MON_DECIMAL_POINT})
        EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), item, "", 1, 0), 0);
}

TEST_F(UpdateTest, SeparatorIsACharacterOfOneByte)
{
    const Handle locale = on("Double");
    for (const std::int32_t item : kSeparatorNumbers)
        expectRefused(*locale, TS_ERR_NOT_FOUND,
                      [&] { return TSSetLocaleTextInfo(locale.get(), item, "\x8A\x42", -1, 0); });
    const Handle shift = on("Shift");
    for (const std::int32_t item : kSeparatorNumbers) {
        expectRefused(*shift, TS_ERR_NOT_FOUND, [&] {
            return TSSetLocaleTextInfoEx(shift.get(), item, "\x42\x43", 1, -1, 0);
        });
        expectRefused(*shift, TS_ERR_NOT_FOUND, [&] {
            return TSSetLocaleTextInfoEx(shift.get(), item, "\x0E\x42\x43", 0, -1, 0);
        });
        EXPECT_EQ(TSSetLocaleTextInfoEx(shift.get(), item, "\x0F|", 1, -1, 0),
                  item == TS_LI_THOUSANDS_SEP || item == TS_LI_MON_THOUSANDS_SEP ? 0 : 1);
    }
}

} // namespace

} // namespace vlx::test
