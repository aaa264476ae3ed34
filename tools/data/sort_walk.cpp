#include "sort_walk.hpp"

#include <algorithm>
#include <array>

namespace vlx::data {

namespace {

using Element = SortWalk::Element;
using Step = SortWalk::Step;

template <class Record>
Element elementOf(const Record& record)
{
    if (record.sortBits & kSortSpecial)
        return {0, 0, 0, record.weight1};
    return {record.weight1, record.weight2, record.weight3, 0};
}

std::string bytesOf(unsigned weight, int count)
{
    std::string bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(weight >> shift & 0xFF);
    return bytes;
}

// The weights of a text, level by level, as bytes in the order of a key.
class Levels {
  public:
    void push(const Element& element, unsigned position, unsigned directions)
    {
        const std::string items[] = {
            element.weight1 ? bytesOf(element.weight1, 2) : "",
            element.weight2 ? bytesOf(element.weight2, 1) : "",
            element.weight3 ? bytesOf(element.weight3, 1) : "",
            element.weight4 ? bytesOf(position, 2) + bytesOf(element.weight4, 2) : "",
        };
        for (std::size_t i = 0; i < runs_.size(); ++i) {
            if (items[i].empty())
                continue;
            // A run of backward elements grows at its front.
            const bool isForward = (directions & forwardBit(static_cast<int>(i) + 1)) != 0;
            runs_[i].insert(isForward ? runs_[i].size() : fronts_[i], items[i]);
            if (isForward)
                fronts_[i] = runs_[i].size();
        }
    }
    const std::string& run(int level) const { return runs_[static_cast<std::size_t>(level) - 1]; }

  private:
    std::array<std::string, kSortLevels> runs_;
    std::array<std::size_t, kSortLevels> fronts_{};
};

// A text on its way through the comparison.
struct Side {
    Side(const SortWalk& sort, std::u16string_view units) : walk(sort), text(units) {}

    const SortWalk& walk;
    std::u16string_view text;
    std::size_t at = 0;
    unsigned position = 0;
    Step step;
    int left = 0;     // elements of the step that are still to come
    bool has = false; // an element stands
    bool mayAdvance = true;
    Element element;
    Levels levels;

    bool atEnd() const { return at == text.size(); }
    bool stands() const { return has && element.weight1 != 0; }
    void advance()
    {
        if (left == 0) {
            step = walk.stepAt(text, at);
            at += step.characters;
            ++position;
            left = step.elements;
            has = left > 0;
            element = step.first;
        } else {
            element = step.second;
        }
        left -= left > 0;
    }
    void push()
    {
        if (has)
            levels.push(element, position, step.directions);
    }
};

int compareRuns(const std::string& one, const std::string& other)
{
    const int order = one.compare(other);
    return (order > 0) - (order < 0);
}

// Once level 1 has not decided.
int compareLevels(const Side& one, const Side& other)
{
    for (int level = 2; level <= kSortLevels; ++level)
        if (const int order = compareRuns(one.levels.run(level), other.levels.run(level)))
            return order;
    return 0;
}

// What is left of the longer text.
int compareTail(Side& longer, int sign, const Side& one, const Side& other)
{
    while (!longer.atEnd() || longer.left > 0) {
        longer.advance();
        if (longer.stands())
            return sign;
        longer.push();
    }
    return compareLevels(one, other);
}

} // namespace

SortWalk::SortWalk(const SortView& view) : view_(view)
{
    for (std::size_t i = 0; i < view.header().expansionCount; ++i)
        if (const auto one = view.expansion(i))
            expansions_.emplace(static_cast<char16_t>(one->character), *one);
    for (std::size_t i = 0; i < view.header().contractionCount; ++i)
        if (const auto pair = view.contraction(i))
            contractions_.emplace(
                std::pair(static_cast<char16_t>(pair->first), static_cast<char16_t>(pair->second)),
                *pair);
}

Step SortWalk::characterStep(char16_t character) const
{
    const TSSortPage& page = view_.page(character >> 8);
    Step step;
    step.directions = page.pageDirection;
    if (!isTablePage(page)) {
        const unsigned weight = page.pageBase + (character & 0xFFU);
        step.elements = page.pageFlags & kPageWithoutWeights ? 0 : 1;
        (page.pageFlags & kPageLevel1 ? step.first.weight1 : step.first.weight4) = weight;
        return step;
    }
    const TSSortChar record = *view_.record(character);
    step.directions = directionsOf(record.sortBits);
    step.elements = 1;
    step.first = elementOf(record);
    if (!(record.sortBits & kSortExpansion))
        return step;
    const auto found = expansions_.find(character);
    if (found == expansions_.end())
        return {};
    const TSSortExpansion& expansion = found->second;
    step.elements = 2;
    step.first = {expansion.weight1, expansion.weight2, expansion.weight3, 0};
    step.second = {expansion.secondWeight1, expansion.secondWeight2, expansion.secondWeight3, 0};
    return step;
}

Step SortWalk::stepAt(std::u16string_view text, std::size_t at) const
{
    if (at + 1 < text.size())
        if (const auto found = contractions_.find({text[at], text[at + 1]});
            found != contractions_.end()) {
            const TSSortContraction& pair = found->second;
            return {1, elementOf(pair), {}, directionsOf(pair.sortBits), 2};
        }
    return characterStep(text[at]);
}

// Of elements that are forward on level 1.
int SortWalk::compare(std::u16string_view text1, std::u16string_view text2) const
{
    Side one(*this, text1);
    Side other(*this, text2);
    while ((!one.atEnd() && !other.atEnd()) ||
           (one.left > 0 && (!other.atEnd() || other.left > 0)) ||
           (other.left > 0 && (!one.atEnd() || one.left > 0))) {
        for (Side* const side : {&one, &other})
            if (side->mayAdvance)
                side->advance();
        if (one.stands() && other.stands()) {
            if (one.element.weight1 != other.element.weight1)
                return one.element.weight1 < other.element.weight1 ? -1 : 1;
        } else if (other.atEnd() && one.stands()) {
            return 1;
        } else if (one.atEnd() && other.stands()) {
            return -1;
        }
        for (Side* const side : {&one, &other})
            if (side->mayAdvance)
                side->push();
        // One that stands on a letter waits for the other.
        one.mayAdvance = !one.stands() || other.stands();
        other.mayAdvance = !other.stands() || one.stands();
    }
    if (!one.atEnd() && other.atEnd())
        return compareTail(one, 1, one, other);
    if (!other.atEnd() && one.atEnd())
        return compareTail(other, -1, one, other);
    return compareLevels(one, other);
}

std::string SortWalk::key(std::u16string_view text) const
{
    Levels levels;
    for (std::size_t at = 0; at < text.size();) {
        const Step step = stepAt(text, at);
        at += step.characters;
        if (step.elements > 0)
            levels.push(step.first, static_cast<unsigned>(at), step.directions);
        if (step.elements > 1)
            levels.push(step.second, static_cast<unsigned>(at), step.directions);
    }
    const auto trimmed = [](const std::string& run, std::uint8_t byDefault) {
        return run.substr(0, run.find_last_not_of(static_cast<char>(byDefault)) + 1);
    };
    const std::string separator(1, '\0');
    return levels.run(1) + separator + trimmed(levels.run(2), view_.header().defaultWeight2) +
           separator + trimmed(levels.run(3), view_.header().defaultWeight3) + separator +
           levels.run(4);
}

} // namespace vlx::data
