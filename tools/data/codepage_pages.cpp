#include "codepage_pages.hpp"

#include <algorithm>
#include <vector>

#include "container.hpp"

namespace vlx::data {

namespace {

// The characters of one high byte, without gaps from low to high.
struct Run {
    std::uint8_t page = 0;
    std::uint8_t low = 0;
    std::uint8_t high = 0;
    PageKind kind = kPageByte;
    std::vector<Packed> cells;
};

// The bytes that a kind has in section 3 and in section 4 for each cell.
struct Widths {
    std::size_t section3;
    std::size_t section4;
};
constexpr Widths kWidths[kPageKinds] = {{1, 0}, {2, 0}, {2, 1}, {2, 2}, {1, 1}};

PageKind kindFor(const std::vector<Packed>& cells, int maxBytes)
{
    const Packed largest = *std::max_element(cells.begin(), cells.end());
    if (maxBytes == 1)
        return kPageByte;
    return largest <= 0xFFFF ? kPageWord : largest <= 0xFFFFFF ? kPageWordByte : kPageWordWord;
}

std::vector<Run> runsOf(const std::map<std::uint16_t, Packed>& encode, std::uint8_t substitution,
                        int maxBytes)
{
    std::vector<Run> runs;
    for (const auto& [value, character] : encode) {
        const auto page = static_cast<std::uint8_t>(value >> 8);
        const auto low = static_cast<std::uint8_t>(value);
        if (runs.empty() || runs.back().page != page)
            runs.push_back({.page = page, .low = low, .high = low, .cells = {}});
        Run& run = runs.back();
        run.high = low;
        run.cells.resize(low - run.low + 1u, substitution);
        run.cells.back() = character;
    }
    for (Run& run : runs)
        run.kind = kindFor(run.cells, maxBytes);
    // An entry points to where the cell of low byte 0 would be; with the small ones first, that is
    // never ahead of the section.
    std::stable_sort(runs.begin(), runs.end(),
                     [](const Run& one, const Run& other) { return one.low < other.low; });
    return runs;
}

void append(Bytes& section, Packed value, std::size_t width)
{
    for (; width > 0; --width, value >>= 8)
        section.push_back(static_cast<std::uint8_t>(value));
}

// The offset at which a run begins, with room made where the entry would point ahead of the
// section.
std::uint16_t entryOffset(Bytes& section, std::size_t low, std::size_t width)
{
    if (width == 0)
        return 0;
    section.resize(std::max(section.size(), low * width));
    return static_cast<std::uint16_t>(section.size() - low * width);
}

UnicodePages place(const std::vector<Run>& runs)
{
    UnicodePages pages;
    const PageKind unmappedKind =
        !runs.empty() && runs.front().kind == kPageByte ? kPageByte : kPageWord;
    pages.entries.fill(
        {.kind = unmappedKind, .mask = 0xFF, .low = 1, .high = 0, .offset3 = {}, .offset4 = {}});
    for (const Run& run : runs) {
        const Widths widths = kWidths[run.kind];
        pages.entries[run.page] = {.kind = run.kind,
                                   .mask = 0xFF,
                                   .low = run.low,
                                   .high = run.high,
                                   .offset3 = entryOffset(pages.section3, run.low, widths.section3),
                                   .offset4 =
                                       entryOffset(pages.section4, run.low, widths.section4)};
        for (const Packed cell : run.cells) {
            append(pages.section3, cell, widths.section3);
            append(pages.section4, cell >> 8 * widths.section3, widths.section4);
        }
    }
    return pages;
}

// Gives half of the longest word page to section 4. False if there is none.
bool partLongest(std::vector<Run>& runs)
{
    const auto shorter = [](const Run& one, const Run& other) {
        const std::size_t size = one.kind == kPageWord ? one.cells.size() : 0;
        const std::size_t otherSize = other.kind == kPageWord ? other.cells.size() : 0;
        return size < otherSize;
    };
    const auto longest = std::max_element(runs.begin(), runs.end(), shorter);
    if (longest == runs.end() || longest->kind != kPageWord)
        return false;
    longest->kind = kPageByteByte;
    return true;
}

} // namespace

UnicodePages layOutPages(const std::map<std::uint16_t, Packed>& encode, std::uint8_t substitution,
                         int maxBytes)
{
    std::vector<Run> runs = runsOf(encode, substitution, maxBytes);
    UnicodePages pages = place(runs);
    while (pages.section3.size() > kMaxSectionSize && partLongest(runs))
        pages = place(runs);
    return pages;
}

} // namespace vlx::data
