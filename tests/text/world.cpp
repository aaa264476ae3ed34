#include "text/world.hpp"

#include <string_view>

namespace vlx::test {

namespace {

// The characters of an EBCDIC page, from their first code.
struct Run {
    unsigned first;
    std::string_view characters;
};
constexpr Run kEbcdic[] = {
    {0xF0, "0123456789"}, {0xC1, "ABCDEFGHI"}, {0xD1, "JKLMNOPQR"}, {0xE2, "STUVWXYZ"},
    {0x81, "abcdefghi"},  {0x91, "jklmnopqr"}, {0xA2, "stuvwxyz"},  {0x40, " "},
    {0x4B, ".<(+"},       {0x5B, "$*);"},      {0x60, "-/"},        {0x6B, ",%_>?"},
    {0x7A, ":#@'=\""},    {0x05, "\t"},
};
// Small letters of code page 930.
constexpr Run kSmall930[] = {{0x62, "abcdefgh"}, {0x71, "ijklmnop"}, {0x8B, "q"},
                             {0x9B, "r"},        {0xAB, "s"},        {0xB3, "tuvwxyz"}};

// Where the longer characters of a page begin.
TSChar32 firstLong(PageShape shape, bool ebcdic)
{
    switch (shape) {
    case PageShape::kSingleByte:
    case PageShape::kUtf8:
        return 0;
    case PageShape::kDoubleByte:
        return ebcdic ? 0x2141 : 0x8141;
    case PageShape::kThreeByte:
        return ebcdic ? 0x214141 : 0x814141;
    case PageShape::kFourByte:
        return ebcdic ? 0x21414141 : 0x81414141;
    case PageShape::kStateful3:
        return 0x414141;
    default:
        return 0x4141;
    }
}

constexpr std::uint32_t kBlank = 0x2C0;
constexpr std::uint32_t kDigit = 0x218;

} // namespace

LocaleSpec LocaleSpec::builtin()
{
    LocaleSpec spec;
    constexpr const char16_t* days[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                        u"Thursday", u"Friday", u"Saturday"};
    constexpr const char16_t* months[] = {
        u"January", u"February",  u"March",   u"April",    u"May",      u"June", u"July",
        u"August",  u"September", u"October", u"November", u"December", u""};
    std::size_t next = 2;
    for (const char16_t* day : days)
        spec.language.texts[next++] = day;
    for (const char16_t* day : days)
        spec.language.texts[next++] = std::u16string(day).substr(0, 3);
    for (const char16_t* month : months)
        spec.language.texts[next++] = month;
    for (const char16_t* month : months)
        spec.language.texts[next++] = std::u16string(month).substr(0, 3);
    spec.language.texts[next++] = u"AM";
    spec.language.texts[next++] = u"PM";
    spec.language.upperPairs.clear();
    spec.language.lowerPairs.clear();
    spec.territory.words = {u'.', u',', u',', u'.', u',', 2, 2, 2, 0x0003, 0, 0x000B};
    spec.territory.texts = {
        u"USA", u"United States", u"3;0",        u"3;0",          u"$", u"USD", u"",
        u"-",   u"%#I:%M:%S %p",  u"%#m/%#d/%y", u"%A, %B %d, %Y"};
    return spec;
}

TextLocale::TextLocale(const LocaleSpec& spec)
    : page(spec.shape), languageBytes_(spec.language.bytes()),
      territoryBytes_(spec.territory.bytes())
{
    if (spec.shape != PageShape::kUtf8)
        page.id(spec.id);
    mapCharacters(spec.ebcdic);
    page.build();
    record = localeOn(page.object());
    language_.type = TS_OBJ_LANGUAGE;
    language_.sections[0] = languageBytes_.data();
    territory_.type = TS_OBJ_TERRITORY;
    territory_.sections[0] = territoryBytes_.data();
    record.language = &language_;
    record.territory = &territory_;
    record.flags = static_cast<std::uint16_t>(record.flags | spec.flags);
    record.fractionDigits = spec.digits[0];
    record.currencyDigits = spec.digits[1];
    record.intlCurrencyDigits = spec.digits[2];
    record.positiveSignPosition = spec.positions[0];
    record.negativeSignPosition = spec.positions[1];
    reference.base = oracleLocale(page);
    reference.ascii = !spec.ebcdic;
    keepTexts(spec);
}

void TextLocale::mapCharacters(bool ebcdic)
{
    const auto mapRuns = [&](const auto& runs) {
        for (const Run& run : runs)
            for (unsigned i = 0; i < run.characters.size(); ++i)
                page.map(run.first + i, static_cast<TSChar16>(run.characters[i]));
    };
    if (ebcdic) {
        page.ebcdic();
        mapRuns(kEbcdic);
        if (page.object().id == 930)
            mapRuns(kSmall930);
    } else {
        page.asciiHalf();
    }
    page.type(ebcdic ? 0x40 : 0x20, kBlank);
    page.type(ebcdic ? 0x05 : 0x09, kBlank);
    for (TSChar32 digit = 0; digit < 10; ++digit)
        page.type((ebcdic ? 0xF0 : 0x30) + digit, kDigit);
    TSChar32 character = firstLong(page.shape(), ebcdic);
    for (const char16_t unicode : kLong) {
        if (character == 0)
            break;
        page.map(character, unicode);
        page.type(character, unicode == 0x3000 ? kBlank : unicode >> 8 == 0xFF ? kDigit : 0x001u);
        if (unicode >> 8 == 0xFF) // full-width digits
            page.mapValue(character, (ebcdic ? 0xF0u : 0x30u) + (unicode & 0x0Fu));
        ++character;
    }
}

std::string TextLocale::bytesOf(std::u16string_view text) const
{
    std::string bytes;
    std::int32_t state = 0;
    for (const char16_t unicode : text) {
        const oracle::Bytes character = oracle::unicodeToMb(reference.base.page, unicode);
        if (reference.base.stateful && (character.size() > 1) != (state == 1)) {
            state = 1 - state;
            bytes.push_back(static_cast<char>(state == 1 ? page.shiftIn() : page.shiftOut()));
        }
        bytes.append(character.begin(), character.end());
    }
    return bytes;
}

std::vector<TSChar16> TextLocale::unicodeOf(std::u16string_view text) const
{
    return {text.begin(), text.end()};
}

std::vector<TSChar32> TextLocale::packedOf(std::u16string_view text) const
{
    std::vector<TSChar32> values;
    for (const char16_t unicode : text)
        values.push_back(oracle::unicodeToWide(reference.base.page, unicode));
    return values;
}

void TextLocale::keepTexts(const LocaleSpec& spec)
{
    reference.digits = {spec.digits[0], spec.digits[1], spec.digits[2]};
    reference.flags = spec.flags;
    reference.positions = {spec.positions[0], spec.positions[1]};
    for (std::size_t i = 0; i < spec.separators.size(); ++i) {
        const TSChar16 unicode = spec.separators[i];
        const TSChar32 value = unicode == 0 ? 0 : packedOf({&spec.separators[i], 1})[0];
        const auto byte = static_cast<std::uint8_t>(value < 0x100 ? value : 0);
        record.*kLocaleSeparator[i].byte = byte;
        record.*kLocaleSeparator[i].unicode = unicode;
        reference.separators[i] = byte;
        reference.separatorsU[i] = unicode;
    }
    for (std::size_t i = 0; i < spec.texts.size(); ++i) {
        texts_[i] = bytesOf(spec.texts[i]);
        textsU_[i] = unicodeOf(spec.texts[i]);
        for (const char byte : texts_[i])
            reference.texts[i].push_back(static_cast<std::uint8_t>(byte));
        reference.textsU[i].assign(textsU_[i].begin(), textsU_[i].end());
        textsU_[i].push_back(0);
        record.*kLocaleText[i].bytes = texts_[i].data();
        record.*kLocaleText[i].unicode = textsU_[i].data();
    }
    for (std::size_t i = 0; i < reference.words.size(); ++i)
        reference.words[i] = spec.territory.words[i];
    const auto unitsOf = [](const std::u16string& text) {
        return oracle::Units(text.begin(), text.end());
    };
    for (std::size_t i = 0; i < reference.territoryTexts.size(); ++i)
        reference.territoryTexts[i] = unitsOf(spec.territory.texts[i]);
    for (std::size_t i = 0; i < reference.languageTexts.size(); ++i)
        reference.languageTexts[i] = unitsOf(spec.language.texts[i]);
    for (const LanguageContent::Pair& pair : spec.language.upperPairs)
        reference.pairs.upper.push_back(pair);
    for (const LanguageContent::Pair& pair : spec.language.lowerPairs)
        reference.pairs.lower.push_back(pair);
}

} // namespace vlx::test
