// Updates of texts: what is stored, in both forms, and what stays after a failure.
#include <functional>

#include "locale/update_fixture.hpp"

namespace vlx::test {

namespace {

using namespace std::string_literals;

constexpr std::int32_t kTexts[] = {62, 64, 68, 71, 72, 79, 80, 81};

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
