// The parts of the importer from CLDR, on cases that the committed sources do not reach.
#include "content_test.hpp"

#include "import/import.hpp"
#include "import/import_cldr_fit.hpp"
#include "import/import_cldr_locale.hpp"
#include "import/import_cldr_pattern.hpp"
#include "import/import_cldr_table.hpp"
#include "import/import_glibc.hpp"

using content_test::TemporaryDirectory;
using namespace vlx::import;

namespace {

TEST(ImportPattern, FieldsBecomeDirectives)
{
    const std::pair<const char*, const char*> cases[] = {
        {"d dd E EEE EEEE ccc cccc", "%#d %d %a %a %A %a %A"},
        {"M MM MMM MMMM L LLLL", "%#m %m %b %B %#m %B"},
        {"y yy yyyy", "%Y %y %Y"},
        {"h hh H HH K kk", "%#I %I %#H %H %#I %H"},
        {"m mm s ss a", "%#M %M %#S %S %p"},
        {"y'年'M'月'", "%Y年%#m月"},
        {"HH 'h' mm 'min' ss 's'", "%H h %M min %S s"},
        {"EEEE 'den' d. MMMM y", "%A den %#d. %B %Y"},
        {"h 'o''clock' ''a''", "%#I o'clock '%p'"},
        {"100% d '50%'", "100%% %#d 50%%"},
        {"d MMMM y 'г'.", "%#d %B %Y г."},
        {"'open", "open"},
        {"", ""},
    };
    for (const auto& [cldr, expected] : cases) {
        Notes notes;
        EXPECT_EQ(timePattern(cldr, notes), expected) << cldr;
    }
}

TEST(ImportPattern, BentFieldsAreNoted)
{
    Notes notes;
    EXPECT_EQ(timePattern("Bh:mm", notes), "%p%#I:%M");
    EXPECT_EQ(timePattern("EEEEที่ d MMMM G y", notes), "%Aที่ %#d %B %Y");
    EXPECT_EQ(timePattern("K:mm", notes), "%#I:%M");
    ASSERT_EQ(notes.size(), 3U);
    EXPECT_NE(notes[1].find("era"), std::string::npos);
}

TEST(ImportPattern, FieldsWithoutADirectiveAreRefused)
{
    for (const char* const cldr : {"HH:mm:ss zzzz", "w", "Q", "MMMMM", "EEEEE", "DDD", "mmm"}) {
        Notes notes;
        EXPECT_EQ(timePattern(cldr, notes), std::nullopt) << cldr;
    }
}

TEST(ImportPattern, Grouping)
{
    const std::pair<const char*, const char*> cases[] = {
        {"#,##0.###", "3;0"},  {"#,##,##0.###", "3;2;0"}, {"¤#,##0.00;(¤#,##0.00)", "3;0"},
        {"#0.###", ""},        {"#,###,##0.00", "3;0"},   {"#,##,##,##0.00 ¤", "3;2;0"},
        {"#,####0.00", "5;0"}, {"0.00,00", ""},           {"", ""},
    };
    for (const auto& [cldr, expected] : cases)
        EXPECT_EQ(groupingOf(cldr), expected) << cldr;
}

TEST(ImportPattern, AmountsByTheirSignAndSymbol)
{
    struct Case {
        const char* cldr;
        const char* flags; // precedes and spaced, positive and negative
        int position;
        std::size_t notes;
    };
    const Case cases[] = {
        {"¤#,##0.00", "1010", 1, 0},
        {"#,##0.00\u00A0¤", "0101", 1, 0},
        {"¤\u00A0#,##0.00", "1111", 1, 0},
        {"¤\u00A0#,##0.00;¤-#,##0.00", "1110", 4, 0},
        {"¤#,##0.00;¤-#,##0.00", "1010", 4, 0},
        {"¤\u00A0#,##0.00;¤\u00A0-#,##0.00", "1111", 4, 1},
        {"¤ #,##0.00;-¤ #,##0.00", "1111", 1, 0},
        {"#,##0.00¤;#,##0.00-¤", "0000", 3, 0},
        {"#,##0.00¤;#,##0.00¤-", "0000", 2, 0},
        {"¤#,##0.00;¤#,##0.00-", "1010", 2, 0},
        {"'kr'¤#,##0.00", "1010", 1, 0},
    };
    for (const auto& [cldr, flags, position, noteCount] : cases) {
        Notes notes;
        const AmountForms forms = amountForms(cldr, notes);
        std::string found;
        for (const AmountForm& form : {forms.positive, forms.negative})
            found += std::string(form.symbolPrecedes ? "1" : "0") + (form.symbolSpaced ? "1" : "0");
        EXPECT_EQ(found, flags) << cldr;
        EXPECT_EQ(forms.negative.signPosition, position) << cldr;
        EXPECT_EQ(notes.size(), noteCount) << cldr;
    }
}

TEST(ImportFit, MarksAreDropped)
{
    EXPECT_EQ(withoutMarks("\u200E-\u200F\u061C1"), "-1");
    EXPECT_EQ(withoutMarks(""), "");
}

TEST(ImportFit, SubstitutesStandForWhatThePageLacks)
{
    const CodePageFit page("MS1256");
    ASSERT_TRUE(page.known());
    const std::vector<Substitute> substitutes = {{"\u06CC", "\u064A"}, {"\u0654", ""}};
    Notes notes;
    EXPECT_EQ(page.fitted("ژانویهٔ", substitutes, notes), "ژانويه");
    EXPECT_EQ(notes, (Notes{"U+06CC is not in MS1256, U+064A stands for it",
                            "U+0654 is not in MS1256 and is dropped"}));
    EXPECT_EQ(page.fitted("\u6708", substitutes, notes), std::nullopt);
    EXPECT_EQ(notes.size(), 2U);
    // A page that has the character keeps it.
    EXPECT_EQ(CodePageFit("UTF-8").fitted("ی", substitutes, notes), "ی");
    EXPECT_EQ(notes.size(), 2U);
}

TEST(ImportFit, APageIsTakenWithoutFallbacksAndCompositions)
{
    EXPECT_FALSE(CodePageFit("MS1252").holds("\u0100"));
    EXPECT_FALSE(CodePageFit("MS1258").holds("\u1EA3")); // only as letter and mark
    EXPECT_TRUE(CodePageFit("MS932").holds("\uFFE5"));
    EXPECT_FALSE(CodePageFit("MS1254").holds("\u20BA"));
    EXPECT_FALSE(CodePageFit("MS1252").holds("\u200E"));
    EXPECT_FALSE(CodePageFit("NoSuchPage").known());
}

TEST(ImportFit, SeparatorsAreOneByte)
{
    const CodePageFit western("MS1252");
    Notes notes;
    EXPECT_EQ(western.separator("\u2019", "group", notes), "\u2019");
    EXPECT_TRUE(notes.empty());
    EXPECT_EQ(western.separator("\u202F", "group", notes), "\u00A0");
    EXPECT_EQ(notes.size(), 1U);
    EXPECT_EQ(CodePageFit("UTF-8").separator("\u202F", "group", notes), " ");
    EXPECT_EQ(notes.size(), 3U);
    EXPECT_EQ(western.separator("\u066C", "group", notes), std::nullopt);
    EXPECT_EQ(western.separator("--", "group", notes), std::nullopt);
}

class ImportStore : public testing::Test {
  protected:
    void SetUp() override
    {
        if (!std::filesystem::exists(CldrOptions().cldrDirectory))
            GTEST_SKIP() << "no CLDR files";
        ASSERT_TRUE(store.open());
    }
    CldrStore store{CldrOptions().cldrDirectory};

