// The host's settings over those of a territory.
#include <random>

#include "host/host.hpp"
#include "locale/item_world.hpp"

namespace vlx::test {

namespace {

using namespace std::string_literals;
using host::Setting;

constexpr std::uint32_t kId = 0x0409;
constexpr std::uint32_t kPage = 1252;

constexpr Setting kNumbersInOrder[] = {
    Setting::kFractionDigits,       Setting::kCurrencyDigits,
    Setting::kIntlCurrencyDigits,   Setting::kPositiveSymbolPrecedes,
    Setting::kPositiveSymbolSpaced, Setting::kNegativeSymbolPrecedes,
    Setting::kNegativeSymbolSpaced, Setting::kPositiveSignPosition,
    Setting::kNegativeSignPosition};
constexpr Setting kTextsInOrder[] = {Setting::kDecimalPoint,
                                     Setting::kThousandsSeparator,
                                     Setting::kListSeparator,
                                     Setting::kMonetaryDecimalPoint,
                                     Setting::kMonetaryThousandsSeparator,
                                     Setting::kGrouping,
                                     Setting::kCurrencySymbol,
                                     Setting::kMonetaryGrouping,
                                     Setting::kPositiveSign,
                                     Setting::kNegativeSign,
                                     Setting::kTime,
                                     Setting::kDate,
                                     Setting::kLongDate};

class OverlayTest : public ItemTest {
  protected:
    static void set(Setting setting, std::u16string_view changed,
                    std::u16string_view original = u"")
    {
        MemoryHost::setSetting(kId, static_cast<std::uint32_t>(setting), changed, original);
    }

    static void apply(TSLocale* locale, std::uint32_t noOverride = 0)
    {
        TSApplyNativeValues(&kId, locale, noOverride);
    }

