// Language and territory sources: what comes out of the compiler, read back word by word, and what
// it says about sources with errors.
#include "content_test.hpp"

#include <algorithm>
#include <map>

#include <toml++/toml.h>

using namespace content_test;

namespace {

// UTF-8 of the source to units by the standard library's conversion of paths, which has nothing in
// common with the compiler's.
std::u16string units(const std::string& utf8)
{
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end())).u16string();
}

std::u16string sourceText(const toml::table& source, const std::string& key)
{
    return units(source.at_path(key).value<std::string>().value());
}

std::string indexed(const std::string& key, std::size_t index)
{
    return key + "[" + std::to_string(index) + "]";
}

class LanguageSource : public testing::TestWithParam<std::string> {};
class TerritorySource : public testing::TestWithParam<std::string> {};

TEST_P(LanguageSource, RoundTrip)
{
    const toml::table source = toml::parse_file(languagePath(GetParam()));
    const Bytes content = compiledLanguage(GetParam());
    const Catalogue all = catalogue();
    const auto id = [&](std::uint8_t type, const char* key) {
        return all.idOf(type, source.at_path(key).value<std::string>().value());
    };
    EXPECT_EQ(wordAt(content, 0), id(TS_OBJ_TERRITORY, "default_territory"));
    EXPECT_EQ(wordAt(content, 2), id(TS_OBJ_CODEPAGE, "default_codepage"));
    const bool isBinary = source["default_sort"].value<std::string>() == "Binary";
    EXPECT_EQ(wordAt(content, 4), isBinary ? 0 : id(TS_OBJ_SORT, "default_sort"));
    EXPECT_EQ(textOf(content, 5), sourceText(source, "code"));
    EXPECT_EQ(textOf(content, 6), sourceText(source, "display_name"));
    for (std::size_t day = 0; day < 7; ++day) {
        EXPECT_EQ(textOf(content, 7 + day), sourceText(source, indexed("days.full", day)));
        EXPECT_EQ(textOf(content, 14 + day), sourceText(source, indexed("days.short", day)));
    }
    for (std::size_t month = 0; month < 12; ++month) {
        EXPECT_EQ(textOf(content, 21 + month), sourceText(source, indexed("months.full", month)));
        EXPECT_EQ(textOf(content, 34 + month), sourceText(source, indexed("months.short", month)));
    }
    EXPECT_EQ(textOf(content, 33), u"");
    EXPECT_EQ(textOf(content, 46), u"");
    EXPECT_EQ(textOf(content, 47), sourceText(source, "day_periods.am"));
    EXPECT_EQ(textOf(content, 48), sourceText(source, "day_periods.pm"));
}

TEST_P(LanguageSource, HasNoLintAndIsNamedAfterItsObject)
{
    Diagnostics diagnostics;
    vlx::data::lintLanguage(compiledLanguage(GetParam()), "la", diagnostics);
    EXPECT_TRUE(diagnostics.empty()) << shown(diagnostics);
    const auto head = vlx::data::readLanguageHead(languagePath(GetParam()), diagnostics);
    ASSERT_TRUE(head);
    EXPECT_EQ(head->type, TS_OBJ_LANGUAGE);
    EXPECT_EQ(head->name, GetParam());
}

TEST_P(TerritorySource, RoundTrip)
{
    const toml::table source = toml::parse_file(territoryPath(GetParam()));
    const Bytes content = compiledTerritory(GetParam());
    const auto number = [&](const char* key) {
        return static_cast<unsigned>(source.at_path(key).value<int>().value());
    };
    const auto flag = [&](const char* key, unsigned mask) {
        return source.at_path(key).value<bool>().value() ? mask : 0U;
    };
    const char* const separators[] = {"number.decimal_point", "number.thousands_separator",
                                      "number.list_separator", "currency.decimal_point",
                                      "currency.thousands_separator"};
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(wordAt(content, 2 * i), sourceText(source, separators[i]).at(0)) << i;
    EXPECT_EQ(wordAt(content, 10), number("number.fraction_digits"));
    EXPECT_EQ(wordAt(content, 12), number("currency.fraction_digits"));
    EXPECT_EQ(wordAt(content, 14), number("currency.international_fraction_digits"));
    EXPECT_EQ(content.at(16), number("currency.positive.sign_position"));
    EXPECT_EQ(content.at(17), number("currency.negative.sign_position"));
    EXPECT_EQ(wordAt(content, 18), number("carried.word9"));
    EXPECT_EQ(wordAt(content, 20), flag("carried.flag0", 0x01) |
                                       flag("currency.positive.symbol_precedes", 0x02) |
                                       flag("currency.positive.symbol_spaced", 0x04) |
                                       flag("currency.negative.symbol_precedes", 0x08) |
                                       flag("currency.negative.symbol_spaced", 0x10) |
                                       flag("carried.flag5", 0x20) | flag("carried.flag6", 0x40));
    const char* const texts[] = {"code",
                                 "display_name",
                                 "number.grouping",
                                 "currency.grouping",
                                 "currency.symbol",
                                 "currency.international_symbol",
                                 "currency.positive.sign",
                                 "currency.negative.sign",
                                 "time.time",
                                 "time.date",
                                 "time.long_date"};
    for (std::size_t i = 0; i < 11; ++i)
        EXPECT_EQ(textOf(content, 11 + i), sourceText(source, texts[i])) << texts[i];
}