    std::string group(const std::string& locale)
    {
        return store.text(locale, "numbers/symbols[@numberSystem='latn']/group").value_or("(none)");
    }
};

TEST_F(ImportStore, InheritanceFollowsTheListedParents)
{
    EXPECT_EQ(group("es_ES"), ".");
    EXPECT_EQ(group("es_MX"), ",");      // from es_419, which is no prefix of it
    EXPECT_EQ(group("zh_Hant_TW"), ","); // from root: the parent of zh_Hant is not zh
    EXPECT_EQ(store.text("zh_Hant", "localeDisplayNames/languages/language[@type='de']"), "德文");
    EXPECT_EQ(store.text("nn_NO", "numbers/symbols[@numberSystem='latn']/group"), "\u00A0");
}

TEST_F(ImportStore, AliasesOfTheRootBeginAgainAtTheLocale)
{
    const std::string months = "dates/calendars/calendar[@type='gregorian']/months/";
    // Stand-alone names of German are not given: root sends them to the format names.
    EXPECT_EQ(store.text("de", months + "monthContext[@type='stand-alone']/"
                                        "monthWidth[@type='wide']/month[@type='3']"),
              "März");
    EXPECT_EQ(store.text("root", months + "monthContext[@type='format']/"
                                          "monthWidth[@type='abbreviated']/month[@type='3']"),
              "M03");
    // Two aliases in a row.
    EXPECT_EQ(store.text("root", months + "monthContext[@type='stand-alone']/"
                                          "monthWidth[@type='abbreviated']/month[@type='3']"),
              "M03");
    // No value in the locale at all.
    EXPECT_EQ(store.text("sr_Latn", "dates/calendars/calendar[@type='gregorian']/dayPeriods/"
                                    "dayPeriodContext[@type='format']/"
                                    "dayPeriodWidth[@type='abbreviated']/dayPeriod[@type='am']"),
              "AM");
}

TEST_F(ImportStore, ValuesWithFurtherAttributesAreOthers)
{
    // The first patterns of the file are compact forms; the wanted one has no type.
    EXPECT_EQ(store.text("es", "numbers/decimalFormats[@numberSystem='latn']/decimalFormatLength/"
                               "decimalFormat/pattern"),
              "#,##0.###");
    EXPECT_EQ(store.text("zh_Hant", "numbers/currencies/currency[@type='TWD']/symbol"), "$");
    EXPECT_EQ(store.text("ar_SA", "numbers/symbols[@numberSystem='latn']/decimal"), ".");
    EXPECT_EQ(store.text("fr_CH", "numbers/symbols[@numberSystem='latn']/currencyDecimal"), ".");
    EXPECT_EQ(store.text("de", "numbers/symbols[@numberSystem='latn']/nothing"), std::nullopt);
}

TEST_F(ImportStore, FactsAboutTerritories)
{
    EXPECT_EQ(store.version(), "41");
    EXPECT_EQ(store.alpha3("DE"), "DEU");
    EXPECT_EQ(store.alpha3("ZZZ"), "");
    EXPECT_EQ(store.currency("US"), "USD");
    EXPECT_EQ(store.currency("LT"), "EUR");
    EXPECT_EQ(store.currency("??"), "");
    EXPECT_EQ(store.currencyDigits("JPY"), 0);
    EXPECT_EQ(store.currencyDigits("BHD"), 3);
    EXPECT_EQ(store.currencyDigits("EUR"), 2);
}

// A locale source with all that its syntax has: both marks of its own, lines that go on, comments,
// symbols, escapes.
constexpr char kGlibcSource[] = R"(comment_char %
escape_char /
% abday "No"
LC_IDENTIFICATION
revision "0.3"
date     "2005-10-13"
END LC_IDENTIFICATION
LC_TIME
day   "A;a"; /
% in the midst of a list
      "<U1E3C>b";"/"c/"";"/<d//";"E";"F";"G"
abday "A";"B";"C";"D";"E";"F";"G"
mon   "A";"B";"C";"D";"E";"F";"G";"H";"I";"J";"K";"L"
abmon "a";"b";"c";"d";"e";"f";"g";"h";"i";"j";"k";"l"
am_pm "";"pm"
week 7;19971130;1
END LC_TIME
LC_MESSAGES
day "no"
END LC_MESSAGES
)";

