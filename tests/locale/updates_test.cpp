// Updates item by item, and the record after a failure.
#include "locale/item_world.hpp"

namespace vlx::test {

namespace {

using namespace std::string_literals;

constexpr std::int32_t kTexts[] = {62, 64, 68, 71, 72, 79, 80, 81};
constexpr std::int32_t kSeparatorNumbers[] = {59, 60, 61, 66, 67};

// A 16-bit text and its length in `U` calls.
const TSChar16* u(const char16_t* text)
{
    return reinterpret_cast<const TSChar16*>(text);
}

class UpdateTest : public ItemTest {
  protected:
    // A call that is to fail leaves the record as it was, but for the error.
    template <class Call>
    void expectRefused(TSLocale& locale, std::int32_t error, const Call& call)
    {
        const oracle::Values before = valuesOf(locale);
        const std::string image = imageOf(locale);
        EXPECT_EQ(call(), 0);
        EXPECT_EQ(TSGetError(&locale), error);
        EXPECT_EQ(valuesOf(locale), before);
        TSLocale cleared = locale;
        std::memcpy(&cleared.lastError, image.data() + offsetof(TSLocale, lastError),
                    sizeof cleared.lastError);
        EXPECT_EQ(imageOf(cleared), image);
    }
};

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

TEST_F(UpdateTest, TextsAreStoredInBothFormsAndMarked)
{
    const Handle locale = on("Double");
    for (int i = 0; i < kLocaleTexts; ++i) {
        EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), kTexts[i], "a\x8A\x42z", -1, 0), 1);
        EXPECT_EQ(text(locale.get(), kTexts[i]), "a\x8A\x42z\0"s);
        EXPECT_EQ(textU(locale.get(), kTexts[i]), u"a\x5186z\0"s);
        EXPECT_NE(locale->modifiedMask & 0x10000u << i, 0u);
        EXPECT_NE(locale->modifiedMaskU & 0x20u << i, 0u);
    }
    EXPECT_EQ(locale->modifiedMask, 0xFF0000u);
    EXPECT_EQ(locale->modifiedMaskU, 0x1FE0u);
}

TEST_F(UpdateTest, ChangedTextStaysWhenTheTerritoryChanges)
{
    const Handle locale = on("Latin");
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "FF", -1, 0), 1);
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_TERRITORY_OBJECT, "germany", -1, 0), 1);
    EXPECT_EQ(text(locale.get(), TS_LI_CURRENCY_SYMBOL), "FF\0"s);
    EXPECT_EQ(textU(locale.get(), TS_LI_CURRENCY_SYMBOL), u"FF\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_DECIMAL_POINT), ",\0"s);
}

TEST_F(UpdateTest, ShorterTextStaysInTheBufferOfTheLonger)
{
    const Handle locale = on("Latin");
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "long symbol", -1, 0), 1);
    const char* const bytes = locale->currencySymbol;
    const TSChar16* const unicode = locale->currencySymbolU;
    const std::uint32_t calls = Allocator::calls(Slot::kAllocate);
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "short", -1, 0), 1);
    EXPECT_EQ(locale->currencySymbol, bytes);
    EXPECT_EQ(locale->currencySymbolU, unicode);
    EXPECT_STREQ(locale->currencySymbol, "short");
    EXPECT_EQ(textU(locale.get(), TS_LI_CURRENCY_SYMBOL), u"short\0"s);
    EXPECT_EQ(Allocator::calls(Slot::kAllocate), calls);
}

TEST_F(UpdateTest, TextMayLieInTheRecord)
{
    const Handle locale = on("Shift");
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "a symbol", -1, 0), 1);
    EXPECT_EQ(
        TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, locale->currencySymbol + 2, -1, 0),
        1);
    EXPECT_STREQ(locale->currencySymbol, "symbol");
    EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), TS_LI_CURRENCY_SYMBOL, locale->currencySymbolU + 1,
                                   -1, 0),
              1);
    EXPECT_STREQ(locale->currencySymbol, "ymbol");
    EXPECT_EQ(
        TSSetLocaleTextInfoEx(locale.get(), TS_LI_CURRENCY_SYMBOL, locale->currencySymbol, 1, 4, 0),
        1);
    EXPECT_STREQ(locale->currencySymbol, "\x0Eymbo\x0F");
}

