// The search in the memory of a preloaded catalog.
#include "catalog/catalog.hpp"

namespace vlx {

namespace {

// The index of a number in an array of distinct numbers above 0 in ascending order, or `count`. An
// element cannot lie farther from another than the difference of their numbers. Where the order is
// broken the search still ends.
template <class NumberAt>
std::uint64_t indexOf(std::uint32_t wanted, std::uint64_t count, const NumberAt& numberAt)
{
    std::uint64_t low = 0;
    const bool direct = wanted - 1 < count;
    std::uint64_t index = direct ? wanted - 1 : count / 2;
    std::uint64_t high = direct ? wanted : count;
    while (low < high) {
        const std::uint32_t number = numberAt(index);
        if (number == wanted)
            return index;
        const bool up = number < wanted;
        if (up) {
            low = index + 1;
            const std::uint64_t reach = std::uint64_t{wanted} - number + low;
            high = reach < high ? reach : high;
        } else {
            high = index;
        }
        if (low >= high)
            break;
        const std::uint64_t step = high - low == 1 ? 1 : (high - low) / 2;
        index = up ? index + step : index - step;
    }
    return count;
}

} // namespace

FoundText findLoaded(const TSCatalog& catalog, std::int32_t set, std::int32_t message)
{
    if (set < 1 || message < 1)
        return {};
    const std::uint64_t at =
        indexOf(static_cast<std::uint32_t>(set), catalog.setCount,
                [&](std::uint64_t index) { return catalog.sets[index].number; });
    if (at == catalog.setCount)
        return {};
    const LoadedSet& in = catalog.sets[at];
    const auto entryAt = [&](std::uint64_t index) {
        return in.messages + index * sizeof(TSCatalogMessage);
    };
    const std::uint64_t index =
        indexOf(static_cast<std::uint32_t>(message), in.messageCount,
                [&](std::uint64_t i) { return recordAt<std::uint32_t>(entryAt(i)); });
    if (index == in.messageCount)
        return {};
    const auto entry = recordAt<TSCatalogMessage>(entryAt(index));
    if (in.ready && in.ready[index].text)
        return {in.texts + entry.textOffset, entry.length - 1, &in.ready[index]};
    if (entry.textOffset >= in.textSize)
        return {};
    const char* const text = in.texts + entry.textOffset;
    const void* const end = std::memchr(text, 0, in.textSize - entry.textOffset);
    if (!end)
        return {};
    return {text, static_cast<std::uint32_t>(static_cast<const char*>(end) - text)};
}

} // namespace vlx
