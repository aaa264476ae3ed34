#include "sort_weights.hpp"

#include <algorithm>
#include <numeric>
#include <set>

namespace vlx::data {

namespace {

// The groups that are no scripts, in front of all scripts whatever is reordered.
constexpr const char* kKinds[] = {"space", "punct", "symbol", "currency", "digit"};

bool isKind(const std::string& name)
{
    return std::find(std::begin(kKinds), std::end(kKinds), name) != std::end(kKinds);
}

// Level 3 weights of the root table that stand for capitals, and for the full-sized kana, which
// count like them.
LetterCase caseOfRoot(int tertiary)
{
    const bool isUpper = (tertiary >= 0x08 && tertiary <= 0x0C) || tertiary == 0x0E ||
                         tertiary == 0x11 || tertiary == 0x12 || tertiary == 0x1D;
    return isUpper ? LetterCase::kUpper : LetterCase::kLower;
}

} // namespace

SortWeights::SortWeights(const RootTable& root) : groups_(root.groups())
{
    groups_.insert(groups_.begin(), {"", 0}); // what sorts ahead of all groups
    groupRanks_.resize(groups_.size());
    std::iota(groupRanks_.begin(), groupRanks_.end(), std::size_t{0});
    std::set<std::uint32_t> roots;
    for (const auto& [characters, elements] : root.entries())
        for (const RootElement& element : elements)
            roots.insert(element.primary);
    roots.erase(0);
    for (const std::uint32_t value : roots) {
        primaryIds_[value] = static_cast<int>(primaries_.size());
        order_.push_back(static_cast<int>(primaries_.size()));
        primaries_.push_back({value, groupOf(value), false});
    }
}

std::size_t SortWeights::groupOf(std::uint32_t root) const
{
    const auto behind = std::upper_bound(
        groups_.begin(), groups_.end(), root,
        [](std::uint32_t value, const RootGroup& one) { return value < one.first; });
    return static_cast<std::size_t>(behind - groups_.begin()) - 1;
}

int SortWeights::primaryOf(std::uint32_t root)
{
    if (root == 0)
        return 0;
    const auto [found, isNew] = primaryIds_.emplace(root, static_cast<int>(primaries_.size()));
    if (isNew) {
        // Behind all that stands, tailored weights included, up to the next one of the root.
        const auto above = std::find_if(order_.begin(), order_.end(), [&](int id) {
            return !isTailored(id) && rootOf(id) > root;
        });
        order_.insert(above, found->second);
        primaries_.push_back({root, groupOf(root), false});
    }
    return found->second;
}

CollationElement SortWeights::elementOf(const RootElement& root)
{
    return {primaryOf(root.primary), idOf(secondaries_, root.secondary, LetterCase::kLower),
            idOf(tertiaries_, root.tertiary, caseOfRoot(root.tertiary))};
}

int SortWeights::idOf(Level& level, int root, LetterCase letterCase)
{
    if (root == 0)
        return 0;
    const auto [found, isNew] =
        level.rootIds.emplace(std::pair(root, letterCase), static_cast<int>(level.weights.size()));
    if (isNew)
        level.weights.push_back({root, letterCase, -1});
    return found->second;
}

CollationElement SortWeights::newPrimary(int neighbour, std::ptrdiff_t offset)
{
    const int id = static_cast<int>(primaries_.size());
    const Primary& near = primaries_[index(neighbour)];
    primaries_.push_back({near.root, near.group, true});
    order_.insert(std::find(order_.begin(), order_.end(), neighbour) + offset, id);
    return {id, idOf(secondaries_, kCommonSecondary, LetterCase::kLower),
            idOf(tertiaries_, kCommonTertiary, LetterCase::kLower)};
}

CollationElement SortWeights::behindPrimary(const CollationElement& element)
{
    return newPrimary(element.primary, 1);
}

CollationElement SortWeights::aheadOfPrimary(const CollationElement& element)
{
    return newPrimary(element.primary, 0);
}

int SortWeights::insertBehind(Level& level, int weight, ListKey key)
{
    const Minor behind = level.weights[index(weight)];
    const int id = static_cast<int>(level.weights.size());
    int list = behind.list;
    std::ptrdiff_t place = 0;
    if (list < 0) {
        list = level.lists.emplace(key, static_cast<int>(lists_.size())).first->second;
        lists_.resize(std::max(lists_.size(), index(list) + 1));
    } else {
        place = rankOf(behind, weight);
    }
    lists_[index(list)].insert(lists_[index(list)].begin() + place, id);
    level.weights.push_back({behind.root, LetterCase::kLower, list});
    return id;
}

CollationElement SortWeights::behindSecondary(const CollationElement& element)
{
    const int root = secondaries_.weights[index(element.secondary)].root;
    return {element.primary,
            insertBehind(secondaries_, element.secondary, {element.primary, 0, root}),
            idOf(tertiaries_, kCommonTertiary, LetterCase::kLower)};
}

CollationElement SortWeights::behindTertiary(const CollationElement& element)
{
    const int root = tertiaries_.weights[index(element.tertiary)].root;
    return {
        element.primary, element.secondary,
        insertBehind(tertiaries_, element.tertiary, {element.primary, element.secondary, root})};
}

// From 1; 0 is the root weight.
int SortWeights::rankOf(const Minor& minor, int id) const
{
    if (minor.list < 0)
        return 0;
    const std::vector<int>& list = lists_[index(minor.list)];
    return static_cast<int>(std::find(list.begin(), list.end(), id) - list.begin()) + 1;
}

void SortWeights::setCase(CollationElement& element, LetterCase letterCase)
{
    Minor& minor = tertiaries_.weights[index(element.tertiary)];
    if (minor.list >= 0)
        minor.letterCase = letterCase;
    else
        element.tertiary = idOf(tertiaries_, minor.root, letterCase);
}

bool SortWeights::reorder(const std::vector<std::string>& names)
{
    const auto find = [this](const std::string& name) {
        return std::find_if(groups_.begin(), groups_.end(),
                            [&](const RootGroup& group) { return group.name == name; });
    };
    std::vector<std::size_t> order;
    const auto append = [&](std::size_t group) {
        if (std::find(order.begin(), order.end(), group) == order.end())
            order.push_back(group);
    };
    for (std::size_t i = 0; i < groups_.size(); ++i)
        if (groups_[i].name.empty() || isKind(groups_[i].name))
            append(i);
    for (const std::string& name : names) {
        if (find(name) == groups_.end() || isKind(name))
            return false;
        append(static_cast<std::size_t>(find(name) - groups_.begin()));
    }
    for (std::size_t i = 0; i < groups_.size(); ++i)
        append(i);
    for (std::size_t rank = 0; rank < order.size(); ++rank)
        groupRanks_[order[rank]] = rank;
    return true;
}

std::vector<int> SortWeights::primaryPlaces() const
{
    std::vector<int> order = order_;
    std::stable_sort(order.begin(), order.end(), [this](int one, int other) {
        return groupRanks_[primaries_[index(one)].group] <
               groupRanks_[primaries_[index(other)].group];
    });
    std::vector<int> places(primaries_.size());
    for (std::size_t place = 0; place < order.size(); ++place)
        places[index(order[place])] = static_cast<int>(place) + 1;
    return places;
}

bool SortWeights::isVariable(int primary) const
{
    const std::string& name = groups_[primaries_[index(primary)].group].name;
    return name == "space" || name == "punct";
}

MinorWeight SortWeights::secondaryValue(int secondary) const
{
    const Minor& minor = secondaries_.weights[index(secondary)];
    return {0, minor.root, rankOf(minor, secondary)};
}

MinorWeight SortWeights::tertiaryValue(int tertiary) const
{
    const Minor& minor = tertiaries_.weights[index(tertiary)];
    const int letterCase =
        static_cast<int>(LetterCase::kUpper) - static_cast<int>(minor.letterCase);
    return {upperFirst_ ? letterCase : 0, minor.root, rankOf(minor, tertiary)};
}

} // namespace vlx::data
