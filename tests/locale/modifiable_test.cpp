// TSLocaleSetModifiable: each value of a territory in each kind of code page, and each bit of the
// mask that keeps a value.
#include <functional>
#include <gmock/gmock.h>
#include <sstream>

#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

constexpr int kValues = 24; // one for each bit of the mask

// What stands under each bit of the mask, in both forms.
std::array<std::string, kValues> shown(const TSLocale& locale)
{
    const oracle::Values values = valuesOf(locale);
    std::array<std::string, kValues> result;
    int bit = 0;
    const auto add = [&](const std::string& text) {
        result[static_cast<std::size_t>(bit++)] = text;
    };
    for (const std::uint16_t digits : values.digits)
        add(std::to_string(digits));
    for (int flag = 0; flag < 6; ++flag)
        add((values.flags >> flag & 1) != 0 ? "set" : "clear");
    for (const std::uint8_t position : values.positions)
        add(std::to_string(position));
    for (std::size_t i = 0; i < 5; ++i)
        add(std::to_string(values.separators[i]) + '/' + std::to_string(values.separatorsU[i]));
    for (std::size_t i = 0; i < 8; ++i) {
        std::string text(values.texts[i].begin(), values.texts[i].end());
        text += '/';
        for (const std::uint16_t unit : values.textsU[i])
            text += static_cast<char>(unit);
        add(text);
    }
    return result;
}

// A value by its bit, where a territory has it and what it gives in an ASCII page.
struct ValueRow {
    const char* name;
    void (*alter)(TerritorySpec& territory);
    const char* shownBefore;
    const char* shownAfter;
};

constexpr ValueRow kRows[kValues] = {
    {"FractionDigits", [](TerritorySpec& t) { t.digits[0] = 9; }, "2", "9"},
    {"CurrencyDigits", [](TerritorySpec& t) { t.digits[1] = 8; }, "3", "8"},
    {"IntlCurrencyDigits", [](TerritorySpec& t) { t.digits[2] = 7; }, "4", "7"},
    {"PositiveSymbolPrecedes", [](TerritorySpec& t) { t.flags |= 0x02; }, "clear", "set"},
    {"PositiveSymbolSpaced", [](TerritorySpec& t) { t.flags |= 0x04; }, "clear", "set"},
    {"NegativeSymbolPrecedes", [](TerritorySpec& t) { t.flags |= 0x08; }, "clear", "set"},
    {"NegativeSymbolSpaced", [](TerritorySpec& t) { t.flags |= 0x10; }, "clear", "set"},
    {"TerritoryFlag5", [](TerritorySpec& t) { t.flags |= 0x20; }, "clear", "set"},
    {"TerritoryFlag6", [](TerritorySpec& t) { t.flags |= 0x40; }, "clear", "set"},
    {"PositiveSignPosition", [](TerritorySpec& t) { t.positiveSignPosition = 0xFE; }, "1", "254"},
    {"NegativeSignPosition", [](TerritorySpec& t) { t.negativeSignPosition = 0xFD; }, "4", "253"},
    {"DecimalPoint", [](TerritorySpec& t) { t.separators[0] = 'a'; }, "46/46", "97/97"},
    {"ThousandsSeparator", [](TerritorySpec& t) { t.separators[1] = 'b'; }, "44/44", "98/98"},
    {"ListSeparator", [](TerritorySpec& t) { t.separators[2] = 'c'; }, "59/59", "99/99"},
    {"MonetaryDecimalPoint", [](TerritorySpec& t) { t.separators[3] = 'd'; }, "58/58", "100/100"},
    {"MonetaryThousandsSeparator", [](TerritorySpec& t) { t.separators[4] = 'e'; }, "39/39",
     "101/101"},
    {"Grouping", [](TerritorySpec& t) { t.texts[kGrouping] = u"4;4;1;0"; }, "3;0/3;0",
     "4;4;1;0/4;4;1;0"},
    {"CurrencySymbol", [](TerritorySpec& t) { t.texts[kCurrencySymbol] = u"Money"; }, "T$/T$",
     "Money/Money"},
    {"MonetaryGrouping", [](TerritorySpec& t) { t.texts[kMonetaryGrouping] = u"1"; }, "2;3;0/2;3;0",
     "1/1"},
    {"PositiveSign", [](TerritorySpec& t) { t.texts[kPositiveSign] = u""; }, "+/+", "/"},
    {"NegativeSign", [](TerritorySpec& t) { t.texts[kNegativeSign] = u"minus"; }, "-/-",
     "minus/minus"},
    {"TimeFormat", [](TerritorySpec& t) { t.texts[kTimeFormat] = u"%T%T"; }, "%H/%H", "%T%T/%T%T"},
    {"DateFormat", [](TerritorySpec& t) { t.texts[kDateFormat] = u"%D"; }, "%d.%m.%y/%d.%m.%y",
     "%D/%D"},
    {"LongDateFormat", [](TerritorySpec& t) { t.texts[kLongDateFormat] = u"%A, %e"; },
     "%d. %B/%d. %B", "%A, %e/%A, %e"},
};

