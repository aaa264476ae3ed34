// The committed sources against the files of CLDR, read here by plain XPath and by hand-written
// chains of inheritance, and the importer against the committed sources.
#include "content_test.hpp"

#include <array>
#include <set>

#include <iconv.h>
#include <pugixml.hpp>
#include <toml++/toml.h>

#include "import/import.hpp"
#include "import/import_cldr_table.hpp"
#include "import/import_sorts_table.hpp"

using namespace content_test;

namespace {

const std::string kCldr = vlx::import::CldrOptions().cldrDirectory;

bool haveCldr()
{
    return std::filesystem::exists(kCldr + "/common/main/root.xml");
}

// The first value that the files of a chain have at an XPath.
std::string cldrValue(const std::vector<std::string>& chain, const std::string& path)
{
    for (const std::string& locale : chain) {
        pugi::xml_document file;
        if (!file.load_file((kCldr + "/common/main/" + locale + ".xml").c_str()))
            continue;
        const pugi::xpath_node node = file.select_node(("/ldml/" + path).c_str());
        if (node && std::string(node.node().text().get()) != "↑↑↑")
            return node.node().text().get();
    }
    return "(none)";
}

std::string textAt(const toml::table& source, const std::string& key)
{
    return source.at_path(key).value<std::string>().value_or("(none)");
}

struct Origin {
    const char* object;
    std::vector<std::string> chain;
};

const std::vector<Origin> kLanguageOrigins = {
    {"English", {"en", "root"}},
    {"German", {"de", "root"}},
    {"French", {"fr", "root"}},
    {"Japanese", {"ja", "root"}},
    {"TraditionalChinese", {"zh_Hant", "root"}},
    {"Russian", {"ru", "root"}},
    {"Turkish", {"tr", "root"}},
};

class CldrTest : public testing::Test {
  protected:
    void SetUp() override
    {
        if (!haveCldr())
            GTEST_SKIP() << "no CLDR files in " << kCldr;
    }
};

// The importer needs the locale sources of glibc beside them.
class ImportTest : public CldrTest {
  protected:
    void SetUp() override
    {
        CldrTest::SetUp();
        if (!std::filesystem::exists(vlx::import::CldrOptions().glibcDirectory))
            GTEST_SKIP() << "no locale sources, which the package locales has";
    }
};

TEST_F(CldrTest, NamesOfDaysAndMonths)
{
    const std::string calendar = "dates/calendars/calendar[@type='gregorian']/";
    const std::pair<const char*, const char*> widths[] = {{"full", "wide"},
                                                          {"short", "abbreviated"}};
    const char* const days[] = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
    for (const auto& [object, chain] : kLanguageOrigins) {
        SCOPED_TRACE(object);
        const toml::table source = toml::parse_file(languagePath(object));
        for (const auto& [key, width] : widths) {
            for (int day = 0; day < 7; ++day)
                EXPECT_EQ(
                    textAt(source, std::string("days.") + key + "[" + std::to_string(day) + "]"),
                    cldrValue(chain, calendar + "days/dayContext[@type='format']/dayWidth[@type='" +
                                         width + "']/day[@type='" + days[day] + "']"));
            for (int month = 0; month < 12; ++month)
                EXPECT_EQ(
                    textAt(source,
                           std::string("months.") + key + "[" + std::to_string(month) + "]"),
                    cldrValue(chain,
                              calendar + "months/monthContext[@type='format']/monthWidth[@type='" +
                                  width + "']/month[@type='" + std::to_string(month + 1) + "']"));
        }
        for (const char* const period : {"am", "pm"})
            EXPECT_EQ(textAt(source, std::string("day_periods.") + period),
                      cldrValue(chain, calendar +
                                           "dayPeriods/dayPeriodContext[@type='format']/"
                                           "dayPeriodWidth[@type='abbreviated']/"
                                           "dayPeriod[@type='" +
                                           period + "'][not(@alt)]"));
    }
}

// The values that are bent on purpose stand in the last two columns.
struct TerritoryOrigin {
    const char* object;
    std::vector<std::string> chain;
    const char* currency;
    const char* group;  // what the source has instead, or null
    const char* symbol; // the same
};

const std::vector<TerritoryOrigin> kTerritoryOrigins = {
    {"UnitedStates", {"en_US", "en", "root"}, "USD", nullptr, nullptr},
    {"Germany", {"de_DE", "de", "root"}, "EUR", nullptr, nullptr},
    {"France", {"fr_FR", "fr", "root"}, "EUR", "\u00A0", nullptr},
    {"Japan", {"ja_JP", "ja", "root"}, "JPY", nullptr, nullptr},
    {"Taiwan", {"zh_Hant_TW", "zh_Hant", "root"}, "TWD", nullptr, nullptr},
    {"Russia", {"ru_RU", "ru", "root"}, "RUB", nullptr, "RUB"},
    {"Turkey", {"tr_TR", "tr", "root"}, "TRY", nullptr, "TRY"},
};

TEST_F(CldrTest, SeparatorsAndCurrencies)
{
    for (const auto& [object, chain, currency, group, symbol] : kTerritoryOrigins) {
        SCOPED_TRACE(object);
        const toml::table source = toml::parse_file(territoryPath(object));
        const std::string symbols = "numbers/symbols[@numberSystem='latn']/";
        const std::string point = cldrValue(chain, symbols + "decimal");
        const std::string cldrGroup = cldrValue(chain, symbols + "group");
        EXPECT_EQ(textAt(source, "number.decimal_point"), point);
        EXPECT_EQ(textAt(source, "currency.decimal_point"), point);
        EXPECT_EQ(textAt(source, "number.thousands_separator"), group ? group : cldrGroup);
        EXPECT_EQ(textAt(source, "currency.thousands_separator"), group ? group : cldrGroup);
        EXPECT_EQ(group != nullptr, cldrGroup == "\u202F");
        EXPECT_EQ(textAt(source, "number.list_separator"), point == "." ? "," : ";");
        EXPECT_EQ(textAt(source, "currency.negative.sign"),
                  cldrValue(chain, symbols + "minusSign"));
        EXPECT_EQ(textAt(source, "currency.international_symbol"), currency);
        EXPECT_EQ(textAt(source, "currency.symbol"),
                  symbol ? symbol
                         : cldrValue(chain, std::string("numbers/currencies/currency[@type='") +
                                                currency + "']/symbol[not(@alt)]"));
    }
}

TEST_F(CldrTest, CodesAndNames)
{
    pugi::xml_document supplemental;
    ASSERT_TRUE(
        supplemental.load_file((kCldr + "/common/supplemental/supplementalData.xml").c_str()));
    for (const TerritoryOrigin& origin : kTerritoryOrigins) {
        const toml::table source = toml::parse_file(territoryPath(origin.object));
        const std::string region = origin.chain[0].substr(origin.chain[0].size() - 2);
        const pugi::xml_node codes =
            supplemental.select_node(("//territoryCodes[@type='" + region + "']").c_str()).node();
        EXPECT_EQ(textAt(source, "code"), codes.attribute("alpha3").value());
        EXPECT_EQ(source["id"].value<int>(), codes.attribute("numeric").as_int());
        EXPECT_EQ(textAt(source, "display_name"),
                  cldrValue({"en"}, "localeDisplayNames/territories/territory[@type='" + region +
                                        "'][not(@alt)]"));
        const pugi::xml_node money = supplemental
                                         .select_node(("//currencyData/region[@iso3166='" + region +
                                                       "']/currency[not(@to)][not(@tender)]")
                                                          .c_str())
                                         .node();
        EXPECT_STREQ(money.attribute("iso4217").value(), origin.currency);
        const pugi::xml_node digits =
            supplemental
                .select_node(
                    (std::string("//fractions/info[@iso4217='") + origin.currency + "']").c_str())
                .node();
        EXPECT_EQ(source.at_path("currency.fraction_digits").value<int>(),
                  digits.attribute("digits").as_int(2));
    }
}

// What the patterns of CLDR come to in the directives of the library.
TEST(CldrSources, PatternsAndLayouts)
{
    struct Expected {
        const char* object;
        const char* time;
        const char* date;
        const char* longDate;
        int signPosition;
        bool precedes;
        bool spaced;
        int digits;
    };
    const Expected territories[] = {
        {"UnitedStates", "%#I:%M:%S %p", "%#m/%#d/%y", "%A, %B %d, %Y", 0, true, false, 2},
        {"Germany", "%H:%M:%S", "%d.%m.%y", "%A, %#d. %B %Y", 1, false, true, 2},
        {"France", "%H:%M:%S", "%d/%m/%Y", "%A %#d %B %Y", 1, false, true, 2},
        {"Japan", "%#H:%M:%S", "%Y/%m/%d", "%Y年%#m月%#d日%A", 1, true, false, 0},
        {"Taiwan", "%p%#I:%M:%S", "%Y/%#m/%#d", "%Y年%#m月%#d日 %A", 1, true, false, 2},
        {"Russia", "%H:%M:%S", "%d.%m.%Y", "%A, %#d %B %Y г.", 1, false, true, 2},
        {"Turkey", "%H:%M:%S", "%#d.%m.%Y", "%#d %B %Y %A", 1, true, false, 2},
    };
    for (const Expected& expected : territories) {
        SCOPED_TRACE(expected.object);
        const toml::table source = toml::parse_file(territoryPath(expected.object));
        EXPECT_EQ(textAt(source, "time.time"), expected.time);
        EXPECT_EQ(textAt(source, "time.date"), expected.date);
        EXPECT_EQ(textAt(source, "time.long_date"), expected.longDate);
        EXPECT_EQ(textAt(source, "number.grouping"), "3;0");
        EXPECT_EQ(textAt(source, "currency.grouping"), "3;0");
        EXPECT_EQ(source.at_path("currency.negative.sign_position").value<int>(),
                  expected.signPosition);
        EXPECT_EQ(source.at_path("currency.fraction_digits").value<int>(), expected.digits);
        for (const std::string form : {"currency.positive.", "currency.negative."}) {
            EXPECT_EQ(source.at_path(form + "symbol_precedes").value<bool>(), expected.precedes);
            EXPECT_EQ(source.at_path(form + "symbol_spaced").value<bool>(), expected.spaced);
        }
    }
}

TEST_F(ImportTest, GivesTheCommittedSources)
{
    const TemporaryDirectory directory;
    vlx::import::CldrOptions options;
    options.outputDirectory = directory.path().string();
    ASSERT_TRUE(vlx::import::importCldr(options));
    std::size_t files = 0;
    for (const char* const folder : {"languages", "territories"})
        for (const auto& entry : std::filesystem::directory_iterator(directory.path() / folder)) {
            ++files;
            EXPECT_EQ(readFile(entry.path()),
                      readFile(root() / "data" / folder / entry.path().filename()));
        }
    EXPECT_GE(files, kLanguages.size() + kTerritories.size());
}

TEST(CldrTable, SortsAreThoseOfTheTableOfSorts)
{
    std::set<std::string> sorts = {"Binary"};
    for (const vlx::import::SortRow& row : vlx::import::sortRows())
        sorts.insert(row.object);
    for (const vlx::import::LanguageRow& row : vlx::import::languageRows())
        EXPECT_TRUE(sorts.contains(row.sort)) << row.object;
    for (const vlx::import::LanguageRow& row : vlx::import::glibcLanguageRows())
        EXPECT_TRUE(sorts.contains(row.sort)) << row.object;
}

TEST_F(CldrTest, ImportFailsWithoutTheLocaleSources)
{
    const TemporaryDirectory directory;
    vlx::import::CldrOptions options;
    options.glibcDirectory = directory.path().string();
    options.outputDirectory = directory.path().string();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(vlx::import::importCldr(options));
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_NE(errors.find("ve_ZA: its source"), std::string::npos) << errors;
    EXPECT_FALSE(std::filesystem::exists(directory.path() / "languages" / "Venda.toml"));
}

TEST(CldrImport, FailsWithoutItsFiles)
{
    const TemporaryDirectory directory;
    vlx::import::CldrOptions options;
    options.cldrDirectory = directory.path().string();
    options.outputDirectory = directory.path().string();
    testing::internal::CaptureStderr();
    EXPECT_FALSE(vlx::import::importCldr(options));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("supplementalData.xml"),
              std::string::npos);
    EXPECT_TRUE(std::filesystem::is_empty(directory.path()));
}