    static std::vector<MemoryHost::Reading> expectedReadings(bool changedByUser, bool wide)
    {
        std::vector<MemoryHost::Reading> expected;
        for (const Setting setting : kNumbersInOrder)
            expected.push_back({kId, static_cast<std::uint32_t>(setting), changedByUser, false});
        if (!wide)
            expected.push_back({kId, 0x1004, true, false}); // whatever the overrides
        for (const Setting setting : kTextsInOrder)
            expected.push_back({kId, static_cast<std::uint32_t>(setting), changedByUser, wide});
        return expected;
    }
};

TEST_F(OverlayTest, SettingsHaveTheirNumbers)
{
    constexpr std::uint32_t kNumbers[] = {0x11, 0x19, 0x1A, 0x54, 0x55, 0x56, 0x57, 0x52, 0x53};
    for (std::size_t i = 0; i < std::size(kNumbers); ++i)
        EXPECT_EQ(static_cast<std::uint32_t>(kNumbersInOrder[i]), kNumbers[i]);
    constexpr std::uint32_t kTexts[] = {0x0E, 0x0F, 0x0C, 0x16,   0x17, 0x10, 0x14,
                                        0x18, 0x50, 0x51, 0x1003, 0x1F, 0x20};
    for (std::size_t i = 0; i < std::size(kTexts); ++i)
        EXPECT_EQ(static_cast<std::uint32_t>(kTextsInOrder[i]), kTexts[i]);
}

TEST_F(OverlayTest, EverySettingIsReadOnceInOrder)
{
    const Handle locale = on("Latin");
    apply(locale.get());
    EXPECT_EQ(MemoryHost::readings(), expectedReadings(true, true));
}

TEST_F(OverlayTest, OverridesOfTheUserAreLeftOutOnDemand)
{
    const Handle locale = on("Latin");
    set(Setting::kCurrencyDigits, u"5", u"6");
    set(Setting::kCurrencySymbol, u"mine", u"ours");
    apply(locale.get(), 1);
    EXPECT_EQ(MemoryHost::readings(), expectedReadings(false, true));
    EXPECT_EQ(locale->currencyDigits, 6);
    EXPECT_STREQ(locale->currencySymbol, "ours");
    apply(locale.get(), 0);
    EXPECT_EQ(locale->currencyDigits, 5);
    EXPECT_STREQ(locale->currencySymbol, "mine");
}

TEST_F(OverlayTest, HostThatTellsNothingLeavesTheTerritorysValues)
{
    const Handle locale = on("Shift");
    const oracle::Values before = valuesOf(*locale);
    apply(locale.get());
    EXPECT_EQ(valuesOf(*locale), before);
    MemoryHost::makeNarrow(kPage);
    apply(locale.get());
    EXPECT_EQ(valuesOf(*locale), before);
}

TEST_F(OverlayTest, NumbersAreSetWithoutAMark)
{
    const Handle locale = on("Latin");
    set(Setting::kFractionDigits, u"7");
    set(Setting::kCurrencyDigits, u"8");
    set(Setting::kIntlCurrencyDigits, u" 9 digits");
    set(Setting::kPositiveSymbolPrecedes, u"0");
    set(Setting::kPositiveSymbolSpaced, u"2");
    set(Setting::kNegativeSymbolPrecedes, u"0");
    set(Setting::kNegativeSymbolSpaced, u"1");
    set(Setting::kPositiveSignPosition, u"2");
    set(Setting::kNegativeSignPosition, u"3");
    apply(locale.get());
    EXPECT_EQ(locale->fractionDigits, 7);
    EXPECT_EQ(locale->currencyDigits, 8);
    EXPECT_EQ(locale->intlCurrencyDigits, 9);
    EXPECT_EQ(locale->flags & 0x0F, 0x0A);
    EXPECT_EQ(locale->positiveSignPosition, 2);
    EXPECT_EQ(locale->negativeSignPosition, 3);
    EXPECT_EQ(locale->modifiedMask, 0u);
}

TEST_F(OverlayTest, SeparatorsAreSetInBothFormsWithoutAMark)
{
    const Handle locale = on("Latin");
    set(Setting::kDecimalPoint, u"\x20AC rest");
    set(Setting::kThousandsSeparator, u"");
    set(Setting::kListSeparator, u"|");
    set(Setting::kMonetaryDecimalPoint, u"\x00E4");
    set(Setting::kMonetaryThousandsSeparator, u"5"); // no test as in an update
    apply(locale.get());
    const oracle::Values values = valuesOf(*locale);
    EXPECT_EQ(values.separators, (std::array<std::uint8_t, 5>{0x80, 0, '|', 0xE4, '5'}));
    EXPECT_EQ(values.separatorsU, (std::array<std::uint16_t, 5>{0x20AC, 0, '|', 0xE4, '5'}));
    EXPECT_EQ(locale->modifiedMask, 0u);
    EXPECT_EQ(locale->modifiedMaskU, 0);
}

TEST_F(OverlayTest, SeparatorOfMoreBytesIsSetInNeitherForm)
{
    const Handle locale = on("Double");
    set(Setting::kDecimalPoint, u"\x5186");
    apply(locale.get());
    EXPECT_EQ(locale->decimalPoint, '.');
    EXPECT_EQ(locale->decimalPointU, '.');
}

TEST_F(OverlayTest, TextsCountAsSetByTheCaller)
{
    const Handle locale = on("Double");
    set(Setting::kGrouping, u"4;0");
    set(Setting::kCurrencySymbol, u"\x5186!");
    set(Setting::kMonetaryGrouping, u"5;0");
    set(Setting::kPositiveSign, u"pos");
    set(Setting::kNegativeSign, u"neg");
    set(Setting::kTime, u"h':'mm tt");
    set(Setting::kDate, u"dd.MM.yyyy");
    set(Setting::kLongDate, u"dddd, MMMM d, yyyy");
    apply(locale.get());
    EXPECT_EQ(text(locale.get(), TS_LI_GROUPING), "4;0\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_CURRENCY_SYMBOL), "\x8A\x42!\0"s);
    EXPECT_EQ(textU(locale.get(), TS_LI_CURRENCY_SYMBOL), u"\x5186!\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_MON_GROUPING), "5;0\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_POSITIVE_SIGN), "pos\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_NEGATIVE_SIGN), "neg\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_TIME_FORMAT), "%#I:%M %p\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_DATE_FORMAT), "%d.%m.%Y\0"s);
    EXPECT_EQ(text(locale.get(), TS_LI_LONG_DATE_FORMAT), "%A, %B %#d, %Y\0"s);
    EXPECT_EQ(locale->modifiedMask, 0xFF0000u);
    EXPECT_EQ(locale->modifiedMaskU, 0x1FE0u);
}

TEST_F(OverlayTest, EmptyTextLeavesTheTerritorys)
{
    const Handle locale = on("Latin");
    set(Setting::kPositiveSign, u"");
    apply(locale.get());
    EXPECT_STREQ(locale->positiveSign, "+");
    EXPECT_EQ(locale->modifiedMask, 0u);
}

TEST_F(OverlayTest, SettingOfMoreThanThirtyOneUnitsIsNotRead)
{
    const Handle locale = on("UTF8");
    set(Setting::kCurrencySymbol, std::u16string(31, kYen));
    apply(locale.get());
    EXPECT_EQ(std::strlen(locale->currencySymbol), 3 * 31u);
    set(Setting::kNegativeSign, std::u16string(32, 'x'));
    apply(locale.get());
    EXPECT_STREQ(locale->negativeSign, "-");
    set(Setting::kDate, std::u16string(31, 'd'));
    apply(locale.get());
    EXPECT_STREQ(locale->dateFormat, "%A%A%A%A%A%A%A%a");
}

TEST_F(OverlayTest, NarrowHostIsReadInItsCodePage)
{
    const Handle locale = on("Latin");
    MemoryHost::makeNarrow(kPage);
    set(Setting::kAnsiCodePage, u"1252", u"437");
    apply(locale.get(), 1);
    EXPECT_EQ(MemoryHost::readings(), expectedReadings(false, false));
}

TEST_F(OverlayTest, NarrowHostWithoutItsCodePageTellsNumbersAlone)
{
    const Handle locale = on("Latin");
    MemoryHost::makeNarrow(kPage);
    set(Setting::kFractionDigits, u"7");
    set(Setting::kDecimalPoint, u"!");
    apply(locale.get());
    EXPECT_EQ(locale->fractionDigits, 7);
    EXPECT_EQ(locale->decimalPoint, '.');
    EXPECT_EQ(MemoryHost::readings().size(), std::size(kNumbersInOrder) + 1);
}

// The memory host's page has U+20E4 at 0xE4.
TEST_F(OverlayTest, OfTheNarrowSeparatorsOnlyTheFirstTakesItsUnicodeValue)
{
    const Handle locale = on("Latin");
    MemoryHost::makeNarrow(kPage);
    set(Setting::kAnsiCodePage, u"1252");
    for (const Setting setting : {Setting::kDecimalPoint, Setting::kThousandsSeparator})
        set(setting, u"\x00E4");
    set(Setting::kListSeparator, u"|");
    apply(locale.get());
    EXPECT_EQ(locale->decimalPoint, '?');
    EXPECT_EQ(locale->decimalPointU, 0x20E4);
    EXPECT_EQ(locale->thousandsSeparator, '?');
    EXPECT_EQ(locale->thousandsSeparatorU, 0xFFE4); // the byte with its sign
    EXPECT_EQ(locale->listSeparator, '|');
    EXPECT_EQ(locale->listSeparatorU, '|');
}

TEST_F(OverlayTest, NarrowTextsAreTakenForPairsOfBytes)
{
    const Handle locale = on("Latin");
    MemoryHost::makeNarrow(kPage);
    set(Setting::kAnsiCodePage, u"1252");
    set(Setting::kGrouping, u"3;0");
    set(Setting::kDate, u"dd");
    apply(locale.get());
    EXPECT_STREQ(locale->grouping, "?0");  // U+3B33, and '0' with the terminator
    EXPECT_STREQ(locale->dateFormat, "?"); // U+6464, and no format
    EXPECT_EQ(textU(locale.get(), TS_LI_GROUPING), u"?0\0"s);
}

TEST_F(OverlayTest, NarrowTextsOfAnyLengthStayInTheirBuffer)
{
    for (const char* const page : {"Latin", "Double", "Shift", "UTF8"}) {
        const Handle locale = on(page);
        for (std::size_t length = 0; length < 33; ++length) {
            MemoryHost::makeNarrow(kPage);
            set(Setting::kAnsiCodePage, u"1252");
            for (const Setting setting : kTextsInOrder)
                set(setting, std::u16string(length, u'\xE4'));
            apply(locale.get());
            EXPECT_LE(std::strlen(locale->currencySymbol), 31u);
            EXPECT_TRUE(Allocator::sound());
        }
    }
}

TEST_F(OverlayTest, UserLocaleHasTheHostsSettings)
{
    MemoryHost::setUserLocaleId(kId); // English; its territory and code page are not listed
    set(Setting::kCurrencySymbol, u"mine", u"ours");
    for (const NameForm form : kNameForms) {
        const Handle locale = getLocale(form, "", TS_LOCALE_USER | TS_LOCALE_FALLBACK, &code_);
        ASSERT_NE(locale, nullptr);
        EXPECT_EQ(code_, TS_ERR_NONE);
        EXPECT_STREQ(locale->territory->name, "Homeland");
        EXPECT_STREQ(locale->currencySymbol, "mine");
    }
}

TEST_F(OverlayTest, OfAVariableTheHostIsNotAsked)
{
    MemoryHost::setEnvironment("TS_LANG", "German_Germany.Latin@Phonebook");
    MemoryHost::setUserLocaleId(0x0407);
    MemoryHost::setSetting(0x0407, 0x14, u"mine", u"ours");
    const Handle locale = getLocale(NameForm::kBytes, "", TS_LOCALE_USER, &code_);
    ASSERT_NE(locale, nullptr);
    EXPECT_STREQ(locale->currencySymbol, "T$");
    EXPECT_TRUE(MemoryHost::readings().empty());
}

TEST_F(OverlayTest, OtherLocalesDoNotAskTheHost)
{
    MemoryHost::setUserLocaleId(kId);
    set(Setting::kCurrencySymbol, u"mine");
    const Handle locale = on("Latin");
    EXPECT_TRUE(MemoryHost::readings().empty());
}

std::u16string format(const std::u16string& picture)
{
    std::u16string target(3 * picture.size() + 2, u'\x5555');
    TSNativeTimeFormat(units(picture), reinterpret_cast<TSChar16*>(target.data()));
    EXPECT_EQ(target.back(), u'\x5555') << "more than three units for one";
    return target.c_str();
}

TEST(NativeTimeFormatTest, LettersByTheLengthOfTheirRuns)
{
    const struct {
        const char16_t* picture;
        const char16_t* format;
    } cases[] = {
        {u"", u""},
        {u"d", u"%#d"},
        {u"dd", u"%d"},
        {u"ddd", u"%a"},
        {u"dddd", u"%A"},
        {u"ddddd", u"%A%#d"},
        {u"M", u"%#m"},
        {u"MM", u"%m"},
        {u"MMM", u"%b"},
        {u"MMMM", u"%B"},
        {u"y", u"%#y"},
        {u"yy", u"%y"},
        {u"yyy", u"%y%#y"},
        {u"yyyy", u"%Y"},
        {u"yyyyy", u"%Y%#y"},
        {u"yyyyyyy", u"%Y%y%#y"},
        {u"g", u"g"},
        {u"gg", u""},
        {u"ggg", u"g"},
        {u"h", u"%#I"},
        {u"hh", u"%I"},
        {u"hhh", u"%I%#I"},
        {u"H", u"%#H"},
        {u"HH", u"%H"},
        {u"m", u"%#M"},
        {u"mm", u"%M"},
        {u"s", u"%#S"},
        {u"ss", u"%S"},
        {u"t", u"%p"},
        {u"tt", u"%p"},
        {u"ttt", u"%p%p"},
        {u"h':'mm tt", u"%#I:%M %p"},
        {u"d' de 'MMMM' de 'yyyy", u"%#d de %B de %Y"},
        {u"'dd", u"dd"},
        {u"''d''", u"%#d"},
        {u"d'", u"%#d"},
        {u"dM", u"%#d%#m"},
        {u"D/Y S\x5E74", u"D/Y S\x5E74"},
    };
    for (const auto& each : cases)
        EXPECT_EQ(format(each.picture), each.format);
}

// The table once more, as a list of what may stand at a place, longest first.
std::u16string literalFormat(std::u16string picture)
{
    const std::pair<const char16_t*, const char16_t*> runs[] = {
        {u"dddd", u"%A"}, {u"ddd", u"%a"}, {u"dd", u"%d"}, {u"d", u"%#d"},   {u"MMMM", u"%B"},
        {u"MMM", u"%b"},  {u"MM", u"%m"},  {u"M", u"%#m"}, {u"yyyy", u"%Y"}, {u"yy", u"%y"},
        {u"y", u"%#y"},   {u"gg", u""},    {u"hh", u"%I"}, {u"h", u"%#I"},   {u"HH", u"%H"},
        {u"H", u"%#H"},   {u"mm", u"%M"},  {u"m", u"%#M"}, {u"ss", u"%S"},   {u"s", u"%#S"},
        {u"tt", u"%p"},   {u"t", u"%p"}};
    std::u16string result;
    while (!picture.empty()) {
        if (picture[0] == u'\'') {
            const std::size_t end = picture.find(u'\'', 1);
            result += picture.substr(1, end == std::u16string::npos ? end : end - 1);
            picture.erase(0, end == std::u16string::npos ? end : end + 1);
            continue;
        }
        bool found = false;
        for (const auto& [run, text] : runs) {
            if (!found && picture.starts_with(run)) {
                result += text;
                picture.erase(0, std::u16string(run).size());
                found = true;
            }
        }
        if (!found) {
            result += picture[0];
            picture.erase(0, 1);
        }
    }
    return result;
}

TEST(NativeTimeFormatTest, AnyPictureGivesWhatTheTableTells)
{
    std::mt19937 random(3);
    constexpr char16_t kUnits[] = u"ddMMyyyghHmstt' :x";
    for (int i = 0; i < 100000; ++i) {
        std::u16string picture;
        while (picture.size() < 32 && random() % 12 != 0)
            picture.append(1 + random() % 3, kUnits[random() % (std::size(kUnits) - 1)]);
        ASSERT_EQ(format(picture), literalFormat(picture));
    }
}

} // namespace

} // namespace vlx::test
