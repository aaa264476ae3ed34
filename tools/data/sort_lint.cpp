// What makes the comparison and the keys of a sort object agree, and what readers take for granted,
// proved.
#include <map>
#include <set>
#include <tuple>

#include "sort_compile.hpp"
#include "sort_view.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

namespace {

// Damage tends to come in thousands; after this many lines the object is known to be bad.
constexpr int kMaxErrors = 50;
// A level 1 weight below it has a zero byte, which reads as a separator in keys.
constexpr unsigned kLeastWeight1 = 0x0100;
constexpr unsigned kPageSize = 256;
constexpr unsigned kUnreadBits = 0x03FF;

using Weights = std::tuple<unsigned, unsigned, unsigned>; // level 1, 2, 3

class SortLinter {
  public:
    SortLinter(const SortView& view, const std::string& file, Diagnostics& diagnostics)
        : view_(view), header_(view.header()), report_(file, diagnostics)
    {
    }
    void lint();

  private:
    void lintTables();
    void lintPages();
    void lintRulePage(unsigned high, const TSSortPage& page);
    void lintCharacters();
    void lintExpansions();
    void lintContractions();
    void lintFirstElements();
    void lintDefaults();
    template <class Record>
    void lintElement(const std::string& which, const Record& record);
    void lintWeights(const std::string& which, const Weights& weights);
    void lintBits(const std::string& which, unsigned bits);
    void lintDirections(const std::string& which, unsigned directions);
    void error(const std::string& message)
    {
        if (++errors_ <= kMaxErrors)
            report_.error(0, message);
        else if (errors_ == kMaxErrors + 1)
            report_.error(0, "and more");
    }

