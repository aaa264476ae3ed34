// TSChangeTerritory, TSChangeCodePage and what they stand on: TSRecodeString and
// TSFreeReplacedStrings.
#include <cstring>
#include <gmock/gmock.h>

#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

class ChangeTest : public WorldTest {
  protected:
    ChangeTest() { loadAll(); }

    std::int32_t changeTerritory(const Handle& locale, const char* name)
    {
        return TSChangeTerritory(locale.get(), object(TS_OBJ_TERRITORY, name));
    }
    std::int32_t changePage(const Handle& locale, const char* name)
    {
        return TSChangeCodePage(locale.get(), object(TS_OBJ_CODEPAGE, name));
    }

    // Replaces a text of a record as a caller's update does.
    static void setCurrency(const Handle& locale, const char* bytes)
    {
        release(locale->currencySymbol);
        const std::size_t size = std::strlen(bytes) + 1;
        locale->currencySymbol = static_cast<char*>(allocate(static_cast<std::uint32_t>(size)));
        std::memcpy(locale->currencySymbol, bytes, size);
    }
};

TEST_F(ChangeTest, TerritoryChangesEveryValueButTheCurrencySymbolThatTheCallerSet)
{
    const Handle locale = make("_Homeland");
    const Handle germany = make("_Germany");
    setCurrency(locale, "mine");
    locale->modifiedMask = 0x020000;
    const char* const symbol = locale->currencySymbol;
    ASSERT_EQ(changeTerritory(locale, "Germany"), TS_ERR_NONE);
    EXPECT_EQ(locale->currencySymbol, symbol);
    EXPECT_STREQ(locale->currencySymbol, "mine");
    oracle::Values wanted = valuesOf(*germany);
    wanted.modifiedMask = 0x020000;
    wanted.texts[1] = {'m', 'i', 'n', 'e'};
    wanted.textsU[1] = {'T', '$'};
    EXPECT_EQ(valuesOf(*locale), wanted);
    EXPECT_EQ(locale->territory, germany->territory);
}

TEST_F(ChangeTest, TerritoryLeavesTheOtherObjectsAndTheErrorAlone)
{
    const Handle locale = make("German.Shift@BINARY");
    const Handle before = make("German.Shift@BINARY");
    locale->lastError = 99;
    ASSERT_EQ(changeTerritory(locale, "Homeland"), TS_ERR_NONE);
    EXPECT_EQ(locale->language, before->language);
    EXPECT_EQ(locale->codePage, before->codePage);
    EXPECT_EQ(locale->sort, nullptr);
    EXPECT_EQ(locale->flags & 0x1C0, before->flags & 0x1C0);
    EXPECT_EQ(locale->lastError, 99);
}

TEST_F(ChangeTest, TerritoryKeepsNothingThatIsReplaced)
{
    const Handle locale = make("_Homeland");
    changeTerritory(locale, "Germany");
    const int blocks = Allocator::liveBlocks();
    for (int i = 0; i < 10; ++i)
        ASSERT_EQ(changeTerritory(locale, i % 2 == 0 ? "Homeland" : "Germany"), TS_ERR_NONE);
    EXPECT_EQ(Allocator::liveBlocks(), blocks);
}

TEST_F(ChangeTest, TerritoryOfTheSameNameGivesTheSameValues)
{
    const Handle locale = make("German");
    const oracle::Values before = valuesOf(*locale);
    ASSERT_EQ(changeTerritory(locale, "Germany"), TS_ERR_NONE);
    EXPECT_EQ(valuesOf(*locale), before);
}

TEST_F(ChangeTest, CodePageKeepsTheUnicodeFieldsByteForByte)
{
    const Handle locale = make("_Germany.Latin");
    TSChar16* texts[kLocaleTexts];
    for (int i = 0; i < kLocaleTexts; ++i)
        texts[i] = (*locale).*kLocaleText[i].unicode;
    const oracle::Values before = valuesOf(*locale);
    for (const char* const page : {"Double", "Shift", "UTF8", "Latin"}) {
        ASSERT_EQ(changePage(locale, page), TS_ERR_NONE) << page;
        for (int i = 0; i < kLocaleTexts; ++i)
            EXPECT_EQ((*locale).*kLocaleText[i].unicode, texts[i]);
        EXPECT_EQ(valuesOf(*locale).textsU, before.textsU);
        EXPECT_EQ(valuesOf(*locale).separatorsU, before.separatorsU);
    }
}

TEST_F(ChangeTest, CodePageSetsTheFlagsOfThePage)
{
    const Handle locale = make("@BINARY");
    const int others = locale->flags & ~0x140;
    const std::pair<const char*, int> pages[] = {
        {"Double", 0}, {"Shift", 0x100}, {"UTF8", 0}, {"Latin", 0x40}};
    for (const auto& [page, flags] : pages) {
        ASSERT_EQ(changePage(locale, page), TS_ERR_NONE);
        EXPECT_EQ(locale->flags, others | flags) << page;
        EXPECT_STREQ(locale->codePage->name, page);
    }
}

