// The members of string mapping against the oracle: result, error code, every byte of the
// destination and of what lies around it.
#include "mapstr/world.hpp"

namespace vlx::test {
namespace {

constexpr unsigned char kFill = 0xCD;

constexpr std::uint32_t kMappings[] = {
    0,
    TS_MAP_DIGITS,
    TS_MAP_FULL_WIDTH,
    TS_MAP_HALF_WIDTH,
    TS_MAP_COPY,
    TS_MAP_LOWER,
    TS_MAP_UPPER,
    TS_MAP_LOWER | TS_MAP_SIMPLE,
    TS_MAP_UPPER | TS_MAP_SIMPLE,
    TS_MAP_LOWER,
    TS_MAP_UPPER,
};

std::uint32_t anyMapping(Random& random)
{
    if (random() % 64 == 0)
        return kMappings[random() % std::size(kMappings)] ^ 1u << random() % 32;
    return kMappings[random() % std::size(kMappings)] | (random() % 3 == 0 ? TS_OPT_CHAR_COUNT : 0);
}

struct Call {
    std::int32_t state = 0;
    std::int32_t size = 0;
    oracle::Bytes source;
    std::int32_t sourceState = 0;
    std::int32_t length = 0;
    std::uint32_t mapping = 0;

    oracle::Text text() const { return {oracle::Span(source), sourceState, length}; }

    // In bytes the destination has just its size.
    std::size_t room() const
    {
        const std::size_t bytes = size > 0 ? static_cast<std::size_t>(size) : 0;
        return mapping & TS_OPT_CHAR_COUNT ? bytes * 8 + 2 : bytes;
    }
};

std::ostream& operator<<(std::ostream& out, const Call& call)
{
    printBytes(out, "source", call.source);
    return out << ", length " << call.length << ", state " << call.sourceState << ", size "
               << call.size << ", output state " << call.state << ", mapping 0x" << std::hex
               << call.mapping << std::dec;
}

Call anyCall(const World& world, Random& random)
{
    Call call;
    call.state = pick(random, 0, 1);
    call.sourceState = pick(random, 0, 1);
    const bool isLong = random() % 64 == 0; // the area of a counted call has an end
    call.source = world.text(random, call.sourceState, pick(random, 0, isLong ? 400 : 8));
    call.length = anyLength(random, call.source.size(), isTerminated(call.source));
    const auto most = static_cast<std::int32_t>(call.source.size()) * 2 + 2;
    call.size = random() % 3 == 0 ? most : pick(random, -1, most);
    call.mapping = anyMapping(random);
    return call;
}

struct Areas {
    GuardedArea destination;
    GuardedArea source;
};

Areas& areas()
{
    static Areas all;
    return all;
}

template <class Reference, class Tested>
bool compareBytes(World& world, Random& random, Reference reference, Tested tested)
{
    const Call call = anyCall(world, random);
    const oracle::Bytes before(call.room(), kFill);
    oracle::Bytes after = before;
    const auto wanted = wellDefined([&] { return reference(call, after); });
    if (!wanted)
        return false;
    auto* const destination =
        reinterpret_cast<char*>(areas().destination.place(before, anyGuard(random)));
    const auto* const source =
        reinterpret_cast<const char*>(areas().source.place(call.source, anyGuard(random)));
    EXPECT_EQ(tested(call, world.handle(random), destination, source), wanted->result) << call;
    EXPECT_EQ(world.locale.lastError, wanted->error) << call;
    EXPECT_TRUE(areas().destination.holds(after)) << call;
    EXPECT_TRUE(areas().source.holds(call.source)) << call;
    return true;
}

TEST(MappingAgainstOracle, TSMapString)
{
    callInWorlds([](World& world, Random& random) {
        return compareBytes(
            world, random,
            [&](const Call& call, oracle::Bytes& destination) {
                return oracle::mapString(world.reference, world.pairs, destination, call.size,
                                         call.text(), call.mapping);
            },
            [](const Call& call, TSLocale* handle, char* destination, const char* source) {
                return TSMapString(handle, destination, call.size, source, call.length,
                                   call.mapping);
            });
    });
}

TEST(MappingAgainstOracle, TSMapStringEx)
{
    callInWorlds([](World& world, Random& random) {
        return compareBytes(
            world, random,
            [&](const Call& call, oracle::Bytes& destination) {
                return oracle::mapStringEx(world.reference, world.pairs, destination, call.state,
                                           call.size, call.text(), call.mapping);
            },
            [](const Call& call, TSLocale* handle, char* destination, const char* source) {
                return TSMapStringEx(handle, destination, call.state, call.size, source,
                                     call.sourceState, call.length, call.mapping);
            });
    });
}

template <class Unit, class Reference, class Tested>
bool compareUnits(World& world, Random& random, Reference reference, Tested tested)
{
    const oracle::Units source = world.units(random, pick(random, 0, 8), sizeof(Unit) == 4);
    const std::int32_t length = anyLength(random, source.size(), isTerminated(source));
    const std::int32_t size = pick(random, -1, static_cast<std::int32_t>(source.size()) * 2 + 1);
    const std::uint32_t mapping = anyMapping(random);
    const std::vector<Unit> before(size > 0 ? static_cast<std::size_t>(size) : 0, Unit{kFill});
    oracle::Units after(before.begin(), before.end());
    const auto wanted =
        wellDefined([&] { return reference(after, size, source, length, mapping); });
    if (!wanted)
        return false;
    Unit* const destination = areas().destination.place(before, anyGuard(random));
    const Unit* const units = areas().source.place(narrowed<Unit>(source), anyGuard(random));
    EXPECT_EQ(tested(world.handle(random), destination, size, units, length, mapping),
              wanted->result)
        << std::hex << mapping;
    EXPECT_EQ(world.locale.lastError, wanted->error) << std::hex << mapping;
    EXPECT_TRUE(areas().destination.holds(narrowed<Unit>(after))) << std::hex << mapping;
    EXPECT_TRUE(areas().source.holds(narrowed<Unit>(source)));
    return true;
}

TEST(MappingAgainstOracle, TSMapStringU)
{
    callInWorlds([](World& world, Random& random) {
        return compareUnits<TSChar16>(
            world, random,
            [&](oracle::Units& destination, std::int32_t size, const oracle::Units& source,
                std::int32_t length, std::uint32_t mapping) {
                return oracle::mapStringU(world.pairs, destination, size, source, length, mapping);
            },
            TSMapStringU);
    });
}

TEST(MappingAgainstOracle, TSMapStringW)
{
    callInWorlds([](World& world, Random& random) {
        return compareUnits<TSChar32>(
            world, random,
            [&](oracle::Units& destination, std::int32_t size, const oracle::Units& source,
                std::int32_t length, std::uint32_t mapping) {
                return oracle::mapStringW(world.reference, world.pairs, destination, size, source,
                                          length, mapping);
            },
            TSMapStringW);
    });
}

} // namespace
} // namespace vlx::test