TEST(ImportGlibc, SourcesAreReadByTheirSyntax)
{
    const TemporaryDirectory directory;
    std::string complaint;
    const auto locale = readGlibcLocale(directory.write("xx_XX", kGlibcSource), complaint);
    ASSERT_TRUE(locale) << complaint;
    EXPECT_EQ(locale->days, (std::vector<std::string>{"A;a", "Ḽb", "\"c\"", "<d/", "E", "F", "G"}));
    EXPECT_EQ(locale->shortMonths.back(), "l");
    EXPECT_EQ(locale->am, "");
    EXPECT_EQ(locale->pm, "pm");
    EXPECT_EQ(locale->revision, "0.3");
    EXPECT_EQ(locale->date, "2005-10-13");
}

TEST(ImportGlibc, OtherSourcesAreRefused)
{
    const TemporaryDirectory directory;
    std::string complaint;
    EXPECT_FALSE(readGlibcLocale((directory.path() / "xx_XX").string(), complaint));
    EXPECT_EQ(complaint, "cannot be read");
    const auto changed = [&](const std::string& from, const std::string& to) {
        std::string text = kGlibcSource;
        text.replace(text.find(from), from.size(), to);
        EXPECT_FALSE(readGlibcLocale(directory.write("xx_XX", text), complaint));
        return complaint;
    };
    EXPECT_NE(changed(";\"F\";\"G\"\nabday", ";\"F\"\nabday").find("seven days"),
              std::string::npos);
    EXPECT_NE(changed("\"l\"", "\"\"").find("twelve months"), std::string::npos);
    EXPECT_NE(changed("19971130", "19971201").find("Sunday"), std::string::npos);
}

TEST(ImportTable, TerritoriesOfLanguagesHaveRows)
{
    std::vector<LanguageRow> languages = languageRows();
    languages.insert(languages.end(), glibcLanguageRows().begin(), glibcLanguageRows().end());
    for (const LanguageRow& language : languages) {
        bool found = false;
        for (const TerritoryRow& territory : territoryRows())
            found = found || std::string(territory.object) == language.territory;
        EXPECT_TRUE(found) << language.object;
    }
}

} // namespace
