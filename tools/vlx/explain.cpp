#include "explain.hpp"

#include <algorithm>

#include <fmt/format.h>

#include "failure.hpp"

namespace vlx::cli {

namespace {

int signOf(int difference)
{
    return (difference > 0) - (difference < 0);
}

// The image of a text under a mapping of the library.
Units mapped(TSLocale* locale, const Units& text, std::uint32_t mapping)
{
    Units image(2 * text.size() + 1, 0);
    const std::int32_t size =
        TSMapStringU(locale, image.data(), static_cast<std::int32_t>(image.size()), text.data(),
                     static_cast<std::int32_t>(text.size()), mapping);
    image.resize(static_cast<std::size_t>(std::max(size, 0)));
    return image;
}

} // namespace

Explanation::Explanation(const Library& library, TSLocale* locale,
                         const std::vector<std::string>& pair, std::uint32_t options)
    : locale_(locale), options_(options), sort_(TSGetLocaleNumInfo(locale, TS_LI_SORT_ID, 0))
{
    if (sort_ != 0)
        object_ = std::make_unique<SortObject>(library, sort_);
    for (const std::string& text : pair)
        texts_.push_back(explained(text));
    parting_ = part();
}

std::string Explanation::sortName() const
{
    TSChar16 name[64];
    const std::int32_t size =
        TSGetLocaleTextInfoU(locale_, TS_LI_SORT_OBJECT, name, std::size(name), 0);
    const std::string text = utf8Of(name, std::max(size, 0));
    return text.substr(0, text.find('\0'));
}

ExplainedText Explanation::explained(const std::string& text) const
{
    const Units units = unitsOf(text);
    ExplainedText made{text, keyOf(units)};
    if (!object_)
        return made;
    made.elements = object_->elementsOf(folded(units, made.key));
    made.runs = object_->runsOf(made.elements);
    return made;
}

// Without a sort the bytes of the code page count, else the page does not matter.
std::string Explanation::keyOf(const Units& units) const
{
    const auto count = static_cast<std::int32_t>(units.size());
    std::string key(32 * units.size() + 16, '\0');
    const auto room = static_cast<std::int32_t>(key.size());
    std::int32_t size = 0;
    if (object_) {
        size = TSStrxfrmU(locale_, key.data(), room, units.data(), count, options_);
    } else {
        std::string bytes(8 * units.size() + 8, '\0');
        const std::int32_t length =
            TSUnicodeToStringEx(locale_, bytes.data(), 0, static_cast<std::int32_t>(bytes.size()),
                                units.data(), count, 0);
        size = TSStrxfrmEx(locale_, key.data(), room, bytes.data(), 0, length, options_);
    }
    if (size < 0 || size > room)
        throw Failure(fmt::format("no key can be made (error {})", TSGetError(locale_)));
    key.resize(static_cast<std::size_t>(size));
    return key;
}

// The text that the elements of a key are made of.
Units Explanation::folded(const Units& units, const std::string& key) const
{
    constexpr std::uint32_t mappings[] = {TS_MAP_COPY, TS_MAP_UPPER, TS_MAP_UPPER | TS_MAP_SIMPLE,
                                          TS_MAP_HALF_WIDTH};
    for (const std::uint32_t mapping : mappings) {
        Units image = mapped(locale_, units, mapping);
        if (object_->keyOf(image) == key)
            return image;
    }
    throw Failure(fmt::format("the elements of \"{}\" cannot be told; the key is {}",
                              utf8Of(units.data(), static_cast<std::int32_t>(units.size())),
                              hexOf(key)));
}

// On level 4 the place in the text counts, too.
bool Explanation::isSame(std::size_t level, const PlacedWeight& one,
                         const PlacedWeight& other) const
{
    return one.weight == other.weight &&
           (level < 3 ||
            first().elements[one.element].position == second().elements[other.element].position);
}

Parting Explanation::part() const
{
    const std::string& key = first().key;
    const int order = signOf(key.compare(second().key));
    if (order == 0)
        return {0};
    if (!object_) {
        const auto at =
            std::mismatch(key.begin(), key.end(), second().key.begin(), second().key.end());
        return {order, 0, static_cast<std::size_t>(at.first - key.begin())};
    }
    for (std::size_t level = 0; level < kKeyLevels; ++level) {
        const WeightRun& run = first().runs[level];
        const WeightRun& other = second().runs[level];
        const auto size = static_cast<std::ptrdiff_t>(object_->sizeInKey(run, level));
        const auto otherSize = static_cast<std::ptrdiff_t>(object_->sizeInKey(other, level));
        const auto same = [&](const PlacedWeight& one, const PlacedWeight& another) {
            return isSame(level, one, another);
        };
        if (std::equal(run.begin(), run.begin() + size, other.begin(), other.begin() + otherSize,
                       same))
            continue;
        // Weights that the key has not are the least ones, so that these do not change the order.
        const auto at = std::mismatch(run.begin(), run.end(), other.begin(), other.end(), same);
        return {order, level, static_cast<std::size_t>(at.first - run.begin())};
    }
    return {order};
}

int Explanation::comparison() const
{
    if (!object_)
        return parting_.order;
    const Units one = unitsOf(first().text);
    const Units other = unitsOf(second().text);
    return signOf(TSStrcollU(locale_, one.data(), static_cast<std::int32_t>(one.size()),
                             other.data(), static_cast<std::int32_t>(other.size()), options_));
}

} // namespace vlx::cli
