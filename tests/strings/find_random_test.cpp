// The members that find a character against the oracle, on random pages and texts.
#include "strings/random_calls.hpp"

namespace vlx::test {
namespace {

std::uint32_t findOptions(Random& random)
{
    return anyOf(random,
                 {0, TS_OPT_CHAR_COUNT, TS_OPT_LAST_MATCH, TS_OPT_LAST_MATCH | TS_OPT_CHAR_COUNT});
}

template <class Unit>
std::optional<std::ptrdiff_t> positionIn(const Unit* string, const Unit* match)
{
    if (match == nullptr)
        return std::nullopt;
    return match - string;
}

// The call stores the state at a match in its argument.
template <class Reference, class Call>
bool compareFinds(Scene& scene, const Arguments& a, Reference reference, Call call)
{
    const auto wanted = wellDefined(reference);
    constexpr std::size_t kLongest = 4;
    if (!wanted && !(mustStayInside(a.options, {a.length}) && a.character.size() >= kLongest + 1))
        return false;
    const auto* string = reinterpret_cast<const char*>(scene.place(0, a.string));
    const auto* character = reinterpret_cast<const char*>(scene.place(1, a.character));
    TSLocale* const handle = scene.handle();
    std::int32_t state = kNoState;
    const auto position = positionIn<char>(string, call(handle, string, character, &state));
    EXPECT_TRUE(scene.areas[0].holds(a.string)) << a;
    EXPECT_TRUE(scene.areas[1].holds(a.character)) << a;
    if (!wanted)
        return false;
    EXPECT_EQ(position, wanted->position) << a;
    EXPECT_EQ(scene.locale.lastError, wanted->error) << a;
    EXPECT_EQ(state, wanted->state.value_or(kNoState)) << a;
    return true;
}

TEST(FindAgainstOracle, TSStrchr)
{
    callEverywhere([](Scene& scene) {
        Arguments a = scene.arguments();
        a.options = findOptions(scene.random);
        return compareFinds(
            scene, a,
            [&] {
                return oracle::find(scene.reference, {a.text().bytes, 0, a.length},
                                    oracle::Span(a.character), a.options);
            },
            [&](TSLocale* handle, const char* string, const char* character, std::int32_t*) {
                return TSStrchr(handle, string, a.length, character, a.options);
            });
    });
}

TEST(FindAgainstOracle, TSStrchrEx)
{
    callEverywhere([](Scene& scene) {
        Arguments a = scene.arguments();
        a.options = findOptions(scene.random);
        return compareFinds(
            scene, a,
            [&] {
                return oracle::findEx(scene.reference, a.text(), oracle::Span(a.character),
                                      a.characterState, a.options);
            },
            [&](TSLocale* handle, const char* string, const char* character, std::int32_t* state) {
                return TSStrchrEx(handle, string, a.state, a.length, character, a.characterState,
                                  state, a.options);
            });
    });
}

template <class Unit, class Call>
bool compareUnitFinds(Scene& scene, Call call)
{
    UnitArguments<Unit> a = scene.unitArguments<Unit>();
    a.options = findOptions(scene.random);
    const auto wanted = wellDefined(
        [&] { return oracle::findUnits(widen(a.string), a.length, a.value, a.options); });
    if (!wanted)
        return false;
    const Unit* string = scene.place(0, a.string);
    EXPECT_EQ(positionIn<Unit>(string, call(scene.handle(), string, a.length, a.value, a.options)),
              wanted->position);
    EXPECT_EQ(scene.locale.lastError, wanted->error) << a.options;
    EXPECT_TRUE(scene.areas[0].holds(a.string));
    return true;
}

TEST(FindAgainstOracle, TSStrchrU)
{
    callEverywhere([](Scene& scene) { return compareUnitFinds<TSChar16>(scene, TSStrchrU); });
}

TEST(FindAgainstOracle, TSWcschr)
{
    callEverywhere([](Scene& scene) { return compareUnitFinds<TSChar32>(scene, TSWcschr); });
}

} // namespace
} // namespace vlx::test