// The library takes a text's length from the next word, so the texts may not have gaps.
TEST_P(TerritorySource, LengthsFollowFromTheNextWord)
{
    const Bytes content = compiledTerritory(GetParam());
    EXPECT_EQ(wordAt(content, 22), 46U);
    for (std::size_t word = 11; word < 22; ++word)
        EXPECT_EQ(wordAt(content, 2 * (word + 1)) - wordAt(content, 2 * word),
                  2 * (textOf(content, word).size() + 1))
            << word;
    EXPECT_EQ(wordAt(content, 44), content.size());
}

TEST_P(TerritorySource, HasNoLintAndIsNamedAfterItsObject)
{
    Diagnostics diagnostics;
    vlx::data::lintTerritory(compiledTerritory(GetParam()), "te", diagnostics);
    EXPECT_TRUE(diagnostics.empty()) << shown(diagnostics);
    const auto head = vlx::data::readTerritoryHead(territoryPath(GetParam()), diagnostics);
    ASSERT_TRUE(head);
    EXPECT_EQ(head->type, TS_OBJ_TERRITORY);
    EXPECT_EQ(head->name, GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, LanguageSource, testing::ValuesIn(kLanguages));
INSTANTIATE_TEST_SUITE_P(All, TerritorySource, testing::ValuesIn(kTerritories));

TEST(ContentObject, IdsAreThoseOfTheObjects)
{
    const std::map<std::string, int> languages = {{"English", 1},
                                                  {"German", 2},
                                                  {"French", 3},
                                                  {"Japanese", 11},
                                                  {"TraditionalChinese", 13},
                                                  {"Russian", 33},
                                                  {"Turkish", 39}};
    const std::map<std::string, int> territories = {
        {"UnitedStates", 840}, {"Germany", 276}, {"France", 250}, {"Japan", 392},
        {"Taiwan", 158},       {"Russia", 643},  {"Turkey", 792}};
    Diagnostics diagnostics;
    for (const auto& [name, id] : languages)
        EXPECT_EQ(vlx::data::readLanguageHead(languagePath(name), diagnostics)->id, id) << name;
    for (const auto& [name, id] : territories)
        EXPECT_EQ(vlx::data::readTerritoryHead(territoryPath(name), diagnostics)->id, id) << name;
    EXPECT_TRUE(diagnostics.empty()) << shown(diagnostics);
}

TEST(ContentObject, EnglishIsTheBuiltInLanguage)
{
    const Bytes content = compiledLanguage("English");
    EXPECT_EQ(content.size(), 578U);
    const std::u16string texts[] = {
        u"EN",     u"English",  u"Sunday",  u"Monday",    u"Tuesday", u"Wednesday", u"Thursday",
        u"Friday", u"Saturday", u"Sun",     u"Mon",       u"Tue",     u"Wed",       u"Thu",
        u"Fri",    u"Sat",      u"January", u"February",  u"March",   u"April",     u"May",
        u"June",   u"July",     u"August",  u"September", u"October", u"November",  u"December",
        u"",       u"Jan",      u"Feb",     u"Mar",       u"Apr",     u"May",       u"Jun",
        u"Jul",    u"Aug",      u"Sep",     u"Oct",       u"Nov",     u"Dec",       u"",
        u"AM",     u"PM"};
    for (std::size_t i = 0; i < std::size(texts); ++i)
        EXPECT_EQ(textOf(content, 5 + i), texts[i]) << i;
    EXPECT_EQ(wordAt(content, 6), 0U);
    EXPECT_EQ(wordAt(content, 8), 0U);
    EXPECT_EQ(wordAt(content, 98), 578U);
    EXPECT_EQ(wordAt(content, 100), 578U);
}

TEST(ContentObject, UnitedStatesIsTheBuiltInTerritory)
{
    const Bytes content = compiledTerritory("UnitedStates");
    const unsigned words[] = {'.', ',', ',', '.', ',', 2, 2, 2, 0x0003, 0, 0x006B};
    for (std::size_t i = 0; i < std::size(words); ++i)
        EXPECT_EQ(wordAt(content, 2 * i), words[i]) << i;
    const std::u16string texts[] = {
        u"USA", u"United States", u"3;0",        u"3;0",          u"$", u"USD", u"",
        u"-",   u"%#I:%M:%S %p",  u"%#m/%#d/%y", u"%A, %B %d, %Y"};
    for (std::size_t i = 0; i < std::size(texts); ++i)
        EXPECT_EQ(textOf(content, 11 + i), texts[i]) << i;
}

// Entries of the two pair tables as four units each.
std::vector<std::vector<unsigned>> pairs(const Bytes& content, std::size_t countAt,
                                         std::size_t offsetAt)
{
    std::vector<std::vector<unsigned>> entries(wordAt(content, countAt));
    std::size_t at = wordAt(content, offsetAt);
    for (auto& entry : entries)
        for (int i = 0; i < 4; ++i, at += 2)
            entry.push_back(wordAt(content, at));
    return entries;
}

TEST(ContentObject, PairTablesStandBehindTheTexts)
{
    using Entries = std::vector<std::vector<unsigned>>;
    const Bytes german = compiledLanguage("German");
    EXPECT_EQ(pairs(german, 6, 98), (Entries{{0xDF, 0, 'S', 'S'}}));
    EXPECT_EQ(pairs(german, 8, 100), Entries{});
    const Bytes turkish = compiledLanguage("Turkish");
    EXPECT_EQ(pairs(turkish, 6, 98), (Entries{{'i', 0, 0x130, 0}}));
    EXPECT_EQ(pairs(turkish, 8, 100), (Entries{{'I', 0, 0x131, 0}, {0x130, 0, 'i', 0}}));
    EXPECT_EQ(wordAt(turkish, 98), wordAt(turkish, 96) + 2 * 3);
    EXPECT_EQ(wordAt(turkish, 100) + 16, turkish.size());
}

// One change to a good source, and the only complaint that it may bring.
struct BadSource {
    const char* what;
    const char* replaced;
    const char* instead;
    const char* line; // a text that the reported line holds
    const char* complaint;
};

void expectComplaint(bool language, const BadSource& bad)
{
    SCOPED_TRACE(bad.what);
    std::string text = readFile(language ? languagePath("German") : territoryPath("Germany"));
    const std::size_t at = text.find(bad.replaced);
    ASSERT_NE(at, std::string::npos);
    text.replace(at, std::string(bad.replaced).size(), bad.instead);
    const std::size_t place = text.find(bad.line, at < 400 ? 0 : at - 200);
    ASSERT_NE(place, std::string::npos);
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<long>(place), '\n');

    const TemporaryDirectory directory;
    const std::string path = directory.write("bad.toml", text);
    Diagnostics diagnostics;
    const auto object = language ? vlx::data::compileLanguage(path, catalogue(), diagnostics)
                                 : vlx::data::compileTerritory(path, catalogue(), diagnostics);
    EXPECT_FALSE(object);
    ASSERT_EQ(diagnostics.size(), 1U) << shown(diagnostics);
    EXPECT_EQ(diagnostics[0].file, path);
    EXPECT_EQ(diagnostics[0].line, line) << shown(diagnostics);
    EXPECT_FALSE(diagnostics[0].warning);
    EXPECT_NE(diagnostics[0].message.find(bad.complaint), std::string::npos) << shown(diagnostics);
}