    const SortView& view_;
    const TSSortData& header_;
    Reporter report_;
    int errors_ = 0;
    std::map<Weights, std::string> single_; // elements of their own, and whose
    std::set<unsigned> expanding_;          // characters with the sign of an expansion
    unsigned least2_ = 0;                   // of all level 2 weights, 0 if there is none
    unsigned least3_ = 0;
};

void SortLinter::lintTables()
{
    const auto check = [this](const char* name, std::size_t offset, std::size_t count,
                              std::size_t size) {
        if (count > 0 && (offset < sizeof(TSSortData) || offset + count * size > view_.size()))
            error(std::string(name) + ": " + std::to_string(count) + " at offset " +
                  std::to_string(offset) + " reach outside the content");
    };
    check("expansions", header_.expansionTableOffset, header_.expansionCount,
          sizeof(TSSortExpansion));
    check("contractions", header_.contractionTableOffset, header_.contractionCount,
          sizeof(TSSortContraction));
    for (unsigned high = 0; high < kPageSize; ++high)
        if (isTablePage(view_.page(high)) &&
            (header_.charTableOffset < sizeof(TSSortData) || !view_.record(high << 8 | 0xFF)))
            error("page " + hexText(high, 2) + ": its records reach outside the content");
}

// Level 1 decides at once where all of it is forward; and keys cannot tell a backward run that ends
// early.
void SortLinter::lintDirections(const std::string& which, unsigned directions)
{
    if (!(directions & forwardBit(1)))
        error(which + ": backward on level 1");
    if (directions > kAllForward)
        error(which + ": directions above F");
}

void SortLinter::lintRulePage(unsigned high, const TSSortPage& page)
{
    const std::string which = "page " + hexText(high, 2);
    if (page.pageFlags & kPageWithoutWeights)
        return;
    lintDirections(which, page.pageDirection);
    if (page.pageBase > 0x10000 - kPageSize)
        error(which + ": its weights go past FFFF");
    if (page.pageFlags & kPageLevel1 && page.pageBase < kLeastWeight1)
        error(which + ": a level 1 weight below 0100");
    if (!(page.pageFlags & kPageLevel1) && page.pageBase == 0)
        error(which + ": a level 4 weight of 0");
}

void SortLinter::lintPages()
{
    std::map<unsigned, unsigned> bases; // of pages with level 1 weights by rule
    for (unsigned high = 0; high < kPageSize; ++high) {
        const TSSortPage& page = view_.page(high);
        if (page.pageFlags & ~kPageFlags)
            error("page " + hexText(high, 2) + ": unknown flags " + hexText(page.pageFlags, 2));
        if (isTablePage(page))
            continue;
        lintRulePage(high, page);
        if (!(page.pageFlags & kPageLevel1) || page.pageFlags & kPageWithoutWeights)
            continue;
        const auto above = bases.lower_bound(page.pageBase);
        if ((above != bases.end() && above->first < page.pageBase + kPageSize) ||
            (above != bases.begin() && std::prev(above)->first + kPageSize > page.pageBase))
            error("page " + hexText(high, 2) + ": has weights of another page by rule");
        bases.emplace(page.pageBase, high);
    }
}

void SortLinter::lintBits(const std::string& which, unsigned bits)
{
    lintDirections(which, directionsOf(static_cast<std::uint16_t>(bits)));
    if (bits & kUnreadBits)
        error(which + ": bits that are not read are set");
    if (bits & kSortExpansion && bits & kSortSpecial)
        error(which + ": a special character that is an expansion");
}

void SortLinter::lintWeights(const std::string& which, const Weights& weights)
{
    const auto [weight1, weight2, weight3] = weights;
    if (weight1 != 0 && weight1 < kLeastWeight1)
        error(which + ": a level 1 weight below 0100");
    if (weight2 != 0 && (least2_ == 0 || weight2 < least2_))
        least2_ = weight2;
    if (weight3 != 0 && (least3_ == 0 || weight3 < least3_))
        least3_ = weight3;
}

// A character or contraction with one element.
template <class Record>
void SortLinter::lintElement(const std::string& which, const Record& record)
{
    if (record.sortBits & kSortSpecial) {
        if (record.weight1 == 0 || record.weight2 != 0 || record.weight3 != 0)
            error(which + ": a special character has a level 4 weight and no other");
        return;
    }
    const Weights weights{record.weight1, record.weight2, record.weight3};
    lintWeights(which, weights);
    single_.emplace(weights, which);
}

void SortLinter::lintCharacters()
{
    for (unsigned character = 0; character < 0x10000; ++character) {
        if (!isTablePage(view_.page(character >> 8)))
            continue;
        const std::string which = hexText(character, 4);
        const TSSortChar record = *view_.record(character);
        lintBits(which, record.sortBits);
        if (record.sortBits & kSortExpansion)
            expanding_.insert(character);
        else
            lintElement(which, record);
    }
}

void SortLinter::lintExpansions()
{
    std::set<unsigned> found;
    for (std::size_t i = 0; i < header_.expansionCount; ++i) {
        const TSSortExpansion one = *view_.expansion(i);
        const std::string which = "expansion " + hexText(one.character, 4);
        if (!found.empty() && *found.rbegin() >= one.character)
            error(which + ": not above the one ahead of it, so the list cannot be halved");
        found.insert(one.character);
        if (!expanding_.contains(one.character))
            error(which + ": the character does not have the sign of one");
        lintWeights(which, {one.weight1, one.weight2, one.weight3});
        lintWeights(which, {one.secondWeight1, one.secondWeight2, one.secondWeight3});
    }
    for (const unsigned character : expanding_)
        if (!found.contains(character))
            error(hexText(character, 4) + ": the sign of an expansion, and none in the list");
}

void SortLinter::lintContractions()
{
    std::uint32_t last = 0;
    for (std::size_t i = 0; i < header_.contractionCount; ++i) {
        const TSSortContraction one = *view_.contraction(i);
        const std::string which =
            "contraction " + hexText(one.first, 4) + " " + hexText(one.second, 4);
        const std::uint32_t key = std::uint32_t{one.first} << 16 | one.second;
        if (i > 0 && last >= key)
            error(which + ": not above the one ahead of it, so the list cannot be halved");
        last = key;
        lintBits(which, one.sortBits);
        if (one.sortBits & kSortExpansion)
            error(which + ": cannot be an expansion");
        lintElement(which, one);
    }
}

// The second element of an expansion is lost where both texts end with it, so the first has to tell
// the character from all others.
void SortLinter::lintFirstElements()
{
    for (std::size_t i = 0; i < header_.expansionCount; ++i) {
        const TSSortExpansion one = *view_.expansion(i);
        const auto same = single_.find({one.weight1, one.weight2, one.weight3});
        if (same != single_.end())
            error("expansion " + hexText(one.character, 4) + ": its first element is that of " +
                  same->second);
    }
}

// Keys drop them from the end of their level, which keeps the order if nothing is smaller.
void SortLinter::lintDefaults()
{
    if (least2_ != 0 && header_.defaultWeight2 != least2_)
        error("the default weight of level 2 is " + hexText(header_.defaultWeight2, 2) +
              ", and the smallest one " + hexText(least2_, 2));
    if (least3_ != 0 && header_.defaultWeight3 != least3_)
        error("the default weight of level 3 is " + hexText(header_.defaultWeight3, 2) +
              ", and the smallest one " + hexText(least3_, 2));
}

void SortLinter::lint()
{
    lintTables();
    // What follows reads the tables.
    if (errors_ > 0)
        return;
    lintPages();
    lintCharacters();
    lintExpansions();
    lintContractions();
    lintFirstElements();
    lintDefaults();
}

} // namespace

void lintSort(const Bytes& content, const std::string& file, Diagnostics& diagnostics)
{
    const auto view = SortView::open(content);
    if (!view)
        diagnostics.push_back({file, 0, "section 1 is shorter than the header of a sort"});
    else
        SortLinter(*view, file, diagnostics).lint();
}

} // namespace vlx::data
