// The lint of finished contents: every fault is planted once, and whatever the lint lets pass keeps
// what the library relies on.
#include "content_test.hpp"

#include <functional>
#include <random>

using namespace content_test;

namespace {

using Lint = void (*)(const Bytes&, const std::string&, Diagnostics&);

std::string lintOf(Lint lint, const Bytes& content)
{
    Diagnostics diagnostics;
    lint(content, "object.nls", diagnostics);
    for (const auto& diagnostic : diagnostics)
        EXPECT_EQ(diagnostic.file, "object.nls");
    return shown(diagnostics);
}

struct Fault {
    const char* what;
    std::function<void(Bytes&)> plant;
    const char* complaint;
};

void expectFaults(Lint lint, const Bytes& good, const std::vector<Fault>& faults)
{
    ASSERT_EQ(lintOf(lint, good), "");
    for (const auto& [what, plant, complaint] : faults) {
        Bytes content = good;
        plant(content);
        const std::string said = lintOf(lint, content);
        EXPECT_NE(said.find(complaint), std::string::npos) << what << ":\n" << said;
    }
}

// Writes over the first unit of a header word's text.
std::function<void(Bytes&)> firstUnit(std::size_t word, unsigned unit)
{
    return [=](Bytes& content) { setWord(content, wordAt(content, 2 * word), unit); };
}

std::function<void(Bytes&)> header(std::size_t offset, unsigned value)
{
    return [=](Bytes& content) { setWord(content, offset, value); };
}

// A text in place of another, with all offsets behind it moved: a content that is well laid out.
std::function<void(Bytes&)> newText(std::size_t word, std::size_t lastWord, std::u16string text)
{
    return [=](Bytes& content) {
        const std::size_t at = wordAt(content, 2 * word);
        const std::size_t oldSize = 2 * textOf(content, word).size();
        Bytes fresh;
        for (const char16_t unit : text) {
            fresh.push_back(static_cast<std::uint8_t>(unit & 0xFF));
            fresh.push_back(static_cast<std::uint8_t>(unit >> 8));
        }
        const auto begin = content.begin() + static_cast<std::ptrdiff_t>(at);
        content.erase(begin, begin + static_cast<std::ptrdiff_t>(oldSize));
        content.insert(content.begin() + static_cast<std::ptrdiff_t>(at), fresh.begin(),
                       fresh.end());
        for (std::size_t later = word + 1; later <= lastWord; ++later)
            setWord(content, 2 * later,
                    static_cast<unsigned>(wordAt(content, 2 * later) + fresh.size() - oldSize));
    };
}

std::function<void(Bytes&)> newTerritoryText(std::size_t word, const std::u16string& text)
{
    return newText(word, 22, text);
}

std::function<void(Bytes&)> newLanguageText(std::size_t word, const std::u16string& text)
{
    return newText(word, 50, text);
}

TEST(ContentLint, TerritoryLayout)
{
    const Bytes good = compiledTerritory("Germany");
    const auto size = static_cast<unsigned>(good.size());
    expectFaults(
        vlx::data::lintTerritory, good,
        {
            {"no section", [](Bytes& content) { content.clear(); }, "section of 0 bytes"},
            {"short header", [](Bytes& content) { content.resize(45); }, "section of 45 bytes"},
            {"large section", [](Bytes& content) { content.resize(65536); },
             "section of 65536 bytes"},
            {"header alone", [](Bytes& content) { content.resize(46); }, "code: offset 46"},
            {"text inside the header", header(22, 44), "code: offset 44 is outside 46"},
            {"text behind the section", header(42, size), "time.long_date: offset"},
            {"offset far outside", header(42, 0xFFFF), "time.long_date: offset 65535"},
            {"texts out of order",
             [](Bytes& content) {
                 const unsigned date = wordAt(content, 40);
                 setWord(content, 40, wordAt(content, 38));
                 setWord(content, 38, date);
             },
             "time.date: offset"},
            {"gap between texts", // a text that ends before the next begins
             [](Bytes& content) { setWord(content, wordAt(content, 26) - 4, 0); },
             "number.grouping: gap of 2 bytes"},
            {"odd gap", [](Bytes& content) { setWord(content, 26, wordAt(content, 26) + 1); },
             "number.grouping: gap of 1 bytes"},
            {"no terminator", [](Bytes& content) { setWord(content, content.size() - 2, 'x'); },
             "time.long_date: text without a terminator"},
            {"half a unit", [](Bytes& content) { content.pop_back(); }, "without a terminator"},
            {"end too small", header(44, size - 2), "end: "},
            {"end too large", header(44, size + 2), "end: "},
            {"no end", header(44, 0), "end: 0"},
            {"bytes behind the end", [](Bytes& content) { content.resize(content.size() + 2); },
             "and the section at"},
        });
}

TEST(ContentLint, TerritoryValues)
{
    expectFaults(
        vlx::data::lintTerritory, compiledTerritory("Germany"),
        {
            {"no decimal point", header(0, 0), "number.decimal_point: no character"},
            {"digit", header(2, '0'), "number.thousands_separator: a digit"},
            {"surrogate", header(4, 0xD800), "number.list_separator: surrogate U+D800"},
            {"control character", header(6, 7), "currency.decimal_point: control character U+0007"},
            {"equal separators", header(2, ','), "number.thousands_separator: the same"},
            {"equal in amounts", header(8, ','), "currency.thousands_separator: the same"},
            {"fraction digits", header(10, 16), "number.fraction_digits: 16 is above 15"},
            {"currency digits", header(12, 0xFFFF), "currency.fraction_digits: 65535"},
            {"international digits", header(14, 16), "currency.international_fraction_digits: 16"},
            {"positive sign position", [](Bytes& content) { content.at(16) = 5; },
             "currency.positive.sign_position: 5"},
            {"negative sign position", [](Bytes& content) { content.at(17) = 255; },
             "currency.negative.sign_position: 255"},
            {"unknown flag", header(20, 0x80), "flags: bits without a meaning"},
            {"surrogate in a text", firstUnit(12, 0xDFFF), "display_name: surrogate U+DFFF"},
            {"grouping of letters", firstUnit(13, 'x'), "number.grouping: a group size"},
            {"grouping of 0", firstUnit(14, '0'), "currency.grouping: a group size of 0"},
            {"no directive", newTerritoryText(19, u"%H:%Q"), "time.time: 'Q' is no directive"},
            {"open directive", newTerritoryText(20, u"%d.%"), "time.date: the pattern ends"},
            {"nested pattern", newTerritoryText(21, u"%A, %#x"), "time.long_date: directive 'x'"},
            {"long pattern", newTerritoryText(21, std::u16string(32, u'x')),
             "time.long_date: text of 32 bytes"},
            {"long in UTF-8", newTerritoryText(21, std::u16string(11, u'\u5E74')),
             "time.long_date: text of 33 bytes"},
            {"empty pattern", newTerritoryText(19, u""), "time.time: empty text"},
            {"long symbol", newTerritoryText(15, std::u16string(32, u'x')),
             "currency.symbol: text of 32"},
            {"empty code", newTerritoryText(11, u""), "code: empty text"},
        });
}

TEST(ContentLint, TerritoryTakesEveryDirectiveAndOddForms)
{
    const std::pair<std::size_t, std::u16string> fine[] = {{19, u"%a%b%d%j%m%p%w%y%A%B%H%I%M%S%U"},
                                                           {19, u"%W%Y%%%#d%#%"},
                                                           {13, u""},
                                                           {13, u"3;2;0"},
                                                           {14, u"3"},
                                                           {14, u"10;4"},
                                                           {17, u"+"},
                                                           {18, u""}};
    for (const auto& [word, text] : fine) {
        Bytes content = compiledTerritory("Germany");
        newTerritoryText(word, text)(content);
        EXPECT_EQ(lintOf(vlx::data::lintTerritory, content), "") << word;
    }
    Bytes content = compiledTerritory("Germany");
    setWord(content, 2, 0); // no thousands separator
    EXPECT_EQ(lintOf(vlx::data::lintTerritory, content), "");
}

TEST(ContentLint, LanguageLayout)
{
    const Bytes good = compiledLanguage("Turkish");
    const auto size = static_cast<unsigned>(good.size());
    expectFaults(
        vlx::data::lintLanguage, good,
        {
            {"short header", [](Bytes& content) { content.resize(101); }, "section of 101 bytes"},
            {"large section", [](Bytes& content) { content.resize(65536); },
             "section of 65536 bytes"},
            {"text inside the header", header(10, 100), "code: offset 100 is outside 102"},
            {"text behind the section", header(96, size), "day_periods.pm: offset"},
            {"texts out of order", header(96, 102), "day_periods.pm: offset 102"},
            {"no terminator",
             [](Bytes& content) {
                 setWord(content, 98, 102);
                 for (std::size_t at = wordAt(content, 96); at < content.size(); at += 2)
                     setWord(content, at, 'x');
             },
             "day_periods.pm: text without a terminator"},
            {"upper pairs among the texts", header(98, 104),
             "pairs.upper: 1 entries at offset 104"},
            {"lower pairs among the texts", header(100, 104), "pairs.lower: 2 entries at offset"},
            {"upper pairs outside", header(98, size), "pairs.upper: 1 entries at offset"},
            {"lower pairs outside", header(100, size - 8), "pairs.lower: 2 entries at offset"},
            {"too many pairs", header(8, 3), "pairs.lower: 3 entries"},
            {"count beyond everything", header(6, 0xFFFF), "pairs.upper: 65535 entries"},
            {"too few pairs", header(8, 1), "8 bytes behind the pair tables"},
            {"tables that overlap",
             [](Bytes& content) { setWord(content, 100, wordAt(content, 98)); },
             "pairs.lower: 2 entries at offset"},
            {"bytes behind the tables", [](Bytes& content) { content.resize(content.size() + 1); },
             "1 bytes behind"},
        });
}

TEST(ContentLint, LanguageValues)
{
    const auto pair = [](unsigned offset, unsigned value) {
        return [=](Bytes& content) { setWord(content, wordAt(content, 100) + offset, value); };
    };
    expectFaults(
        vlx::data::lintLanguage, compiledLanguage("Turkish"),
        {
            {"no territory", header(0, 0), "default_territory: id 0"},
            {"no code page", header(2, 0), "default_codepage: id 0"},
            {"empty day", newLanguageText(8, u""), "days.full[1]: empty text"},
            {"empty month", newLanguageText(45, u""), "months.short[11]: empty text"},
            {"long day", newLanguageText(7, std::u16string(32, u'x')), "text of 32 bytes"},
            {"surrogate", firstUnit(14, 0xDC00), "days.short[0]: surrogate"},
            {"control character", firstUnit(47, 0x1B), "day_periods.am: control character U+001B"},
            {"pair from nothing", pair(0, 0), "pairs.lower[0]: an entry without"},
            {"pair to nothing", pair(4, 0), "pairs.lower[0]: an entry without"},
            {"pair twice", pair(8, 'I'), "pairs.lower[1]: an entry above"},
        });
}

TEST(ContentLint, LanguageTakesAThirteenthMonthAndWarnsOfAGap)
{
    Bytes content = compiledLanguage("English");
    newLanguageText(33, u"Undecember")(content);
    EXPECT_EQ(lintOf(vlx::data::lintLanguage, content), "");

    // The first text begins one unit later, which leaves a gap in front of it.
    setWord(content, 10, wordAt(content, 10) + 2);
    EXPECT_EQ(lintOf(vlx::data::lintLanguage, content),
              "object.nls:0: warning: code: gap of 2 bytes\n");
}

// What the library relies on, by the literal reader; it throws where a text leaves the content.
void expectReadable(const Bytes& content, std::size_t firstWord, std::size_t texts)
{
    for (std::size_t word = firstWord; word < firstWord + texts; ++word)
        EXPECT_NO_THROW(textOf(content, word)) << word;
}

TEST(ContentLint, DamagedContentsAreReadWithinBounds)
{
    std::mt19937 random(20);
    const Bytes contents[] = {compiledLanguage("Turkish"), compiledTerritory("Taiwan")};
    int passed = 0;
    for (int round = 0; round < 8000; ++round) {
        const bool language = round % 2 == 0;
        Bytes content = contents[language ? 0 : 1];
        for (unsigned change = random() % 4 + 1; change != 0; --change)
            content.at(random() % (round % 4 < 2 ? content.size() : 102)) =
                static_cast<std::uint8_t>(random());
        if (round % 5 == 0)
            content.resize(random() % (content.size() + 1));
        std::ostringstream dump;
        (language ? vlx::data::dumpLanguage : vlx::data::dumpTerritory)(content, dump);
        EXPECT_FALSE(dump.str().empty());
        if (lintOf(language ? vlx::data::lintLanguage : vlx::data::lintTerritory, content) != "")
            continue;
        ++passed;
        expectReadable(content, language ? 5 : 11, language ? 44 : 11);
    }
    EXPECT_GT(passed, 100); // the check above has had something to check
}

TEST(ContentDump, ShowsAllValuesOfALanguage)
{
    std::ostringstream out;
    vlx::data::dumpLanguage(compiledLanguage("German"), out);
    const std::string text = out.str();
    for (const char* const line :
         {"code = \"DE\"", "default_territory = 276", "default_codepage = 1252", "default_sort = 1",
          "full = [\"Sonntag\", \"Montag\", \"Dienstag\"", "\"Dezember\", \"\"]", "am = \"AM\"",
          "[[pairs.upper]]\nfrom = \"\u00DF\"\nto = \"SS\""})
        EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;
}

TEST(ContentDump, ShowsAllValuesOfATerritory)
{
    std::ostringstream out;
    vlx::data::dumpTerritory(compiledTerritory("France"), out);
    EXPECT_EQ(out.str(), R"(code = "FRA"
display_name = "France"

[carried]
flag0 = false
flag5 = false
flag6 = false
word9 = 0

[currency]
grouping = "3;0"
symbol = "€"
international_symbol = "EUR"
decimal_point = ","
thousands_separator = "\u00A0"
fraction_digits = 2
international_fraction_digits = 2

[currency.negative]
sign = "-"
sign_position = 1
symbol_precedes = false
symbol_spaced = true

[currency.positive]
sign = ""
sign_position = 1
symbol_precedes = false
symbol_spaced = true

[number]
grouping = "3;0"
decimal_point = ","
thousands_separator = "\u00A0"
list_separator = ";"
fraction_digits = 2

[time]
time = "%H:%M:%S"
date = "%d/%m/%Y"
long_date = "%A %#d %B %Y"
)");
}

TEST(ContentDump, SaysThatAContentIsTooShort)
{
    std::ostringstream out;
    vlx::data::dumpLanguage(Bytes(101), out);
    vlx::data::dumpTerritory(Bytes(45), out);
    EXPECT_EQ(
        out.str(),
        "# shorter than the header of a language\n# shorter than the header of a territory\n");
}

} // namespace
