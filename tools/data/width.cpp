#include "width.hpp"

#include <algorithm>
#include <iterator>

namespace vlx::data {

namespace {

// A run of half-width forms and where their full-width forms begin.
struct WidthRun {
    std::uint16_t narrow;
    std::uint16_t count;
    std::uint16_t wide;
};

constexpr WidthRun kRuns[] = {
    {0x0020, 1, 0x3000}, {0x0021, 94, 0xFF01}, {0x00A2, 2, 0xFFE0}, {0x00A5, 1, 0xFFE5},
    {0x00A6, 1, 0xFFE4}, {0x00AC, 1, 0xFFE2},  {0x00AF, 1, 0xFFE3}, {0x20A9, 1, 0xFFE6},
    {0xFFA0, 1, 0x3164}, {0xFFA1, 30, 0x3131}, {0xFFC2, 6, 0x314F}, {0xFFCA, 6, 0x3155},
    {0xFFD2, 6, 0x315B}, {0xFFDA, 3, 0x3161},  {0xFFE8, 1, 0x2502}, {0xFFE9, 4, 0x2190},
    {0xFFED, 1, 0x25A0}, {0xFFEE, 1, 0x25CB},
};

// The wide forms of FF61 to FF9F. The last two are the spacing sound marks, not the combining ones.
constexpr std::uint16_t kFirstKana = 0xFF61;
constexpr std::uint16_t kWideKana[] = {
    0x3002, 0x300C, 0x300D, 0x3001, 0x30FB, 0x30F2, 0x30A1, 0x30A3, 0x30A5, 0x30A7, 0x30A9,
    0x30E3, 0x30E5, 0x30E7, 0x30C3, 0x30FC, 0x30A2, 0x30A4, 0x30A6, 0x30A8, 0x30AA, 0x30AB,
    0x30AD, 0x30AF, 0x30B1, 0x30B3, 0x30B5, 0x30B7, 0x30B9, 0x30BB, 0x30BD, 0x30BF, 0x30C1,
    0x30C4, 0x30C6, 0x30C8, 0x30CA, 0x30CB, 0x30CC, 0x30CD, 0x30CE, 0x30CF, 0x30D2, 0x30D5,
    0x30D8, 0x30DB, 0x30DE, 0x30DF, 0x30E0, 0x30E1, 0x30E2, 0x30E4, 0x30E6, 0x30E8, 0x30E9,
    0x30EA, 0x30EB, 0x30EC, 0x30ED, 0x30EF, 0x30F3, 0x309B, 0x309C,
};
static_assert(std::size(kWideKana) == 0xFF9F - kFirstKana + 1);

} // namespace

std::uint16_t toFullWidth(std::uint16_t value)
{
    if (value >= kFirstKana && value < kFirstKana + std::size(kWideKana))
        return kWideKana[value - kFirstKana];
    for (const WidthRun& run : kRuns)
        if (value >= run.narrow && value < run.narrow + run.count)
            return static_cast<std::uint16_t>(run.wide + (value - run.narrow));
    return value;
}

std::uint16_t toHalfWidth(std::uint16_t value)
{
    for (const WidthRun& run : kRuns)
        if (value >= run.wide && value < run.wide + run.count)
            return static_cast<std::uint16_t>(run.narrow + (value - run.wide));
    const auto* const kana = std::find(std::begin(kWideKana), std::end(kWideKana), value);
    if (kana != std::end(kWideKana))
        return static_cast<std::uint16_t>(kFirstKana + (kana - std::begin(kWideKana)));
    return value;
}

} // namespace vlx::data
