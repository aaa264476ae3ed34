// Languages and territories from CLDR, and languages that it lacks from glibc: one readable source
// for every row of the tables.
#include "import.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <utility>

#include "import_cldr_locale.hpp"
#include "import_cldr_table.hpp"
#include "import_cldr_write.hpp"
#include "import_glibc.hpp"

namespace vlx::import {

namespace {

namespace fs = std::filesystem;

const std::string kGregorian = "dates/calendars/calendar[@type='gregorian']/";

// The values of one locale, fitted to one code page. What is missing or cannot be fitted is told on
// the error stream and leaves the import failed.
class LocaleReader {
  public:
    LocaleReader(CldrStore& store, std::string locale, const std::string& codePage,
                 const std::vector<Substitute>& substitutes)
        : store_(store), locale_(std::move(locale)), fit_(codePage), substitutes_(substitutes)
    {
        if (!fit_.known())
            fail("code page " + codePage + " is not known");
    }

    bool good() const { return good_; }
    const Notes& notes() const { return notes_; }
    Notes& notes() { return notes_; }

    std::optional<std::string> maybe(const std::string& path) { return store_.text(locale_, path); }

    std::string raw(const std::string& path)
    {
        const std::optional<std::string> value = maybe(path);
        if (!value)
            fail(path + " is missing");
        return value.value_or("");
    }

    // A text in the code page.
    std::string fitted(const std::string& text, const std::string& what)
    {
        if (!fit_.known())
            return {};
        const std::optional<std::string> result = fit_.fitted(text, substitutes_, notes_);
        if (!result)
            fail(what + ": \"" + text + "\" does not fit the code page");
        return result.value_or("");
    }
    std::vector<std::string> fitted(const std::vector<std::string>& texts, const std::string& what)
    {
        std::vector<std::string> results;
        for (const std::string& text : texts)
            results.push_back(fitted(text, what));
        return results;
    }
    std::string text(const std::string& path) { return fitted(raw(path), path); }

    std::string separator(const std::string& value, const std::string& name)
    {
        if (!fit_.known())
            return {};
        const std::optional<std::string> result =
            fit_.separator(unmarked(value, name), name, notes_);
        if (!result)
            fail(name + ": \"" + value + "\" is not one byte");
        return result.value_or("");
    }

    // Without the marks that order text on a screen.
    std::string unmarked(const std::string& value, const std::string& name)
    {
        std::string result = withoutMarks(value);
        if (result != value)
            notes_.push_back(name + ": bidirectional marks are dropped");
        return result;
    }

    // The symbol of a currency; its code where there is none or the code page lacks it.
    std::string symbol(const std::string& currency)
    {
        const std::string path = "numbers/currencies/currency[@type='" + currency + "']/symbol";
        const std::string symbol = unmarked(maybe(path).value_or(currency), "currency symbol");
        const std::optional<std::string> result = fit_.fitted(symbol, substitutes_, notes_);
        if (!result)
            notes_.push_back("currency symbol: the code page lacks " + symbol +
                             ", the code of the currency stands for it");
        return result.value_or(currency);
    }

    std::string pattern(const std::string& path, const std::string& name)
    {
        const std::optional<std::string> result = timePattern(unmarked(raw(path), name), notes_);
        if (!result)
            fail(path + " has a field without a directive");
        return fitted(result.value_or(""), path);
    }

    void fail(const std::string& message)
    {
        std::cerr << locale_ << ": " << message << "\n";
        good_ = false;
    }