TEST_F(UpdateTest, LengthCutsAtWholeCharacters)
{
    const Handle locale = on("Double");
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "a\x8A\x42z", 2, 0), 1);
    EXPECT_STREQ(locale->currencySymbol, "a");
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "a\x8A\x42z", 2,
                                  TS_OPT_CHAR_COUNT),
              1);
    EXPECT_STREQ(locale->currencySymbol, "a\x8A\x42");
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "abc", -5, 0), 1);
    EXPECT_STREQ(locale->currencySymbol, "abc");
}

TEST_F(UpdateTest, LengthThatCountsTheTerminatorHasRoom)
{
    for (const char* const page : {"Latin", "Double", "Shift"}) {
        const Handle locale = on(page);
        EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "symbols", 8, 0), 1);
        EXPECT_STREQ(locale->currencySymbol, "symbols");
        EXPECT_EQ(TSSetLocaleTextInfoEx(locale.get(), TS_LI_GROUPING, "symbols", 0, 8, 0), 1);
        EXPECT_STREQ(locale->grouping, "symbols");
        EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), TS_LI_DATE_FORMAT, u(u"long symbols"), 13, 0),
                  1);
        EXPECT_EQ(textU(locale.get(), TS_LI_DATE_FORMAT), u"long symbols\0"s);
        EXPECT_TRUE(Allocator::sound());
    }
}

TEST_F(UpdateTest, TextOfAnyLengthIsTaken)
{
    const Handle locale = on("Shift");
    const std::string longText(100000, 'x');
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_DATE_FORMAT, longText.c_str(), -1, 0), 1);
    EXPECT_EQ(locale->dateFormat, longText);
    EXPECT_EQ(TSSetLocaleTextInfoEx(locale.get(), TS_LI_DATE_FORMAT, longText.c_str(), 1, -1, 0),
              1);
    EXPECT_EQ(locale->dateFormat, "\x0E" + longText + "\x0F");
    const std::vector<TSChar32> packed(50000, 0x4243);
    EXPECT_EQ(TSSetLocaleTextInfoW(locale.get(), TS_LI_TIME_FORMAT, packed.data(), 50000, 0), 1);
    EXPECT_EQ(std::strlen(locale->timeFormat), 100002u);
}

TEST_F(UpdateTest, StatefulTextIsClosed)
{
    const Handle locale = on("Shift");
    const struct {
        std::string text;
        std::int32_t state;
        std::string stored;
        std::u16string unicode;
    } cases[] = {
        {"ab", 0, "ab", u"ab"},
        {"\x0E\x42\x43", 0, "\x0E\x42\x43\x0F", u"\x5186"},
        {"\x42\x43", 1, "\x0E\x42\x43\x0F", u"\x5186"},
        {"\x42\x43\x0F"
         "b",
         1,
         "\x0E\x42\x43\x0F"
         "b",
         u"\x5186"
         "b"},
        {"a\x0E", 0, "a", u"a"},                            // the last shift is taken away
        {"\x42\x43\x41", 1, "\x0E\x42\x43\x0F", u"\x5186"}, // half a character is left out
        {"\x42", 1, "", u""},                               // and so it has no bytes at all
        {"\x0F"
         "ab",
         1, "ab", u"ab"},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(TSSetLocaleTextInfoEx(locale.get(), TS_LI_CURRENCY_SYMBOL, each.text.c_str(),
                                        each.state, -1, 0),
                  1);
        EXPECT_EQ(locale->currencySymbol, each.stored);
        EXPECT_EQ(textU(locale.get(), TS_LI_CURRENCY_SYMBOL), each.unicode + u'\0');
    }
}

TEST_F(UpdateTest, ShiftBytesHaveRoomBesideATextAsLongAsTheOld)
{
    const Handle locale = on("Shift");
    ASSERT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "abc", -1, 0), 1);
    EXPECT_EQ(TSSetLocaleTextInfoEx(locale.get(), TS_LI_CURRENCY_SYMBOL, "\x42\x43", 1, 2, 0), 1);
    EXPECT_STREQ(locale->currencySymbol, "\x0E\x42\x43\x0F");
    EXPECT_TRUE(Allocator::sound());
}

