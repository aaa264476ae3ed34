// Code pages from the converters of ICU and glibc, with the corrections that their rows name.
#include "import.hpp"

#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "converter.hpp"
#include "import_codepages_table.hpp"

namespace vlx::import {

namespace {

std::string hex(std::uint32_t value, int digits)
{
    std::ostringstream out;
    out << std::hex << std::uppercase << std::setfill('0') << std::setw(digits) << value;
    return out.str();
}

int digitsOf(std::uint32_t character)
{
    return character <= 0xFF ? 2 : character <= 0xFFFF ? 4 : 6;
}

bool isC1(std::uint16_t value)
{
    return value >= 0x80 && value <= 0x9F;
}

// Takes a run of cells to their corrected values.
void change(const CellChange& run, ConverterTables& tables)
{
    for (std::uint32_t cell = run.first; cell <= run.last; ++cell) {
        const auto found = tables.decode.find(cell);
        if (run.value >= 0)
            tables.decode[cell] = static_cast<std::uint16_t>(run.value + int(cell - run.first));
        else if (found != tables.decode.end() && (run.value == kUnassigned || isC1(found->second)))
            tables.decode.erase(found);
    }
}

// Only what decodes back to the same value is kept: a converter's private use characters may have
// fallbacks that cannot be switched off, and a corrected cell leaves what encoded to it behind.
void correct(const PageRow& row, ConverterTables& tables)
{
    for (const Correction& correction : row.corrections)
        for (const CellChange& run : correction.cells)
            change(run, tables);
    std::erase_if(tables.encode, [&](const auto& pair) {
        const auto cell = tables.decode.find(pair.second);
        return cell == tables.decode.end() || cell->second != pair.first;
    });
    for (const Correction& correction : row.corrections)
        for (const CellChange& run : correction.cells)
            for (std::uint32_t cell = run.first; cell <= run.last; ++cell)
                if (run.value >= 0)
                    tables.encode.emplace(tables.decode.at(cell), cell);
}

const char* libraryOf(Origin origin)
{
    return origin == Origin::kIcu ? "ICU 72.1" : "glibc iconv 2.36";
}

Origin otherThan(Origin origin)
{
    return origin == Origin::kIcu ? Origin::kGlibc : Origin::kIcu;
}

void writeHead(std::ostream& out, const PageRow& row)
{
    out << "# " << row.name << ": " << row.title << "\n"
        << "# origin: converter " << row.converter << " of " << libraryOf(row.origin)
        << ", by vlx-import codepages\n";
    if (row.compared != nullptr)
        out << "# compared with: " << row.compared << " of " << libraryOf(otherThan(row.origin))
            << '\n';
    out << (row.origin == Origin::kIcu ? "# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md\n"
                                       : "# licence: a table of facts, see data/NOTICES.md\n");
    out << "# corrections:" << (row.corrections.empty() ? " none\n" : "\n");
    for (const Correction& correction : row.corrections)
        out << "# - " << correction.reason << '\n';
    out << '\n';
}

void writeSettings(std::ostream& out, const PageRow& row, const ConverterTables& tables)
{
    const auto byteOf = [&](std::uint16_t value) { return hex(tables.encode.at(value), 2); };
    const bool hasNextLine = !row.ascii() && tables.encode.contains(0x0085);
    out << "id = " << row.id << "\nname = " << row.name
        << "\nfamily = " << (row.ascii() ? "ascii" : "ebcdic") << "\nmax bytes = " << row.maxBytes
        << '\n';
    if (row.stateful())
        out << "shift = 0E 0F\n";
    out << "substitution = " << byteOf('?') << "\nlf = " << byteOf('\n')
        << "\ncr = " << byteOf('\r') << "\nlineEnd3 = " << byteOf(hasNextLine ? 0x0085 : 0x000A)
        << "\nlineEnd4 = " << byteOf('\n') << '\n';
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
    return hex(start, digitsOf(start)) + ":" + text + "\n";
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
            << (back == tables.encode.end() ? "none" : hex(back->second, digitsOf(back->second)))
            << '\n';
        head = "";
    }
}

template <class Map>
std::string differences(const Map& ours, const Map& theirs)
{
    int missing = 0;
    int extra = 0;
    int different = 0;
    for (const auto& [key, value] : ours) {
        const auto found = theirs.find(key);
        missing += found == theirs.end();
        different += found != theirs.end() && found->second != value;
    }
    for (const auto& [key, value] : theirs)
        extra += !ours.contains(key);
    return "-" + std::to_string(missing) + " +" + std::to_string(extra) + " !" +
           std::to_string(different);
}

bool read(Origin origin, const char* converter, const PageRow& row, ConverterTables& tables)
{
    return origin == Origin::kIcu ? readIcu(converter, row.maxBytes, row.stateful(), tables)
                                  : readIconv(converter, row.maxBytes, row.stateful(), tables);
}

// What the other library lacks, what it has beyond the page, and what is different.
void reportOther(const PageRow& row, const ConverterTables& tables)
{
    std::cout << row.name << ": " << tables.decode.size() << " characters";
    ConverterTables other;
    if (row.compared != nullptr && read(otherThan(row.origin), row.compared, row, other))
        std::cout << "; " << row.compared << " decode " << differences(tables.decode, other.decode)
                  << ", encode " << differences(tables.encode, other.encode);
    std::cout << '\n';
}

bool importPage(const PageRow& row, const std::string& directory)
{
    ConverterTables tables;
    if (!read(row.origin, row.converter, row, tables)) {
        std::cerr << row.name << ": no converter " << row.converter << '\n';
        return false;
    }
    correct(row, tables);
    std::ofstream out(directory + "/" + row.name + ".cp", std::ios::binary | std::ios::trunc);
    writeHead(out, row);
    writeSettings(out, row, tables);
    writeDecode(out, tables);
    writeEncode(out, tables);
    out.close();
    reportOther(row, tables);
    if (!out)
        std::cerr << row.name << ": cannot be written to " << directory << '\n';
    return !out.fail();
}

} // namespace

bool importCodePages(const Options& options)
{
    bool good = true;
    for (const PageRow& row : pageRows())
        good = importPage(row, options.outputDirectory) && good;
    return good;
}

} // namespace vlx::import
