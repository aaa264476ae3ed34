// The sort of a locale.
#include "collate/lookup.hpp"

namespace vlx {
namespace {

// Each value is its own level 1 weight.
constexpr TSSortData makeCodeOrder()
{
    TSSortData data{};
    for (unsigned high = 0; high < 256; ++high)
        data.sortPages[high] = {kPageLevel1, kAllForward, static_cast<std::uint16_t>(high << 8)};
    return data;
}

constinit const TSSortData kCodeOrder = makeCodeOrder();
constinit const TSSortTraits kCodeOrderTraits{kAllForward, 0, true, true, ~std::uint64_t{0}};

} // namespace

Sort sortOf(const TSLocale& locale)
{
    const TSObject* const object = locale.sort;
    if (!object || object->type != TS_OBJ_SORT || !object->sections[0])
        return {kCodeOrder, kCodeOrderTraits};
    return {*reinterpret_cast<const TSSortData*>(object->sections[0]), object->sortTraits};
}

} // namespace vlx