TEST_F(UpdateTest, UnicodeIsKeptAsGivenBesideItsBytes)
{
    const Handle locale = on("Latin");
    EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), TS_LI_CURRENCY_SYMBOL, u(u"\x5186z"), -1, 0), 1);
    EXPECT_STREQ(locale->currencySymbol, "?z");
    EXPECT_EQ(textU(locale.get(), TS_LI_CURRENCY_SYMBOL), u"\x5186z\0"s);
    EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), TS_LI_DECIMAL_POINT, u(u"\x20AC"), -1, 0), 1);
    EXPECT_EQ(locale->decimalPoint, 0x80);
    EXPECT_EQ(locale->decimalPointU, 0x20AC);
    EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), TS_LI_TERRITORY_OBJECT, u(u"Germany"), -1, 0), 1);
    EXPECT_STREQ(locale->territory->name, "Germany");
}

TEST_F(UpdateTest, UnicodeSeparatorOfMoreElementsIsRefusedAfterItsByte)
{
    const Handle locale = on("Latin");
    EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), TS_LI_LIST_SEPARATOR, u(u"|x"), -1, 0), 0);
    EXPECT_EQ(TSGetError(locale.get()), TS_ERR_NOT_FOUND);
    EXPECT_EQ(locale->listSeparator, '|');
}

TEST_F(UpdateTest, UnicodeTextIsBounded)
{
    const Handle locale = on("Shift");
    const std::u16string most(263, kYen);
    EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), TS_LI_DATE_FORMAT, u(most.c_str()), -1, 0), 1);
    EXPECT_EQ(std::strlen(locale->dateFormat), 2 * 263u + 2);
    const std::u16string more(264, kYen);
    expectRefused(*locale, TS_ERR_NOT_FOUND, [&] {
        return TSSetLocaleTextInfoU(locale.get(), TS_LI_DATE_FORMAT, u(more.c_str()), -1, 0);
    });
}

TEST_F(UpdateTest, PackedValuesAreLaidOutWithTheirShifts)
{
    const TSChar32 mixed[] = {'a', 0x4243, 0x4141, 'z', 0x4243, 0};
    const Handle locale = on("Shift");
    EXPECT_EQ(TSSetLocaleTextInfoW(locale.get(), TS_LI_CURRENCY_SYMBOL, mixed, -1, 0), 1);
    EXPECT_STREQ(locale->currencySymbol, "a\x0E\x42\x43\x41\x41\x0Fz\x0E\x42\x43\x0F");
    const Handle doubleByte = on("Double");
    const TSChar32 yen[] = {'a', 0x8A42, 'z', 0};
    EXPECT_EQ(TSSetLocaleTextInfoW(doubleByte.get(), TS_LI_CURRENCY_SYMBOL, yen, -1, 0), 1);
    EXPECT_STREQ(doubleByte->currencySymbol, "a\x8A\x42z");
    const TSChar32 none[] = {0};
    EXPECT_EQ(TSSetLocaleTextInfoW(doubleByte.get(), TS_LI_THOUSANDS_SEP, none, 1, 0), 1);
    EXPECT_EQ(doubleByte->thousandsSeparator, 0);
    const TSChar32 wide[] = {0x81408140, 0x81408140, 0x81408140};
    const Handle latin = on("Latin");
    EXPECT_EQ(TSSetLocaleTextInfoW(latin.get(), TS_LI_CURRENCY_SYMBOL, wide, 3, 0), 1);
    EXPECT_EQ(std::strlen(latin->currencySymbol), 12u);
}

