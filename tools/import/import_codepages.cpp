// Code pages from ICU's converters, with the corrections that the row of a page names.
#include "import.hpp"

#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>

#include "converter.hpp"

namespace vlx::import {

namespace {

// What has to be done to ICU's table, and the words for it in the source.
enum Correction {
    kAsItIs,
    kWithoutC1, // bytes that the page does not define become C1 controls or private values in ICU
    kUnrotated, // ICU turns 1A, 1C and 7F around as the PC's hardware showed them
};
constexpr const char* kCorrectionTexts[] = {
    "none",
    "C1 controls and private values that ICU adds below A0 are left out",
    "ICU's rotation of 1A, 1C and 7F is undone",
};

struct PageRow {
    const char* name;
    int id;
    const char* title;
    const char* icu;
    const char* glibc;
    bool ascii;
    bool stateful;
    int maxBytes;
    Correction correction;
};

constexpr PageRow kRows[] = {
    {"ASCII", 367, "the seven bits of ISO 646 IRV", "US-ASCII", "ANSI_X3.4-1968", true, false, 1,
     kAsItIs},
    {"MS1251", 1251, "Windows, Cyrillic", "ibm-5347_P100-1998", "CP1251", true, false, 1,
     kWithoutC1},
    {"MS1252", 1252, "Windows, Western European", "ibm-5348_P100-1997", "CP1252", true, false, 1,
     kWithoutC1},
    {"MS1254", 1254, "Windows, Turkish", "ibm-5350_P100-1998", "CP1254", true, false, 1,
     kWithoutC1},
    {"MS932", 932, "Windows, Japanese (Shift JIS with the NEC and IBM rows)", "ibm-943_P15A-2003",
     "CP932", true, false, 2, kUnrotated},
    {"MS950", 950, "Windows, traditional Chinese (Big5 with user-defined rows)", "windows-950-2000",
     "CP950", true, false, 2, kAsItIs},
    {"IBM037", 37, "EBCDIC, United States and Canada", "ibm-37_P100-1995", "IBM037", false, false,
     1, kAsItIs},
    {"IBM273", 273, "EBCDIC, German", "ibm-273_P100-1995", "IBM273", false, false, 1, kAsItIs},
    {"IBM500", 500, "EBCDIC, international", "ibm-500_P100-1995", "IBM500", false, false, 1,
     kAsItIs},
    {"IBM1047", 1047, "EBCDIC, open systems, Latin-1; line feed and next line exchanged",
     "ibm-1047_P100-1995", "IBM1047", false, false, 1, kAsItIs},
    {"IBM930", 930, "EBCDIC, Japanese, katakana in the place of small letters", "ibm-930_P120-1999",
     "IBM930", false, true, 2, kAsItIs},
    {"IBM939", 939, "EBCDIC, Japanese, Latin with small letters", "ibm-939_P120-1999", "IBM939",
     false, true, 2, kAsItIs},
};

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

void dropC1(ConverterTables& tables)
{
    std::erase_if(tables.decode, [](const auto& cell) {
        const bool control = cell.second >= 0x80 && cell.second <= 0x9F;
        const bool privateUse = cell.second >= 0xE000 && cell.second <= 0xF8FF;
        return cell.first >= 0x80 && cell.first <= 0x9F && (control || privateUse);
    });
}

void unrotate(ConverterTables& tables)
{
    for (const std::uint8_t byte : {std::uint8_t{0x1A}, std::uint8_t{0x1C}, std::uint8_t{0x7F}}) {
        tables.decode[byte] = byte;
        tables.encode[byte] = byte;
    }
}

// Only what decodes back to the same value is kept: a converter's private use characters may have
// fallbacks that cannot be switched off.
void correct(const PageRow& row, ConverterTables& tables)
{
    if (row.correction == kWithoutC1)
        dropC1(tables);
    else if (row.correction == kUnrotated)
        unrotate(tables);
    std::erase_if(tables.encode, [&](const auto& pair) {
        const auto cell = tables.decode.find(pair.second);
        return cell == tables.decode.end() || cell->second != pair.first;
    });
}

void writeHead(std::ostream& out, const PageRow& row)
{
    out << "# " << row.name << ": " << row.title << "\n"
        << "# origin: converter " << row.icu << " of ICU 72.1, by vlx-import codepages\n"
        << "# compared with: " << row.glibc << " of glibc iconv 2.36\n"
        << "# licence: Unicode-DFS-2016 (ICU), see data/NOTICES.md\n"
        << "# corrections: " << kCorrectionTexts[row.correction] << "\n\n";
}

void writeSettings(std::ostream& out, const PageRow& row, const ConverterTables& tables)
{
    const auto byteOf = [&](std::uint16_t value) { return hex(tables.encode.at(value), 2); };
    const bool hasNextLine = !row.ascii && tables.encode.contains(0x0085);
    out << "id = " << row.id << "\nname = " << row.name
        << "\nfamily = " << (row.ascii ? "ascii" : "ebcdic") << "\nmax bytes = " << row.maxBytes
        << '\n';
    if (row.stateful)
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

// Missing in glibc's table, extra in it, different.
void reportGlibc(const PageRow& row, const ConverterTables& tables)
{
    ConverterTables glibc;
    std::cout << row.name << ": " << tables.decode.size() << " characters; " << row.glibc << ' ';
    if (readIconv(row.glibc, row.maxBytes, row.stateful, glibc))
        std::cout << "decode " << differences(tables.decode, glibc.decode) << ", encode "
                  << differences(tables.encode, glibc.encode) << '\n';
    else
        std::cout << "is not installed\n";
}

bool importPage(const PageRow& row, const std::string& directory)
{
    ConverterTables tables;
    if (!readIcu(row.icu, row.maxBytes, row.stateful, tables)) {
        std::cerr << row.name << ": no converter " << row.icu << '\n';
        return false;
    }
    correct(row, tables);
    std::ofstream out(directory + "/" + row.name + ".cp", std::ios::binary | std::ios::trunc);
    writeHead(out, row);
    writeSettings(out, row, tables);
    writeDecode(out, tables);
    writeEncode(out, tables);
    out.close();
    reportGlibc(row, tables);
    if (!out)
        std::cerr << row.name << ": cannot be written to " << directory << '\n';
    return !out.fail();
}

} // namespace

bool importCodePages(const Options& options)
{
    bool good = true;
    for (const PageRow& row : kRows)
        good = importPage(row, options.outputDirectory) && good;
    return good;
}

} // namespace vlx::import
