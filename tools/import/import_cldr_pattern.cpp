#include "import_cldr_pattern.hpp"

#include <algorithm>
#include <array>
#include <cstring>

namespace vlx::import {

namespace {

struct Field {
    const char* letters;
    std::size_t shortest;
    std::size_t longest;
    const char* directive;
    const char* note; // what is bent by it, or null
};

constexpr const char* kDayPeriod = "the time of day in words (field B) becomes AM or PM";
constexpr const char* kHourCount = "hours counted 0 to 11 or 1 to 24 become the usual ones";

// A year of one letter is the full one in CLDR.
constexpr std::array<Field, 25> kFields = {{
    {"yu", 2, 2, "%y", nullptr},    {"yu", 1, 5, "%Y", nullptr},    {"ML", 1, 1, "%#m", nullptr},
    {"ML", 2, 2, "%m", nullptr},    {"ML", 3, 3, "%b", nullptr},    {"ML", 4, 4, "%B", nullptr},
    {"d", 1, 1, "%#d", nullptr},    {"d", 2, 2, "%d", nullptr},     {"E", 1, 3, "%a", nullptr},
    {"ce", 3, 3, "%a", nullptr},    {"Ece", 4, 4, "%A", nullptr},   {"ab", 1, 3, "%p", nullptr},
    {"B", 1, 3, "%p", kDayPeriod},  {"h", 1, 1, "%#I", nullptr},    {"h", 2, 2, "%I", nullptr},
    {"K", 1, 1, "%#I", kHourCount}, {"K", 2, 2, "%I", kHourCount},  {"H", 1, 1, "%#H", nullptr},
    {"H", 2, 2, "%H", nullptr},     {"k", 1, 1, "%#H", kHourCount}, {"k", 2, 2, "%H", kHourCount},
    {"m", 1, 1, "%#M", nullptr},    {"m", 2, 2, "%M", nullptr},     {"s", 1, 1, "%#S", nullptr},
    {"s", 2, 2, "%S", nullptr},
}};

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

const Field* fieldOf(char letter, std::size_t length)
{
    const auto* const field =
        std::find_if(kFields.begin(), kFields.end(), [&](const Field& candidate) {
            return std::strchr(candidate.letters, letter) != nullptr &&
                   length >= candidate.shortest && length <= candidate.longest;
        });
    return field == kFields.end() ? nullptr : field;
}

// A text of the pattern, quoted or not: two quotes are one, the mark of a directive is doubled.
void copyLiteral(char c, std::string& out)
{
    if (c == '%')
        out += '%';
    out += c;
}

// Copies the quoted text that begins at `at`, and gives the position behind it.
std::size_t copyQuoted(std::string_view cldr, std::size_t at, std::string& out)
{
    if (at + 1 < cldr.size() && cldr[at + 1] == '\'') {
        out += '\'';
        return at + 2;
    }
    for (++at; at < cldr.size(); ++at) {
        if (cldr[at] != '\'') {
            copyLiteral(cldr[at], out);
        } else if (at + 1 < cldr.size() && cldr[at + 1] == '\'') {
            out += '\'';
            ++at;
        } else {
            return at + 1;
        }
    }
    return at;
}

constexpr std::string_view kCurrencySign = "¤";
constexpr std::string_view kNoBreakSpace = "\u00A0";

// The halves of a currency pattern around its digits, without quotes.
struct Affixes {
    std::string prefix;
    std::string suffix;
};

Affixes affixesOf(std::string_view pattern)
{
    Affixes affixes;
    bool quoted = false;
    bool behind = false;
    for (const char c : pattern) {
        if (c == '\'')
            quoted = !quoted;
        else if (!quoted && std::strchr("#0,.@", c) != nullptr)
            behind = true;
        else
            (behind ? affixes.suffix : affixes.prefix) += c;
    }
    return affixes;
}

bool endsWithBlank(std::string_view text)
{
    return text.ends_with(' ') || text.ends_with(kNoBreakSpace);
}

bool startsWithBlank(std::string_view text)
{
    return text.starts_with(' ') || text.starts_with(kNoBreakSpace);
}

std::string withoutMinus(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '-'), text.end());
    return text;
}