TEST_F(UpdateTest, ObjectNamesAreReadInTheCodePageOfAnEbcdicLocale)
{
    const Handle locale = on("Ebcdic");
    EXPECT_EQ(
        TSSetLocaleTextInfo(locale.get(), TS_LI_LANGUAGE_OBJECT, ebcdic("german").c_str(), -1, 0),
        1);
    EXPECT_STREQ(locale->language->name, "German");
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_SORT_OBJECT, ebcdic("Binary").c_str(), -1, 0),
              1);
    EXPECT_EQ(locale->sort, nullptr);
    expectRefused(*locale, TS_ERR_NOT_FOUND, [&] {
        return TSSetLocaleTextInfo(locale.get(), TS_LI_LANGUAGE_OBJECT, "English", -1, 0);
    });
    EXPECT_EQ(TSSetLocaleTextInfoU(locale.get(), TS_LI_LANGUAGE_OBJECT, u(u"ENGLISH"), -1, 0), 1);
    EXPECT_STREQ(locale->language->name, "English");
}

TEST_F(UpdateTest, ObjectNamesAreCutToThirtyTwoBytes)
{
    const Handle locale = on("Latin");
    expectRefused(*locale, TS_ERR_NOT_FOUND, [&] {
        return TSSetLocaleTextInfo(locale.get(), TS_LI_LANGUAGE_OBJECT,
                                   std::string(1000, 'a').c_str(), -1, 0);
    });
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_LANGUAGE_OBJECT, "German", 7, 0), 1);
}

TEST_F(UpdateTest, EveryAllocationMayFail)
{
    const Handle locale = on("Shift");
    loadAll();
    const std::function<std::int32_t()> calls[] = {
        [&] {
            return TSSetLocaleTextInfoEx(locale.get(), TS_LI_CURRENCY_SYMBOL,
                                         "a symbol that is longer", 1, -1, 0);
        },
        [&] {
            return TSSetLocaleTextInfoU(locale.get(), TS_LI_TIME_FORMAT,
                                        u(u"a time format that is longer"), -1, 0);
        },
        [&] {
            const std::vector<TSChar32> packed(40, 0x4243);
            return TSSetLocaleTextInfoW(locale.get(), TS_LI_DATE_FORMAT, packed.data(), 40, 0);
        },
        [&] { return TSSetLocaleNumInfo(locale.get(), TS_LI_TERRITORY_ID, 11); },
        [&] { return TSSetLocaleTextInfo(locale.get(), TS_LI_CODEPAGE_OBJECT, "Double", -1, 0); },
    };
    for (const auto& call : calls) {
        int failures = 0;
        for (std::uint32_t n = 1;; ++n) {
            const oracle::Values before = valuesOf(*locale);
            Allocator::failAllocation(Slot::kAllocate, n);
            const std::int32_t result = call();
            if (Allocator::failurePending()) {
                EXPECT_EQ(result, 1);
                Allocator::failAllocation(0);
                break;
            }
            ++failures;
            EXPECT_EQ(result, 0);
            EXPECT_EQ(TSGetError(locale.get()), TS_ERR_MEMORY);
            oracle::Values after = valuesOf(*locale);
            if (after.texts != before.texts) { // the twin of a new text had no memory
                after.texts = before.texts;
                after.modifiedMask = before.modifiedMask;
            }
            EXPECT_EQ(after, before);
        }
        EXPECT_GT(failures, 0);
        EXPECT_TRUE(Allocator::sound());
    }
    EXPECT_STREQ(locale->codePage->name, "Double");
}

TEST_F(UpdateTest, FailedTwinKeepsTheNewBytes)
{
    const Handle locale = on("Latin");
    Allocator::failAllocation(Slot::kAllocate, 2);
    EXPECT_EQ(TSSetLocaleTextInfo(locale.get(), TS_LI_CURRENCY_SYMBOL, "a longer symbol", -1, 0),
              0);
    EXPECT_EQ(TSGetError(locale.get()), TS_ERR_MEMORY);
    EXPECT_STREQ(locale->currencySymbol, "a longer symbol");
    EXPECT_EQ(textU(locale.get(), TS_LI_CURRENCY_SYMBOL), u"\x5186"
                                                          "en\0"s);
    EXPECT_NE(locale->modifiedMask & 0x20000u, 0u);
    EXPECT_EQ(locale->modifiedMaskU & 0x40u, 0u);
}

} // namespace

} // namespace vlx::test