TEST_F(ChangeTest, CodePageRecodesTheTextsAndNotTheTerritory)
{
    const Handle locale = make(".Double");
    setCurrency(locale, "a\x8A\x42"
                        "b"); // with no bit of the mask
    ASSERT_EQ(changePage(locale, "Shift"), TS_ERR_NONE);
    EXPECT_STREQ(locale->currencySymbol, "a\x0E\x42\x43\x0F"
                                         "b");
    EXPECT_STREQ(locale->dateFormat, "%d.%m.%y");
}

TEST_F(ChangeTest, CodePageRecodesWhatTheCallerSetToo)
{
    const Handle locale = make(".Double");
    setCurrency(locale, "\x8A\x42");
    locale->modifiedMask = 0xFFFFFF;
    ASSERT_EQ(changePage(locale, "UTF8"), TS_ERR_NONE);
    EXPECT_STREQ(locale->currencySymbol, "\xE5\x86\x86");
    EXPECT_EQ(locale->modifiedMask, 0xFFFFFFU);
}

TEST_F(ChangeTest, CodePageGivesEachTextABlockOfItsExactSize)
{
    const Handle locale = make("_Germany.Latin");
    const std::size_t before = Allocator::liveBytes();
    ASSERT_EQ(changePage(locale, "UTF8"), TS_ERR_NONE); // all texts are ASCII
    EXPECT_EQ(Allocator::liveBytes(), before);
    EXPECT_EQ(Allocator::calls(Slot::kFreeObject) > 0, true);
}

TEST_F(ChangeTest, CodePageKeepsNothingThatIsReplaced)
{
    const Handle locale = make("_Germany.Latin");
    changePage(locale, "Double");
    const int blocks = Allocator::liveBlocks();
    for (const char* const page : {"Shift", "UTF8", "Latin", "Double"})
        ASSERT_EQ(changePage(locale, page), TS_ERR_NONE);
    EXPECT_EQ(Allocator::liveBlocks(), blocks);
}

TEST_F(ChangeTest, SeparatorOfMoreBytesEndsTheChangeWithTheRecordAsItWas)
{
    for (const LocaleSeparator& separator : kLocaleSeparator) {
        const Handle locale = make("_Germany.Latin");
        (*locale).*separator.byte = 0xE4; // two bytes in UTF-8
        const std::string before = imageOf(*locale);
        const oracle::Values values = valuesOf(*locale);
        const int blocks = Allocator::liveBlocks();
        EXPECT_EQ(changePage(locale, "UTF8"), TS_ERR_SEPARATOR);
        EXPECT_EQ(imageOf(*locale), before);
        EXPECT_EQ(valuesOf(*locale), values);
        EXPECT_EQ(Allocator::liveBlocks(), blocks);
    }
}

TEST_F(ChangeTest, SeparatorThatTheNewPageLacksIsItsSubstitute)
{
    const Handle locale = make(".Latin");
    locale->listSeparator = 0xE4;
    ASSERT_EQ(changePage(locale, "Double"), TS_ERR_NONE);
    EXPECT_EQ(locale->listSeparator, '?');
}

TEST_F(ChangeTest, SeparatorWithoutUnicodeIsConvertedAsTheReplacementCharacter)
{
    const Handle locale = make(".Latin");
    locale->listSeparator = 0xFF; // U+FFFD, three bytes in UTF-8
    EXPECT_EQ(changePage(locale, "UTF8"), TS_ERR_SEPARATOR);
    EXPECT_EQ(changePage(locale, "Double"), TS_ERR_NONE);
    EXPECT_EQ(locale->listSeparator, '?');
}

// What each page makes of a text of each other page.
class RecodeTest : public WorldTest {
  protected:
    std::string recode(const char* from, const char* to, const std::string& text)
    {
        char area[64];
        std::memset(area, 0x55, sizeof area);
        const std::int32_t size = TSRecodeString(object(TS_OBJ_CODEPAGE, from),
                                                 object(TS_OBJ_CODEPAGE, to), text.c_str(), area);
        EXPECT_EQ(size, static_cast<std::int32_t>(std::strlen(area)) + 1);
        for (std::size_t i = static_cast<std::size_t>(size); i < sizeof area; ++i)
            EXPECT_EQ(area[i], 0x55) << "behind the text, at " << i;
        return area;
    }
};

TEST_F(RecodeTest, EmptyTextIsATerminator)
{
    for (const char* const from : {"Latin", "Double", "Shift", "UTF8"})
        for (const char* const to : {"Latin", "Double", "Shift", "UTF8"})
            EXPECT_EQ(recode(from, to, ""), "");
}

