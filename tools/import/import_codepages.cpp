// Code pages from the converters of ICU and glibc, with the corrections that the table names.
#include "import.hpp"

#include <algorithm>
#include <fstream>
#include <iostream>

#include "converter.hpp"
#include "import_codepages_table.hpp"
#include "import_codepages_write.hpp"
#include "sourcefile.hpp"

namespace vlx::import {

namespace {

bool becomesUnassigned(const CellChange& run, std::uint16_t value)
{
    const bool control = value >= 0x80 && value <= 0x9F;
    const bool privateUse = value >= 0xE000 && value <= 0xF8FF;
    return run.value == kUnassigned || (run.value == kNoControls && control) ||
           (run.value == kNoPrivate && privateUse);
}

// Takes a run of cells to their corrected values.
void change(const CellChange& run, ConverterTables& tables)
{
    for (std::uint32_t cell = run.first; cell <= run.last; ++cell) {
        const auto found = tables.decode.find(cell);
        if (run.value >= 0)
            tables.decode[cell] = static_cast<std::uint16_t>(run.value + int(cell - run.first));
        else if (found != tables.decode.end() && becomesUnassigned(run, found->second))
            tables.decode.erase(found);
    }
}

// A corrected cell is what its value encodes to, if no other cell was before.
void encodeChanged(const CellChange& run, ConverterTables& tables)
{
    for (std::uint32_t cell = run.first; run.value >= 0 && cell <= run.last; ++cell)
        tables.encode.emplace(tables.decode.at(cell), cell);
}

bool isFor(const PageCorrection& correction, const std::string& page)
{
    const auto pages = data::wordsOf(correction.pages);
    return std::find(pages.begin(), pages.end(), page) != pages.end();
}

// Only what decodes back to the same value is kept: a converter's private use characters may have
// fallbacks that cannot be switched off, and a corrected cell leaves what encoded to it behind.
void correct(ImportedPage& page)
{
    std::vector<CellChange> runs;
    for (const PageCorrection& correction : pageCorrections())
        if (isFor(correction, page.row.name)) {
            page.corrections.push_back(correction.reason);
            for (const CellChange& run : correction.cells)
                if (run.last != 0)
                    runs.push_back(run);
        }
    for (const CellChange& run : runs)
        change(run, page.tables);
    std::erase_if(page.tables.encode, [&](const auto& pair) {
        const auto cell = page.tables.decode.find(pair.second);
        return cell == page.tables.decode.end() || cell->second != pair.first;
    });
    for (const CellChange& run : runs)
        encodeChanged(run, page.tables);
}

bool read(Origin origin, const char* converter, const PageFamily& family, ConverterTables& tables)
{
    return origin == Origin::kIcu
               ? readIcu(converter, family.maxBytes, family.stateful(), tables)
               : readIconv(converter, family.maxBytes, family.stateful(), tables);
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

// What the other library lacks, what it has beyond the page, and what is different.
void reportOther(const ImportedPage& page)
{
    const auto& [family, row, corrections, tables] = page;
    std::cout << row.name << ": " << tables.decode.size() << " characters";
    ConverterTables other;
    if (row.compared != nullptr && read(otherThan(family.origin), row.compared, family, other))
        std::cout << "; " << row.compared << " decode " << differences(tables.decode, other.decode)
                  << ", encode " << differences(tables.encode, other.encode);
    std::cout << '\n';
}

template <class Write>
bool writeSource(const std::string& directory, const std::string& name, Write write)
{
    std::ofstream out(directory + "/" + name + ".cp", std::ios::binary | std::ios::trunc);
    write(out);
    out.close();
    if (!out)
        std::cerr << name << ": cannot be written to " << directory << '\n';
    return !out.fail();
}

bool importPage(const PageFamily& family, const PageRow& row, const std::string& directory)
{
    ImportedPage page{family, row, {}, {}};
    if (!read(family.origin, row.converter, family, page.tables)) {
        std::cerr << row.name << ": no converter " << row.converter << '\n';
        return false;
    }
    correct(page);
    reportOther(page);
    const bool good =
        writeSource(directory, row.name, [&](std::ostream& out) { writePage(out, page); });
    if (family.shape != Shape::kEbcdic)
        return good;
    return writeSource(directory, twinName(row),
                       [&](std::ostream& out) { writeTwin(out, page); }) &&
           good;
}

} // namespace

bool importCodePages(const Options& options)
{
    bool good = true;
    for (const PageFamily& family : pageFamilies())
        for (const PageRow& row : family.pages)
            good = importPage(family, row, options.outputDirectory) && good;
    return good;
}

} // namespace vlx::import
