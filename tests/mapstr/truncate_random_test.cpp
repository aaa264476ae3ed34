// Truncation against the oracle: result, error code, every byte of the string and around it.
#include "mapstr/oracle_truncate.hpp"
#include "mapstr/world.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kOptions[] = {
    0,
    TS_OPT_CHAR_COUNT,
    TS_TRUNC_STRIP_BLANKS,
    TS_TRUNC_STRIP_BLANKS | TS_OPT_CHAR_COUNT,
    TS_TRUNC_STRIP_BLANKS | TS_OPT_IGNORE_WIDTH,
    TS_TRUNC_STRIP_BLANKS | TS_OPT_IGNORE_WIDTH | TS_OPT_CHAR_COUNT,
    TS_OPT_IGNORE_WIDTH,
    0xFFFFFFFF,
};

template <class Reference, class Tested>
bool compareCuts(World& world, Random& random, Reference reference, Tested tested)
{
    static GuardedArea area;
    const std::int32_t state = pick(random, 0, 1);
    oracle::Bytes before = world.terminated(random, state, pick(random, 0, 8));
    before.resize(std::max<std::size_t>(before.size(), 2)); // an empty string may be closed
    const std::int32_t size = pick(random, -1, static_cast<std::int32_t>(before.size()) + 2);
    const std::uint32_t options = kOptions[random() % std::size(kOptions)];
    oracle::Bytes after = before;
    const auto wanted = wellDefined([&] { return reference(after, state, size, options); });
    if (!wanted)
        return false;
    auto* const string = reinterpret_cast<char*>(area.place(before, anyGuard(random)));
    const auto print = [&] {
        std::ostringstream out;
        printBytes(out, "string", before);
        out << ", state " << state << ", size " << size << ", options 0x" << std::hex << options;
        return out.str();
    };
    EXPECT_EQ(tested(world.handle(random), string, state, size, options), wanted->result)
        << print();
    EXPECT_EQ(world.locale.lastError, TS_ERR_NONE) << print();
    EXPECT_TRUE(area.holds(after)) << print();
    return true;
}

TEST(TruncationAgainstOracle, TSTruncateString)
{
    callInWorlds([](World& world, Random& random) {
        return compareCuts(
            world, random,
            [&](oracle::Bytes& string, std::int32_t, std::int32_t size, std::uint32_t options) {
                return oracle::truncate(world.reference, string, size, options);
            },
            [](TSLocale* handle, char* string, std::int32_t, std::int32_t size,
               std::uint32_t options) { return TSTruncateString(handle, string, size, options); });
    });
}

TEST(TruncationAgainstOracle, TSTruncateStringEx)
{
    callInWorlds([](World& world, Random& random) {
        return compareCuts(
            world, random,
            [&](oracle::Bytes& string, std::int32_t state, std::int32_t size,
                std::uint32_t options) {
                return oracle::truncateEx(world.reference, string, state, size, options);
            },
            TSTruncateStringEx);
    });
}

} // namespace
} // namespace vlx::test
