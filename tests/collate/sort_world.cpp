#include "collate/sort_world.hpp"

#include <cstdlib>
#include <memory>
#include <set>

#include "frame/globals.hpp"

namespace vlx::test {

namespace {

constexpr int kWorldsOfEachShape = 10;
constexpr int kCallsInRow = 50;
constexpr int kMostRounds = 20000;
constexpr int kSamples = 60;

bool oneIn(Random& random, unsigned outOf)
{
    return random() % outOf == 0;
}

template <class Item, std::size_t Size>
Item anyOf(Random& random, const Item (&items)[Size])
{
    return items[random() % Size];
}

// Few weights, so that strings often agree on a level.
Weights anyWeights(Random& random)
{
    constexpr std::uint16_t kFirst[] = {0, 0x0101, 0x0102, 0x0102, 0x0203, 0x1234, 0x0042};
    constexpr std::uint8_t kOther[] = {0, 1, 1, 1, 2, 3};
    return {anyOf(random, kFirst), anyOf(random, kOther), anyOf(random, kOther)};
}

std::uint16_t anyWeight4(Random& random)
{
    return static_cast<std::uint16_t>(1 + random() % 3);
}

} // namespace

SortWorld::SortWorld(Random& random, PageShape shape) : world(random, shape)
{
    chooseValues(random);
    resort(random);
}

void SortWorld::resort(Random& random)
{
    isBinary_ = oneIn(random, 6);
    isFlat_ = oneIn(random, 3);
    backward_ = static_cast<int>(random() % 4);
    directions_ = static_cast<std::uint8_t>(random() % 16);
    hasSpecials_ = oneIn(random, 2);
    build(random);
}

void SortWorld::chooseValues(Random& random)
{
    std::set<TSChar16> values;
    for (const std::uint32_t unit : world.units(random, kSamples, false))
        values.insert(static_cast<TSChar16>(unit));
    for (int i = 0; i < kSamples; ++i) {
        const oracle::Bytes& bytes =
            oneIn(random, 2) ? world.anyShort(random) : world.anyLong(random);
        const auto unicode = wellDefined([&] {
            return bytes.size() == 1
                       ? static_cast<TSChar16>(oracle::toUnicode(world.reference.page, bytes[0]))
                       : oracle::mbToUnicode(world.reference.page, oracle::Span(bytes));
        });
        if (!unicode)
            continue;
        values.insert(*unicode);
        characters_.push_back({*unicode, bytes});
    }
    values_.assign(values.begin(), values.end());
}

TSChar16 SortWorld::anyValue(Random& random) const
{
    return values_[random() % values_.size()];
}

Weights SortWorld::weights(Random& random) const
{
    if (isFlat_ && !oneIn(random, 8))
        return {static_cast<std::uint16_t>(oneIn(random, 4) ? 0x0102 : 0x0101)};
    return anyWeights(random);
}

// All forward, backward on the same levels throughout, or as it comes.
std::uint8_t SortWorld::directions(Random& random) const
{
    switch (backward_) {
    case 0:
    case 1:
        return 0xF;
    case 2:
        return directions_;
    default:
        return oneIn(random, 3) ? static_cast<std::uint8_t>(random() % 16) : 0xF;
    }
}

void SortWorld::choosePage(Random& random, SortBuilder& sort, unsigned high)
{
    const auto byte = static_cast<std::uint8_t>(high);
    // By rule the weights of some low bytes pass the end of 16 bits.
    const auto base = static_cast<std::uint16_t>(oneIn(random, 4) ? 0xFFA0 : random());
    const bool isTable = !oneIn(random, 4);
    if (!isTable) {
        const std::uint64_t flags = random() % 7 + 1;
        sort.page(byte, static_cast<std::uint8_t>(hasSpecials_ || flags != 4 ? flags : 2), base,
                  directions(random));
        return;
    }
    for (const TSChar16 value : values_) {
        if (value >> 8 != high || oneIn(random, 16))
            continue;
        switch (random() % 12) {
        case 0:
            if (!hasSpecials_)
                break;
            sort.special(value, anyWeight4(random), directions(random));
            break;
        case 1:
            if (oneIn(random, 4))
                sort.markExpansion(value, directions(random));
            else
                sort.expansion(value, weights(random), weights(random), directions(random));
            if (oneIn(random, 8)) // the first record of a character counts
                sort.expansionRecord(value, weights(random), weights(random));
            break;
        default:
            sort.letter(value, weights(random), directions(random));
        }
    }
}

void SortWorld::chooseTwins(Random& random, SortBuilder& sort)
{
    twins_.clear();
    std::set<TSChar16> used;
    for (std::uint64_t tries = characters_.empty() ? 0 : random() % 4; tries > 0; --tries) {
        Twins twins;
        bool isNew = true;
        for (Character* character : {&twins.expansion, &twins.letters[0], &twins.letters[1]}) {
            *character = characters_[random() % characters_.size()];
            isNew = used.insert(character->unicode).second && isNew;
        }
        if (!isNew)
            continue;
        const std::uint8_t way = directions(random);
        const Weights elements[] = {weights(random), weights(random)};
        sort.expansion(twins.expansion.unicode, elements[0], elements[1], way);
        for (const int i : {0, 1})
            sort.letter(twins.letters[i].unicode, elements[i], way);
        twins_.push_back(twins);
    }
}

void SortWorld::chooseContractions(Random& random, SortBuilder& sort)
{
    for (std::uint64_t count = 1 + random() % 10; count > 0; --count) {
        const TSChar16 first = anyValue(random);
        const TSChar16 second = anyValue(random);
        if (hasSpecials_ && oneIn(random, 8))
            sort.specialContraction(first, second, anyWeight4(random), directions(random));
        else
            sort.contraction(first, second, weights(random), directions(random));
    }
}

void SortWorld::build(Random& random)
{
    SortBuilder sort;
    sort.defaults(static_cast<std::uint8_t>(random() % 3), static_cast<std::uint8_t>(random() % 3));
    std::set<unsigned> highs;
    for (const TSChar16 value : values_)
        highs.insert(value >> 8);
    for (const unsigned high : highs)
        choosePage(random, sort, high);
    chooseTwins(random, sort);
    if (oneIn(random, 2))
        chooseContractions(random, sort);
    if (oneIn(random, 2))
        sort.ordered();
    fast_ = std::move(sort);
    slow_ = fast_.build();
    slow_.sortTraits = {};
    reference_.emplace(oracle::Span(fast_.content()));
}

TSLocale* SortWorld::handle(Random& random)
{
    world.locale.sort = oneIn(random, 2) ? &fast_.object() : &slow_;
    const unsigned flags = world.locale.flags & ~unsigned{kLocaleBinarySort};
    world.locale.flags = static_cast<std::uint16_t>(isBinary_ ? flags | kLocaleBinarySort : flags);
    if (isBinary_)
        world.locale.sort = nullptr;
    return world.handle(random);
}

oracle::Bytes SortWorld::variantOf(Random& random, const oracle::Bytes& text,
                                   std::int32_t state) const
{
    if (oneIn(random, 4))
        return world.text(random, state, pick(random, 0, 6));
    oracle::Bytes variant = text;
    for (std::uint64_t changes = random() % 3; changes > 0 && !variant.empty(); --changes) {
        const auto at = static_cast<std::ptrdiff_t>(random() % variant.size());
        const oracle::Bytes& other =
            oneIn(random, 2) ? world.anyShort(random) : world.anyLong(random);
        if (oneIn(random, 3))
            variant.erase(variant.begin() + at);
        else if (oneIn(random, 2))
            variant[static_cast<std::size_t>(at)] = other[0];
        else
            variant.insert(variant.begin() + at, other.begin(), other.end());
    }
    if (!isTerminated(variant) && oneIn(random, 2))
        variant.push_back(0);
    return variant;
}

oracle::Units SortWorld::variantOf(Random& random, const oracle::Units& units, bool packed) const
{
    oracle::Units variant = units;
    const oracle::Units others = world.units(random, 3, packed);
    for (std::uint64_t changes = random() % 4; changes > 0 && !variant.empty(); --changes) {
        const auto at = static_cast<std::ptrdiff_t>(random() % variant.size());
        const std::uint32_t other = others[random() % others.size()];
        if (oneIn(random, 3))
            variant.insert(variant.begin() + at, other);
        else if (oneIn(random, 3))
            variant.erase(variant.begin() + at);
        else
            variant[static_cast<std::size_t>(at)] = other;
    }
    return variant;
}

namespace {

template <class Text>
void insertWhereSame(Random& random, Text& first, Text& second, const Text& expansion,
                     const Text& letters)
{
    const auto ends = std::mismatch(first.begin(), first.end(), second.begin(), second.end());
    const auto at = static_cast<std::ptrdiff_t>(
        random() % static_cast<std::uint64_t>(ends.first - first.begin() + 1));
    const bool swapped = oneIn(random, 2);
    const Text& one = swapped ? letters : expansion;
    const Text& other = swapped ? expansion : letters;
    first.insert(first.begin() + at, one.begin(), one.end());
    second.insert(second.begin() + at, other.begin(), other.end());
}

} // namespace

void SortWorld::insertTwins(Random& random, oracle::Bytes& first, oracle::Bytes& second) const
{
    if (twins_.empty())
        return;
    const Twins& twins = twins_[random() % twins_.size()];
    oracle::Bytes letters = twins.letters[0].bytes;
    letters.insert(letters.end(), twins.letters[1].bytes.begin(), twins.letters[1].bytes.end());
    insertWhereSame(random, first, second, twins.expansion.bytes, letters);
}

void SortWorld::insertTwins(Random& random, oracle::Units& first, oracle::Units& second,
                            bool packed) const
{
    if (twins_.empty())
        return;
    const Twins& twins = twins_[random() % twins_.size()];
    const auto unitOf = [packed](const Character& character) {
        std::uint32_t value = 0;
        for (const unsigned char byte : character.bytes)
            value = value << 8 | byte;
        return packed ? value : character.unicode;
    };
    insertWhereSame<oracle::Units>(random, first, second, {unitOf(twins.expansion)},
                                   {unitOf(twins.letters[0]), unitOf(twins.letters[1])});
}

int wantedCalls()
{
    const char* const asked = std::getenv("VLX_RANDOM_CALLS");
    return asked ? std::atoi(asked) : kWantedCalls;
}

namespace {

std::vector<std::unique_ptr<SortWorld>>& worlds()
{
    static std::vector<std::unique_ptr<SortWorld>> all = [] {
        std::vector<std::unique_ptr<SortWorld>> made;
        Random random(20261122);
        for (int i = 0; i < kWorldsOfEachShape; ++i)
            for (const PageShape shape : kPageShapes)
                made.push_back(std::make_unique<SortWorld>(random, shape));
        return made;
    }();
    return all;
}

} // namespace

void callInSortWorlds(SortCheck check)
{
    Random random(190723);
    int calls = 0;
    for (int round = 0; calls < wantedCalls() && round < kMostRounds; ++round) {
        for (const std::unique_ptr<SortWorld>& world : worlds()) {
            world->resort(random);
            for (int i = 0; i < kCallsInRow && !::testing::Test::HasFailure(); ++i)
                calls += check(*world, random) ? 1 : 0;
            tsDefaultLocale = nullptr;
            if (!::testing::Test::HasFailure())
                continue;
            ADD_FAILURE() << "shape " << static_cast<int>(world->world.page.shape()) << ", "
                          << (world->sort() ? "sorted" : "binary") << ", shift bytes " << std::hex
                          << +world->world.page.shiftIn() << ' ' << +world->world.page.shiftOut();
            return;
        }
    }
    EXPECT_GE(calls, wantedCalls()) << "too few of the calls were well defined";
}

} // namespace vlx::test