// Bytes of a text in a page of the C library; -1 if the page lacks a character.
int byteCount(const char* page, const std::string& text)
{
    const iconv_t converter = iconv_open(page, "UTF-8");
    if (converter == reinterpret_cast<iconv_t>(-1))
        return -1;
    std::string in = text;
    std::array<char, 256> out{};
    char* from = in.data();
    char* to = out.data();
    std::size_t fromLeft = in.size();
    std::size_t toLeft = out.size();
    const bool good = iconv(converter, &from, &fromLeft, &to, &toLeft) == 0;
    iconv_close(converter);
    return good ? static_cast<int>(out.size() - toLeft) : -1;
}

void expectInPage(const toml::node& node, const char* page)
{
    if (const auto* const text = node.as_string()) {
        const int bytes = byteCount(page, text->get());
        EXPECT_GE(bytes, 0) << text->get() << " in " << page;
        EXPECT_LE(bytes, 31) << text->get() << " in " << page;
    } else if (const auto* const list = node.as_array()) {
        for (const toml::node& element : *list)
            expectInPage(element, page);
    } else if (const auto* const table = node.as_table()) {
        for (const auto& [key, value] : *table)
            expectInPage(value, page);
    }
}

// The C library's name of a code page object.
std::string iconvName(const std::string& page)
{
    return page.starts_with("MS") ? "CP" + page.substr(2) : page;
}