  private:
    CldrStore& store_;
    const std::string locale_;
    CodePageFit fit_;
    const std::vector<Substitute>& substitutes_;
    Notes notes_;
    bool good_ = true;
};

// The last subtag, if it is a country.
std::string regionOf(const std::string& locale)
{
    return locale.substr(locale.rfind('_') + 1);
}

std::string upperCase(std::string text)
{
    for (char& c : text)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return text;
}

// The name of a language or territory in English.
std::string englishName(CldrStore& store, const std::string& kind, const std::string& type)
{
    return store.text("en", "localeDisplayNames/" + kind + "[@type='" + type + "']").value_or("");
}

// The name that is shown for an object: one that every code page can write.
std::string displayName(LocaleReader& reader, const char* wanted, const std::string& english)
{
    std::string name = wanted == nullptr ? english : wanted;
    if (name.empty() ||
        std::any_of(name.begin(), name.end(), [](char c) { return c < ' ' || c > '~'; }))
        reader.fail("display name: \"" + name + "\" is not plain ASCII");
    if (wanted != nullptr)
        reader.notes().push_back("display name: chosen, CLDR has " +
                                 (english.empty() ? "none" : "\"" + english + "\""));
    return name;
}

std::vector<std::string> dayNames(LocaleReader& reader, const std::string& width)
{
    std::vector<std::string> names;
    for (const char* const day : {"sun", "mon", "tue", "wed", "thu", "fri", "sat"})
        names.push_back(reader.text(kGregorian +
                                    "days/dayContext[@type='format']/dayWidth[@type='" + width +
                                    "']/day[@type='" + day + "']"));
    return names;
}

std::vector<std::string> monthNames(LocaleReader& reader, const std::string& width)
{
    std::vector<std::string> names;
    for (int month = 1; month <= 12; ++month)
        names.push_back(reader.text(kGregorian +
                                    "months/monthContext[@type='format']/monthWidth[@type='" +
                                    width + "']/month[@type='" + std::to_string(month) + "']"));
    return names;
}

std::string dayPeriod(LocaleReader& reader, const std::string& period)
{
    return reader.text(kGregorian +
                       "dayPeriods/dayPeriodContext[@type='format']/"
                       "dayPeriodWidth[@type='abbreviated']/dayPeriod[@type='" +
                       period + "']");
}

void readNumbers(LocaleReader& reader, TerritoryValues& values)
{
    const std::string symbols = "numbers/symbols[@numberSystem='latn']/";
    const std::string decimal = reader.raw(symbols + "decimal");
    const std::string group = reader.raw(symbols + "group");
    values.decimal = reader.separator(decimal, "decimal point");
    values.group = reader.separator(group, "thousands separator");
    values.currencyDecimal = reader.separator(
        reader.maybe(symbols + "currencyDecimal").value_or(decimal), "currency decimal point");
    values.currencyGroup = reader.separator(reader.maybe(symbols + "currencyGroup").value_or(group),
                                            "currency thousands separator");
    // CLDR has one list separator for all; this is the usual rule.
    values.list = values.decimal == "." ? "," : ";";
    values.grouping = groupingOf(reader.raw("numbers/decimalFormats[@numberSystem='latn']/"
                                            "decimalFormatLength/decimalFormat/pattern"));
    values.negativeSign = reader.unmarked(reader.raw(symbols + "minusSign"), "negative sign");
    if (values.negativeSign == "\u2212") {
        reader.notes().emplace_back("negative sign: U+002D stands for U+2212");
        values.negativeSign = "-";
    }
    values.negativeSign = reader.fitted(values.negativeSign, "minusSign");
}

void readCurrency(LocaleReader& reader, const CldrStore& store, const std::string& region,
                  TerritoryValues& values)
{
    const std::string pattern = reader.unmarked(
        reader.raw("numbers/currencyFormats[@numberSystem='latn']/currencyFormatLength/"
                   "currencyFormat[@type='standard']/pattern"),
        "amounts");
    values.currencyGrouping = groupingOf(pattern);
    values.forms = amountForms(pattern, reader.notes());
    values.currency = store.currency(region);
    if (values.currency.empty())
        reader.fail(region + " has no currency");
    values.symbol = reader.symbol(values.currency);
    values.currencyDigits = store.currencyDigits(values.currency);
}

void readPatterns(LocaleReader& reader, TerritoryValues& values)
{
    const std::string date = kGregorian + "dateFormats/dateFormatLength[@type='";
    values.time = reader.pattern(
        kGregorian + "timeFormats/timeFormatLength[@type='medium']/timeFormat/pattern",
        "time pattern");
    values.date = reader.pattern(date + "short']/dateFormat/pattern", "date pattern");
    values.longDate = reader.pattern(date + "full']/dateFormat/pattern", "long date pattern");
}

Origin originOf(const CldrStore& store, const std::string& locale, const char* codePage)
{
    return {"CLDR " + store.version() + ", locale " + locale, store.copyright(), "Unicode-DFS-2016",
            codePage};
}

bool writeFile(const fs::path& path, const std::string& text)
{
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << text;
    out.close();
    if (!out)
        std::cerr << path.string() << ": cannot be written\n";
    return out.good();
}

bool writeLanguage(const fs::path& directory, const LanguageRow& row, const LanguageValues& values,
                   const Origin& origin, const LocaleReader& reader)
{
    return reader.good() && writeFile(directory / "languages" / (std::string(row.object) + ".toml"),
                                      languageSource(row, values, origin, reader.notes()));
}

bool importLanguage(CldrStore& store, const LanguageRow& row, const fs::path& directory)
{
    LocaleReader reader(store, row.locale, row.codePage, row.substitutes);
    const std::string locale = row.locale;
    LanguageValues values;
    values.code = upperCase(locale.substr(0, locale.find('_')));
    values.displayName =
        displayName(reader, row.displayName, englishName(store, "languages/language", locale));
    values.days = dayNames(reader, "wide");
    values.shortDays = dayNames(reader, "abbreviated");
    values.months = monthNames(reader, "wide");
    values.shortMonths = monthNames(reader, "abbreviated");
    values.am = dayPeriod(reader, "am");
    values.pm = dayPeriod(reader, "pm");
    return writeLanguage(directory, row, values, originOf(store, locale, row.codePage), reader);
}

// A language of which CLDR knows the name alone.
bool importGlibcLanguage(CldrStore& store, const LanguageRow& row, const std::string& sources,
                         const fs::path& directory)
{
    LocaleReader reader(store, row.locale, row.codePage, row.substitutes);
    std::string complaint;
    const std::optional<GlibcLocale> locale =
        readGlibcLocale((fs::path(sources) / row.locale).string(), complaint);
    if (!locale) {
        reader.fail("its source in " + sources + " " + complaint);
        return false;
    }
    const std::string language = std::string(row.locale).substr(0, 2);
    LanguageValues values;
    values.code = upperCase(language);
    values.displayName =
        displayName(reader, row.displayName, englishName(store, "languages/language", language));
    values.days = reader.fitted(locale->days, "day");
    values.shortDays = reader.fitted(locale->shortDays, "abday");
    values.months = reader.fitted(locale->months, "mon");
    values.shortMonths = reader.fitted(locale->shortMonths, "abmon");
    if (locale->am.empty() && locale->pm.empty())
        reader.notes().emplace_back("the source has no AM and PM, the usual ones stand for them");
    values.am = reader.fitted(locale->am.empty() ? "AM" : locale->am, "am_pm");
    values.pm = reader.fitted(locale->pm.empty() ? "PM" : locale->pm, "am_pm");
    const Origin origin = {"the locale source " + std::string(row.locale) + " of glibc, revision " +
                               locale->revision + " of " + locale->date,
                           "The Free Software Foundation claims no copyright in this locale data.",
                           "LGPL-2.1-or-later, as glibc", row.codePage};
    return writeLanguage(directory, row, values, origin, reader);
}

bool importTerritory(CldrStore& store, const TerritoryRow& row, const fs::path& directory)
{
    LocaleReader reader(store, row.locale, row.codePage, row.substitutes);
    const std::string region = regionOf(row.locale);
    TerritoryValues values;
    values.code = store.alpha3(region);
    values.displayName =
        displayName(reader, row.displayName, englishName(store, "territories/territory", region));
    readNumbers(reader, values);
    readCurrency(reader, store, region, values);
    readPatterns(reader, values);
    if (row.bend != nullptr)
        row.bend(values, reader.notes());
    return reader.good() &&
           writeFile(directory / "territories" / (std::string(row.object) + ".toml"),
                     territorySource(row, values, originOf(store, row.locale, row.codePage),
                                     reader.notes()));
}

} // namespace

bool importCldr(const CldrOptions& options)
{
    CldrStore store(options.cldrDirectory);
    if (!store.open())
        return false;
    const fs::path directory = options.outputDirectory;
    std::error_code error;
    fs::create_directories(directory / "languages", error);
    fs::create_directories(directory / "territories", error);
    bool good = true;
    for (const LanguageRow& row : languageRows())
        good = importLanguage(store, row, directory) && good;
    for (const LanguageRow& row : glibcLanguageRows())
        good = importGlibcLanguage(store, row, options.glibcDirectory, directory) && good;
    for (const TerritoryRow& row : territoryRows())
        good = importTerritory(store, row, directory) && good;
    return good;
}

} // namespace vlx::import
