#include "mapstr/hand_pages.hpp"

namespace vlx::test {

namespace {

constexpr std::uint32_t kUpper = 0x002;
constexpr std::uint32_t kLower = 0x004;
constexpr std::uint32_t kDigit = 0x008;

// ASCII with the types of its letters and digits.
PageBuilder asciiPage(PageShape shape)
{
    PageBuilder page(shape);
    page.asciiHalf();
    for (TSChar32 digit = '0'; digit <= '9'; ++digit)
        page.type(digit, kDigit);
    return page;
}

PageBuilder pageWithWide(PageShape shape, TSChar32 blank, TSChar32 letters)
{
    PageBuilder page = asciiPage(shape);
    const TSChar32 upper = letters + 0x60;
    const TSChar32 lower = letters + 0x81;
    const TSChar32 digit = letters + 0x50;
    page.map(blank, 0x3000).map(upper, 0xFF21).map(lower, 0xFF41).map(digit, 0xFF11);
    page.type(upper, kUpper, lower - upper).type(lower, kLower, upper - lower).type(digit, kDigit);
    page.mapValue(' ', blank).mapValue('A', upper).mapValue('a', lower).mapValue('1', digit);
    page.build();
    return page;
}

} // namespace

PageBuilder latinPage()
{
    PageBuilder page = asciiPage(PageShape::kSingleByte);
    page.map(0xC4, 0xC4).map(0xE4, 0xE4).casePair(0xC4, 0xE4).map(0xDF, 0xDF).map(0xB2, 0xB2);
    page.type(0xB2, kDigit).build();
    return page;
}

PageBuilder widePage()
{
    return pageWithWide(PageShape::kDoubleByte, 0x8140, 0x8200);
}

PageBuilder shiftPage()
{
    return pageWithWide(PageShape::kStateful2, 0x4140, 0x4200);
}

} // namespace vlx::test
