// The members that measure a span, and the lengths, against the oracle, on random pages and texts.
#include "strings/random_calls.hpp"

namespace vlx::test {
namespace {

using oracle::Members;

// Any bit beside the one for characters is ignored.
std::uint32_t spanOptions(Random& random)
{
    return anyOf(random, {0, TS_OPT_CHAR_COUNT});
}

template <class Reference, class Call>
bool compareSpans(Scene& scene, const Arguments& a, Reference reference, Call call)
{
    const auto wanted = wellDefined(reference);
    if (!wanted && !mustStayInside(a.options, {a.length, a.setLength}))
        return false;
    const auto* string = reinterpret_cast<const char*>(scene.place(0, a.string));
    const auto* set = reinterpret_cast<const char*>(scene.place(1, a.set));
    TSLocale* const handle = scene.handle();
    const std::int32_t result = call(handle, string, set);
    EXPECT_EQ(scene.locale.lastError, TS_ERR_NONE) << a;
    EXPECT_TRUE(scene.areas[0].holds(a.string)) << a;
    EXPECT_TRUE(scene.areas[1].holds(a.set)) << a;
    if (!wanted)
        return false;
    EXPECT_EQ(result, wanted->result) << a;
    return true;
}

template <class Call>
bool comparePlain(Scene& scene, Members members, Call call)
{
    Arguments a = scene.arguments();
    a.state = a.setState = 0;
    a.options = spanOptions(scene.random);
    return compareSpans(
        scene, a,
        [&] { return oracle::span(scene.reference, members, a.text(), a.setText(), a.options); },
        [&](TSLocale* handle, const char* string, const char* set) {
            return call(handle, string, a.length, set, a.setLength, a.options);
        });
}

template <class Call>
bool compareEx(Scene& scene, Members members, Call call)
{
    Arguments a = scene.arguments();
    a.options = spanOptions(scene.random);
    return compareSpans(
        scene, a,
        [&] { return oracle::spanEx(scene.reference, members, a.text(), a.setText(), a.options); },
        [&](TSLocale* handle, const char* string, const char* set) {
            return call(handle, string, a.state, a.length, set, a.setState, a.setLength, a.options);
        });
}

template <class Unit, class Call>
bool compareUnits(Scene& scene, Members members, Call call)
{
    const UnitArguments<Unit> a = scene.unitArguments<Unit>();
    const auto wanted = wellDefined([&] {
        return oracle::spanUnits(members, widen(a.string), a.length, widen(a.set), a.setLength);
    });
    if (!wanted)
        return false;
    const Unit* string = scene.place(0, a.string);
    const Unit* set = scene.place(1, a.set);
    EXPECT_EQ(call(scene.handle(), string, a.length, set, a.setLength), wanted->result);
    EXPECT_EQ(scene.locale.lastError, TS_ERR_NONE);
    EXPECT_TRUE(scene.areas[0].holds(a.string));
    EXPECT_TRUE(scene.areas[1].holds(a.set));
    return true;
}

TEST(SpanAgainstOracle, TSStrspn)
{
    callEverywhere([](Scene& scene) { return comparePlain(scene, Members::kIn, TSStrspn); });
}

TEST(SpanAgainstOracle, TSStrcspn)
{
    callEverywhere([](Scene& scene) { return comparePlain(scene, Members::kNotIn, TSStrcspn); });
}

TEST(SpanAgainstOracle, TSStrspnEx)
{
    callEverywhere([](Scene& scene) { return compareEx(scene, Members::kIn, TSStrspnEx); });
}

TEST(SpanAgainstOracle, TSStrcspnEx)
{
    callEverywhere([](Scene& scene) { return compareEx(scene, Members::kNotIn, TSStrcspnEx); });
}

TEST(SpanAgainstOracle, TSStrspnU)
{
    callEverywhere(
        [](Scene& scene) { return compareUnits<TSChar16>(scene, Members::kIn, TSStrspnU); });
}

TEST(SpanAgainstOracle, TSStrcspnU)
{
    callEverywhere(
        [](Scene& scene) { return compareUnits<TSChar16>(scene, Members::kNotIn, TSStrcspnU); });
}

TEST(SpanAgainstOracle, TSWcsspn)
{
    callEverywhere(
        [](Scene& scene) { return compareUnits<TSChar32>(scene, Members::kIn, TSWcsspn); });
}

TEST(SpanAgainstOracle, TSWcscspn)
{
    callEverywhere(
        [](Scene& scene) { return compareUnits<TSChar32>(scene, Members::kNotIn, TSWcscspn); });
}

template <class Unit, class Call>
bool compareLengths(Scene& scene, Call call)
{
    const UnitArguments<Unit> a = scene.unitArguments<Unit>();
    const auto wanted = wellDefined([&] { return oracle::lengthUnits(widen(a.string)); });
    if (!wanted)
        return false;
    const Unit* string = scene.place(0, a.string);
    EXPECT_EQ(call(scene.handle(), string), *wanted);
    EXPECT_EQ(scene.locale.lastError, TS_ERR_NONE);
    return true;
}

TEST(LengthAgainstOracle, TSStrlenU)
{
    callEverywhere([](Scene& scene) { return compareLengths<TSChar16>(scene, TSStrlenU); });
}

TEST(LengthAgainstOracle, TSWcslen)
{
    callEverywhere([](Scene& scene) { return compareLengths<TSChar32>(scene, TSWcslen); });
}

} // namespace
} // namespace vlx::test
