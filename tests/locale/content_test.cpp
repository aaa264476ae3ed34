// Language and territory objects: the built-in contents, and files that are not laid out as they
// should be.
#include <gmock/gmock.h>

#include "frame/builtin.hpp"
#include "locale/locale_fixture.hpp"

namespace vlx::test {

namespace {

std::uint16_t wordAt(const std::uint8_t* content, std::size_t word)
{
    return static_cast<std::uint16_t>(content[2 * word] | content[2 * word + 1] << 8);
}

std::u16string textAt(const std::uint8_t* content, std::size_t word)
{
    std::u16string text;
    for (const std::uint8_t* at = content + wordAt(content, word); at[0] != 0 || at[1] != 0;
         at += 2)
        text.push_back(static_cast<char16_t>(at[0] | at[1] << 8));
    return text;
}

std::vector<std::uint16_t> wordsOf(const std::uint8_t* content, std::size_t count)
{
    std::vector<std::uint16_t> words;
    for (std::size_t i = 0; i < count; ++i)
        words.push_back(wordAt(content, i));
    return words;
}

std::vector<std::u16string> textsOf(const std::uint8_t* content, std::size_t first,
                                    std::size_t count)
{
    std::vector<std::u16string> texts;
    for (std::size_t i = 0; i < count; ++i)
        texts.push_back(textAt(content, first + i));
    return texts;
}

TEST(BuiltinContentTest, LanguageHasItsDefaultsAndNoPairs)
{
    EXPECT_THAT(wordsOf(kBuiltinLanguage, 5), ::testing::ElementsAre(1, 1, 0, 0, 0));
    EXPECT_EQ(wordAt(kBuiltinLanguage, 49), 578); // behind the strings, where the content ends
    EXPECT_EQ(wordAt(kBuiltinLanguage, 50), 578);
}

TEST(BuiltinContentTest, LanguageHasItsNames)
{
    EXPECT_THAT(textsOf(kBuiltinLanguage, 5, 2), ::testing::ElementsAre(u"EN", u"English"));
    EXPECT_THAT(textsOf(kBuiltinLanguage, 7, 7),
                ::testing::ElementsAre(u"Sunday", u"Monday", u"Tuesday", u"Wednesday", u"Thursday",
                                       u"Friday", u"Saturday"));
    EXPECT_THAT(textsOf(kBuiltinLanguage, 14, 7),
                ::testing::ElementsAre(u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat"));
    EXPECT_THAT(textsOf(kBuiltinLanguage, 21, 13),
                ::testing::ElementsAre(u"January", u"February", u"March", u"April", u"May", u"June",
                                       u"July", u"August", u"September", u"October", u"November",
                                       u"December", u""));
    EXPECT_THAT(textsOf(kBuiltinLanguage, 34, 13),
                ::testing::ElementsAre(u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun", u"Jul",
                                       u"Aug", u"Sep", u"Oct", u"Nov", u"Dec", u""));
    EXPECT_THAT(textsOf(kBuiltinLanguage, 47, 2), ::testing::ElementsAre(u"AM", u"PM"));
}

TEST(BuiltinContentTest, TerritoryHasItsValues)
{
    EXPECT_THAT(wordsOf(kBuiltinTerritory, 11),
                ::testing::ElementsAre('.', ',', ',', '.', ',', 2, 2, 2, 0x0003, 0, 0x006B));
}

TEST(BuiltinContentTest, TerritoryHasItsTextsInOrderWithoutGaps)
{
    const auto texts = textsOf(kBuiltinTerritory, 11, 11);
    EXPECT_THAT(texts,
                ::testing::ElementsAre(u"USA", u"United States", u"3;0", u"3;0", u"$", u"USD", u"",
                                       u"-", u"%#I:%M:%S %p", u"%#m/%#d/%y", u"%A, %B %d, %Y"));
    std::size_t offset = 46;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        EXPECT_EQ(wordAt(kBuiltinTerritory, 11 + i), offset);
        offset += 2 * (texts[i].size() + 1);
    }
    EXPECT_EQ(wordAt(kBuiltinTerritory, 22), offset);
}

// A territory file whose content is changed before it is read.
class BadContentTest : public LocaleTest {
  protected:
    Handle makeWith(const Content& territory, const Content& language)
    {
        const WorldPages pages;
        LocaleDirectory directory;
        directory.add({1, TS_OBJ_LANGUAGE, "English", {language}})
            .add({1, TS_OBJ_TERRITORY, "Testland", {territory}})
            .add("Latin", pages.latin);
        EXPECT_EQ(start(directory), TS_ERR_NONE);
        return make("");
    }
    Handle makeWith(const Content& territory)
    {
        return makeWith(territory, languageContent({1, "English", 1, 20, 0}));
    }

    static void setWord(Content& content, std::size_t word, std::size_t value)
    {
        content.at(2 * word) = static_cast<std::uint8_t>(value);
        content.at(2 * word + 1) = static_cast<std::uint8_t>(value >> 8);
    }

    static std::vector<std::string> textsOf(const Handle& locale)
    {
        std::vector<std::string> texts;
        for (const oracle::Bytes& text : valuesOf(*locale).texts)
            texts.emplace_back(text.begin(), text.end());
        return texts;
    }

    // The texts of an unchanged territory, in the order of the record.
    const std::vector<std::string> usual_{"3;0", "T$", "2;3;0",    "+",
                                          "-",   "%H", "%d.%m.%y", "%d. %B"};
};

TEST_F(BadContentTest, UsualTerritoryHasTheUsualTexts)
{
    EXPECT_EQ(textsOf(makeWith(territoryContent({}))), usual_);
}

TEST_F(BadContentTest, GapsBetweenTextsAreLeftOut)
{
    Content content = territoryContent({});
    // One more unit behind the texts, and the last one moved there with a gap of two before it.
    const std::size_t last = wordAt(content.data(), 21);
    content.insert(content.begin() + static_cast<std::ptrdiff_t>(last), 4, 0);
    setWord(content, 21, last + 4);
    setWord(content, 22, content.size());
    EXPECT_EQ(textsOf(makeWith(content)), usual_);
}

TEST_F(BadContentTest, TextsOutOfOrderAreReadWhereTheyStand)
{
    Content content = territoryContent({});
    const std::size_t positive = wordAt(content.data(), 17);
    setWord(content, 17, wordAt(content.data(), 18));
    setWord(content, 18, positive);
    std::vector<std::string> wanted = usual_;
    std::swap(wanted[3], wanted[4]);
    EXPECT_EQ(textsOf(makeWith(content)), wanted);
}

TEST_F(BadContentTest, MissingEndOfTheTextsIsFound)
{
    Content content = territoryContent({});
    setWord(content, 22, 0);
    EXPECT_EQ(textsOf(makeWith(content)), usual_);
}

TEST_F(BadContentTest, TextWithoutATerminatorEndsWithTheFile)
{
    Content content = territoryContent({});
    content.resize(content.size() - 2);
    EXPECT_EQ(textsOf(makeWith(content)), usual_);
}

TEST_F(BadContentTest, TextWithoutATerminatorEndsWhereTheNextOneBegins)
{
    Content content = territoryContent({});
    const std::size_t symbol = wordAt(content.data(), 15);
    ASSERT_EQ(wordAt(content.data(), 16), symbol + 6); // two characters and the terminator
    content[symbol + 4] = 'X';
    std::vector<std::string> wanted = usual_;
    wanted[1] = "T$X";
    EXPECT_EQ(textsOf(makeWith(content)), wanted);
}

TEST_F(BadContentTest, OffsetBehindTheFileIsAnEmptyText)
{
    Content content = territoryContent({});
    setWord(content, 15, 0xFFFF);
    std::vector<std::string> wanted = usual_;
    wanted[1] = "";
    EXPECT_EQ(textsOf(makeWith(content)), wanted);
}

TEST_F(BadContentTest, FileShorterThanTheHeaderHasWhatIsThere)
{
    Content content = territoryContent({});
    content.resize(12);
    const Handle locale = makeWith(content);
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(locale->decimalPointU, '.');
    EXPECT_EQ(locale->fractionDigits, 2);
    EXPECT_EQ(locale->currencyDigits, 0);
}

TEST_F(BadContentTest, LanguageShorterThanItsDefaultsHasZeros)
{
    Content language = languageContent({1, "English", 1, 20, 7});
    language.resize(4);
    const Handle locale = makeWith(territoryContent({}), language);
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(locale->sort, nullptr);
    EXPECT_STREQ(locale->codePage->name, "Latin");
}

TEST_F(BadContentTest, LanguageWithWildOffsetsKeepsItsDefaults)
{
    Content language = languageContent({1, "English", 1, 20, 0});
    for (std::size_t word = 3; word < 51; ++word)
        setWord(language, word, 0xFFFF);
    const Handle locale = makeWith(territoryContent({}), language);
    ASSERT_NE(locale, nullptr);
    EXPECT_EQ(textsOf(locale), usual_);
}

} // namespace

} // namespace vlx::test
