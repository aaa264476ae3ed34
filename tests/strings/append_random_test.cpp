// The append members against the oracle, on random pages and texts.
#include "strings/random_calls.hpp"

namespace vlx::test {
namespace {

constexpr unsigned char kFill = 0xCD;

// A terminated text and behind it just the room that a call may need: the source, a terminator and
// two shift bytes.
template <class Unit>
std::vector<Unit> destinationOf(std::vector<Unit> text, std::size_t added)
{
    text.push_back(0);
    text.insert(text.end(), added + 3, static_cast<Unit>(kFill));
    return text;
}

template <class Reference, class Call>
bool compareAppends(Scene& scene, const Arguments& a, Reference reference, Call call)
{
    const oracle::Bytes before = destinationOf(a.set, a.string.size());
    oracle::Bytes after = before;
    const auto wanted = wellDefined([&] { return reference(after); });
    if (!wanted && !mustStayInside(a.options, {a.length}))
        return false;
    auto* const destination = reinterpret_cast<char*>(scene.place(0, before));
    const auto* source = reinterpret_cast<const char*>(scene.place(1, a.string));
    TSLocale* const handle = scene.handle();
    const std::int32_t result = call(handle, destination, source);
    EXPECT_TRUE(scene.areas[1].holds(a.string)) << a;
    if (!wanted)
        return false;
    EXPECT_EQ(result, wanted->result) << a;
    EXPECT_EQ(scene.locale.lastError, wanted->error) << a;
    EXPECT_TRUE(scene.areas[0].holds(after)) << a;
    return true;
}

std::uint32_t appendOptions(Random& random)
{
    return anyOf(random,
                 {0, TS_OPT_CHAR_COUNT, TS_OPT_TERMINATE, TS_OPT_TERMINATE | TS_OPT_CHAR_COUNT});
}

TEST(AppendAgainstOracle, TSStrcat)
{
    callEverywhere([](Scene& scene) {
        Arguments a = scene.arguments();
        a.options = appendOptions(scene.random);
        return compareAppends(
            scene, a,
            [&](oracle::Bytes& destination) {
                return oracle::append(scene.reference, destination, a.text(), a.options);
            },
            [&](TSLocale* handle, char* destination, const char* source) {
                return TSStrcat(handle, destination, source, a.length, a.options);
            });
    });
}

TEST(AppendAgainstOracle, TSStrcatEx)
{
    callEverywhere([](Scene& scene) {
        Arguments a = scene.arguments();
        a.options = appendOptions(scene.random);
        return compareAppends(
            scene, a,
            [&](oracle::Bytes& destination) {
                return oracle::appendEx(scene.reference, destination, a.bufferState, a.text(),
                                        a.options);
            },
            [&](TSLocale* handle, char* destination, const char* source) {
                return TSStrcatEx(handle, destination, a.bufferState, source, a.state, a.length,
                                  a.options);
            });
    });
}

template <class Unit, class Call>
bool compareUnitAppends(Scene& scene, Call call)
{
    UnitArguments<Unit> a = scene.unitArguments<Unit>();
    a.options = appendOptions(scene.random);
    const std::vector<Unit> before = destinationOf(a.set, a.string.size());
    oracle::Units after = widen(before);
    const auto wanted = wellDefined(
        [&] { return oracle::appendUnits(after, widen(a.string), a.length, a.options); });
    if (!wanted)
        return false;
    Unit* const destination = scene.place(0, before);
    const Unit* source = scene.place(1, a.string);
    EXPECT_EQ(call(scene.handle(), destination, source, a.length, a.options), wanted->result);
    EXPECT_EQ(scene.locale.lastError, wanted->error) << a.options;
    EXPECT_TRUE(scene.areas[0].holds(narrow<Unit>(after)));
    EXPECT_TRUE(scene.areas[1].holds(a.string));
    return true;
}

TEST(AppendAgainstOracle, TSStrcatU)
{
    callEverywhere([](Scene& scene) { return compareUnitAppends<TSChar16>(scene, TSStrcatU); });
}

TEST(AppendAgainstOracle, TSWcscat)
{
    callEverywhere([](Scene& scene) { return compareUnitAppends<TSChar32>(scene, TSWcscat); });
}

} // namespace
} // namespace vlx::test
