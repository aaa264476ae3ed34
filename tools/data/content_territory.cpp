// Territory objects: how numbers, amounts, dates and times are written. docs/format-territory.md
// tells the source and the content.
#include "content.hpp"

#include <algorithm>
#include <array>
#include <ostream>
#include <utility>

#include "content_text.hpp"
#include "content_view.hpp"
#include "locale/content.hpp"
#include "tsconst.h"

namespace vlx::data {

namespace {

// A double has no more decimal digits than this.
constexpr int kMostDigits = 15;
constexpr int kMostSignPosition = 4;
constexpr std::size_t kTexts = TSTerritoryContent::kTexts;

// The separators and the numbers of the header by their keys. A separator of 0 means none.
struct SeparatorField {
    const char* key;
    vlx::Le16 TSTerritoryContent::*word;
};
constexpr std::array<SeparatorField, 5> kSeparators = {{
    {"number.decimal_point", &TSTerritoryContent::decimalPoint},
    {"number.thousands_separator", &TSTerritoryContent::thousandsSeparator},
    {"number.list_separator", &TSTerritoryContent::listSeparator},
    {"currency.decimal_point", &TSTerritoryContent::monetaryDecimalPoint},
    {"currency.thousands_separator", &TSTerritoryContent::monetaryThousandsSeparator},
}};

struct DigitsField {
    const char* key;
    vlx::Le16 TSTerritoryContent::*word;
};
constexpr std::array<DigitsField, 3> kDigits = {{
    {"number.fraction_digits", &TSTerritoryContent::fractionDigits},
    {"currency.fraction_digits", &TSTerritoryContent::currencyDigits},
    {"currency.international_fraction_digits", &TSTerritoryContent::intlCurrencyDigits},
}};

struct PositionField {
    const char* key;
    std::uint8_t TSTerritoryContent::*byte;
};
constexpr std::array<PositionField, 2> kPositions = {{
    {"currency.positive.sign_position", &TSTerritoryContent::positiveSignPosition},
    {"currency.negative.sign_position", &TSTerritoryContent::negativeSignPosition},
}};

struct FlagField {
    const char* key;
    std::uint16_t mask;
};
constexpr std::array<FlagField, 7> kFlags = {{
    {"carried.flag0", kTerritoryFlag0},
    {"currency.positive.symbol_precedes", kPositiveSymbolPrecedes},
    {"currency.positive.symbol_spaced", kPositiveSymbolSpaced},
    {"currency.negative.symbol_precedes", kNegativeSymbolPrecedes},
    {"currency.negative.symbol_spaced", kNegativeSymbolSpaced},
    {"carried.flag5", kTerritoryFlag5},
    {"carried.flag6", kTerritoryFlag6},
}};
constexpr std::uint16_t kAllFlags = 0x007F;

constexpr std::array<const char*, kTexts> kTextKeys = {
    "code",
    "display_name",
    "number.grouping",
    "currency.grouping",
    "currency.symbol",
    "currency.international_symbol",
    "currency.positive.sign",
    "currency.negative.sign",
    "time.time",
    "time.date",
    "time.long_date",
};

// Group sizes from the right, parted by ';'. Only the last may be 0: it repeats the size before it.
std::string groupingRule(std::u16string_view text)
{
    bool first = true;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(u';'), text.size());
        const std::u16string_view size = text.substr(0, end);
        const bool last = end == text.size();
        const auto isDigit = [](char16_t unit) { return unit >= u'0' && unit <= u'9'; };
        if (size.empty() || size.size() > 2 || !std::all_of(size.begin(), size.end(), isDigit))
            return "a group size is one or two digits, and ';' stands between two sizes";
        if (size[0] == u'0' && (first || !last || size.size() > 1))
            return "a group size of 0 stands at the end and behind another size";
        if (end + 1 == text.size())
            return "';' at the end";
        text.remove_prefix(last ? end : end + 1);
        first = false;
    }
    return {};
}

