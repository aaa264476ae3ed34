// The locales of the directory against CLDR. Every difference stands in bent.tsv with its reason; a
// line there that makes no difference fails too.
#include <map>

#include "world/cldr.hpp"
#include "world/facts.hpp"

namespace vlx::test {
namespace {

TEST_F(CldrWorld, NamesOfDaysAndMonths)
{
    const char* const days[] = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
    int languages = 0;
    for (const LanguageFacts& facts : kLanguageFacts) {
        const std::string from = facts.cldr;
        if (from.empty())
            continue;
        ++languages;
        SCOPED_TRACE(facts.name);
        const Locale locale = open(facts.name);
        ASSERT_NE(locale, nullptr);
        const auto expectName = [&](int item, const std::string& kind, const char* width,
                                    const std::string& type) {
            EXPECT_EQ(
                text(locale, item),
                bent(facts.name, "name", name(from, kind, width, kind + "[@type='" + type + "']")))
                << "item " << item;
        };
        for (int day = 0; day < 7; ++day) {
            expectName(TS_LI_DAY_1 + day, "day", "wide", days[day]);
            expectName(TS_LI_ABDAY_1 + day, "day", "abbreviated", days[day]);
        }
        for (int month = 0; month < 12; ++month) {
            expectName(TS_LI_MONTH_1 + month, "month", "wide", std::to_string(month + 1));
            expectName(TS_LI_ABMONTH_1 + month, "month", "abbreviated", std::to_string(month + 1));
        }
        expectName(TS_LI_AM, "dayPeriod", "abbreviated", "am");
        expectName(TS_LI_PM, "dayPeriod", "abbreviated", "pm");
    }
    EXPECT_EQ(languages, 60);
    expectBendsUsed({"name"});
}

TEST_F(CldrWorld, Separators)
{
    const std::string symbols = "numbers/symbols[@numberSystem='latn']/";
    for (const TerritoryFacts& facts : kTerritoryFacts) {
        SCOPED_TRACE(facts.name);
        const Locale locale = open(std::string("English_") + facts.name);
        ASSERT_NE(locale, nullptr);
        const auto symbol = [&](const char* element) {
            return cldr_->valueOrRoot(facts.cldr, symbols + element);
        };
        const auto monetary = [&](const char* element, const std::string& usual) {
            const std::string own = cldr_->value(facts.cldr, symbols + element);
            return own.empty() ? usual : own;
        };
        const std::string point = symbol("decimal");
        const std::string group = symbol("group");
        EXPECT_EQ(text(locale, TS_LI_DECIMAL_POINT), point);
        EXPECT_EQ(text(locale, TS_LI_THOUSANDS_SEP), bent(facts.name, "separator", group));
        EXPECT_EQ(text(locale, TS_LI_MON_DECIMAL_POINT), monetary("currencyDecimal", point));
        EXPECT_EQ(text(locale, TS_LI_MON_THOUSANDS_SEP),
                  bent(facts.name, "separator", monetary("currencyGroup", group)));
        EXPECT_EQ(text(locale, TS_LI_LIST_SEPARATOR), point == "." ? "," : ";");
        EXPECT_EQ(text(locale, TS_LI_NEGATIVE_SIGN), bent(facts.name, "sign", symbol("minusSign")));
        EXPECT_EQ(text(locale, TS_LI_POSITIVE_SIGN), "");
    }
    expectBendsUsed({"separator", "sign"});
}

TEST_F(CldrWorld, Currencies)
{
    for (const TerritoryFacts& facts : kTerritoryFacts) {
        SCOPED_TRACE(facts.name);
        const Locale locale = open(std::string("English_") + facts.name);
        ASSERT_NE(locale, nullptr);
        const std::string currency = cldr_->currency(regionOf(facts.cldr));
        EXPECT_EQ(text(locale, TS_LI_INT_CURRENCY_SYMBOL), currency);
        const std::string symbol = cldr_->valueOrRoot(
            facts.cldr, "numbers/currencies/currency[@type='" + currency + "']/symbol");
        EXPECT_EQ(text(locale, TS_LI_CURRENCY_SYMBOL),
                  bent(facts.name, "symbol", symbol.empty() ? currency : symbol));
        const int digits = cldr_->fact("currencyData/fractions/info[@iso4217='" + currency + "']")
                               .attribute("digits")
                               .as_int(2);
        EXPECT_EQ(numberOf(locale, TS_LI_MON_FRAC_DIGITS), digits);
        EXPECT_EQ(numberOf(locale, TS_LI_INT_FRAC_DIGITS), digits);
    }
    expectBendsUsed({"symbol"});
}

// Ids and codes of ISO 3166, and the names in English.
TEST_F(CldrWorld, CodesAndNames)
{
    const std::map<std::string, int> others = {
        {"TheCarribean", 29},         {"French-Belgium", 57},      {"French-Canada", 125},
        {"Catalonia", 134},           {"Lithuania", 442},          {"Luxembourg", 443},
        {"BasqueCountry", 725},       {"French-Switzerland", 757}, {"Italian-Switzerland", 758},
        {"Romansh-Switzerland", 759}, {"Yugoslavia", 891}};
    const auto english = [&](const std::string& kind, const std::string& type) {
        return cldr_->value("en", "localeDisplayNames/" + kind + "[@type='" + type + "']");
    };
    for (const TerritoryFacts& facts : kTerritoryFacts) {
        SCOPED_TRACE(facts.name);
        const Locale locale = open(std::string("English_") + facts.name);
        ASSERT_NE(locale, nullptr);
        const std::string region = regionOf(facts.cldr);
        const pugi::xml_node codes =
            cldr_->fact("codeMappings/territoryCodes[@type='" + region + "']");
        EXPECT_EQ(text(locale, TS_LI_TERRITORY_CODE), codes.attribute("alpha3").value());
        const auto other = others.find(facts.name);
        const int iso = codes.attribute("numeric").as_int();
        EXPECT_EQ(numberOf(locale, TS_LI_TERRITORY_ID),
                  other == others.end() ? iso : other->second);
        EXPECT_TRUE(other == others.end() || other->second != iso);
        EXPECT_EQ(text(locale, TS_LI_TERRITORY_NAME),
                  bent(facts.name, "english", english("territories/territory", region)));
    }
    for (const LanguageFacts& facts : kLanguageFacts) {
        if (*facts.cldr == 0)
            continue;
        SCOPED_TRACE(facts.name);
        const Locale locale = open(facts.name);
        ASSERT_NE(locale, nullptr);
        const std::string name = english("languages/language", facts.cldr);
        EXPECT_EQ(text(locale, TS_LI_LANGUAGE_NAME),
                  bent(facts.name, "english", name.empty() ? facts.cldr : name));
    }
    expectBendsUsed({"english"});
}

} // namespace
} // namespace vlx::test