TEST_F(RecodeTest, DoubleByteToStatefulHasShiftBytesAndNoClosingOne)
{
    EXPECT_EQ(recode("Double", "Shift",
                     "a\x8A\x42\x81\x40"
                     "b\x8A\x42"),
              "a\x0E\x42\x43\x41\x41\x0F"
              "b\x0E\x42\x43");
}

TEST_F(RecodeTest, StatefulToDoubleByteLosesTheShiftBytes)
{
    EXPECT_EQ(recode("Shift", "Double",
                     "a\x0E\x42\x43\x41\x41\x0F"
                     "b\x0E\x42\x43\x0F"),
              "a\x8A\x42\x81\x40"
              "b\x8A\x42");
}

TEST_F(RecodeTest, StatefulToStatefulLosesSuperfluousShiftBytes)
{
    EXPECT_EQ(recode("Shift", "Shift",
                     "\x0F"
                     "a\x0E\x0E\x42\x43\x0F\x0E\x42\x43\x0F"),
              "a\x0E\x42\x43\x42\x43");
}

TEST_F(RecodeTest, StatefulTextOfShiftBytesAloneIsEmpty)
{
    EXPECT_EQ(recode("Shift", "UTF8", "\x0E\x0F\x0F\x0E"), "");
}

TEST_F(RecodeTest, StatefulCharacterThatTheTerminatorCutsIsLeftOut)
{
    EXPECT_EQ(recode("Shift", "UTF8", "a\x0E\x42\x43\x42"), "a\xE5\x86\x86");
}

TEST_F(RecodeTest, DoubleByteCharacterThatTheTerminatorCutsIsLeftOut)
{
    EXPECT_EQ(recode("Double", "UTF8", "a\x8A"), "a");
    EXPECT_EQ(recode("UTF8", "Double", "a\xE5\x86"), "a");
}

TEST_F(RecodeTest, CharacterWithoutUnicodeIsTheReplacementCharacter)
{
    EXPECT_EQ(recode("Latin", "UTF8", "\xFF"), "\xEF\xBF\xBD");
    EXPECT_EQ(recode("Double", "UTF8", "\x8A\x41"), "\xEF\xBF\xBD");
    EXPECT_EQ(recode("Shift", "UTF8", "\x0E\x42\x44"), "\xEF\xBF\xBD");
}

TEST_F(RecodeTest, CharacterThatTheTargetLacksIsItsSubstitute)
{
    EXPECT_EQ(recode("Double", "Latin",
                     "a\x8A\x42"
                     "b"),
              "a?b");
    EXPECT_EQ(recode("Latin", "Shift",
                     "a\xE4"
                     "b"),
              "a?b");
}

TEST_F(RecodeTest, ShiftBytesOfAPlainPageAreCharacters)
{
    EXPECT_EQ(recode("Latin", "Double",
                     "a\x0E"
                     "b\x0F"),
              "a\x0E"
              "b\x0F");
}

TEST_F(RecodeTest, LongCharactersOfUtf8AreReadByRule)
{
    EXPECT_EQ(recode("UTF8", "Double", "\xE5\x86\x86\xE3\x80\x80"), "\x8A\x42\x81\x40");
    EXPECT_EQ(recode("UTF8", "Latin", "\xC3\xA4\xE2\x82\xAC"), "\xE4\x80");
}

TEST_F(ChangeTest, FreeReplacedStringsFreesOnlyWhatDiffers)
{
    const Handle kept = make("German");
    TSLocale other = *kept;
    other.grouping = static_cast<char*>(allocate(5));
    other.longDateFormat = static_cast<char*>(allocate(5));
    other.dateFormat = nullptr;
    const int blocks = Allocator::liveBlocks();
    const std::uint32_t frees = Allocator::calls(Slot::kFree);
    TSFreeReplacedStrings(kept.get(), &other);
    EXPECT_EQ(Allocator::liveBlocks(), blocks - 2);
    EXPECT_EQ(Allocator::calls(Slot::kFree), frees + 2);
}

class BuiltinChangeTest : public LocaleTest {};

// From the built-in page everything has become 0x01, which is what another page recodes.
TEST_F(BuiltinChangeTest, TextsOfTheBuiltInPageStayAsTheyAre)
{
    ASSERT_EQ(start(), TS_ERR_NO_CONTROL_FILE);
    const Handle locale = make("");
    PageBuilder page(PageShape::kDoubleByte);
    page.asciiHalf().build();
    ASSERT_EQ(TSChangeCodePage(locale.get(), &page.object()), TS_ERR_NONE);
    EXPECT_EQ(locale->decimalPoint, 0x01);
    EXPECT_STREQ(locale->grouping, "\x01\x01\x01");
    EXPECT_EQ(locale->decimalPointU, '.');
}

} // namespace

} // namespace vlx::test
