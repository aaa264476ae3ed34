// The copy members against the oracle, on random pages and texts: result, error code, every byte of
// the destination and of what lies around it.
#include "strings/random_calls.hpp"

namespace vlx::test {
namespace {

constexpr unsigned char kFill = 0xCD;

// In bytes the destination has just its size, in characters what the copy may need.
std::size_t roomFor(const Arguments& a, std::size_t longest)
{
    const std::size_t size = a.size > 0 ? static_cast<std::size_t>(a.size) : 0;
    return a.options == 0 ? size : size * longest + 2;
}

template <class Reference, class Call>
bool compareCopies(Scene& scene, const Arguments& a, Reference reference, Call call)
{
    const oracle::Bytes before(roomFor(a, longestCharacter(scene.page.shape())), kFill);
    oracle::Bytes after = before;
    const auto wanted = wellDefined([&] { return reference(after); });
    // In characters nobody knows the room.
    if (!wanted && (a.options & TS_OPT_CHAR_COUNT))
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

TEST(CopyAgainstOracle, TSStrcpy)
{
    callEverywhere([](Scene& scene) {
        Arguments a = scene.arguments();
        a.options = anyOf(scene.random, {0, TS_OPT_CHAR_COUNT});
        return compareCopies(
            scene, a,
            [&](oracle::Bytes& destination) {
                return oracle::copy(scene.reference, destination, a.size, a.text(), a.options);
            },
            [&](TSLocale* handle, char* destination, const char* source) {
                return TSStrcpy(handle, destination, a.size, source, a.length, a.options);
            });
    });
}

TEST(CopyAgainstOracle, TSStrcpyEx)
{
    callEverywhere([](Scene& scene) {
        Arguments a = scene.arguments();
        a.options = anyOf(scene.random, {0, TS_OPT_CHAR_COUNT});
        return compareCopies(
            scene, a,
            [&](oracle::Bytes& destination) {
                return oracle::copyEx(scene.reference, destination, a.bufferState, a.size, a.text(),
                                      a.options);
            },
            [&](TSLocale* handle, char* destination, const char* source) {
                return TSStrcpyEx(handle, destination, a.bufferState, a.size, source, a.state,
                                  a.length, a.options);
            });
    });
}

template <class Unit, class Call>
bool compareUnitCopies(Scene& scene, Call call)
{
    const UnitArguments<Unit> a = scene.unitArguments<Unit>();
    const std::vector<Unit> before(a.size > 0 ? static_cast<std::size_t>(a.size) : 0,
                                   static_cast<Unit>(kFill));
    oracle::Units after = widen(before);
    const auto wanted =
        wellDefined([&] { return oracle::copyUnits(after, a.size, widen(a.string), a.length); });
    if (!wanted)
        return false;
    Unit* const destination = scene.place(0, before);
    const Unit* source = scene.place(1, a.string);
    EXPECT_EQ(call(scene.handle(), destination, a.size, source, a.length), wanted->result);
    EXPECT_EQ(scene.locale.lastError, TS_ERR_NONE);
    EXPECT_TRUE(scene.areas[0].holds(narrow<Unit>(after)));
    EXPECT_TRUE(scene.areas[1].holds(a.string));
    return true;
}

TEST(CopyAgainstOracle, TSStrcpyU)
{
    callEverywhere([](Scene& scene) { return compareUnitCopies<TSChar16>(scene, TSStrcpyU); });
}

TEST(CopyAgainstOracle, TSWcscpy)
{
    callEverywhere([](Scene& scene) { return compareUnitCopies<TSChar32>(scene, TSWcscpy); });
}

} // namespace
} // namespace vlx::test
