// Sorts from CLDR: the root table and the rules of the languages.
#include "import.hpp"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <regex>
#include <sstream>

#include <pugixml.hpp>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include "data/content_text.hpp"
#include "data/sort_root.hpp"
#include "data/sourcefile.hpp"
#include "import_sorts_table.hpp"

namespace vlx::import {

namespace {

namespace fs = std::filesystem;
using data::hexText;
using data::RootElement;

// The pages that every code page of the importer's table needs, and nearly all letters of Europe
// and the Near East: as many as a section holds.
constexpr const char* kPages = "00-06 0E-0F 10-11 18 1E-1F 20-27 29 2E-2F 30-33 F9-FB FE-FF";
// Ahead of unlisted characters, weights of the table; behind them, its highest.
constexpr std::uint32_t kHighest = 0xFFFD;
constexpr std::uint32_t kBehindAll = 0x40000;

struct Entry {
    std::u16string characters;
    std::vector<RootElement> elements;
};

std::vector<std::uint32_t> weightsOf(const Entry& entry)
{
    std::vector<std::uint32_t> weights;
    for (const RootElement& one : entry.elements)
        weights.insert(weights.end(), {one.primary, one.secondary, one.tertiary});
    return weights;
}

// "[.2075.0020.0002][.0000.002B.0002]". An ideograph is a pair of elements there, and one here.
std::vector<RootElement> elementsOf(const std::string& text)
{
    static const std::regex kElement(R"(\[[.*]([0-9A-F]+)\.([0-9A-F]+)\.([0-9A-F]+)\])");
    std::vector<RootElement> elements;
    std::uint32_t lead = 0;
    for (std::sregex_iterator at(text.begin(), text.end(), kElement), end; at != end; ++at) {
        const auto value = [&](std::size_t group) {
            return static_cast<std::uint32_t>(std::stoul((*at)[group], nullptr, 16));
        };
        const std::uint32_t primary = value(1);
        if (lead != 0) {
            const std::uint32_t base = lead < 0xFB80   ? data::kIdeographs
                                       : lead < 0xFBC0 ? data::kExtensionA
                                                       : data::kUnlisted;
            elements.back().primary = base | (lead & 1) << 15 | (primary & 0x7FFF);
            lead = 0;
            continue;
        }
        if (primary >= 0xFB40 && primary < 0xFC00)
            lead = primary;
        elements.push_back({primary >= kHighest ? kBehindAll + primary : primary,
                            static_cast<std::uint16_t>(value(2)),
                            static_cast<std::uint16_t>(value(3))});
    }
    // Not a weight at all, but a sign for "none on any level".
    std::erase_if(elements, [](const RootElement& one) {
        return one.primary == 0 && one.secondary == 0 && one.tertiary == 0;
    });
    return elements;
}

// Empty if one of them is above U+FFFF.
std::u16string charactersOf(const std::string& text)
{
    std::istringstream in(text);
    std::u16string characters;
    for (std::string word; in >> word;) {
        if (word.size() != 4)
            return {};
        characters += static_cast<char16_t>(std::stoul(word, nullptr, 16));
    }
    return characters;
}

bool readLines(const fs::path& path, std::vector<std::string>& lines)
{
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    if (lines.empty())
        std::cerr << path.string() << ": cannot be read\n";
    return !lines.empty();
}

std::vector<Entry> entriesOf(const std::vector<std::string>& lines)
{
    std::vector<Entry> entries;
    for (const std::string& line : lines) {
        const std::size_t semicolon = line.find(';');
        if (line.empty() || line[0] == '#' || line[0] == '@' || semicolon == std::string::npos)
            continue;
        const std::u16string characters = charactersOf(line.substr(0, semicolon));
        if (!characters.empty())
            entries.push_back({characters, elementsOf(line.substr(semicolon))});
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& one, const Entry& other) {
        return std::pair(weightsOf(one), one.characters) <
               std::pair(weightsOf(other), other.characters);
    });
    return entries;
}

// Where groups begin: the table of fractional weights names them, and the line behind such a head
// has the weight of the plain table.
std::vector<data::RootGroup> groupsOf(const std::vector<std::string>& lines)
{
    static const std::regex kScript(R"(# (\S+) \S+\t\[([0-9A-F]{4})\.)");
    static const std::regex kHead(R"(# (.*) first primary)");
    static const std::map<std::string, std::string> kKinds = {{"SPACE", "space"},
                                                              {"PUNCTUATION", "punct"},
                                                              {"SYMBOL", "symbol"},
                                                              {"CURRENCY", "currency"},
                                                              {"DIGIT", "digit"}};
    std::vector<data::RootGroup> groups;
    std::string head;
    std::smatch match;
    for (const std::string& line : lines) {
        if (line.starts_with("FDD1") && std::regex_search(line, match, kHead)) {
            head = match[1];
        } else if (!head.empty() && std::regex_search(line, match, kScript) && match[2] != "0000") {
            const auto kind = kKinds.find(head);
            groups.push_back({kind == kKinds.end() ? match[1].str() : kind->second,
                              static_cast<std::uint32_t>(std::stoul(match[2].str(), nullptr, 16))});
            head.clear();
        }
    }
    groups.push_back({"Hani", data::kIdeographs});
    groups.push_back({"Zzzz", data::kUnlisted});
    return groups;
}

std::string textOf(const RootElement& element)
{
    if (element.secondary == data::kCommonSecondary && element.tertiary == data::kCommonTertiary)
        return hexText(element.primary, element.primary > 0xFFFF ? 5 : 4);
    std::ostringstream out;
    out << std::hex << std::uppercase << element.primary << '.' << element.secondary << '.'
        << element.tertiary;
    return out.str();
}

std::string textOf(std::u16string_view characters)
{
    std::string text;
    for (const char16_t unit : characters)
        text += (text.empty() ? "" : " ") + hexText(unit, 4);
    return text;
}

void writeElements(const std::vector<Entry>& entries, std::ostream& out)
{
    out << "\n[elements] # characters, their collation elements; in ascending order\n";
    for (const Entry& entry : entries) {
        out << textOf(entry.characters) << '\t';
        for (const RootElement& element : entry.elements)
            out << (&element == entry.elements.data() ? "" : " ") << textOf(element);
        out << (entry.elements.empty() ? "-\n" : "\n");
    }
}

// Syllables of Hangul, which go by rule, are left out.
bool writeDecompositions(std::ostream& out)
{
    UErrorCode code = U_ZERO_ERROR;
    const icu::Normalizer2* const normalizer = icu::Normalizer2::getNFDInstance(code);
    if (U_FAILURE(code)) {
        std::cerr << "ICU has no normalisation data\n";
        return false;
    }
    out << "\n[decompositions]\n";
    for (UChar32 value = 0; value <= 0xFFFF; ++value) {
        icu::UnicodeString parts;
        if ((value >= 0xAC00 && value <= 0xD7A3) || !normalizer->getDecomposition(value, parts) ||
            parts.isEmpty())
            continue;
        const std::u16string units(parts.getBuffer(), static_cast<std::size_t>(parts.length()));
        if (std::none_of(units.begin(), units.end(),
                         [](char16_t c) { return U16_IS_SURROGATE(c); }))
            out << hexText(static_cast<std::uint32_t>(value), 4) << '\t' << textOf(units) << '\n';
    }
    return true;
}

void writeClasses(std::ostream& out)
{
    out << "\n[classes] # of combining marks\n";
    for (UChar32 first = 0; first <= 0xFFFF; ++first) {
        const int number = u_getCombiningClass(first);
        UChar32 last = first;
        while (last < 0xFFFF && u_getCombiningClass(last + 1) == number)
            ++last;
        if (number != 0)
            out << hexText(static_cast<std::uint32_t>(first), 4)
                << (last > first ? "-" + hexText(static_cast<std::uint32_t>(last), 4) : "") << '\t'
                << number << '\n';
        first = last;
    }
}

bool finish(std::ofstream& out, const fs::path& path)
{
    out.close();
    if (!out)
        std::cerr << path.string() << ": cannot be written\n";
    return out.good();
}

bool importRoot(const fs::path& cldr, const fs::path& path)
{
    std::vector<std::string> keys;
    std::vector<std::string> fractional;
    if (!readLines(cldr / "common/uca/allkeys_CLDR.txt", keys) ||
        !readLines(cldr / "common/uca/FractionalUCA.txt", fractional))
        return false;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << "# The root order: collation elements of all characters up to U+FFFF.\n#\n"
           "# Origin: CLDR 41, allkeys_CLDR.txt (UCA 14.0.0) and, for the groups, "
           "FractionalUCA.txt;\n"
           "# decompositions and combining classes of Unicode 15 by ICU 72; by `vlx-import "
           "sorts`.\n"
           "# Copyright © 2021 Unicode, Inc.\n"
           "# Licence: Unicode-DFS-2016.\n\n[pages] # with a record for each character\n"
        << kPages << "\n\n[groups] # name, smallest level 1 weight\n";
    for (const data::RootGroup& group : groupsOf(fractional))
        out << group.name << '\t' << hexText(group.first, group.first > 0xFFFF ? 5 : 4) << '\n';
    writeElements(entriesOf(keys), out);
    if (!writeDecompositions(out))
        return false;
    writeClasses(out);
    return finish(out, path);
}

// Composed, so that a reader sees letters; marks that stand alone are escaped.
std::string readable(const std::string& rule)
{
    UErrorCode code = U_ZERO_ERROR;
    const icu::Normalizer2* const normalizer = icu::Normalizer2::getNFCInstance(code);
    const icu::UnicodeString text = normalizer->normalize(icu::UnicodeString::fromUTF8(rule), code);
    std::string result;
    for (int32_t i = 0; i < text.length(); ++i) {
        const char16_t unit = text[i];
        const bool isMark = (U_GET_GC_MASK(unit) & (U_GC_M_MASK | U_GC_CF_MASK)) != 0;
        result += isMark ? "\\u" + hexText(unit, 4) : data::utf8Of({&unit, 1});
    }
    return result;
}

// Rules without their comments, blanks and empty lines.
std::string cleaned(const std::string& rules, const SortRow& row)
{
    std::istringstream in(rules);
    std::string text;
    for (std::string line; std::getline(in, line);) {
        const std::string rule(data::trimmed(line.substr(0, line.find('#'))));
        const bool isLeft = row.left != nullptr && rule == row.left;
        if (!rule.empty() && !isLeft)
            text += readable(rule) + "\n";
    }
    return text;
}

std::optional<std::string> rulesOf(const fs::path& cldr, const SortRow& row)
{
    if (row.locale == nullptr)
        return *row.rules == '\0' ? std::string() : row.rules + std::string("\n");
    pugi::xml_document document;
    const fs::path path = cldr / "common/collation" / (std::string(row.locale) + ".xml");
    if (!document.load_file(path.c_str())) {
        std::cerr << path.string() << ": cannot be read\n";
        return std::nullopt;
    }
    for (const pugi::xml_node node : document.child("ldml").child("collations").children())
        if (std::string(node.attribute("type").value()) == row.type && !node.attribute("alt"))
            return cleaned(node.child("cr").child_value(), row);
    std::cerr << path.string() << ": has no collation " << row.type << "\n";
    return std::nullopt;
}

bool importSort(const fs::path& cldr, const SortRow& row, const fs::path& path)
{
    const auto rules = rulesOf(cldr, row);
    if (!rules)
        return false;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << "# " << row.object << ": " << row.title << ".\n#\n";
    if (row.locale != nullptr)
        out << "# Origin: CLDR 41, collation " << row.type << " of " << row.locale
            << ", by `vlx-import sorts`.\n"
            << "# Copyright © 1991-2022 Unicode, Inc.\n# Licence: Unicode-DFS-2016.\n";
    else
        out << "# Origin: rules of our own over the root table, by `vlx-import sorts`.\n";
    if (row.left != nullptr)
        out << "# Left out: " << row.left << "\n";
    if (row.remark != nullptr)
        out << "# " << row.remark << "\n";
    out << "\nid = " << row.id << "\nname = \"" << row.object << "\"\nrules = '''\n"
        << *rules << "'''\n";
    if (row.pages != nullptr)
        out << "pages = \"" << row.pages << "\"\n";
    out << row.keys;
    return finish(out, path);
}

} // namespace

bool importSorts(const CldrOptions& options)
{
    const fs::path cldr = options.cldrDirectory;
    const fs::path directory = fs::path(options.outputDirectory) / "sorts";
    std::error_code error;
    fs::create_directories(directory, error);
    bool good = importRoot(cldr, directory / "root.keys");
    for (const SortRow& row : sortRows())
        good = importSort(cldr, row, directory / (std::string(row.object) + ".toml")) && good;
    return good;
}

} // namespace vlx::import
