#include "convert/conversions.hpp"

#include <iomanip>
#include <limits>
#include <sstream>

namespace vlx::test {

namespace {

constexpr int kRelatedPages = 4; // of each shape
constexpr TSChar16 kFirstShared = 0x3000;
constexpr unsigned kShared = 24;

// The character number `i` of a shape. Shift bytes are no part of it.
TSChar32 sharedCharacter(PageShape shape, unsigned i)
{
    switch (shape) {
    case PageShape::kSingleByte:
        return 0x80 + i;
    case PageShape::kDoubleByte:
        return (0x81 + i % 3) << 8 | (0x40 + i);
    case PageShape::kThreeByte:
        return i % 2 == 0 ? (0x81 + i % 3) << 8 | (0x40 + i) : 0x8EA100 + i;
    case PageShape::kFourByte:
        return i % 3 == 0 ? 0x8140 + i : i % 3 == 1 ? 0x8EA140 + i : 0x90308130 + i;
    case PageShape::kStateful3:
        return 0x425060 + i * 0x10101;
    default:
        return 0x4243 + i * 0x101;
    }
}

// ASCII and a part of the shared values.
PageBuilder relatedPage(Random& random, PageShape shape)
{
    PageBuilder page(shape);
    page.randomLayout(random()).substitute(random() % 2 == 0 ? '?' : 0x7F).asciiHalf();
    for (unsigned i = 0; i < kShared && shape != PageShape::kUtf8; ++i)
        if (random() % 4 != 0)
            page.map(sharedCharacter(shape, i), static_cast<TSChar16>(kFirstShared + i));
    page.id(static_cast<std::uint16_t>(shape == PageShape::kUtf8 ? kUtf8CodePage
                                                                 : 900 + random() % 20));
    page.build();
    return page;
}

Sample sampleOf(PageBuilder& page)
{
    Sample sample{&page, oracleLocale(page), {}, {}};
    for (const auto& [unicode, character] : page.encoded()) {
        sample.unicode.push_back(unicode);
        sample.packed.push_back(character);
    }
    for (const auto& [bytes, unicode] : page.decoded()) {
        TSChar32 value = 0;
        for (const std::uint8_t byte : bytes)
            value = value << 8 | byte;
        sample.packed.push_back(value);
    }
    if (page.shape() == PageShape::kUtf8) {
        sample.unicode.insert(sample.unicode.end(), {0x41, 0x7FF, 0x800, 0x3000, 0x3005, 0xFFFD});
        sample.packed.insert(sample.packed.end(), {0x41, 0xDFBF, 0xE0A080, 0xE38080, 0xE38085});
    }
    return sample;
}

template <class Unit>
const Unit& anyOne(Random& random, const std::vector<Unit>& list)
{
    return list[random() % list.size()];
}

TSChar16 anyUnicode(Random& random, const Sample& sample)
{
    switch (random() % 8) {
    case 0:
        return static_cast<TSChar16>(random());
    case 1:
        return static_cast<TSChar16>(kFirstShared + random() % kShared);
    case 2:
        return static_cast<TSChar16>(random() % 0x60);
    default:
        return sample.unicode.empty() ? TSChar16{0x41} : anyOne(random, sample.unicode);
    }
}

TSChar32 anyPacked(Random& random, const Sample& sample)
{
    switch (random() % 8) {
    case 0:
        return randomValue(random);
    case 1:
    case 2:
        return static_cast<TSChar32>(random() % 0x100);
    default:
        return sample.packed.empty() ? TSChar32{0x41} : anyOne(random, sample.packed);
    }
}

template <class Unit>
std::int32_t anyLength(Random& random, const std::vector<Unit>& input)
{
    const auto all = static_cast<std::int32_t>(input.size());
    const bool isTerminated = std::find(input.begin(), input.end(), Unit{0}) != input.end();
    switch (random() % 4) {
    case 0:
    case 1:
        if (isTerminated)
            return random() % 16 == 0 ? std::numeric_limits<std::int32_t>::min() : -1;
        return all;
    case 2:
        return all;
    default:
        return pick(random, 0, all);
    }
}

template <class Unit, class Any>
void fillUnits(Random& random, std::vector<Unit>& units, Any any)
{
    units.clear();
    for (std::int32_t count = pick(random, 0, 7); count > 0; --count)
        units.push_back(any());
    if (random() % 3 != 0)
        units.push_back(0);
}

template <class Unit>
void print(std::ostream& out, const char* name, const std::vector<Unit>& units)
{
    out << ", " << name << std::hex;
    for (const Unit unit : units)
        out << ' ' << std::setw(2) << std::setfill('0') << std::uint32_t{unit};
    out << std::dec;
}

} // namespace

std::vector<Sample>& samples()
{
    static std::vector<PageBuilder> related = [] {
        std::vector<PageBuilder> made;
        Random random(20260703);
        for (const PageShape shape : kPageShapes)
            for (int i = 0; i < kRelatedPages; ++i)
                made.push_back(relatedPage(random, shape));
        return made;
    }();
    static std::vector<Sample> all = [] {
        std::vector<Sample> made;
        for (auto* pages : {&related, &randomPages()})
            for (PageBuilder& page : *pages)
                made.push_back(sampleOf(page));
        return made;
    }();
    return all;
}

Party::Party(const Sample& anySample)
    : sample(&anySample), record(localeOn(anySample.page->object()))
{
}

Conversion::Conversion(Random& anyRandom, const Sample& from, const Sample& to, Areas& areas)
    : random(anyRandom), source(from), target(to), text(randomText(anyRandom, *from.page)),
      sourceState(pick(anyRandom, 0, 1)), targetState(pick(anyRandom, 0, 1)),
      options(anyConversionOptions(anyRandom)), areas_(areas)
{
    fillUnits(random, unicode, [&] { return anyUnicode(random, to); });
    fillUnits(random, packed, [&] { return anyPacked(random, from); });
}

template <class Unit>
const Unit* Conversion::use(const std::vector<Unit>& input)
{
    length = anyLength(random, input);
    return areas_[0].place(input, GuardedArea::Guard::kAbove);
}

const char* Conversion::useText()
{
    return reinterpret_cast<const char*>(use(text));
}

const TSChar16* Conversion::useUnicode()
{
    return use(unicode);
}

const TSChar32* Conversion::usePacked()
{
    return use(packed);
}

void Conversion::chooseHandles()
{
    for (Party* party : {&source, &target}) {
        party->record.lastError = kUntouchedError;
        party->handle = &party->record;
    }
    if (random() % 8 != 0)
        return;
    Party& party = random() % 2 == 0 ? source : target;
    party.handle = nullptr;
    tsDefaultLocale = &party.record;
}

std::string Conversion::describe() const
{
    std::ostringstream out;
    out << "shapes " << static_cast<int>(source.sample->page->shape()) << " to "
        << static_cast<int>(target.sample->page->shape());
    print(out, "text", text);
    print(out, "unicode", unicode);
    print(out, "packed", packed);
    out << ", length " << length << ", states " << sourceState << ' ' << targetState
        << ", options 0x" << std::hex << options << ", shift bytes "
        << +source.sample->page->shiftIn() << ' ' << +source.sample->page->shiftOut() << " to "
        << +target.sample->page->shiftIn() << ' ' << +target.sample->page->shiftOut();
    return out.str();
}

std::uint32_t anyConversionOptions(Random& random)
{
    constexpr std::uint32_t kAccepted[] = {0, TS_OPT_TERMINATE, TS_OPT_CHAR_COUNT,
                                           TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE};
    if (random() % 32 == 0)
        return random() % 2 == 0 ? static_cast<std::uint32_t>(random()) : 1U << random() % 32;
    return kAccepted[random() % std::size(kAccepted)];
}

void convertEverywhere(const std::function<int(Conversion&)>& check)
{
    constexpr int kMostRounds = 4 * kWantedCalls;
    Conversion::Areas areas;
    Random random(20260704);
    int calls = 0;
    for (int round = 0; calls < kWantedCalls && round < kMostRounds; ++round) {
        Conversion conversion(random, anyOne(random, samples()), anyOne(random, samples()), areas);
        calls += check(conversion);
        if (testing::Test::HasFailure())
            return;
    }
    EXPECT_GE(calls, kWantedCalls) << "too few of the calls were well defined";
}

} // namespace vlx::test
