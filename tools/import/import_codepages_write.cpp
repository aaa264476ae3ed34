#include "import_codepages_write.hpp"

#include <iomanip>
#include <ostream>
#include <sstream>

namespace vlx::import {

namespace {

constexpr std::size_t kColumns = 98;
constexpr std::uint16_t kLineFeed = 0x000A;
constexpr std::uint16_t kCarriageReturn = 0x000D;
constexpr std::uint16_t kNextLine = 0x0085;
// Ids from here on are left to private use by those who number code pages.
constexpr int kTwinIds = 0xE000;

std::string hex(std::uint32_t value, int digits)
{
    std::ostringstream out;
    out << std::hex << std::uppercase << std::setfill('0') << std::setw(digits) << value;
    return out.str();
}

std::string characterText(std::uint32_t character)
{
    return hex(character, character <= 0xFF ? 2 : character <= 0xFFFF ? 4 : 6);
}

std::string byteOf(const ImportedPage& page, std::uint16_t value)
{
    return hex(page.tables.encode.at(value), 2);
}

const char* libraryOf(Origin origin)
{
    return origin == Origin::kIcu ? "ICU 72.1" : "glibc iconv 2.36";
}

// A comment of many words, in lines.
void writeWords(std::ostream& out, const std::vector<std::string>& words)
{
    std::string line = "#  ";
    for (const std::string& word : words) {
        if (line.size() + 1 + word.size() > kColumns) {
            out << line << '\n';
            line = "#  ";
        }
        line += ' ' + word;
    }
    out << line << '\n';
}

// A character above U+FFFF, or several values.
std::string unitsText(const std::u16string& units)
{
    if (units.size() == 2 && units[0] >= 0xD800 && units[0] <= 0xDBFF)
        return hex(0x10000u + (units[0] - 0xD800u) * 0x400u + (units[1] - 0xDC00u), 5);
    std::string text;
    for (const char16_t unit : units)
        text += (text.empty() ? "" : "+") + hex(unit, 4);
    return text;
}

void writeImpossible(std::ostream& out, const ImportedPage& page)
{
    if (page.tables.impossible.empty())
        return;
    out << "# left out, being no single 16-bit value: " << page.tables.impossible.size()
        << " characters\n";
    std::vector<std::string> words;
    for (const auto& [character, units] : page.tables.impossible)
        words.push_back(characterText(character) + "=" + unitsText(units));
    writeWords(out, words);
}

void writeHead(std::ostream& out, const ImportedPage& page)
{
    const auto& [family, row, corrections, tables] = page;
    out << "# " << row.name << ": " << family.title << row.title << "\n"
        << "# origin: converter " << row.converter << " of " << libraryOf(family.origin)
        << ", by vlx-import codepages\n";
    if (row.compared != nullptr)
        out << "# compared with: " << row.compared << " of " << libraryOf(otherThan(family.origin))
            << '\n';
    out << (family.origin == Origin::kIcu
                ? "# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md\n"
                : "# licence: a table of facts, see data/NOTICES.md\n")
        << "# corrections:" << (corrections.empty() ? " none\n" : "\n");
    for (const char* const correction : corrections)
        out << "# - " << correction << '\n';
    writeImpossible(out, page);
    out << '\n';
}

void writeSettings(std::ostream& out, const ImportedPage& page)
{
    const PageFamily& family = page.family;
    const bool hasNextLine = !family.ascii() && page.tables.encode.contains(kNextLine);
    out << "id = " << page.row.id << "\nname = " << page.row.name
        << "\nfamily = " << (family.ascii() ? "ascii" : "ebcdic")
        << "\nmax bytes = " << family.maxBytes << '\n';
    if (family.stateful())
        out << "shift = 0E 0F\n";
    out << "substitution = " << byteOf(page, '?') << "\nlf = " << byteOf(page, kLineFeed)
        << "\ncr = " << byteOf(page, kCarriageReturn)
        << "\nlineEnd3 = " << byteOf(page, hasNextLine ? kNextLine : kLineFeed)
        << "\nlineEnd4 = " << byteOf(page, kLineFeed) << '\n';
}

// Sixteen cells from `start` on, or nothing if none is assigned. A row of equal steps is a run.
std::string rowText(const ConverterTables& tables, std::uint32_t start)
{
    std::string text;
    int assigned = 0;
    int ascending = 0;
    const auto first = tables.decode.find(start);
    for (std::uint32_t i = 0; i < 16; ++i) {
        const auto cell = tables.decode.find(start + i);
        const bool present = cell != tables.decode.end();
        assigned += present;
        ascending += present && first != tables.decode.end() && cell->second == first->second + i;
        text += present ? " " + hex(cell->second, 4) : " ----";
    }
    if (assigned == 0)
        return {};
    if (ascending == 16)
        text = " " + hex(first->second, 4) + ".." + hex(first->second + 15u, 4);
    while (text.ends_with(" ----"))
        text.resize(text.size() - 5);
    return characterText(start) + ":" + text + "\n";
}

void writeDecode(std::ostream& out, const ConverterTables& tables)
{
    out << "\n[decode]\n";
    std::uint32_t written = 0xFFFFFFFF;
    for (const auto& [character, value] : tables.decode) {
        if (const std::uint32_t row = character & ~15u; row != written) {
            out << rowText(tables, row);
            written = row;
        }
    }
}

// What the reverse of the decode table does not tell: values with several characters, and those
// that are decoded only.
void writeEncode(std::ostream& out, const ConverterTables& tables)
{
    std::map<std::uint16_t, int> counts;
    for (const auto& [character, value] : tables.decode)
        ++counts[value];
    const char* head = "\n[encode]\n";
    for (const auto& [value, count] : counts) {
        const auto back = tables.encode.find(value);
        if (back != tables.encode.end() && count == 1)
            continue;
        out << head << hex(value, 4) << " = "
            << (back == tables.encode.end() ? "none" : characterText(back->second)) << '\n';
        head = "";
    }
}

} // namespace

void writePage(std::ostream& out, const ImportedPage& page)
{
    writeHead(out, page);
    writeSettings(out, page);
    writeDecode(out, page.tables);
    writeEncode(out, page.tables);
}

std::string twinName(const PageRow& row)
{
    return row.name + std::string("-NL");
}

void writeTwin(std::ostream& out, const ImportedPage& page)
{
    const std::string lineFeed = byteOf(page, kLineFeed);
    const std::string nextLine = byteOf(page, kNextLine);
    out << "# " << twinName(page.row) << ": " << page.row.name
        << " with line feed and next line exchanged, for files of systems that\n"
        << "# end a line by the next line character\n"
        << "# origin and licence: those of " << page.row.name << "\n\n"
        << "id = " << kTwinIds + page.row.id << "\nname = " << twinName(page.row)
        << "\nbased on = " << page.row.name << "\nlf = " << nextLine << "\nlineEnd3 = " << lineFeed
        << "\nlineEnd4 = " << nextLine << "\n\n[decode]\n"
        << nextLine << ": " << hex(kLineFeed, 4) << '\n'
        << lineFeed << ": " << hex(kNextLine, 4) << '\n';
}

Origin otherThan(Origin origin)
{
    return origin == Origin::kIcu ? Origin::kGlibc : Origin::kIcu;
}

} // namespace vlx::import
