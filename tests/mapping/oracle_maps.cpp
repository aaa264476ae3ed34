#include "mapping/oracle_maps.hpp"

#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

namespace vlx::oracle {

namespace {

using Table = std::map<std::uint32_t, std::uint16_t>;

// A row is the first value, or first-last, with /2 where only every second value counts, then the
// difference of the image from the value.
constexpr std::string_view kLowerRows =
    "0100-012E/2 +1, 0130 -199, 0132-0136/2 +1, 0139-0147/2 +1, 014A-0176/2 +1, 0178 -121, "
    "0179-017D/2 +1, 0181 +210, 0182-0184/2 +1, 0186 +206, 0187 +1, 0189-018A +205, 018B +1, 018E "
    "+79, 018F +202, 0190 +203, 0191 +1, 0193 +205, 0194 +207, 0196 +211, 0197 +209, 0198 +1, "
    "019C +211, 019D +213, 019F +214, 01A0-01A4/2 +1, 01A7 +1, 01A9 +218, 01AC +1, 01AE +218, "
    "01AF +1, 01B1-01B2 +217, 01B3-01B5/2 +1, 01B7 +219, 01B8 +1, 01BC +1, 01C4 +2, 01C5 +1, 01C7 "
    "+2, 01C8 +1, 01CA +2, 01CB-01DB/2 +1, 01DE-01EE/2 +1, 01F1 +2, 01F2-01F4/2 +1, 01FA-0216/2 "
    "+1, 0275 -214, 0386 +38, 0388-038A +37, 038C +64, 038E-038F +63, 0391-03A1 +32, 03A3-03AB "
    "+32, 03E2-03EE/2 +1, 0401-040C +80, 040E-040F +80, 0410-042F +32, 0460-0480/2 +1, "
    "0490-04BE/2 +1, 04C1-04C3/2 +1, 04C7 +1, 04CB +1, 04D0-04EA/2 +1, 04EE-04F4/2 +1, 04F8 +1, "
    "1E00-1E94/2 +1, 1EA0-1EF8/2 +1, 1F08-1F0F -8, 1F18-1F1D -8, 1F28-1F2F -8, 1F38-1F3F -8, "
    "1F48-1F4D -8, 1F59-1F5F/2 -8, 1F68-1F6F -8, 1F88-1F8F -8, 1F98-1F9F -8, 1FA8-1FAF -8, "
    "1FB8-1FB9 -8, 1FBA-1FBB -74, 1FBC -9, 1FC8-1FCB -86, 1FCC -9, 1FD8-1FD9 -8, 1FDA-1FDB -100, "
    "1FE8-1FE9 -8, 1FEA-1FEB -112, 1FEC -7, 1FF8-1FF9 -128, 1FFA-1FFB -126, 1FFC -9";

constexpr std::string_view kUpperRows =
    "0101-012F/2 -1, 0131 -232, 0133-0137/2 -1, 013A-0148/2 -1, 014B-0177/2 -1, 017A-017E/2 -1, "
    "017F -300, 0183-0185/2 -1, 0188 -1, 018C -1, 0192 -1, 0199 -1, 01A1-01A5/2 -1, 01A8 -1, 01AD "
    "-1, 01B0 -1, 01B4-01B6/2 -1, 01B9 -1, 01BD -1, 01C6 -2, 01C9 -2, 01CC -2, 01CE-01DC/2 -1, "
    "01DD -79, 01DF-01EF/2 -1, 01F3 -2, 01F5 -1, 01FB-0217/2 -1, 0253 -210, 0254 -206, 0256-0257 "
    "-205, 0259 -202, 025B -203, 0260 -205, 0263 -207, 0268 -209, 0269 -211, 026F -211, 0272 "
    "-213, 0283 -218, 0288 -218, 028A-028B -217, 0292 -219, 03AC -38, 03AD-03AF -37, 03B1-03C1 "
    "-32, 03C2 -31, 03C3-03CB -32, 03CC -64, 03CD-03CE -63, 03D0 -62, 03D1 -57, 03D5 -47, 03D6 "
    "-54, 03E3-03EF/2 -1, 03F0 -86, 03F1 -80, 0430-044F -32, 0451-045C -80, 045E-045F -80, "
    "0461-0481/2 -1, 0491-04BF/2 -1, 04C2-04C4/2 -1, 04C8 -1, 04CC -1, 04D1-04EB/2 -1, "
    "04EF-04F5/2 -1, 04F9 -1, 1E01-1E95/2 -1, 1E9B -59, 1EA1-1EF9/2 -1, 1F00-1F07 +8, 1F10-1F15 "
    "+8, 1F20-1F27 +8, 1F30-1F37 +8, 1F40-1F45 +8, 1F51-1F57/2 +8, 1F60-1F67 +8, 1F70-1F71 +74, "
    "1F72-1F75 +86, 1F76-1F77 +100, 1F78-1F79 +128, 1F7A-1F7B +112, 1F7C-1F7D +126, 1F80-1F87 +8, "
    "1F90-1F97 +8, 1FA0-1FA7 +8, 1FB0-1FB1 +8, 1FB3 +9, 1FC3 +9, 1FD0-1FD1 +8, 1FE0-1FE1 +8, 1FE5 "
    "+7, 1FF3 +9";

Table tableOf(std::string_view rows)
{
    Table table;
    std::string text(rows);
    for (char* at = text.data(); *at != 0;) {
        auto value = static_cast<std::uint32_t>(std::strtoul(at, &at, 16));
        const std::uint32_t last =
            *at == '-' ? static_cast<std::uint32_t>(std::strtoul(at + 1, &at, 16)) : value;
        const std::uint32_t step =
            *at == '/' ? static_cast<std::uint32_t>(std::strtoul(at + 1, &at, 10)) : 1;
        const long difference = std::strtol(at, &at, 10);
        for (; value <= last; value += step)
            table[value] = static_cast<std::uint16_t>(static_cast<long>(value) + difference);
        while (*at == ',' || *at == ' ')
            ++at;
    }
    return table;
}

const Table& lowerTable()
{
    static const Table table = tableOf(kLowerRows);
    return table;
}

const Table& upperTable()
{
    static const Table table = tableOf(kUpperRows);
    return table;
}

std::uint16_t imageIn(const Table& table, std::uint16_t value)
{
    const auto found = table.find(value);
    return found == table.end() ? value : found->second;
}

std::uint16_t moved(std::uint16_t value, int difference)
{
    return static_cast<std::uint16_t>(value + difference);
}

bool within(std::uint16_t value, unsigned first, unsigned last)
{
    return value >= first && value <= last;
}

// The wide forms of U+FF61 to U+FF9F in their order.
constexpr char16_t kKana[] = u"\u3002\u300C\u300D\u3001\u30FB" // the signs
                             u"ヲァィゥェォャュョッ\u30FC"
                             u"アイウエオカキクケコサシスセソタチツテトナニヌネノハヒフヘホ"
                             u"マミムメモヤユヨラリルレロワン\u309B\u309C";
static_assert(sizeof kKana / sizeof *kKana - 1 == 0xFF9F - 0xFF61 + 1);

// The wide forms of U+FFA0 to U+FFEE; those without one are not here.
std::uint16_t wideOfHangulAndSigns(std::uint16_t value)
{
    if (value == 0xFFA0)
        return 0x3164;
    if (value <= 0xFFBE)
        return moved(0x3131, value - 0xFFA1);
    if (within(value, 0xFFC2, 0xFFC7))
        return moved(0x314F, value - 0xFFC2);
    if (within(value, 0xFFCA, 0xFFCF))
        return moved(0x3155, value - 0xFFCA);
    if (within(value, 0xFFD2, 0xFFD7))
        return moved(0x315B, value - 0xFFD2);
    if (within(value, 0xFFDA, 0xFFDC))
        return moved(0x3161, value - 0xFFDA);
    if (value == 0xFFE8)
        return 0x2502;
    if (within(value, 0xFFE9, 0xFFEC))
        return moved(0x2190, value - 0xFFE9);
    if (value == 0xFFED)
        return 0x25A0;
    return value == 0xFFEE ? 0x25CB : value;
}

std::uint16_t wideOfNarrow(std::uint16_t value)
{
    return value <= 0xFF9F ? kKana[value - 0xFF61] : wideOfHangulAndSigns(value);
}

// The half-width form that has `value` as its wide form, sought among all of them.
std::uint16_t narrowOf(std::uint16_t value)
{
    for (std::uint16_t narrow = 0xFF61; narrow <= 0xFFEE; ++narrow)
        if (wideOfNarrow(narrow) == value)
            return narrow;
    return value;
}

} // namespace

std::size_t lowerTableSize()
{
    return lowerTable().size();
}

std::size_t upperTableSize()
{
    return upperTable().size();
}

// The first range that holds the value decides.
std::uint16_t toLower(std::uint16_t value)
{
    if (within(value, 0x0041, 0x005A))
        return moved(value, 32);
    if (within(value, 0x00C0, 0x00DE))
        return value == 0x00D7 ? value : moved(value, 32);
    if (within(value, 0x0100, 0x01FE) || within(value, 0x0200, 0x0275) ||
        within(value, 0x0386, 0x03EE) || within(value, 0x0401, 0x04F8))
        return imageIn(lowerTable(), value);
    if (within(value, 0x0531, 0x0556) || within(value, 0x10A0, 0x10C5))
        return moved(value, 48);
    if (within(value, 0x1E00, 0x1EF8) || within(value, 0x1F08, 0x1FFC))
        return imageIn(lowerTable(), value);
    if (within(value, 0x2160, 0x216F))
        return moved(value, 16);
    if (within(value, 0x24B6, 0x24CF))
        return moved(value, 26);
    return within(value, 0xFF21, 0xFF3A) ? moved(value, 32) : value;
}

std::uint16_t toUpper(std::uint16_t value)
{
    if (within(value, 0x0061, 0x007A))
        return moved(value, -32);
    if (within(value, 0x00E0, 0x00FE))
        return value == 0x00F7 ? value : moved(value, -32);
    if (within(value, 0x0101, 0x01FF) || within(value, 0x0200, 0x0292) ||
        within(value, 0x03AC, 0x03F1) || within(value, 0x0430, 0x04F9))
        return imageIn(upperTable(), value);
    if (within(value, 0x0561, 0x0586))
        return moved(value, -48);
    if (within(value, 0x1E01, 0x1EF9) || within(value, 0x1F00, 0x1FF3))
        return imageIn(upperTable(), value);
    if (within(value, 0x2170, 0x217F))
        return moved(value, -16);
    if (within(value, 0x24D0, 0x24E9))
        return moved(value, -26);
    if (within(value, 0xFF41, 0xFF5A))
        return moved(value, -32);
    return value == 0x00FF ? 0x0178 : value;
}

std::uint16_t toFullWidth(std::uint16_t value)
{
    if (within(value, 0x0021, 0x007E))
        return moved(value, 0xFEE0);
    switch (value) {
    case 0x00A2:
        return 0xFFE0;
    case 0x00A3:
        return 0xFFE1;
    case 0x00A5:
        return 0xFFE5;
    case 0x00A6:
        return 0xFFE4;
    case 0x00AC:
        return 0xFFE2;
    case 0x00AF:
        return 0xFFE3;
    case 0x0020:
        return 0x3000;
    case 0x20A9:
        return 0xFFE6;
    default:
        return within(value, 0xFF61, 0xFFEE) ? wideOfNarrow(value) : value;
    }
}

std::uint16_t toHalfWidth(std::uint16_t value)
{
    if (within(value, 0xFF01, 0xFF5E))
        return moved(value, -0xFEE0);
    if (within(value, 0x2190, 0x2193))
        return moved(0xFFE9, value - 0x2190);
    if (value == 0x2502 || value == 0x25A0 || value == 0x25CB)
        return value == 0x2502 ? 0xFFE8 : value == 0x25A0 ? 0xFFED : 0xFFEE;
    if (value == 0x3000)
        return 0x0020;
    if (within(value, 0x3001, 0x30FC) || within(value, 0x3131, 0x3164))
        return narrowOf(value);
    constexpr std::uint16_t kSigns[] = {0x00A2, 0x00A3, 0x00AC, 0x00AF, 0x00A6, 0x00A5, 0x20A9};
    return within(value, 0xFFE0, 0xFFE6) ? kSigns[value - 0xFFE0] : value;
}

// Ten digits stand in a row behind most zeros; the others are told one by one.
std::uint16_t digit(std::uint16_t value)
{
    constexpr std::uint16_t kZeros[] = {0x0030, 0x0660, 0x06F0, 0x0966, 0x09E6, 0x0A66,
                                        0x0AE6, 0x0B66, 0x0C66, 0x0CE6, 0x0D66, 0x0E50,
                                        0x0ED0, 0x0F20, 0x2080, 0xFF10};
    for (const std::uint16_t zero : kZeros)
        if (within(value, zero, zero + 9u))
            return moved(u'0', value - zero);
    if (within(value, 0x0BE7, 0x0BEF))
        return moved(u'1', value - 0x0BE7);
    if (within(value, 0x2074, 0x2079))
        return moved(u'4', value - 0x2074);
    switch (value) {
    case 0x00B2:
        return u'2';
    case 0x00B3:
        return u'3';
    case 0x00B9:
        return u'1';
    case 0x2070:
        return u'0';
    default:
        return 0;
    }
}

} // namespace vlx::oracle