constexpr const char* kTooLong = "\"Donnerstag, und das ist zu lang!\"";

TEST(ContentErrors, OfALanguageNameTheLine)
{
    const BadSource cases[] = {
        {"no TOML", "id = 2", "id = = 2", "id =", "parsing"},
        {"missing id", "id = 2\n", "", "# German: ", "id: missing"},
        {"id of a wrong type", "id = 2", "id = \"2\"", "id =", "id: not a whole number"},
        {"id 0", "id = 2", "id = 0", "id =", "0 is outside 1 to 65535"},
        {"id too large", "id = 2", "id = 65536", "id =", "65536 is outside"},
        {"name with a part mark", "\"German\"", "\"Ger.man\"", "Ger.man", "visible ASCII"},
        {"name not ASCII", "\"German\"", "\"Gérman\"", "Gérman", "visible ASCII"},
        {"name too long", "\"German\"", "\"A23456789012345678901234567890123\"", "A2345",
         "at most 32"},
        {"unknown key", "code = ", "colour = 1\ncode = ", "colour", "colour: unknown key"},
        {"unknown key in a table", "am = ", "noon = 1\nam = ", "noon", "day_periods.noon"},
        {"unknown table", "[months]", "[weeks]\n[months]", "[weeks]", "weeks: unknown key"},
        {"unknown territory", "\"Germany\"", "\"Utopia\"", "Utopia", "no object \"Utopia\""},
        {"unknown page", "\"MS1252\"", "\"MS9\"", "\"MS9\"", "no object \"MS9\""},
        {"unknown sort", "\"General\"", "\"Sorted\"", "Sorted", "no object \"Sorted\""},
        {"six days", "\"Sonntag\", ", "", "full =", "6 texts, where 7 are wanted"},
        {"eleven months", "\"Januar\", ", "", "full = [\"Februar",
         "11 texts, where 12 to 13 are wanted"},
        {"a day that is a number", "\"Sonntag\"", "7", "full = [7", "days.full[0]: not a text"},
        {"no list", "short = [\"So.\", \"Mo.\", \"Di.\", \"Mi.\", \"Do.\", \"Fr.\", \"Sa.\"]",
         "short = \"So.\"", "short =", "days.short: not a list"},
        {"empty day", "\"Sonntag\"", "\"\"", "full =", "days.full[0]: empty text"},
        {"day too long", "\"Donnerstag\"", kTooLong, "full =", "days.full[4]: text of 32 bytes"},
        {"character above U+FFFF", "\"Januar\"", "\"Jan\U0001F600\"", "Jan\U0001F600",
         "months.full[0]: character U+01F600"},
        {"U+0000", "am = \"AM\"", "am = \"A\\u0000M\"", "am =", "U+0000"},
        {"control character", "am = \"AM\"", "am = \"A\\tM\"", "am =", "U+0009"},
        {"missing text", "pm = \"PM\"\n", "", "[day_periods]", "day_periods.pm: missing"},
        {"pair without to", "to = \"SS\"\n", "", "[[pairs.upper]]", "pairs.upper[0].to: missing"},
        {"pair of three", "\"SS\"", "\"SSS\"", "SSS", "more than two characters"},
        {"pair from nothing", "\"ß\"", "\"\"", "from =", "pairs.upper[0].from: empty"},
        {"unknown key in a pair", "to = \"SS\"", "to = \"SS\"\nif = 1", "if =", "if: unknown key"},
        {"pairs that are no list", "[[pairs.upper]]", "[pairs.upper]", "[pairs.upper]",
         "pairs.upper: not a list"},
        {"pair twice", "to = \"SS\"", "to = \"SS\"\n[[pairs.upper]]\nfrom = \"ß\"\nto = \"S\"",
         "[[pairs.upper]]\nfrom = \"ß\"\nto = \"S\"", "the same 'from'"},
        {"unknown pairs", "[[pairs.upper]]", "[pairs]\nmiddle = 1\n[[pairs.upper]]", "middle",
         "pairs.middle: unknown key"},
    };
    for (const BadSource& bad : cases)
        expectComplaint(true, bad);
}