AmountForm symbolPlace(const Affixes& affixes)
{
    AmountForm form;
    form.symbolPrecedes = affixes.prefix.find(kCurrencySign) != std::string::npos;
    form.symbolSpaced = form.symbolPrecedes ? endsWithBlank(withoutMinus(affixes.prefix))
                                            : startsWithBlank(withoutMinus(affixes.suffix));
    return form;
}

int signPosition(const Affixes& affixes, Notes& notes)
{
    const std::size_t ahead = affixes.prefix.find('-');
    const std::size_t symbol = affixes.prefix.find(kCurrencySign);
    if (ahead == std::string::npos) {
        // The minus stands behind the digits: behind the symbol too, or between the two.
        const std::size_t after = affixes.suffix.find(kCurrencySign);
        return after != std::string::npos && affixes.suffix.find('-') < after ? 3 : 2;
    }
    if (symbol == std::string::npos || ahead < symbol)
        return 1;
    if (endsWithBlank(std::string_view(affixes.prefix).substr(0, ahead)))
        notes.emplace_back("symbol, blank and minus sign before the digits cannot be expressed in "
                           "this order: the sign stands before the blank");
    return 4;
}

} // namespace

std::optional<std::string> timePattern(std::string_view cldr, Notes& notes)
{
    std::string out;
    for (std::size_t at = 0; at < cldr.size();) {
        const char c = cldr[at];
        if (c == '\'') {
            at = copyQuoted(cldr, at, out);
            continue;
        }
        if (!isLetter(c)) {
            copyLiteral(c, out);
            ++at;
            continue;
        }
        const std::size_t end = std::min(cldr.find_first_not_of(c, at), cldr.size());
        if (c == 'G') {
            notes.emplace_back("the era is dropped");
            at = end < cldr.size() && cldr[end] == ' ' ? end + 1 : end;
            continue;
        }
        const Field* const field = fieldOf(c, end - at);
        if (field == nullptr)
            return std::nullopt;
        if (field->note != nullptr)
            notes.emplace_back(field->note);
        out += field->directive;
        at = end;
    }
    return out;
}

std::string groupingOf(std::string_view cldr)
{
    const std::string_view positive = cldr.substr(0, cldr.find(';'));
    const std::string_view digits = positive.substr(0, positive.find('.'));
    const std::size_t first = digits.rfind(',');
    if (first == std::string_view::npos)
        return {};
    const auto sizeBehind = [&](std::size_t comma, std::size_t end) {
        const std::string_view group = digits.substr(comma + 1, end - comma - 1);
        return std::to_string(
            std::count_if(group.begin(), group.end(), [](char c) { return c == '#' || c == '0'; }));
    };
    std::string grouping = sizeBehind(first, digits.size());
    const std::size_t second = first == 0 ? first : digits.rfind(',', first - 1);
    if (second != std::string_view::npos && second < first) {
        const std::string size = sizeBehind(second, first);
        if (size != grouping)
            grouping += ";" + size;
    }
    return grouping + ";0";
}

AmountForms amountForms(std::string_view cldr, Notes& notes)
{
    const std::size_t parting = cldr.find(';');
    const std::string_view positive = cldr.substr(0, parting);
    const std::string negative = parting == std::string_view::npos
                                     ? "-" + std::string(positive)
                                     : std::string(cldr.substr(parting + 1));
    AmountForms forms;
    forms.positive = symbolPlace(affixesOf(positive));
    forms.negative = symbolPlace(affixesOf(negative));
    forms.negative.signPosition = signPosition(affixesOf(negative), notes);
    forms.positive.signPosition = forms.negative.signPosition;
    return forms;
}

} // namespace vlx::import