TEST(CldrSources, EveryTextOfALanguageIsInItsCodePage)
{
    std::vector<vlx::import::LanguageRow> rows = vlx::import::languageRows();
    const auto& more = vlx::import::glibcLanguageRows();
    rows.insert(rows.end(), more.begin(), more.end());
    EXPECT_EQ(rows.size(), 64U);
    for (const vlx::import::LanguageRow& row : rows) {
        SCOPED_TRACE(row.object);
        const toml::table source = toml::parse_file(languagePath(row.object));
        EXPECT_EQ(textAt(source, "default_codepage"), row.codePage);
        expectInPage(source, iconvName(row.codePage).c_str());
    }
}

TEST(CldrSources, EveryTextOfATerritoryIsInItsUsualCodePage)
{
    EXPECT_EQ(vlx::import::territoryRows().size(), 99U);
    for (const vlx::import::TerritoryRow& row : vlx::import::territoryRows()) {
        SCOPED_TRACE(row.object);
        const std::string page = iconvName(row.codePage);
        const toml::table source = toml::parse_file(territoryPath(row.object));
        expectInPage(source, page.c_str());
        for (const char* const key :
             {"number.decimal_point", "number.thousands_separator", "number.list_separator",
              "currency.decimal_point", "currency.thousands_separator"})
            EXPECT_EQ(byteCount(page.c_str(), textAt(source, key)), 1) << key;
    }
}

} // namespace
