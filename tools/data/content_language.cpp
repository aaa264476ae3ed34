// Language objects: names of days and months, AM and PM, and the pairs of a case mapping that are
// not one character for one. docs/format-language.md tells the source and the content.
#include "content.hpp"

#include <algorithm>
#include <ostream>
#include <set>
#include <utility>

#include "content_text.hpp"
#include "content_view.hpp"
#include "locale/content.hpp"
#include "tsconst.h"

namespace vlx::data {

namespace {

using Names = std::vector<std::u16string>;

constexpr std::size_t kDays = TSLanguageContent::kDays;
constexpr std::size_t kMonths = TSLanguageContent::kMonths;

// The texts in the order of their header words.
std::vector<TextField> textFields(std::uint16_t codePage)
{
    const TextRule name = both(filledText, shortText(codePage));
    const TextRule maybe = both(plainText, shortText(codePage));
    std::vector<TextField> fields = {{"code", filledText}, {"display_name", filledText}};
    const auto list = [&](const std::string& key, std::size_t count, std::size_t filled) {
        for (std::size_t i = 0; i < count; ++i)
            fields.push_back({key + "[" + std::to_string(i) + "]", i < filled ? name : maybe});
    };
    list("days.full", kDays, kDays);
    list("days.short", kDays, kDays);
    list("months.full", kMonths, kMonths - 1);
    list("months.short", kMonths, kMonths - 1);
    fields.push_back({"day_periods.am", maybe});
    fields.push_back({"day_periods.pm", maybe});
    return fields;
}

// The same texts from the source. A thirteenth month that the source does not name is empty.
Names readTexts(Source& source)
{
    Names texts = {source.text("code"), source.text("display_name")};
    const auto list = [&](const std::string& key, std::size_t least, std::size_t count) {
        Names names = source.texts(key, least, count);
        names.resize(count);
        texts.insert(texts.end(), names.begin(), names.end());
    };
    list("days.full", kDays, kDays);
    list("days.short", kDays, kDays);
    list("months.full", kMonths - 1, kMonths);
    list("months.short", kMonths - 1, kMonths);
    texts.push_back(source.text("day_periods.am"));
    texts.push_back(source.text("day_periods.pm"));
    return texts;
}

std::uint16_t unitAt(const std::u16string& text, std::size_t index)
{
    return index < text.size() ? text[index] : std::uint16_t{0};
}

// Appends a pair table and gives the number of its entries.
std::uint16_t putPairs(Source& source, const std::string& key, TextBlock& block)
{
    const std::vector<SourcePair> pairs = source.pairs(key);
    std::set<std::u16string> seen;
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const auto& [from, to] = pairs[i];
        if (!seen.insert(from).second)
            source.refuse(key + "[" + std::to_string(i) + "]",
                          "an entry above has the same 'from'");
        TSLanguagePair entry{};
        entry.first = unitAt(from, 0);
        entry.second = unitAt(from, 1);
        entry.result1 = unitAt(to, 0);
        entry.result2 = unitAt(to, 1);
        block.append(entry);
    }
    return static_cast<std::uint16_t>(pairs.size());
}

// One of the two pair tables as a content tells it.
struct PairTable {
    const char* name;
    std::size_t offset;
    std::size_t count;

    std::size_t end() const { return offset + count * sizeof(TSLanguagePair); }
    TSLanguagePair entry(const ContentView& view, std::size_t index) const
    {
        return *view.at<TSLanguagePair>(offset + index * sizeof(TSLanguagePair));
    }
};

PairTable upperTable(const TSLanguageContent& header)
{
    return {"pairs.upper", header.upperPairs, header.upperPairCount};
}

PairTable lowerTable(const TSLanguageContent& header)
{
    return {"pairs.lower", header.lowerPairs, header.lowerPairCount};
}

void lintTable(const ContentLint& view, const PairTable& table, std::size_t floor)
{
    if (table.offset < floor || table.end() > view.size()) {
        view.complain(std::string(table.name) + ": " + std::to_string(table.count) +
                      " entries at offset " + std::to_string(table.offset) + " are outside " +
                      std::to_string(floor) + " to " + std::to_string(view.size()));
        return;
    }
    std::set<std::pair<std::uint16_t, std::uint16_t>> seen;
    for (std::size_t i = 0; i < table.count; ++i) {
        const TSLanguagePair pair = table.entry(view, i);
        const std::string place = std::string(table.name) + "[" + std::to_string(i) + "]: ";
        if (pair.first == 0 || pair.result1 == 0)
            view.complain(place + "an entry without its first character or its first result");
        if (!seen.insert({pair.first, pair.second}).second)
            view.complain(place + "an entry above has the same characters, so this is never found");
    }
}

void lintIds(const ContentLint& view, const TSLanguageContent& header)
{
    if (header.defaultTerritory == 0)
        view.complain("default_territory: id 0");
    if (header.defaultCodePage == 0)
        view.complain("default_codepage: id 0");
}

void dumpNames(const ContentView& view, const char* key, const Le16* offsets, std::size_t count,
               std::ostream& out)
{
    out << key << " = [";
    for (std::size_t i = 0; i < count; ++i)
        out << (i == 0 ? "" : ", ") << view.shown(offsets[i]);
    out << "]\n";
}

void dumpTable(const ContentView& view, const PairTable& table, std::ostream& out)
{
    if (table.end() > view.size()) {
        out << "# " << table.name << " lies outside\n";
        return;
    }
    const auto text = [](std::uint16_t first, std::uint16_t second) {
        std::u16string units(1, static_cast<char16_t>(first));
        if (second != 0)
            units += static_cast<char16_t>(second);
        return quoted(units);
    };
    for (std::size_t i = 0; i < table.count; ++i) {
        const TSLanguagePair pair = table.entry(view, i);
        out << "\n[[" << table.name << "]]\nfrom = " << text(pair.first, pair.second)
            << "\nto = " << text(pair.result1, pair.result2) << "\n";
    }
}

} // namespace

