#include "strings/random_calls.hpp"

#include <iomanip>
#include <limits>

#include "frame/globals.hpp"

namespace vlx::test {

namespace {

constexpr int kCallsInScene = 40;
constexpr int kMostRounds = 1000;

void printBytes(std::ostream& out, const char* name, const oracle::Bytes& bytes)
{
    out << name << std::hex;
    for (const unsigned char byte : bytes)
        out << ' ' << std::setw(2) << std::setfill('0') << +byte;
    out << std::dec;
}

template <class Unit>
bool isTerminated(const std::vector<Unit>& text)
{
    return std::find(text.begin(), text.end(), Unit{0}) != text.end();
}

bool oneIn(Random& random, unsigned outOf)
{
    return random() % outOf == 0;
}

} // namespace

std::ostream& operator<<(std::ostream& out, const Arguments& a)
{
    printBytes(out, "string", a.string);
    out << " (state " << a.state << ", length " << a.length << "), ";
    printBytes(out, "set", a.set);
    out << " (state " << a.setState << ", length " << a.setLength << "), ";
    printBytes(out, "character", a.character);
    return out << " (state " << a.characterState << "), buffer state " << a.bufferState << ", size "
               << a.size << ", options 0x" << std::hex << a.options << std::dec;
}

std::uint32_t anyOf(Random& random, std::initializer_list<std::uint32_t> accepted)
{
    if (oneIn(random, 64))
        return oneIn(random, 4) ? static_cast<std::uint32_t>(random()) : 1U << random() % 32;
    return *(accepted.begin() + random() % accepted.size());
}

Scene::Scene(Random& anyRandom, PageBuilder& anyPage, Areas& anyAreas)
    : random(anyRandom), page(anyPage), reference(oracleLocale(anyPage)),
      locale(localeOn(anyPage.object())), areas(anyAreas), clean_(oneIn(anyRandom, 2))
{
    for (int i = 0; i < 3; ++i) {
        shortOnes_.push_back(static_cast<unsigned char>(0x20 + random() % 0x50));
        longOnes_.push_back(randomLongCharacter(random, page));
    }
}

TSLocale* Scene::handle()
{
    locale.lastError = kUntouchedError;
    tsDefaultLocale = oneIn(random, 8) ? &locale : nullptr;
    return tsDefaultLocale != nullptr ? nullptr : &locale;
}

void Scene::addBroken(oracle::Bytes& text)
{
    switch (random() % 5) {
    case 0:
        text.push_back(static_cast<unsigned char>(random()));
        break;
    case 1:
        text.push_back(longOnes_[random() % longOnes_.size()][0]);
        break;
    case 2:
        if (oneIn(random, 3))
            text.push_back(0);
        break;
    default:
        if (isStateful(page.shape()))
            text.push_back(oneIn(random, 2) ? page.shiftIn() : page.shiftOut());
    }
}

void Scene::enter(oracle::Bytes& text, std::int32_t& state, std::int32_t wanted)
{
    if (!isStateful(page.shape()) || state == wanted || (!clean_ && oneIn(random, 10)))
        return;
    text.push_back(wanted == 1 ? page.shiftIn() : page.shiftOut());
    state = wanted;
}

oracle::Bytes Scene::makeText(std::int32_t state, std::int32_t tokens)
{
    oracle::Bytes text;
    for (; tokens > 0; --tokens) {
        if (!clean_ && oneIn(random, 6)) {
            addBroken(text);
        } else if (oneIn(random, 2)) {
            enter(text, state, 0);
            text.push_back(shortOnes_[random() % shortOnes_.size()]);
        } else {
            enter(text, state, 1);
            const oracle::Bytes& character = longOnes_[random() % longOnes_.size()];
            text.insert(text.end(), character.begin(), character.end());
        }
    }
    if (!oneIn(random, 3))
        enter(text, state, 0);
    if (!oneIn(random, 10))
        text.push_back(0);
    return text;
}

std::int32_t Scene::pickLength(std::size_t size, bool isTerminated)
{
    const auto all = static_cast<std::int32_t>(size);
    switch (random() % 8) {
    case 0:
    case 1:
        return isTerminated ? -1 : all;
    case 2:
        return isTerminated && oneIn(random, 8) ? std::numeric_limits<std::int32_t>::min() : all;
    case 3:
        return std::max(all - 1, 0);
    default:
        return pick(random, 0, all);
    }
}

Arguments Scene::arguments()
{
    Arguments a;
    a.state = pick(random, 0, 1);
    a.string = makeText(a.state, pick(random, 0, 7));
    a.length = pickLength(a.string.size(), isTerminated(a.string));
    a.setState = pick(random, 0, 1);
    a.set = makeText(a.setState, pick(random, 0, 3));
    a.setLength = pickLength(a.set.size(), isTerminated(a.set));
    a.characterState = pick(random, 0, 1);
    a.character = makeText(a.characterState, 1);
    a.character.resize(std::max(a.character.size(), 1 + random() % 5));
    a.bufferState = pick(random, 0, 1);
    a.size =
        oneIn(random, 32) ? -1 : pick(random, 0, static_cast<std::int32_t>(a.string.size()) + 3);
    return a;
}

template <class Unit>
UnitArguments<Unit> Scene::unitArguments()
{
    const Unit values[] = {'a', 'b', static_cast<Unit>(0x81408140), static_cast<Unit>(~0U), 0};
    const auto text = [&](std::int32_t count) {
        std::vector<Unit> units;
        for (; count > 0; --count)
            units.push_back(values[random() % (oneIn(random, 8) ? 5 : 4)]);
        if (!oneIn(random, 10))
            units.push_back(0);
        return units;
    };
    UnitArguments<Unit> a;
    a.string = text(pick(random, 0, 8));
    a.length = pickLength(a.string.size(), isTerminated(a.string));
    a.set = text(pick(random, 0, 3));
    a.setLength = pickLength(a.set.size(), isTerminated(a.set));
    a.value = values[random() % 5];
    a.size =
        oneIn(random, 32) ? -1 : pick(random, 0, static_cast<std::int32_t>(a.string.size()) + 3);
    return a;
}

template UnitArguments<TSChar16> Scene::unitArguments<TSChar16>();
template UnitArguments<TSChar32> Scene::unitArguments<TSChar32>();

std::vector<PageBuilder>& fixedPages()
{
    static std::vector<PageBuilder> pages = [] {
        std::vector<PageBuilder> made;
        for (const PageShape shape : kPageShapes) {
            PageBuilder page(shape);
            page.asciiHalf();
            switch (shape) {
            case PageShape::kThreeByte:
                page.map(0x8140, 0x3000).map(0x8EA1A2, 0x3001);
                break;
            case PageShape::kFourByte:
                page.map(0x8140, 0x3000).map(0x90308130, 0x3001);
                break;
            case PageShape::kStateful3:
                page.map(0x424344, 0x3000);
                break;
            case PageShape::kStateful2:
            case PageShape::kStatefulHigh:
                page.map(0x4243, 0x3000).map(0x4141, 0x3001);
                break;
            case PageShape::kDoubleByte:
                page.map(0x8140, 0x3000).map(0x8181, 0x3001);
                break;
            default:
                break;
            }
            page.build();
            made.push_back(std::move(page));
        }
        return made;
    }();
    return pages;
}

namespace {

// The number of well-defined calls on a page.
int playOn(PageBuilder& page, Random& random, Scene::Areas& areas, SceneCheck check)
{
    Scene scene(random, page, areas);
    int calls = 0;
    for (int i = 0; i < kCallsInScene && !::testing::Test::HasFailure(); ++i)
        calls += check(scene) ? 1 : 0;
    if (::testing::Test::HasFailure())
        ADD_FAILURE() << "shape " << static_cast<int>(page.shape()) << ", shift bytes " << std::hex
                      << +page.shiftIn() << ' ' << +page.shiftOut();
    return calls;
}

} // namespace

void callEverywhere(SceneCheck check)
{
    Scene::Areas areas;
    Random random(20260627);
    int calls = 0;
    for (int round = 0; calls < kWantedCalls && round < kMostRounds; ++round) {
        for (auto* pages : {&randomPages(), &fixedPages()}) {
            for (PageBuilder& page : *pages) {
                calls += playOn(page, random, areas, check);
                tsDefaultLocale = nullptr;
                if (::testing::Test::HasFailure())
                    return;
            }
        }
    }
    EXPECT_GE(calls, kWantedCalls) << "too few of the calls were well defined";
}

} // namespace vlx::test