TEST(ContentErrors, OfATerritoryNameTheLine)
{
    const BadSource cases[] = {
        {"no decimal point", "decimal_point = \",\"", "decimal_point = \"\"", "decimal_point",
         "no character"},
        {"decimal point of two", "decimal_point = \",\"", "decimal_point = \",,\"", "decimal_point",
         "more than one character"},
        {"decimal digit", "decimal_point = \",\"", "decimal_point = \"1\"", "decimal_point",
         "a digit"},
        {"equal separators", "thousands_separator = \".\"", "thousands_separator = \",\"",
         "thousands_separator", "the same as the decimal point"},
        {"no list separator", "list_separator = \";\"", "list_separator = \"\"", "list_separator",
         "no character"},
        {"fraction digits", "fraction_digits = 2", "fraction_digits = 16", "fraction_digits",
         "16 is outside 0 to 15"},
        {"negative digits", "fraction_digits = 2", "fraction_digits = -1", "fraction_digits",
         "-1 is outside"},
        {"digits not whole", "fraction_digits = 2", "fraction_digits = 2.5", "fraction_digits",
         "not a whole number"},
        {"sign position", "sign_position = 1", "sign_position = 5", "sign_position",
         "5 is outside 0 to 4"},
        {"flag of a wrong type", "symbol_spaced = true", "symbol_spaced = 1", "symbol_spaced",
         "not true or false"},
        {"missing flag", "flag5 = false\n", "", "[carried]", "carried.flag5: missing"},
        {"word 9", "word9 = 0", "word9 = 65536", "word9", "65536 is outside"},
        {"grouping", "grouping = \"3;0\"", "grouping = \"3,0\"", "grouping", "a group size is"},
        {"grouping that begins with 0", "grouping = \"3;0\"", "grouping = \"0\"", "grouping",
         "a group size of 0"},
        {"grouping that goes on behind 0", "grouping = \"3;0\"", "grouping = \"3;0;2\"", "grouping",
         "a group size of 0"},
        {"grouping with an empty size", "grouping = \"3;0\"", "grouping = \"3;\"", "grouping",
         "';' at the end"},
        {"symbol too long", "\"€\"", "\"€€€€€€€€€€€\"", "symbol =", "text of 33 bytes"},
        {"empty symbol", "\"EUR\"", "\"\"", "international_symbol", "empty text"},
        {"no directive", "%H:%M:%S", "%H:%M:%Q", "time = ", "'Q' is no directive"},
        {"directive without effect", "%H:%M:%S", "%H:%M:%Z", "time = ", "'Z' is no directive"},
        {"open directive", "%H:%M:%S", "%H:%M:%", "time = ", "ends inside a directive"},
        {"open flag", "%H:%M:%S", "%H:%M:%#", "time = ", "ends inside a directive"},
        {"nested pattern", "%d.%m.%y", "%x", "date = ", "would read a pattern"},
        {"pattern too long", "%d.%m.%y", "%d.%m.%y.%d.%m.%y.%d.%m.%y.%d.%m",
         "date = ", "text of 32 bytes"},
        {"no pattern", "%d.%m.%y", "", "date = ", "empty text"},
    };
    for (const BadSource& bad : cases)
        expectComplaint(false, bad);
}

