// The members that take a token against the oracle, on random pages and texts: what is returned and
// stored, what is overwritten, what stays.
#include "strings/random_calls.hpp"

namespace vlx::test {
namespace {

constexpr unsigned char kFill = 0xCD;

std::uint32_t tokenOptions(Random& random)
{
    return anyOf(random, {0, TS_OPT_CHAR_COUNT});
}

bool wantsNullString(Random& random)
{
    return random() % 64 == 0;
}

// What a call returned and stored, in the oracle's terms.
template <class Unit>
oracle::Token tokenOf(const Scene& scene, const Unit* string, const Unit* token,
                      std::int32_t length, const Unit* next)
{
    oracle::Token result;
    if (token != nullptr)
        result.token = token - string;
    if (next != nullptr)
        result.next = next - string;
    result.length = length;
    result.error = scene.locale.lastError;
    return result;
}

TEST(TokenAgainstOracle, TSStrtok)
{
    callEverywhere([](Scene& scene) {
        Arguments a = scene.arguments();
        a.state = a.setState = 0;
        a.options = tokenOptions(scene.random);
        const bool isNull = wantsNullString(scene.random);
        oracle::Bytes after = a.string;
        const auto wanted = wellDefined([&] {
            return oracle::token(scene.reference, isNull ? nullptr : &after, a.length, a.setText(),
                                 a.options);
        });
        if (!wanted && !mustStayInside(a.options, {a.length, a.setLength}))
            return false;
        auto* const string = reinterpret_cast<char*>(scene.place(0, a.string));
        const auto* delimiters = reinterpret_cast<const char*>(scene.place(1, a.set));
        std::int32_t length = a.length;
        char* next = string + 1;
        const char* token = TSStrtok(scene.handle(), isNull ? nullptr : string, &length, delimiters,
                                     a.setLength, &next, a.options);
        EXPECT_TRUE(scene.areas[1].holds(a.set)) << a;
        if (!wanted)
            return false;
        EXPECT_EQ(tokenOf<char>(scene, string, token, length, next), *wanted) << a;
        EXPECT_TRUE(scene.areas[0].holds(after)) << a;
        return true;
    });
}

TEST(TokenAgainstOracle, TSStrtokEx)
{
    callEverywhere([](Scene& scene) {
        Arguments a = scene.arguments();
        a.options = tokenOptions(scene.random);
        const bool isNull = wantsNullString(scene.random);
        const bool inCharacters = (a.options & TS_OPT_CHAR_COUNT) != 0;
        const auto size = static_cast<std::size_t>(std::max(a.size, 0));
        const oracle::Bytes before(size * (inCharacters ? 5 : 1), kFill);
        oracle::Bytes after = before;
        const oracle::Text text = a.text();
        const auto wanted = wellDefined([&] {
            return oracle::tokenEx(scene.reference, after, a.bufferState, a.size,
                                   isNull ? nullptr : &text, a.setText(), a.options);
        });
        if (!wanted && !mustStayInside(a.options, {a.length, a.setLength}))
            return false;
        auto* const string = reinterpret_cast<char*>(scene.place(0, a.string));
        const auto* delimiters = reinterpret_cast<const char*>(scene.place(1, a.set));
        auto* const buffer = reinterpret_cast<char*>(scene.place(2, before));
        std::int32_t length = a.length;
        char* next = string + 1;
        std::int32_t nextState = kNoState;
        const std::int32_t result = TSStrtokEx(
            scene.handle(), buffer, a.bufferState, a.size, isNull ? nullptr : string, a.state,
            &length, delimiters, a.setState, a.setLength, &next, &nextState, a.options);
        oracle::Token got = tokenOf<char>(scene, string, nullptr, length, next);
        got.size = result;
        if (nextState != kNoState)
            got.nextState = nextState;
        EXPECT_TRUE(scene.areas[0].holds(a.string)) << a;
        EXPECT_TRUE(scene.areas[1].holds(a.set)) << a;
        if (!wanted)
            return false;
        EXPECT_EQ(got, *wanted) << a;
        EXPECT_TRUE(scene.areas[2].holds(after)) << a;
        return true;
    });
}

template <class Unit, class Call>
bool compareUnitTokens(Scene& scene, Call call)
{
    const UnitArguments<Unit> a = scene.unitArguments<Unit>();
    const bool isNull = wantsNullString(scene.random);
    oracle::Units after = widen(a.string);
    const auto wanted = wellDefined([&] {
        return oracle::tokenUnits(isNull ? nullptr : &after, a.length, widen(a.set), a.setLength);
    });
    if (!wanted)
        return false;
    Unit* const string = scene.place(0, a.string);
    const Unit* delimiters = scene.place(1, a.set);
    std::int32_t length = a.length;
    Unit* next = string + 1;
    const Unit* token =
        call(scene.handle(), isNull ? nullptr : string, &length, delimiters, a.setLength, &next);
    EXPECT_EQ(tokenOf<Unit>(scene, string, token, length, next), *wanted);
    EXPECT_TRUE(scene.areas[0].holds(narrow<Unit>(after)));
    EXPECT_TRUE(scene.areas[1].holds(a.set));
    return true;
}

TEST(TokenAgainstOracle, TSStrtokU)
{
    callEverywhere([](Scene& scene) { return compareUnitTokens<TSChar16>(scene, TSStrtokU); });
}

TEST(TokenAgainstOracle, TSWcstok)
{
    callEverywhere([](Scene& scene) { return compareUnitTokens<TSChar32>(scene, TSWcstok); });
}

} // namespace
} // namespace vlx::test
