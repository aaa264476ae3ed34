#include "elements.hpp"

#include <algorithm>

#include <fmt/format.h>

#include "failure.hpp"

namespace vlx::cli {

namespace {

std::string damaged(std::int32_t id)
{
    return fmt::format("the sort object {} of the locale directory cannot be read; check the "
                       "directory with vlx-data lint",
                       id);
}

Bytes contentOf(const Library& library, std::int32_t id)
{
    const auto file = library.directory()
                          ? library.directory()->object(TS_OBJ_SORT, static_cast<std::uint16_t>(id))
                          : std::nullopt;
    if (!file)
        throw Failure(damaged(id));
    return file->sections[0];
}

data::SortView viewOf(const data::Bytes& content, std::int32_t id)
{
    const auto view = data::SortView::open(content);
    if (!view)
        throw Failure(damaged(id));
    return *view;
}

std::u16string u16Of(const Units& text)
{
    return {text.begin(), text.end()};
}

CollationElement elementOf(const data::SortWalk::Element& element, Units characters,
                           std::size_t position, unsigned directions)
{
    return {std::move(characters),
            {element.weight1, element.weight2, element.weight3, element.weight4},
            static_cast<unsigned>(position),
            directions};
}

} // namespace

SortObject::SortObject(const Library& library, std::int32_t id)
    : content_(contentOf(library, id)), view_(viewOf(content_, id)), walk_(view_)
{
}

// The walk trusts the content, which only the library has checked.
void SortObject::require(const Units& text) const
{
    for (const TSChar16 unit : text)
        if (isTablePage(view_.page(unit >> 8)) && !view_.record(unit))
            throw Failure(fmt::format("the sort object has no record for U+{:04X}",
                                      static_cast<unsigned>(unit)));
}

std::vector<CollationElement> SortObject::elementsOf(const Units& text) const
{
    require(text);
    const std::u16string units = u16Of(text);
    std::vector<CollationElement> elements;
    for (std::size_t at = 0; at < units.size();) {
        const data::SortWalk::Step step = walk_.stepAt(units, at);
        const Units characters = text.substr(at, step.characters);
        at += step.characters;
        elements.push_back(elementOf(step.first, characters, at, step.directions));
        if (step.elements == 2)
            elements.push_back(elementOf(step.second, {}, at, step.directions));
    }
    return elements;
}

std::array<WeightRun, kKeyLevels>
SortObject::runsOf(const std::vector<CollationElement>& elements) const
{
    std::array<WeightRun, kKeyLevels> runs;
    for (std::size_t level = 0; level < kKeyLevels; ++level) {
        WeightRun& run = runs[level];
        std::size_t front = 0; // of the weights that are backward, which grow at their front
        for (std::size_t i = 0; i < elements.size(); ++i) {
            if (elements[i].weights[level] == 0)
                continue;
            const bool isForward =
                (elements[i].directions & forwardBit(static_cast<int>(level) + 1)) != 0;
            const std::size_t place = isForward ? run.size() : front;
            run.insert(run.begin() + static_cast<std::ptrdiff_t>(place),
                       {elements[i].weights[level], i});
            if (isForward)
                front = run.size();
        }
    }
    return runs;
}

std::size_t SortObject::sizeInKey(const WeightRun& run, std::size_t level) const
{
    std::size_t size = run.size();
    if (level != 1 && level != 2)
        return size;
    const unsigned byDefault =
        level == 1 ? view_.header().defaultWeight2 : view_.header().defaultWeight3;
    while (size > 0 && run[size - 1].weight == byDefault)
        --size;
    return size;
}

std::string SortObject::keyOf(const Units& text) const
{
    require(text);
    return walk_.key(u16Of(text));
}

} // namespace vlx::cli
