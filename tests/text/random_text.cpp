#include "text/random_text.hpp"

#include <cmath>
#include <cstring>
#include <limits>
#include <memory>

namespace vlx::test {

namespace {

constexpr int kLocalesOfEachShape = 24;
constexpr int kCallsInRow = 20;
constexpr int kCallsOfMember = 40000; // of each member of a family
constexpr int kMostRounds = 400;

bool oneIn(Random& random, unsigned outOf)
{
    return random() % outOf == 0;
}

template <class Items>
auto anyItem(Random& random, const Items& items)
{
    return items[random() % std::size(items)];
}

std::u16string anySign(Random& random, bool isLongAllowed)
{
    constexpr const char16_t* kSigns[] = {u"", u"-", u"+", u"CR", u"(-)", u"--", u"DB "};
    return oneIn(random, 3) ? anyCharacters(random, isLongAllowed, 6) : anyItem(random, kSigns);
}

std::vector<std::unique_ptr<TextLocale>>& locales()
{
    static std::vector<std::unique_ptr<TextLocale>> all = [] {
        std::vector<std::unique_ptr<TextLocale>> made;
        Random random(20261122);
        for (int i = 0; i < kLocalesOfEachShape; ++i)
            for (const PageShape shape : kPageShapes)
                made.push_back(std::make_unique<TextLocale>(anySpec(random, shape)));
        return made;
    }();
    return all;
}

} // namespace

std::u16string anyGrouping(Random& random)
{
    constexpr const char16_t* kLists[] = {u"3;0",
                                          u"3",
                                          u"3;2;0",
                                          u"3;2",
                                          u"1;0",
                                          u"2;1",
                                          u"",
                                          u"0",
                                          u";3",
                                          u"3;;2",
                                          u"3;-1",
                                          u"a",
                                          u"12;3;0",
                                          u"4000000000;1",
                                          u"99999999999999999999",
                                          u"1;2;3;0",
                                          u"3;",
                                          u"1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;1;3;2",
                                          u"3;0;2",
                                          u"000000000000000000000000000000003;1"};
    return anyItem(random, kLists);
}

std::u16string anyCharacters(Random& random, bool isLongAllowed, int most)
{
    constexpr std::u16string_view kShort = u"$,.-+ ()aBdeMPx:/123%#'";
    std::u16string text;
    for (std::int32_t count = pick(random, 0, most); count > 0; --count)
        text += isLongAllowed && oneIn(random, 2) ? anyItem(random, TextLocale::kLong)
                                                  : anyItem(random, kShort);
    return text;
}

std::u16string anyPattern(Random& random, int depth)
{
    constexpr std::u16string_view kLetters = u"abdjmpwyzABHIMSUWYZ%#q";
    std::u16string pattern;
    for (std::int32_t count = pick(random, 0, 6); count > 0; --count) {
        if (oneIn(random, 3)) {
            pattern += anyCharacters(random, true, 2);
            continue;
        }
        pattern += u'%';
        if (oneIn(random, 3))
            pattern += u'#';
        pattern += depth > 0 && oneIn(random, 4) ? anyItem(random, std::u16string_view(u"xXc"))
                                                 : anyItem(random, kLetters);
    }
    return pattern;
}

LocaleSpec anySpec(Random& random, PageShape shape)
{
    LocaleSpec spec;
    spec.shape = shape;
    spec.ebcdic = shape != PageShape::kUtf8 && oneIn(random, 3);
    if (spec.ebcdic && oneIn(random, 2))
        spec.id = 930; // small letters stand elsewhere there
    const bool isLongAllowed = shape != PageShape::kSingleByte;
    const auto digits = [&]() -> std::uint16_t {
        return oneIn(random, 80) ? 65535 : static_cast<std::uint16_t>(pick(random, 0, 9));
    };
    const auto position = [&]() -> std::uint8_t {
        return oneIn(random, 8) ? 250 : static_cast<std::uint8_t>(pick(random, 0, 5));
    };
    const auto separator = [&]() -> char16_t {
        return oneIn(random, 12) ? u'\0' : anyItem(random, std::u16string_view(u",.' -,.5"));
    };
    for (std::uint16_t& count : spec.digits)
        count = digits();
    spec.flags = static_cast<std::uint16_t>(random() & 0x3F);
    spec.positions = {position(), position()};
    for (char16_t& character : spec.separators)
        character = separator();
    spec.texts = {anyGrouping(random),
                  anyCharacters(random, isLongAllowed, oneIn(random, 4) ? 40 : 4),
                  anyGrouping(random),
                  anySign(random, isLongAllowed),
                  anySign(random, isLongAllowed),
                  anyPattern(random, 1),
                  anyPattern(random, 1),
                  anyPattern(random, 1)};
    TerritoryContent& territory = spec.territory;
    for (std::size_t i = 0; i < 5; ++i)
        territory.words[i] =
            isLongAllowed && oneIn(random, 8) ? anyItem(random, TextLocale::kLong) : separator();
    for (std::size_t i = 5; i < 8; ++i)
        territory.words[i] = digits();
    territory.words[8] = static_cast<std::uint16_t>(position() | position() << 8);
    territory.words[10] = static_cast<std::uint16_t>(random() & 0x7F);
    territory.texts[2] = anyGrouping(random);
    territory.texts[3] = anyGrouping(random);
    territory.texts[4] = anyCharacters(random, isLongAllowed, 5);
    territory.texts[5] = anyCharacters(random, isLongAllowed, oneIn(random, 4) ? 40 : 5);
    territory.texts[6] = anySign(random, isLongAllowed);
    territory.texts[7] = anySign(random, isLongAllowed);
    for (std::size_t i = 8; i < 11; ++i)
        territory.texts[i] = anyPattern(random, 1);
    for (std::size_t i = 2; i < 44; ++i) {
        if (oneIn(random, 3))
            spec.language.texts[i] =
                anyCharacters(random, isLongAllowed, oneIn(random, 6) ? 40 : 5);
        else if (i > 2 && oneIn(random, 3)) // where one name begins with another
            spec.language.texts[i] = spec.language.texts[i - 1] + u"a";
    }
    return spec;
}

std::uint32_t anyOptions(Random& random, std::uint32_t accepted)
{
    std::uint32_t options = static_cast<std::uint32_t>(random()) & (accepted | TS_OPT_CHAR_COUNT);
    if (oneIn(random, 64))
        options |= 1u << random() % 32;
    return options;
}

double anyDouble(Random& random)
{
    constexpr double kSpecial[] = {0.0,
                                   -0.0,
                                   1.999,
                                   1.9999999,
                                   -123.0,
                                   -1234.0,
                                   1234.5,
                                   0.5e-6,
                                   -0.5e-6,
                                   2.5e-6,
                                   999999.9999995,
                                   1e300,
                                   -1e300,
                                   std::numeric_limits<double>::max(),
                                   std::numeric_limits<double>::denorm_min(),
                                   std::numeric_limits<double>::infinity(),
                                   -std::numeric_limits<double>::infinity(),
                                   std::numeric_limits<double>::quiet_NaN()};
    switch (random() % 8) {
    case 0:
        return anyItem(random, kSpecial);
    case 1: {
        const std::uint64_t bits = random();
        double value;
        std::memcpy(&value, &bits, sizeof value);
        return std::isnan(value) ? std::copysign(kSpecial[17], value) : value;
    }
    case 2:
        return pick(random, -2000000, 2000000);
    default: {
        const double scale = std::pow(10.0, pick(random, -7, 12));
        return (static_cast<double>(random() >> 11) / 9007199254740992.0 - 0.4) * scale;
    }
    }
}

TSLocale* TextCall::handle()
{
    locale.record.lastError = kUntouchedError;
    tsDefaultLocale = oneIn(random, 8) ? &locale.record : nullptr;
    return tsDefaultLocale != nullptr ? nullptr : &locale.record;
}

oracle::Units TextCall::encode(Member member, std::u16string_view text, std::int32_t state) const
{
    oracle::Units units;
    if (member == Member::kUnicode)
        for (const char16_t unit : text)
            units.push_back(unit);
    else if (member == Member::kPacked)
        for (const TSChar32 value : locale.packedOf(text))
            units.push_back(value);
    else {
        std::string bytes = locale.bytesOf(text);
        const bool shifts = locale.reference.base.stateful;
        const bool startsLong = shifts && !bytes.empty() &&
                                static_cast<std::uint8_t>(bytes[0]) == locale.page.shiftIn();
        if (shifts && state == 1 && startsLong)
            bytes.erase(0, 1);
        else if (shifts && state == 1)
            bytes.insert(bytes.begin(), static_cast<char>(locale.page.shiftOut()));
        // Now and then shift bytes that are not needed, and a text that is closed.
        if (shifts && oneIn(random, 3))
            bytes.push_back(static_cast<char>(locale.page.shiftOut()));
        for (const char byte : bytes)
            units.push_back(static_cast<std::uint8_t>(byte));
    }
    units.push_back(0);
    return units;
}

void callTexts(TextCheck check)
{
    Random random(715203);
    int calls = 0;
    for (int round = 0; calls < kCallsOfMember && round < kMostRounds; ++round) {
        for (const std::unique_ptr<TextLocale>& locale : locales()) {
            TextCall call{*locale, random};
            for (int i = 0; i < kCallsInRow && !::testing::Test::HasFailure(); ++i)
                calls += check(call) ? 1 : 0;
            tsDefaultLocale = nullptr;
            if (!::testing::Test::HasFailure())
                continue;
            ADD_FAILURE() << "shape " << static_cast<int>(locale->page.shape()) << ", id "
                          << locale->page.object().id << ", ASCII " << locale->reference.ascii;
            return;
        }
    }
    EXPECT_GE(calls, kCallsOfMember) << "too few of the calls were well defined";
}

TextAreas& textAreas()
{
    static TextAreas areas;
    return areas;
}

Writing anyWriting(Random& random, std::uint32_t accepted)
{
    const std::int32_t most = oneIn(random, 4) ? 120 : 24;
    return {pick(random, 0, 1), oneIn(random, 50) ? 600 : pick(random, -1, most),
            anyOptions(random, accepted)};
}

std::ostream& operator<<(std::ostream& out, const Writing& writing)
{
    return out << "state " << writing.state << ", size " << writing.size << ", options 0x"
               << std::hex << writing.options << std::dec;
}

} // namespace vlx::test
