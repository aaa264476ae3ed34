// The built-in objects, in the layout of the files.
#include "frame/builtin.hpp"

#include <array>
#include <string_view>

namespace vlx {
namespace {

// A content header and behind it the texts, packed at compile time.
template <class Header, int Units>
struct Content {
    Header header;
    Le16 texts[Units];
};

template <class Header, int Units>
class ContentBuilder {
  public:
    // Appends a text with its terminator and gives its offset in the content.
    constexpr std::uint16_t text(std::u16string_view string)
    {
        const auto offset = static_cast<std::uint16_t>(sizeof(Header) + 2 * used_);
        for (const char16_t unit : string)
            content.texts[used_++] = static_cast<std::uint16_t>(unit);
        content.texts[used_++] = std::uint16_t{0};
        return offset;
    }
    constexpr std::uint16_t end() const
    {
        return static_cast<std::uint16_t>(sizeof(Header) + 2 * used_);
    }

    Content<Header, Units> content{};

  private:
    std::size_t used_ = 0;
};

constexpr int kLanguageUnits = (kBuiltinLanguageSize - int{sizeof(TSLanguageContent)}) / 2;

constexpr auto makeLanguage()
{
    constexpr std::u16string_view days[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                            u"Thursday", u"Friday", u"Saturday"};
    constexpr std::u16string_view months[] = {
        u"January", u"February",  u"March",   u"April",    u"May",      u"June", u"July",
        u"August",  u"September", u"October", u"November", u"December", u""};

    ContentBuilder<TSLanguageContent, kLanguageUnits> builder;
    TSLanguageContent header{};
    header.defaultTerritory = std::uint16_t{1};
    header.defaultCodePage = std::uint16_t{1};
    header.defaultSort = std::uint16_t{0};
    header.code = builder.text(u"EN");
    header.name = builder.text(u"English");
    for (int i = 0; i < TSLanguageContent::kDays; ++i)
        header.dayNames[i] = builder.text(days[i]);
    for (int i = 0; i < TSLanguageContent::kDays; ++i)
        header.shortDayNames[i] = builder.text(days[i].substr(0, 3));
    for (int i = 0; i < TSLanguageContent::kMonths; ++i)
        header.monthNames[i] = builder.text(months[i]);
    for (int i = 0; i < TSLanguageContent::kMonths; ++i)
        header.shortMonthNames[i] = builder.text(months[i].substr(0, 3));
    header.am = builder.text(u"AM");
    header.pm = builder.text(u"PM");
    header.upperPairs = builder.end();
    header.lowerPairs = builder.end();
    builder.content.header = header;
    return builder.content;
}

constexpr auto kLanguage = makeLanguage();
static_assert(sizeof kLanguage == kBuiltinLanguageSize);

constexpr auto makeTerritory()
{
    ContentBuilder<TSTerritoryContent, 73> builder;
    TSTerritoryContent header{};
    header.decimalPoint = std::uint16_t{u'.'};
    header.thousandsSeparator = std::uint16_t{u','};
    header.listSeparator = std::uint16_t{u','};
    header.monetaryDecimalPoint = std::uint16_t{u'.'};
    header.monetaryThousandsSeparator = std::uint16_t{u','};
    header.fractionDigits = std::uint16_t{2};
    header.currencyDigits = std::uint16_t{2};
    header.intlCurrencyDigits = std::uint16_t{2};
    header.positiveSignPosition = 3;
    header.negativeSignPosition = 0; // parentheses
    header.word9 = std::uint16_t{0};
    header.flags =
        static_cast<std::uint16_t>(kTerritoryFlag0 | kPositiveSymbolPrecedes |
                                   kNegativeSymbolPrecedes | kTerritoryFlag5 | kTerritoryFlag6);
    header.code = builder.text(u"USA");
    header.name = builder.text(u"United States");
    header.grouping = builder.text(u"3;0");
    header.monetaryGrouping = builder.text(u"3;0");
    header.currencySymbol = builder.text(u"$");
    header.intlCurrencySymbol = builder.text(u"USD");
    header.positiveSign = builder.text(u"");
    header.negativeSign = builder.text(u"-");
    header.timeFormat = builder.text(u"%#I:%M:%S %p");
    header.dateFormat = builder.text(u"%#m/%#d/%y");
    header.longDateFormat = builder.text(u"%A, %B %d, %Y");
    header.end = builder.end();
    builder.content.header = header;
    return builder.content;
}

constexpr auto kTerritory = makeTerritory();
static_assert(kTerritory.header.flags == 0x6B);
static_assert(kTerritory.header.end == sizeof kTerritory);

// Runs of character type words of US-ASCII: the last byte of a run and its word.
struct TypeRun {
    std::uint8_t last;
    std::uint32_t word;
};
constexpr TypeRun kTypeRuns[] = {
    {0x08, 0x10000700}, {0x09, 0x120803C0}, {0x0D, 0x12000740}, {0x1F, 0x10000700},
    {0x20, 0x121002C0}, {0x22, 0x12200220}, {0x25, 0x12008220}, {0x26, 0x12000A20},
    {0x27, 0x10200220}, {0x2A, 0x12200220}, {0x2B, 0x12008220}, {0x2C, 0x12020220},
    {0x2D, 0x10008220}, {0x2F, 0x12004220}, {0x39, 0x10002218}, {0x3A, 0x12020220},
    {0x3F, 0x12200220}, {0x40, 0x12000A20}, {0x46, 0x10000A13}, {0x5A, 0x10000A03},
    {0x60, 0x12200220}, {0x66, 0x10000A15}, {0x7A, 0x10000A05}, {0x7E, 0x12200220},
    {0x7F, 0x10000700}, {0xFF, 0x00000000},
};

constexpr std::uint8_t asciiUpper(unsigned byte)
{
    return static_cast<std::uint8_t>(byte >= 'a' && byte <= 'z' ? byte - 0x20 : byte);
}
constexpr std::uint8_t asciiLower(unsigned byte)
{
    return static_cast<std::uint8_t>(byte >= 'A' && byte <= 'Z' ? byte + 0x20 : byte);
}

constexpr TSCodePageHeader makeCodePage()
{
    TSCodePageHeader page{};
    page.substChar = '?';
    page.lineFeedChar = page.lineEnd3Char = page.lineEnd4Char = 0x0A;
    page.carriageReturnChar = 0x0D;
    page.maxCharBytes = 1;
    const TypeRun* run = kTypeRuns;
    for (unsigned byte = 0; byte < 256; ++byte) {
        if (byte > run->last)
            ++run;
        page.charLength[byte] = 1;
        page.toUpper[byte] = asciiUpper(byte);
        page.toLower[byte] = asciiLower(byte);
        page.toUnicode[byte] = byte < 0x80 ? static_cast<std::uint16_t>(byte) : kNoUnicode;
        page.charType[byte] = run->word;
        // Each page but two maps its first value alone, to the last byte of the array.
        page.unicodePages[byte] = {kPageByte, 0, 0, 0, std::uint16_t{0x102}, std::uint16_t{0}};
    }
    page.unicodePages[0x00] = {kPageByte, 0xFF, 0, 0xFF, std::uint16_t{0}, std::uint16_t{0}};
    page.unicodePages[0x20] = {kPageByte, 1, 0x28, 0x29, std::uint16_t{0x100}, std::uint16_t{0}};
    page.cpFlags = kAsciiFamily;
    return page;
}

constexpr std::array<std::uint8_t, 259> makeAsciiFromUnicode()
{
    std::array<std::uint8_t, 259> bytes{};
    for (unsigned value = 0; value < 256; ++value)
        bytes[value] = static_cast<std::uint8_t>(value < 0x80 ? value : '?');
    bytes[256] = bytes[257] = 0x0A;
    bytes[258] = '?';
    return bytes;
}

} // namespace

const std::uint8_t* const kBuiltinLanguage = reinterpret_cast<const std::uint8_t*>(&kLanguage);
const std::uint8_t* const kBuiltinTerritory = reinterpret_cast<const std::uint8_t*>(&kTerritory);
constinit const TSCodePageHeader kBuiltinCodePage = makeCodePage();
constinit const std::array<std::uint8_t, 259> kAsciiFromUnicode = makeAsciiFromUnicode();

} // namespace vlx
