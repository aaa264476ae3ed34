#include "mapstr/world.hpp"

#include <iomanip>
#include <limits>
#include <memory>

#include "frame/globals.hpp"
#include "frame/sections.hpp"

namespace vlx::test {

namespace {

constexpr int kWorldsOfEachShape = 12;
constexpr int kCallsInRow = 40;
constexpr int kMostRounds = 2000;

bool oneIn(Random& random, unsigned outOf)
{
    return random() % outOf == 0;
}

bool passesTheCheck(const PageBuilder& page)
{
    LoadedSections sections;
    for (int i = 0; i < TSObjHeader::kMaxSections; ++i) {
        const auto& section = page.sections()[static_cast<std::size_t>(i)];
        sections[i] = {section.empty() ? nullptr : section.data(),
                       static_cast<std::uint32_t>(section.size())};
    }
    return codePageIsSound(page.object().id, sections);
}

template <class Item>
Item anyOf(Random& random, const std::vector<Item>& items)
{
    return items[random() % items.size()];
}

} // namespace

World::World(Random& random, PageShape shape) : page(randomPage(random, shape))
{
    addDigitsAndBlanks(random);
    isSound = passesTheCheck(page);
    reference = oracleLocale(page);
    chooseCharacters(random);
    if (!oneIn(random, 3))
        choosePairs(random);
    language = TestLanguage(pairs.upper, pairs.lower);
    locale = localeOn(page.object());
    locale.language = &language.object();
}

// Random pages have hardly any of them.
void World::addDigitsAndBlanks(Random& random)
{
    for (int i = 0; i < 4; ++i) {
        const auto byte = static_cast<TSChar32>(0x21 + random() % 0x50);
        if (byte == page.shiftIn() || byte == page.shiftOut())
            continue;
        if (page.shape() != PageShape::kUtf8 && page.object().sections[0][0x0A + byte] == 1)
            page.decodeOnly(byte, static_cast<TSChar16>('0' + random() % 10));
        page.type(byte, 0x008 | static_cast<std::uint32_t>(random()));
    }
    for (TSChar16 digit = '0'; digit <= '9'; ++digit)
        if (page.shape() != PageShape::kUtf8 && oneIn(random, 2))
            page.encodeOnly(digit, 0x21 + static_cast<TSChar32>(random() % 0x50));
    for (const auto& [bytes, unicode] : page.decoded()) {
        TSChar32 character = 0;
        for (const std::uint8_t byte : bytes)
            character = character << 8 | byte;
        if (oneIn(random, 4))
            page.mapValue(oneIn(random, 2) ? 0x20 : 0x40, character);
        if (oneIn(random, 4))
            page.mapValue(character, 0x21 + static_cast<std::uint32_t>(random() % 0x50));
        if (oneIn(random, 4))
            page.type(character, static_cast<std::uint32_t>(random()),
                      static_cast<std::uint32_t>(random() % 3));
    }
    page.build();
}

void World::chooseCharacters(Random& random)
{
    const unsigned blank = (page.object().sections[0][0x110C] & 1) != 0 ? 0x20 : 0x40;
    shorts_ = {{static_cast<unsigned char>(blank)}};
    for (int i = 0; i < 6; ++i)
        shorts_.push_back({static_cast<unsigned char>(0x20 + random() % 0x60)});
    for (unsigned byte = 0; byte < 256 && shorts_.size() < 9; ++byte)
        if (oracle::toUnicode(reference.page, byte) - '0' < 10 && oneIn(random, 2))
            shorts_.push_back({static_cast<unsigned char>(byte)});
    for (int i = 0; i < 4; ++i)
        longs_.push_back(randomLongCharacter(random, page));
    const oracle::Bytes full = oracle::putWide(oracle::mapValue(reference.page, blank));
    if (reference.singleByte || full[0] == 0)
        longs_.push_back(shorts_[0]);
    else
        longs_.push_back(full);
    for (const auto* characters : {&shorts_, &longs_}) {
        for (const oracle::Bytes& bytes : *characters) {
            TSChar32 value = 0;
            for (const unsigned char byte : bytes)
                value = value << 8 | byte;
            packed_.push_back(value);
            if (bytes.size() == 1)
                unicodes_.push_back(
                    static_cast<std::uint16_t>(oracle::toUnicode(reference.page, bytes[0])));
            else if (const auto unicode = wellDefined(
                         [&] { return oracle::mbToUnicode(reference.page, oracle::Span(bytes)); }))
                unicodes_.push_back(*unicode);
        }
    }
}

void World::choosePairs(Random& random)
{
    std::vector<std::uint16_t> results = unicodes_;
    for (const auto& [unicode, character] : page.encoded())
        results.push_back(unicode);
    for (auto* table : {&pairs.upper, &pairs.lower}) {
        if (oneIn(random, 4))
            continue;
        for (std::uint64_t count = 1 + random() % 12; count > 0; --count) {
            oracle::Language::Pair pair{anyOf(random, unicodes_), 0, anyOf(random, results), 0};
            if (!oneIn(random, 3))
                pair[1] = anyOf(random, unicodes_);
            if (oneIn(random, 2))
                pair[3] = anyOf(random, results);
            table->push_back(pair);
        }
    }
}

TSLocale* World::handle(Random& random)
{
    locale.lastError = kUntouchedError;
    tsDefaultLocale = oneIn(random, 8) ? &locale : nullptr;
    return tsDefaultLocale != nullptr ? nullptr : &locale;
}

void World::enter(oracle::Bytes& text, std::int32_t& state, std::int32_t wanted) const
{
    if (!isStateful(page.shape()) || state == wanted)
        return;
    text.push_back(wanted == 1 ? page.shiftIn() : page.shiftOut());
    state = wanted;
}

void World::addToken(Random& random, oracle::Bytes& text, std::int32_t& state) const
{
    switch (random() % 32) {
    case 0:
        text.push_back(static_cast<unsigned char>(random()));
        return;
    case 1:
        text.push_back(longs_[0][0]);
        return;
    case 2:
        if (isStateful(page.shape()))
            text.push_back(oneIn(random, 2) ? page.shiftIn() : page.shiftOut());
        return;
    default:
        break;
    }
    const bool isLong = oneIn(random, 2);
    enter(text, state, isLong ? 1 : 0);
    const oracle::Bytes& bytes = isLong ? anyOf(random, longs_) : anyOf(random, shorts_);
    text.insert(text.end(), bytes.begin(), bytes.end());
}

oracle::Bytes World::terminated(Random& random, std::int32_t state, std::int32_t tokens) const
{
    oracle::Bytes text;
    for (; tokens > 0; --tokens)
        addToken(random, text, state);
    for (std::uint64_t blanks = oneIn(random, 3) ? random() % 4 : 0; blanks > 0; --blanks) {
        const bool isLong = oneIn(random, 3);
        enter(text, state, isLong ? 1 : 0);
        const oracle::Bytes& blank = isLong ? longs_.back() : shorts_.front();
        text.insert(text.end(), blank.begin(), blank.end());
    }
    if (!oneIn(random, 3))
        enter(text, state, 0);
    text.push_back(0);
    return text;
}

oracle::Bytes World::text(Random& random, std::int32_t state, std::int32_t tokens) const
{
    oracle::Bytes bytes = terminated(random, state, tokens);
    if (oneIn(random, 6))
        bytes.pop_back();
    return bytes;
}

oracle::Units World::units(Random& random, std::int32_t count, bool packed) const
{
    oracle::Units result;
    for (; count > 0; --count) {
        if (oneIn(random, 12))
            result.push_back(packed ? randomValue(random) : static_cast<std::uint16_t>(random()));
        else if (packed)
            result.push_back(anyOf(random, packed_));
        else if (oneIn(random, 4)) // of the built-in maps
            result.push_back(
                anyOf(random, std::vector<std::uint32_t>{'a', 'Z', '7', 0x0663, 0xB2, 0x3000, 0x20,
                                                         0xFF71, 0x2000, 0x0131, 0x01C5}));
        else
            result.push_back(anyOf(random, unicodes_));
    }
    if (!oneIn(random, 6))
        result.push_back(0);
    return result;
}

std::int32_t anyLength(Random& random, std::size_t size, bool isTerminated)
{
    const auto all = static_cast<std::int32_t>(size);
    switch (random() % 8) {
    case 0:
    case 1:
    case 2:
        return isTerminated ? -1 : all;
    case 3:
        return isTerminated && oneIn(random, 4) ? std::numeric_limits<std::int32_t>::min() : all;
    case 4:
        return std::max(all - 1, 0);
    default:
        return pick(random, 0, all);
    }
}

void printBytes(std::ostream& out, const char* name, const oracle::Bytes& bytes)
{
    out << name << std::hex << std::setfill('0');
    for (const unsigned char byte : bytes)
        out << ' ' << std::setw(2) << +byte;
    out << std::dec;
}

namespace {

std::vector<std::unique_ptr<World>>& worlds()
{
    static std::vector<std::unique_ptr<World>> all = [] {
        std::vector<std::unique_ptr<World>> made;
        Random random(20261121);
        for (int i = 0; i < kWorldsOfEachShape; ++i)
            for (const PageShape shape : kPageShapes)
                made.push_back(std::make_unique<World>(random, shape));
        return made;
    }();
    return all;
}

} // namespace

void callInWorlds(WorldCheck check)
{
    Random random(715202);
    int calls = 0;
    for (int round = 0; calls < kWantedCalls && round < kMostRounds; ++round) {
        for (const std::unique_ptr<World>& world : worlds()) {
            for (int i = 0; i < kCallsInRow && !::testing::Test::HasFailure(); ++i)
                calls += check(*world, random) ? 1 : 0;
            tsDefaultLocale = nullptr;
            if (!::testing::Test::HasFailure())
                continue;
            ADD_FAILURE() << "shape " << static_cast<int>(world->page.shape()) << ", shift bytes "
                          << std::hex << +world->page.shiftIn() << ' ' << +world->page.shiftOut();
            return;
        }
    }
    EXPECT_GE(calls, kWantedCalls) << "too few of the calls were well defined";
}

} // namespace vlx::test