// A pattern of the time functions. The directives that read a pattern of the territory are refused:
// a date pattern with %x in it would expand itself without end.
std::string patternRule(std::u16string_view pattern)
{
    static constexpr std::u16string_view kLetters = u"%abdjmpwyABHIMSUWY";
    static constexpr std::u16string_view kNested = u"cxX";
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        if (pattern[i] != u'%')
            continue;
        ++i;
        if (i < pattern.size() && pattern[i] == u'#')
            ++i;
        if (i == pattern.size())
            return "the pattern ends inside a directive";
        const std::string letter = utf8Of(pattern.substr(i, 1));
        if (kNested.find(pattern[i]) != std::u16string_view::npos)
            return "directive '" + letter + "' would read a pattern of the territory itself";
        if (kLetters.find(pattern[i]) == std::u16string_view::npos)
            return "'" + letter + "' is no directive";
    }
    return {};
}

// A territory serves every code page, so its texts are measured in UTF-8, where they are longest.
std::vector<TextField> textFields()
{
    const TextRule brief = shortText(kUtf8);
    const TextRule filled = both(filledText, brief);
    const TextRule maybe = both(plainText, brief);
    const TextRule grouping = both(groupingRule, brief);
    const TextRule pattern = both(filled, patternRule);
    const std::array<TextRule, kTexts> rules = {filledText, filledText, grouping, grouping,
                                                filled,     filled,     maybe,    maybe,
                                                pattern,    pattern,    pattern};
    std::vector<TextField> fields;
    for (std::size_t i = 0; i < kTexts; ++i)
        fields.push_back({kTextKeys[i], rules[i]});
    return fields;
}

bool isDigit(std::uint16_t unit)
{
    return unit >= u'0' && unit <= u'9';
}

// What is wrong with the separators, each complaint with the key that it is about. They keep the
// rules that hold when a caller of the library sets them.
std::vector<std::pair<std::string, std::string>> separatorFaults(const TSTerritoryContent& header)
{
    std::vector<std::pair<std::string, std::string>> faults;
    for (const auto& [key, word] : kSeparators) {
        const std::uint16_t unit = header.*word;
        const char16_t text[] = {static_cast<char16_t>(unit)};
        const bool mayBeNone = std::string_view(key).ends_with("thousands_separator");
        if (unit == 0 && !mayBeNone)
            faults.emplace_back(key, "no character");
        else if (isDigit(unit))
            faults.emplace_back(key, "a digit");
        else if (std::string complaint = plainText({text, 1}); unit != 0 && !complaint.empty())
            faults.emplace_back(key, complaint);
    }
    if (header.decimalPoint == header.thousandsSeparator)
        faults.emplace_back("number.thousands_separator", "the same as the decimal point");
    if (header.monetaryDecimalPoint == header.monetaryThousandsSeparator)
        faults.emplace_back("currency.thousands_separator", "the same as the decimal point");
    return faults;
}

void readNumbers(Source& source, TSTerritoryContent& header)
{
    for (const auto& [key, word] : kSeparators)
        header.*word = source.character(key);
    for (const auto& [key, fault] : separatorFaults(header))
        source.refuse(key, fault);
    for (const auto& [key, word] : kDigits)
        header.*word = source.number(key, 0, kMostDigits);
    for (const auto& [key, byte] : kPositions)
        header.*byte = static_cast<std::uint8_t>(source.number(key, 0, kMostSignPosition));
    header.word9 = source.number("carried.word9", 0, 65535);
    std::uint16_t flags = 0;
    for (const auto& [key, mask] : kFlags)
        if (source.flag(key))
            flags = static_cast<std::uint16_t>(flags | mask);
    header.flags = flags;
}

void lintNumbers(const ContentLint& view, const TSTerritoryContent& header)
{
    for (const auto& [key, fault] : separatorFaults(header))
        view.complain(key + ": " + fault);
    for (const auto& [key, word] : kDigits)
        if (header.*word > kMostDigits)
            view.complain(std::string(key) + ": " + std::to_string(header.*word) + " is above " +
                          std::to_string(kMostDigits));
    for (const auto& [key, byte] : kPositions)
        if (header.*byte > kMostSignPosition)
            view.complain(std::string(key) + ": " + std::to_string(header.*byte) +
                          " is no sign position");
    if ((header.flags & ~kAllFlags) != 0)
        view.complain("flags: bits without a meaning are set in " + std::to_string(header.flags));
}

