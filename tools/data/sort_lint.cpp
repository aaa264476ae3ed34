// What makes the comparison and the keys of a sort object agree, and what readers take for granted,
// proved.
#include <map>
#include <set>
#include <tuple>

#include "sort_compile.hpp"
#include "sort_view.hpp"
#include "sort_walk.hpp"
#include "sourcefile.hpp"

namespace vlx::data {

namespace {

// Damage tends to come in thousands; after this many lines the object is known to be bad.
constexpr int kMaxErrors = 50;
// A level 1 weight below it has a zero byte, which reads as a separator in keys.
constexpr unsigned kLeastWeight1 = 0x0100;
constexpr unsigned kPageSize = 256;
constexpr unsigned kUnreadBits = 0x03FF;

// The words that are compared: so many, of at most so many letters; those of a run differ in
// accents and case, and are compared with each other.
constexpr std::size_t kCorpusWords = 512;
constexpr std::size_t kCorpusRun = 16;
constexpr std::size_t kCorpusLongest = 6;

std::string textOf(std::u16string_view word)
{
    std::string text;
    for (const char16_t unit : word)
        text += (text.empty() ? "" : " ") + hexText(unit, 4);
    return text;
}

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
    void lintCorpus();
    std::vector<std::vector<char16_t>> letters(bool withAccents) const;
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

// Characters with weights on levels 1 to 3, those of the same level 1 weight together, or if they
// have the same one on level 2 too; no group of one. Without such weights, as those by rule, a
// character makes keys shorter, and what keys trim begins to count.
std::vector<std::vector<char16_t>> SortLinter::letters(bool withAccents) const
{
    std::map<std::pair<unsigned, unsigned>, std::vector<char16_t>> byWeight;
    const SortWalk walk(view_);
    for (unsigned value = 0; value < 0x10000; ++value) {
        if (!isTablePage(view_.page(value >> 8)))
            continue;
        const auto character = static_cast<char16_t>(value);
        const SortWalk::Step step = walk.stepAt({&character, 1}, 0);
        if (step.elements > 0 && step.first.weight1 != 0 && step.first.weight2 != 0 &&
            step.first.weight3 != 0)
            byWeight[{step.first.weight1, withAccents ? 0 : step.first.weight2}].push_back(
                character);
    }
    std::vector<std::vector<char16_t>> groups;
    for (auto& [weight, characters] : byWeight)
        if (characters.size() > 1)
            groups.push_back(std::move(characters));
    return groups;
}

// Words, and with each of them others that differ from it by accents and case or by case alone;
// none ends with an expansion. By comparison and by key each pair has to have the same order.
void SortLinter::lintCorpus()
{
    const SortWalk walk(view_);
    const std::vector<std::vector<char16_t>> kinds[] = {letters(true), letters(false)};
    std::uint32_t random = 1;
    const auto below = [&random](std::size_t limit) {
        random = random * 1664525 + 1013904223;
        return static_cast<std::size_t>(random >> 8) % limit;
    };
    std::vector<std::u16string> words;
    for (std::size_t run = 0; run < kCorpusWords / kCorpusRun; ++run) {
        const auto& groups = kinds[run % 2];
        if (groups.empty())
            continue;
        std::vector<std::size_t> base(1 + below(kCorpusLongest));
        for (std::size_t& group : base)
            group = below(groups.size());
        for (std::size_t i = 0; i < kCorpusRun; ++i) {
            std::u16string word;
            for (const std::size_t group : base)
                word += groups[group][below(groups[group].size())];
            if (below(kCorpusRun) == 0) // one that is another word
                word += groups[below(groups.size())][0];
            while (!word.empty() && walk.stepAt(word, word.size() - 1).elements > 1)
                word.pop_back();
            words.push_back(std::move(word));
        }
    }
    std::vector<std::string> keys;
    for (const std::u16string& word : words)
        keys.push_back(walk.key(word));
    for (std::size_t i = 0; i < words.size(); ++i)
        for (std::size_t j = i - i % kCorpusRun; j < i; ++j) {
            const int order = keys[i].compare(keys[j]);
            if (walk.compare(words[i], words[j]) != (order > 0) - (order < 0))
                error(textOf(words[i]) + " and " + textOf(words[j]) +
                      " have different orders by comparison and by key");
        }
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
    lintCorpus();
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