// A directory of two territories that differ in what `alter` does.
LocaleDirectory twoTerritories(const std::function<void(TerritorySpec&)>& alter)
{
    const WorldPages pages;
    TerritorySpec altered{.id = 2, .name = "Altered"};
    alter(altered);
    LocaleDirectory directory;
    directory.add(LanguageSpec{1, "English", 1, 20, 0})
        .add(TerritorySpec{})
        .add(altered)
        .add("Latin", pages.latin)
        .add("Double", pages.doubleByte)
        .add("Shift", pages.shifting)
        .add("UTF8", pages.utf8);
    return directory;
}

class EachValueTest : public LocaleTest, public ::testing::WithParamInterface<int> {
  protected:
    const ValueRow& row() const { return kRows[GetParam()]; }
    std::size_t index() const { return static_cast<std::size_t>(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(Values, EachValueTest, ::testing::Range(0, kValues),
                         [](const ::testing::TestParamInfo<int>& row) {
                             return std::string(kRows[row.param].name);
                         });

TEST_P(EachValueTest, ComesFromItsOwnPlaceInTheTerritory)
{
    ASSERT_EQ(start(twoTerritories(row().alter)), TS_ERR_NONE);
    for (const char* const page : {".Latin", ".Double", ".Shift", ".UTF8"}) {
        SCOPED_TRACE(page);
        const auto before = shown(*make(std::string("_Testland") + page));
        auto after = shown(*make(std::string("_Altered") + page));
        EXPECT_EQ(before[index()], row().shownBefore);
        EXPECT_EQ(after[index()], row().shownAfter);
        after[index()] = before[index()];
        EXPECT_EQ(after, before); // nothing else has changed
    }
}

TEST_P(EachValueTest, FollowsAnotherTerritoryOnlyWhileItsBitIsClear)
{
    ASSERT_EQ(start(twoTerritories([](TerritorySpec& territory) {
                  for (const ValueRow& each : kRows)
                      each.alter(territory);
              })),
              TS_ERR_NONE);
    const Handle locale = make("_Testland");
    locale->modifiedMask = 1U << GetParam();
    ASSERT_EQ(TSChangeTerritory(locale.get(), object(TS_OBJ_TERRITORY, "Altered")), 0);
    const auto values = shown(*locale);
    for (std::size_t i = 0; i < kValues; ++i)
        EXPECT_EQ(values[i], i == index() ? kRows[i].shownBefore : kRows[i].shownAfter)
            << kRows[i].name;
    EXPECT_EQ(locale->modifiedMask, 1U << GetParam());
}

class ModifiableTest : public LocaleTest {
  protected:
    // Starts with a territory and a language that takes it.
    void startWith(const std::function<void(TerritorySpec&)>& alter)
    {
        ASSERT_EQ(start(twoTerritories(alter)), TS_ERR_NONE);
    }

    Handle altered(const char* page) { return make(std::string("_Altered") + page); }
};

TEST_F(ModifiableTest, FlagZeroAndUnknownFlagsOfTheTerritoryStayThere)
{
    startWith([](TerritorySpec& territory) { territory.flags = 0xFF81; });
    EXPECT_EQ(altered(".Latin")->flags, kLocaleSingleByte | kLocaleBinarySort);
}

TEST_F(ModifiableTest, FlagThatTheTerritoryLacksIsCleared)
{
    startWith([](TerritorySpec& territory) { territory.flags = 0x7E; });
    const Handle locale = altered(".Latin");
    EXPECT_EQ(locale->flags & 0x3F, 0x3F);
    ASSERT_EQ(TSChangeTerritory(locale.get(), object(TS_OBJ_TERRITORY, "Testland")), 0);
    EXPECT_EQ(locale->flags, kLocaleSingleByte | kLocaleBinarySort);
}

TEST_F(ModifiableTest, SeparatorOfASingleByteIsThatByteOfThePage)
{
    startWith([](TerritorySpec& territory) { territory.separators[0] = 0x20AC; });
    const Handle locale = altered(".Latin");
    EXPECT_EQ(locale->decimalPoint, 0x80);
    EXPECT_EQ(locale->decimalPointU, 0x20AC);
}

TEST_F(ModifiableTest, SeparatorThatThePageLacksIsItsSubstitute)
{
    startWith([](TerritorySpec& territory) { territory.separators.fill(kYen); });
    const Handle locale = altered(".Latin");
    for (const LocaleSeparator& separator : kLocaleSeparator) {
        EXPECT_EQ((*locale).*separator.byte, '?');
        EXPECT_EQ((*locale).*separator.unicode, kYen);
    }
}

TEST_F(ModifiableTest, SeparatorOfMoreBytesLeavesTheByteAsItWas)
{
    startWith([](TerritorySpec& territory) { territory.separators.fill(kYen); });
    for (const char* const page : {".Double", ".Shift", ".UTF8"}) {
        SCOPED_TRACE(page);
        const Handle fresh = altered(page);
        EXPECT_EQ(fresh->thousandsSeparator, 0);
        EXPECT_EQ(fresh->thousandsSeparatorU, kYen);
        const Handle changed = make(std::string("_Testland") + page);
        ASSERT_EQ(TSChangeTerritory(changed.get(), object(TS_OBJ_TERRITORY, "Altered")), 0);
        EXPECT_EQ(changed->thousandsSeparator, ',');
        EXPECT_EQ(changed->thousandsSeparatorU, kYen);
    }
}

struct TextRow {
    const char* name;
    const char16_t* text;
    const char* latin;
    const char* doubleByte;
    const char* shifting;
    const char* utf8;
};

// The shift bytes are 0x0E and 0x0F; no closing one is written.
constexpr TextRow kTexts[] = {
    {"Empty", u"", "", "", "", ""},
    {"SingleBytes", u"abc", "abc", "abc", "abc", "abc"},
    {"OneLongCharacter", u"\u5186", "?", "\x8A\x42", "\x0E\x42\x43", "\xE5\x86\x86"},
    {"TwoLongCharacters", u"\u5186\u3000", "??", "\x8A\x42\x81\x40", "\x0E\x42\x43\x41\x41",
     "\xE5\x86\x86\xE3\x80\x80"},
    {"LongInside", u"a\u5186b", "a?b",
     "a\x8A\x42"
     "b",
     "a\x0E\x42\x43\x0F"
     "b",
     "a\xE5\x86\x86"
     "b"},
    {"LongAtTheEnd", u"ab\u5186", "ab?", "ab\x8A\x42", "ab\x0E\x42\x43", "ab\xE5\x86\x86"},
    {"LongAtTheStart", u"\u5186ab", "?ab",
     "\x8A\x42"
     "ab",
     "\x0E\x42\x43\x0F"
     "ab",
     "\xE5\x86\x86"
     "ab"},
    {"ManyChanges", u"\u5186a\u5186a\u5186a\u5186", "?a?a?a?",
     "\x8A\x42"
     "a\x8A\x42"
     "a\x8A\x42"
     "a\x8A\x42",
     "\x0E\x42\x43\x0F"
     "a\x0E\x42\x43\x0F"
     "a\x0E\x42\x43\x0F"
     "a\x0E\x42\x43",
     "\xE5\x86\x86"
     "a\xE5\x86\x86"
     "a\xE5\x86\x86"
     "a\xE5\x86\x86"},
    {"SubstituteIsASingleByte", u"\u5186\u0401\u5186", "???", "\x8A\x42?\x8A\x42",
     "\x0E\x42\x43\x0F?\x0E\x42\x43", "\xE5\x86\x86\xD0\x81\xE5\x86\x86"},
    {"TwoBytesOfUtf8", u"\u00E4", "\xE4", "?", "?", "\xC3\xA4"},
};

class EachTextTest : public LocaleTest, public ::testing::WithParamInterface<TextRow> {};

INSTANTIATE_TEST_SUITE_P(Texts, EachTextTest, ::testing::ValuesIn(kTexts),
                         [](const ::testing::TestParamInfo<TextRow>& row) {
                             return std::string(row.param.name);
                         });

TEST_P(EachTextTest, StandsInTheCodePageAndInUnicode)
{
    const TextRow& row = GetParam();
    ASSERT_EQ(
        start(twoTerritories([&row](TerritorySpec& territory) { territory.texts.fill(row.text); })),
        TS_ERR_NONE);
    const std::pair<const char*, const char*> pages[] = {{".Latin", row.latin},
                                                         {".Double", row.doubleByte},
                                                         {".Shift", row.shifting},
                                                         {".UTF8", row.utf8}};
    for (const auto& [page, wanted] : pages) {
        SCOPED_TRACE(page);
        const Handle locale = make(std::string("_Altered") + page);
        for (const LocaleText& text : kLocaleText) {
            EXPECT_STREQ((*locale).*text.bytes, wanted);
            EXPECT_EQ(std::u16string(reinterpret_cast<const char16_t*>((*locale).*text.unicode)),
                      row.text);
        }
    }
}

class BlockSizeTest : public LocaleTest {
  protected:
    std::size_t bytesOf(const char* name)
    {
        make(name);
        const std::size_t before = Allocator::liveBytes();
        const Handle locale = make(name);
        return Allocator::liveBytes() - before - sizeof(TSLocale);
    }
};

TEST_F(BlockSizeTest, EmptyTextsTakeTheLongestCharacterAndOneUnit)
{
    ASSERT_EQ(start(twoTerritories([](TerritorySpec& territory) { territory.texts.fill(u""); })),
              TS_ERR_NONE);
    EXPECT_EQ(bytesOf("_Altered.Latin"), 8U * (1 + 2));
    EXPECT_EQ(bytesOf("_Altered.Double"), 8U * (2 + 2));
    EXPECT_EQ(bytesOf("_Altered.Shift"), 8U * (2 + 2));
    EXPECT_EQ(bytesOf("_Altered.UTF8"), 8U * (3 + 2));
}

TEST_F(BlockSizeTest, TextsTakeTheLongestCharacterForEachUnit)
{
    ASSERT_EQ(start(twoTerritories([](TerritorySpec& territory) { territory.texts.fill(u"abc"); })),
              TS_ERR_NONE);
    EXPECT_EQ(bytesOf("_Altered.Latin"), 8U * (4 + 8));
    EXPECT_EQ(bytesOf("_Altered.Double"), 8U * (8 + 8));
    EXPECT_EQ(bytesOf("_Altered.UTF8"), 8U * (12 + 8));
}

TEST_F(BlockSizeTest, StatefulTextOfManyChangesGetsTheRoomThatItNeeds)
{
    ASSERT_EQ(start(twoTerritories([](TerritorySpec& territory) {
                  territory.texts.fill(u"\u5186a\u5186a\u5186a\u5186");
              })),
              TS_ERR_NONE);
    EXPECT_EQ(bytesOf("_Altered.Shift"), 8U * (19 + 16));
    EXPECT_TRUE(Allocator::sound());
}

// Deliberate in the library: the built-in code page reads its header as the array of its
// characters, so that everything from Unicode is 0x01 there.
TEST_F(ModifiableTest, BuiltInCodePageMakesEveryCharacterTheByteOne)
{
    ASSERT_EQ(start(), TS_ERR_NO_CONTROL_FILE);
    const Handle locale = make("");
    const oracle::Values values = valuesOf(*locale);
    EXPECT_THAT(values.separators, ::testing::Each(0x01));
    EXPECT_THAT(values.separatorsU, ::testing::ElementsAre('.', ',', ',', '.', ','));
    constexpr std::size_t kLengths[] = {3, 1, 3, 0, 1, 12, 10, 13};
    for (std::size_t i = 0; i < 8; ++i)
        EXPECT_EQ(values.texts[i], oracle::Bytes(kLengths[i], 0x01)) << i;
    const auto text = [](const TSChar16* unicode) {
        return std::u16string(reinterpret_cast<const char16_t*>(unicode));
    };
    EXPECT_EQ(text(locale->groupingU), u"3;0");
    EXPECT_EQ(text(locale->currencySymbolU), u"$");
    EXPECT_EQ(text(locale->monetaryGroupingU), u"3;0");
    EXPECT_EQ(text(locale->positiveSignU), u"");
    EXPECT_EQ(text(locale->negativeSignU), u"-");
    EXPECT_EQ(text(locale->timeFormatU), u"%#I:%M:%S %p");
    EXPECT_EQ(text(locale->dateFormatU), u"%#m/%#d/%y");
    EXPECT_EQ(text(locale->longDateFormatU), u"%A, %B %d, %Y");
    EXPECT_THAT(values.digits, ::testing::Each(2));
    EXPECT_THAT(values.positions, ::testing::ElementsAre(3, 0));
}

} // namespace

} // namespace vlx::test