// A line of a dump: a dotted key and its value as TOML writes it.
using Line = std::pair<std::string_view, std::string>;

std::string_view tableOf(std::string_view key)
{
    const std::size_t dot = key.rfind('.');
    return dot == std::string_view::npos ? std::string_view() : key.substr(0, dot);
}

std::vector<Line> dumpLines(const ContentView& view, const TSTerritoryContent& header)
{
    std::vector<Line> lines;
    std::size_t word = TSTerritoryContent::kFirstText * sizeof(Le16);
    for (const char* const key : kTextKeys) {
        lines.emplace_back(key, view.shown(*view.at<Le16>(word)));
        word += sizeof(Le16);
    }
    for (const auto& [key, separator] : kSeparators) {
        const auto unit = static_cast<char16_t>(header.*separator);
        lines.emplace_back(key, quoted({&unit, unit == 0 ? 0U : 1U}));
    }
    for (const auto& [key, digits] : kDigits)
        lines.emplace_back(key, std::to_string(header.*digits));
    for (const auto& [key, position] : kPositions)
        lines.emplace_back(key, std::to_string(header.*position));
    for (const auto& [key, mask] : kFlags)
        lines.emplace_back(key, (header.flags & mask) != 0 ? "true" : "false");
    lines.emplace_back("carried.word9", std::to_string(header.word9));
    return lines;
}

} // namespace

std::optional<SourceHead> readTerritoryHead(const std::string& path, Diagnostics& diagnostics)
{
    return readHead(path, TS_OBJ_TERRITORY, diagnostics);
}

std::optional<Object> compileTerritory(const std::string& path, const Catalogue&,
                                       Diagnostics& diagnostics)
{
    Source source(path, diagnostics);
    if (!source.good())
        return std::nullopt;
    const SourceHead head = source.head(TS_OBJ_TERRITORY);
    TSTerritoryContent header{};
    readNumbers(source, header);
    std::vector<std::u16string> texts;
    for (const char* const key : kTextKeys)
        texts.push_back(source.text(key));
    source.check(textFields(), texts);
    TextBlock block(sizeof header);
    block.put(texts, header, TSTerritoryContent::kFirstText);
    header.end = block.end();
    return source.finish(head, block.behind(header));
}

void dumpTerritory(const Bytes& content, std::ostream& out)
{
    const ContentView view(content);
    const std::optional<TSTerritoryContent> header = view.at<TSTerritoryContent>(0);
    if (!header) {
        out << "# shorter than the header of a territory\n";
        return;
    }
    // The lines of a table come together, whatever the order of the header.
    std::vector<Line> lines = dumpLines(view, *header);
    std::stable_sort(lines.begin(), lines.end(), [](const Line& left, const Line& right) {
        return tableOf(left.first) < tableOf(right.first);
    });
    std::string_view table;
    for (const auto& [key, value] : lines) {
        if (tableOf(key) != table)
            out << "\n[" << tableOf(key) << "]\n";
        table = tableOf(key);
        out << key.substr(table.empty() ? 0 : table.size() + 1) << " = " << value << "\n";
    }
}

void lintTerritory(const Bytes& content, const std::string& file, Diagnostics& diagnostics)
{
    const ContentLint view(content, file, diagnostics);
    if (!view.checkSize(sizeof(TSTerritoryContent)))
        return;
    const TSTerritoryContent header = *view.at<TSTerritoryContent>(0);
    lintNumbers(view, header);
    const std::size_t end =
        view.checkTexts(textFields(), TSTerritoryContent::kFirstText, sizeof header, false);
    // The library takes the length of the last text from this word.
    if (header.end != end || header.end != view.size())
        view.complain("end: " + std::to_string(header.end) + ", but the texts end at " +
                      std::to_string(end) + " and the section at " + std::to_string(view.size()));
}

} // namespace vlx::data
