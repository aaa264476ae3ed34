#include "import_cldr_write.hpp"

#include <algorithm>
#include <sstream>
#include <string_view>

#include "data/content_text.hpp"

namespace vlx::import {

namespace {

constexpr std::size_t kColumns = 100;

// A text as TOML takes it.
std::string toml(const std::string& text)
{
    std::string complaint;
    return data::quoted(data::unitsOf(text, complaint).value_or(u""));
}

const char* toml(bool value)
{
    return value ? "true" : "false";
}

// Columns that a text takes, near enough for wrapping: two for what East Asian fonts draw wide.
std::size_t widthOf(const std::string& text)
{
    std::size_t width = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        width += byte >= 0xE3 ? 2 : (byte & 0xC0) == 0x80 ? 0 : 1;
    }
    return width;
}

// Appends words, parted by blanks, and begins a new line with `indent` where one is full.
void wrap(const std::vector<std::string>& words, const std::string& first,
          const std::string& indent, std::ostream& out)
{
    std::string line = first;
    bool isFresh = true;
    for (const std::string& word : words) {
        if (!isFresh && widthOf(line) + 1 + widthOf(word) > kColumns) {
            out << line << "\n";
            line = indent;
            isFresh = true;
        }
        line += (isFresh ? "" : " ") + word;
        isFresh = false;
    }
    out << line << "\n";
}

std::vector<std::string> wordsOf(const std::string& text)
{
    std::istringstream in(text);
    std::vector<std::string> words;
    for (std::string word; in >> word;)
        words.push_back(word);
    return words;
}

void writeList(const char* key, const std::vector<std::string>& texts, std::ostream& out)
{
    std::vector<std::string> words;
    for (const std::string& text : texts)
        words.push_back(toml(text) + (words.size() + 1 < texts.size() ? "," : "]"));
    wrap(words, std::string(key) + " = [", "    ", out);
}

void writePairs(const char* table, const std::vector<CasePair>& pairs, std::ostream& out)
{
    for (const auto& [from, to] : pairs)
        out << "\n[[pairs." << table << "]]\nfrom = " << toml(from) << "\nto = " << toml(to)
            << "\n";
}

void writeHead(const std::string& title, const Origin& origin, const Notes& notes,
               std::ostream& out)
{
    out << "# " << title << "\n#\n"
        << "# Origin: " << origin.source << ", by `vlx-import cldr`.\n"
        << "# " << origin.copyright << "\n"
        << "# Licence: " << origin.licence << ".\n"
        << "# Every text can be written in " << origin.codePage << ".\n";
    if (notes.empty())
        out << "# No value is bent.\n";
    else
        out << "# Bent values:\n";
    Notes written;
    for (const std::string& note : notes) {
        if (std::find(written.begin(), written.end(), note) != written.end())
            continue;
        written.push_back(note);
        wrap(wordsOf(note), "# - ", "#   ", out);
    }
}

// One of the two forms of an amount.
void writeForm(const char* name, const AmountForm& form, const std::string& sign, std::ostream& out)
{
    out << "\n[currency." << name << "]\n"
        << "sign = " << toml(sign) << "\n"
        << "sign_position = " << form.signPosition << "\n"
        << "symbol_precedes = " << toml(form.symbolPrecedes) << "\n"
        << "symbol_spaced = " << toml(form.symbolSpaced) << "\n";
}

} // namespace

std::string languageSource(const LanguageRow& row, const LanguageValues& values,
                           const Origin& origin, const Notes& notes)
{
    std::ostringstream out;
    writeHead(std::string(row.object) + ": names of days and months, AM and PM.", origin, notes,
              out);
    out << "\nid = " << row.id << "\nname = " << toml(std::string(row.object))
        << "\ncode = " << toml(values.code) << "\ndisplay_name = " << toml(values.displayName)
        << "\ndefault_territory = " << toml(std::string(row.territory))
        << "\ndefault_codepage = " << toml(std::string(row.codePage))
        << "\ndefault_sort = " << toml(std::string(row.sort)) << "\n\n[days] # Sunday first\n";
    writeList("full", values.days, out);
    writeList("short", values.shortDays, out);
    out << "\n[months]\n";
    writeList("full", values.months, out);
    writeList("short", values.shortMonths, out);
    out << "\n[day_periods]\nam = " << toml(values.am) << "\npm = " << toml(values.pm) << "\n";
    if (!row.upperPairs.empty() || !row.lowerPairs.empty())
        out << "\n# Case mappings of this language alone, or of one character to two; from\n"
               "# SpecialCasing of Unicode 15.\n";
    writePairs("upper", row.upperPairs, out);
    writePairs("lower", row.lowerPairs, out);
    return out.str();
}

std::string territorySource(const TerritoryRow& row, const TerritoryValues& values,
                            const Origin& origin, const Notes& notes)
{
    std::ostringstream out;
    writeHead(std::string(row.object) + ": how numbers, amounts, dates and times are written.",
              origin, notes, out);
    out << "\nid = " << row.id << "\nname = " << toml(std::string(row.object))
        << "\ncode = " << toml(values.code) << "\ndisplay_name = " << toml(values.displayName)
        << "\n\n[number]\ndecimal_point = " << toml(values.decimal)
        << "\nthousands_separator = " << toml(values.group)
        << "\ngrouping = " << toml(values.grouping)
        << "\nfraction_digits = " << values.fractionDigits
        << "\nlist_separator = " << toml(values.list)
        << "\n\n[currency]\nsymbol = " << toml(values.symbol)
        << "\ninternational_symbol = " << toml(values.currency)
        << "\ndecimal_point = " << toml(values.currencyDecimal)
        << "\nthousands_separator = " << toml(values.currencyGroup)
        << "\ngrouping = " << toml(values.currencyGrouping)
        << "\nfraction_digits = " << values.currencyDigits
        << "\ninternational_fraction_digits = " << values.currencyDigits << "\n";
    writeForm("positive", values.forms.positive, values.positiveSign, out);
    writeForm("negative", values.forms.negative, values.negativeSign, out);
    out << "\n[time]\ntime = " << toml(values.time) << "\ndate = " << toml(values.date)
        << "\nlong_date = " << toml(values.longDate)
        << "\n\n[carried] # handed to callers as they stand\nword9 = 0\nflag0 = "
        << toml(values.flag0) << "\nflag5 = " << toml(values.flag5)
        << "\nflag6 = " << toml(values.flag6) << "\n";
    return out.str();
}

} // namespace vlx::import