std::optional<SourceHead> readLanguageHead(const std::string& path, Diagnostics& diagnostics)
{
    return readHead(path, TS_OBJ_LANGUAGE, diagnostics);
}

std::optional<Object> compileLanguage(const std::string& path, const Catalogue& catalogue,
                                      Diagnostics& diagnostics)
{
    Source source(path, diagnostics);
    if (!source.good())
        return std::nullopt;
    const SourceHead head = source.head(TS_OBJ_LANGUAGE);
    TSLanguageContent header{};
    header.defaultTerritory = source.reference("default_territory", TS_OBJ_TERRITORY, catalogue);
    header.defaultCodePage = source.reference("default_codepage", TS_OBJ_CODEPAGE, catalogue);
    header.defaultSort = source.reference("default_sort", TS_OBJ_SORT, catalogue);
    TextBlock block(sizeof header);
    const Names texts = readTexts(source);
    source.check(textFields(header.defaultCodePage), texts);
    block.put(texts, header, TSLanguageContent::kFirstText);
    header.upperPairs = block.end();
    header.upperPairCount = putPairs(source, "pairs.upper", block);
    header.lowerPairs = block.end();
    header.lowerPairCount = putPairs(source, "pairs.lower", block);
    return source.finish(head, block.behind(header));
}

void dumpLanguage(const Bytes& content, std::ostream& out)
{
    const ContentView view(content);
    const std::optional<TSLanguageContent> header = view.at<TSLanguageContent>(0);
    if (!header) {
        out << "# shorter than the header of a language\n";
        return;
    }
    out << "code = " << view.shown(header->code) << "\n"
        << "display_name = " << view.shown(header->name) << "\n"
        << "default_territory = " << header->defaultTerritory << "\n"
        << "default_codepage = " << header->defaultCodePage << "\n"
        << "default_sort = " << header->defaultSort << "\n\n[days]\n";
    dumpNames(view, "full", header->dayNames, kDays, out);
    dumpNames(view, "short", header->shortDayNames, kDays, out);
    out << "\n[months]\n";
    dumpNames(view, "full", header->monthNames, kMonths, out);
    dumpNames(view, "short", header->shortMonthNames, kMonths, out);
    out << "\n[day_periods]\nam = " << view.shown(header->am) << "\npm = " << view.shown(header->pm)
        << "\n";
    dumpTable(view, upperTable(*header), out);
    dumpTable(view, lowerTable(*header), out);
}

void lintLanguage(const Bytes& content, const std::string& file, Diagnostics& diagnostics)
{
    const ContentLint view(content, file, diagnostics);
    if (!view.checkSize(sizeof(TSLanguageContent)))
        return;
    const TSLanguageContent header = *view.at<TSLanguageContent>(0);
    lintIds(view, header);
    const std::size_t end = view.checkTexts(textFields(header.defaultCodePage),
                                            TSLanguageContent::kFirstText, sizeof header, true);
    const PairTable upper = upperTable(header);
    const PairTable lower = lowerTable(header);
    lintTable(view, upper, end);
    lintTable(view, lower, std::max(end, upper.end()));
    if (lower.end() < view.size())
        view.complain(std::to_string(view.size() - lower.end()) + " bytes behind the pair tables");
}

} // namespace vlx::data
