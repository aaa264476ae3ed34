// A sort object as text: pages by rule, then every character with its elements, then contractions.
#include <ostream>

#include "sort_compile.hpp"
#include "sort_view.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

namespace {

std::string weightsText(unsigned weight1, unsigned weight2, unsigned weight3)
{
    return hexText(weight1, 4) + "." + hexText(weight2, 2) + "." + hexText(weight3, 2);
}

template <class Record>
std::string elementText(const Record& record)
{
    if (record.sortBits & kSortSpecial)
        return "special " + hexText(record.weight1, 4);
    return weightsText(record.weight1, record.weight2, record.weight3);
}

template <class Record>
std::string directionsText(const Record& record)
{
    const std::uint8_t directions = directionsOf(record.sortBits);
    return directions == kAllForward ? "" : "\tdirections " + hexText(directions, 1);
}

std::string expansionText(const SortView& view, unsigned character)
{
    const auto expansion = view.expansionOf(character);
    if (!expansion)
        return "expansion that is missing";
    return weightsText(expansion->weight1, expansion->weight2, expansion->weight3) + " " +
           weightsText(expansion->secondWeight1, expansion->secondWeight2,
                       expansion->secondWeight3);
}

void dumpPages(const SortView& view, std::ostream& out)
{
    out << "page\tweights by rule\n";
    for (unsigned high = 0; high < 256; ++high) {
        const TSSortPage& page = view.page(high);
        if (isTablePage(page))
            continue;
        out << hexText(high, 2) << '\t';
        if (page.pageFlags & kPageWithoutWeights)
            out << "none\n";
        else
            out << "level " << (page.pageFlags & kPageLevel1 ? 1 : 4) << " from "
                << hexText(page.pageBase, 4) << ", directions " << hexText(page.pageDirection, 1)
                << '\n';
    }
}

void dumpCharacters(const SortView& view, std::ostream& out)
{
    out << "\ncharacter\telements (level 1, 2, 3)\n";
    for (unsigned character = 0; character < 0x10000; ++character) {
        if (!isTablePage(view.page(character >> 8)))
            continue;
        const auto record = view.record(character);
        out << hexText(character, 4) << '\t';
        if (!record)
            out << "outside of the content\n";
        else if (record->sortBits & kSortExpansion)
            out << expansionText(view, character) << directionsText(*record) << '\n';
        else
            out << elementText(*record) << directionsText(*record) << '\n';
    }
}

void dumpContractions(const SortView& view, std::ostream& out)
{
    if (view.header().contractionCount == 0)
        return;
    out << "\ncontraction\telement\n";
    for (std::size_t i = 0; i < view.header().contractionCount; ++i) {
        const auto pair = view.contraction(i);
        if (!pair) {
            out << "outside of the content\n";
            return;
        }
        out << hexText(pair->first, 4) << ' ' << hexText(pair->second, 4) << '\t'
            << elementText(*pair) << directionsText(*pair) << '\n';
    }
}

} // namespace

void dumpSort(const Bytes& content, std::ostream& out)
{
    const auto view = SortView::open(content);
    if (!view) {
        out << "# shorter than the header of a sort\n";
        return;
    }
    const TSSortData& header = view->header();
    out << "default weights: level 2 " << hexText(header.defaultWeight2, 2) << ", level 3 "
        << hexText(header.defaultWeight3, 2) << '\n'
        << "expansions " << header.expansionCount << ", contractions " << header.contractionCount
        << "\n\n";
    dumpPages(*view, out);
    dumpCharacters(*view, out);
    dumpContractions(*view, out);
}

} // namespace vlx::data
