// The sort of a locale that has no sort object to read.
#include "collate/lookup.hpp"

namespace vlx {
namespace {

constexpr TSSortData makeCodeOrder()
{
    TSSortData data{};
    for (unsigned high = 0; high < 256; ++high)
        data.sortPages[high] = {kPageLevel1, kAllForward, static_cast<std::uint16_t>(high << 8)};
    return data;
}

} // namespace

constinit const TSSortData kCodeOrder = makeCodeOrder();
constinit const TSSortTraits kCodeOrderTraits{kAllForward, 0, true, true, ~std::uint64_t{0}};

} // namespace vlx