TEST(ContentErrors, AreAllReportedInOneRun)
{
    const TemporaryDirectory directory;
    const std::string path = directory.write("empty.toml", "");
    Diagnostics diagnostics;
    EXPECT_FALSE(vlx::data::compileTerritory(path, catalogue(), diagnostics));
    EXPECT_EQ(diagnostics.size(), 2U + 5 + 3 + 2 + 1 + 7 + 11) << shown(diagnostics);
}

TEST(ContentErrors, MissingFile)
{
    Diagnostics diagnostics;
    EXPECT_FALSE(vlx::data::compileLanguage("/nowhere/x.toml", catalogue(), diagnostics));
    EXPECT_FALSE(vlx::data::readTerritoryHead("/nowhere/x.toml", diagnostics));
    ASSERT_EQ(diagnostics.size(), 2U);
    EXPECT_EQ(diagnostics[0].file, "/nowhere/x.toml");
}

TEST(ContentErrors, ContentAboveTheLimitOfASection)
{
    std::string text = readFile(languagePath("German"));
    const std::string name = "display_name = \"German\"";
    text.replace(text.find(name), name.size(),
                 "display_name = \"" + std::string(33000, 'x') + "\"");
    const TemporaryDirectory directory;
    Diagnostics diagnostics;
    EXPECT_FALSE(
        vlx::data::compileLanguage(directory.write("large.toml", text), catalogue(), diagnostics));
    ASSERT_EQ(diagnostics.size(), 1U) << shown(diagnostics);
    EXPECT_NE(diagnostics[0].message.find("above 65535 bytes"), std::string::npos);
}

} // namespace
