#include "sort_numbers.hpp"

#include <algorithm>

namespace vlx::data {

namespace {

// Below it a weight would have a zero high byte, which is the separator of keys.
constexpr std::uint32_t kFirstWeight1 = 0x0101;
constexpr std::uint32_t kLastWeight = 0xFFFF;
constexpr std::uint32_t kPageSize = 256;
constexpr unsigned kFirstHangulPage = 0xAC;
constexpr unsigned kLastHangulPage = 0xD7;

constexpr unsigned kPages = 256;

// Behind the level 3 weights of the root table.
constexpr int kBehindRoot = 0x10000;

bool isHangul(unsigned page)
{
    return page >= kFirstHangulPage && page <= kLastHangulPage;
}

bool isCommon(const MinorWeight& weight, int common)
{
    return weight.root == common && weight.rank == 0;
}

HeldElement heldOne(const CollationElement& element, const SortWeights& weights)
{
    HeldElement one;
    if (element.primary != 0)
        one.primaries.push_back(element.primary);
    if (element.secondary != 0)
        one.secondaries.push_back(weights.secondaryValue(element.secondary));
    if (element.tertiary != 0)
        one.tertiaries.push_back(weights.tertiaryValue(element.tertiary));
    return one;
}

// Appends what is behind the first letter and its marks. What a further letter has in common with
// all letters is told by its level 1 weight alone.
void join(HeldElement& whole, const HeldElement& next)
{
    whole.primaries.insert(whole.primaries.end(), next.primaries.begin(), next.primaries.end());
    for (const MinorWeight& weight : next.secondaries)
        if (next.primaries.empty() || !isCommon(weight, kCommonSecondary))
            whole.secondaries.push_back(weight);
    whole.tertiaries.insert(whole.tertiaries.end(), next.tertiaries.begin(), next.tertiaries.end());
}

// Level 3 weights that say nothing: common ones at the end, and repeated ones of further letters.
void shorten(std::vector<MinorWeight>& tertiaries)
{
    while (tertiaries.size() > 1 && (isCommon(tertiaries.back(), kCommonTertiary) ||
                                     tertiaries.back() == tertiaries.front()))
        tertiaries.pop_back();
}

// Numbers from 1 in ascending order; false if a byte does not hold them.
bool numberBytes(std::map<std::vector<MinorWeight>, std::uint8_t>& weights)
{
    std::size_t next = 1;
    for (auto& [value, number] : weights)
        number = static_cast<std::uint8_t>(next++);
    return next <= 0x100;
}

} // namespace

HeldElements held(const CollationElements& elements, const SortWeights& weights, bool hasSpecials,
                  std::size_t limit)
{
    HeldElements all;
    HeldElement special;
    bool isBehindSpecial = false;
    bool isLeading = false;
    for (const CollationElement& element : elements) {
        HeldElement one = heldOne(element, weights);
        if (element.primary != 0)
            isBehindSpecial = hasSpecials && weights.isVariable(element.primary);
        if (isBehindSpecial) {
            isLeading = isLeading || all.empty();
            special.primaries.insert(special.primaries.end(), one.primaries.begin(),
                                     one.primaries.end());
            continue; // with its marks
        }
        if (!all.empty() && (element.primary == 0 || all.size() == limit))
            join(all.back(), one);
        else
            all.push_back(std::move(one));
    }
    for (HeldElement& one : all)
        shorten(one.tertiaries);
    // What mixes punctuation with others keeps the others, and differs from them on level 3, less
    // if the punctuation comes early.
    if (!all.empty() && !special.primaries.empty())
        all.front().tertiaries.push_back(
            {0, isLeading ? kBehindRoot : kBehindRoot + 1, special.primaries.front()});
    if (all.empty() && !special.primaries.empty()) {
        special.isSpecial = true;
        all.push_back(std::move(special));
    }
    return all;
}

SortNumbers::SortNumbers(const RootTable& root, const PageSet& pages, SortWeights& weights)
    : root_(root), pages_(pages), weights_(weights)
{
}

void SortNumbers::add(const HeldElement& element)
{
    if (element.isSpecial) {
        specials_[element.primaries];
        return;
    }
    if (!element.primaries.empty())
        primaries_[element.primaries];
    if (!element.secondaries.empty())
        secondaries_[element.secondaries];
    if (!element.tertiaries.empty())
        tertiaries_[element.tertiaries];
}

// The weight that a page by rule stands ahead of: that of the first of its characters that the
// table lists. Pages of syllables of Hangul stand behind all their letters.
int SortNumbers::anchorOf(unsigned page)
{
    const auto& groups = root_.groups();
    const auto hangul = std::find_if(groups.begin(), groups.end(),
                                     [](const RootGroup& one) { return one.name == "Hang"; });
    if (isHangul(page) && hangul != groups.end() && hangul + 1 != groups.end())
        return weights_.primaryOf((hangul + 1)->first);
    const std::u16string first(1, static_cast<char16_t>(page << 8));
    for (auto at = root_.entries().lower_bound(first);
         at != root_.entries().end() && at->first[0] >> 8 == page; ++at)
        if (at->first.size() == 1 && !at->second.empty() && at->second[0].primary != 0)
            return weights_.primaryOf(at->second[0].primary);
    const std::uint32_t base = page >= 0x4E && page <= 0x9F   ? kIdeographs
                               : page >= 0x34 && page <= 0x4D ? kExtensionA
                                                              : kUnlisted;
    return weights_.primaryOf(base | page << 8);
}

bool SortNumbers::isByRule(int primary) const
{
    const std::uint32_t root = weights_.rootOf(primary);
    return root >= kIdeographs && !pages_[root >> 8 & 0xFF] && !weights_.isTailored(primary);
}

// Weights of the table stand at odd places, and pages by rule at the even ones ahead of their
// anchors. What is made of several weights comes behind the first of them, or where that is in a
// page behind the page.
SortNumbers::Path SortNumbers::pathOf(const std::vector<int>& primaries) const
{
    Path path;
    for (const int primary : primaries) {
        const auto root = static_cast<int>(weights_.rootOf(primary) & 0xFFFF);
        if (isByRule(primary))
            path.emplace_back(2 * placeOf(anchors_[static_cast<unsigned>(root) >> 8]),
                              2 * root + 1);
        else
            path.emplace_back(2 * placeOf(primary) + 1, 0);
    }
    return path;
}

std::vector<std::string> SortNumbers::number()
{
    for (unsigned page = 0; page < kPages; ++page)
        if (!pages_[page])
            anchors_[page] = anchorOf(page);
    places_ = weights_.primaryPlaces();

    struct Item {
        Path path;
        std::uint16_t* number;
        std::uint32_t size;
    };
    std::vector<Item> items;
    for (unsigned page = 0; page < kPages; ++page)
        if (!pages_[page])
            items.push_back({{{2 * placeOf(anchors_[page]), static_cast<int>(page << 8) * 2}},
                             &pageBases_[page],
                             kPageSize});
    for (auto& [primaries, number] : primaries_)
        if (primaries.size() > 1 || !isByRule(primaries[0]))
            items.push_back({pathOf(primaries), &number, 1});
    std::sort(items.begin(), items.end(),
              [](const Item& one, const Item& other) { return one.path < other.path; });
    std::uint32_t next = kFirstWeight1;
    for (const Item& item : items) {
        *item.number = static_cast<std::uint16_t>(next);
        next += item.size;
    }
    for (auto& [primaries, number] : primaries_)
        if (const std::uint32_t root = weights_.rootOf(primaries[0]);
            primaries.size() == 1 && isByRule(primaries[0]))
            number = static_cast<std::uint16_t>(pageBases_[root >> 8 & 0xFF] + (root & 0xFF));

    std::vector<Item> specials;
    for (auto& [primaries, number] : specials_)
        specials.push_back({pathOf(primaries), &number, 1});
    std::sort(specials.begin(), specials.end(),
              [](const Item& one, const Item& other) { return one.path < other.path; });
    for (std::size_t i = 0; i < specials.size(); ++i)
        *specials[i].number = static_cast<std::uint16_t>(i + 1);

    std::vector<std::string> complaints;
    if (next > kLastWeight + 1)
        complaints.push_back("needs level 1 weights up to " + std::to_string(next - 1) +
                             ", above 65,535");
    for (const auto& [level, weights] : {std::pair{2, &secondaries_}, std::pair{3, &tertiaries_}})
        if (!numberBytes(*weights))
            complaints.push_back("needs " + std::to_string(weights->size()) + " weights of level " +
                                 std::to_string(level) + ", above 255");
    return complaints;
}

HeldWeights SortNumbers::of(const HeldElement& element) const
{
    if (element.isSpecial)
        return {specials_.at(element.primaries), 0, 0};
    HeldWeights weights;
    if (!element.primaries.empty())
        weights.weight1 = primaries_.at(element.primaries);
    if (!element.secondaries.empty())
        weights.weight2 = secondaries_.at(element.secondaries);
    if (!element.tertiaries.empty())
        weights.weight3 = tertiaries_.at(element.tertiaries);
    return weights;
}

} // namespace vlx::data
