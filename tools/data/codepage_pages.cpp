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

// A section being filled with arrays. What stands in it already, as a whole or as its end, serves a
// second array too.
class ArraySection {
  public:
    // Lays the array, whose entry points to where the cell of low byte 0 would be, and gives that
    // offset. `lead` is the size of the cells ahead of the first.
    std::uint16_t lay(const Bytes& array, std::size_t lead)
    {
        // No entry can point ahead of the section.
        bytes_.resize(std::max(bytes_.size(), lead));
        const auto from = bytes_.begin() + static_cast<std::ptrdiff_t>(lead);
        auto at = std::search(from, bytes_.end(), array.begin(), array.end());
        if (at == bytes_.end())
            at = overlap(from, array);
        const auto offset = static_cast<std::size_t>(at - bytes_.begin());
        shared_ = std::min(array.size(), bytes_.size() - offset);
        bytes_.insert(bytes_.end(), array.begin() + static_cast<std::ptrdiff_t>(shared_),
                      array.end());
        return static_cast<std::uint16_t>(offset - lead);
    }

    // How many bytes of the last array were there before.
    std::size_t shared() const { return shared_; }
    const Bytes& bytes() const { return bytes_; }

  private:
    // Where the longest end of the section begins that the array begins with.
    Bytes::iterator overlap(Bytes::iterator from, const Bytes& array)
    {
        const auto room = static_cast<std::ptrdiff_t>(array.size());
        for (auto at = std::max(from, bytes_.end() - std::min(room, bytes_.end() - from));
             at != bytes_.end(); ++at)
            if (std::equal(at, bytes_.end(), array.begin()))
                return at;
        return bytes_.end();
    }

    Bytes bytes_;
    std::size_t shared_ = 0;
};

// One byte or two of each cell of a run, from bit `shift` on.
Bytes arrayOf(const Run& run, std::size_t shift, std::size_t width)
{
    Bytes array;
    for (const Packed cell : run.cells)
        for (std::size_t i = 0; i < width; ++i)
            array.push_back(static_cast<std::uint8_t>(cell >> (shift + 8 * i)));
    return array;
}

UnicodePages place(const std::vector<Run>& runs)
{
    UnicodePages pages;
    ArraySection section3;
    ArraySection section4;
    const PageKind unmappedKind =
        !runs.empty() && runs.front().kind == kPageByte ? kPageByte : kPageWord;
    pages.entries.fill(
        {.kind = unmappedKind, .mask = 0xFF, .low = 1, .high = 0, .offset3 = {}, .offset4 = {}});
    for (const Run& run : runs) {
        const auto [width3, width4] = kWidths[run.kind];
        const std::uint16_t offset3 = section3.lay(arrayOf(run, 0, width3), run.low * width3);
        const std::uint16_t offset4 =
            width4 == 0 ? std::uint16_t{0}
                        : section4.lay(arrayOf(run, 8 * width3, width4), run.low * width4);
        pages.entries[run.page] = {.kind = run.kind,
                                   .mask = 0xFF,
                                   .low = run.low,
                                   .high = run.high,
                                   .offset3 = offset3,
                                   .offset4 = offset4};
    }
    pages.section3 = section3.bytes();
    pages.section4 = section4.bytes();
    return pages;
}

std::size_t sizeOf(const UnicodePages& pages)
{
    return pages.section3.size() + pages.section4.size();
}

// Characters in code order have low bytes that repeat, page after page. Parted pages share them:
// those stay parted that find much of their low bytes among those of the pages ahead of them, and
// the first of such a chain.
std::vector<Run> withSharedBytes(std::vector<Run> runs)
{
    ArraySection lows;
    Run* ahead = nullptr;
    for (Run& run : runs) {
        if (run.kind != kPageWord)
            continue;
        lows.lay(arrayOf(run, 0, 1), 0);
        if (lows.shared() >= run.cells.size() / 2) {
            run.kind = kPageByteByte;
            if (ahead != nullptr)
                ahead->kind = kPageByteByte;
        }
        ahead = &run;
    }
    return runs;
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
    std::vector<Run> shared = withSharedBytes(runs);
    if (UnicodePages smaller = place(shared); sizeOf(smaller) < sizeOf(pages)) {
        pages = std::move(smaller);
        runs = std::move(shared);
    }
    while (pages.section3.size() > kMaxSectionSize && partLongest(runs))
        pages = place(runs);
    return pages;
}

} // namespace vlx::data
