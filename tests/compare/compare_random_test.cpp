// The members of comparison against the oracle: result and error code, in working memory that
// watches its blocks and now and then fails.
#include <sstream>

#include "compare/memory.hpp"
#include "compare/oracle_compare.hpp"
#include "mapstr/world.hpp"

namespace vlx::test {
namespace {

constexpr std::uint32_t kOptions[] = {
    0,
    TS_OPT_IGNORE_CASE,
    TS_OPT_IGNORE_WIDTH,
    TS_OPT_IGNORE_CASE,
    0x40,
    0x80000000,
    TS_OPT_IGNORE_WIDTH,
    0x1,
    0x80000001u,
    0x41,
    TS_OPT_IGNORE_CASE | 0x41,
};

std::uint32_t anyOptions(Random& random)
{
    std::uint32_t options = kOptions[random() % std::size(kOptions)];
    if (random() % 3 == 0)
        options |= TS_OPT_STRIP_BLANKS;
    if (random() % 4 == 0)
        options |= TS_OPT_CHAR_COUNT;
    return random() % 64 == 0 ? options ^ 1u << random() % 32 : options;
}

// A text that begins like another one, with a character in another form or order.
oracle::Bytes variantOf(const World& world, Random& random, const oracle::Bytes& text)
{
    if (random() % 6 == 0)
        return world.text(random, 0, pick(random, 0, 6));
    oracle::Bytes variant = text;
    for (std::uint64_t changes = random() % 3; changes > 0 && !variant.empty(); --changes) {
        const auto at = static_cast<std::ptrdiff_t>(random() % variant.size());
        auto& byte = variant[static_cast<std::size_t>(at)];
        const oracle::Bytes& other =
            random() % 2 == 0 ? world.anyShort(random) : world.anyLong(random);
        switch (random() % 5) {
        case 0:
            byte = static_cast<unsigned char>(oracle::toUpper(world.reference.page, byte));
            break;
        case 1: {
            const oracle::Bytes wide =
                oracle::putWide(oracle::mapValue(world.reference.page, byte));
            if (wide[0] == 0 || world.reference.singleByte)
                break;
            variant.erase(variant.begin() + at);
            variant.insert(variant.begin() + at, wide.begin(), wide.end());
            break;
        }
        case 2:
            variant.insert(variant.begin() + at, other.begin(), other.end());
            break;
        case 3:
            byte = other[0];
            break;
        default:
            variant.erase(variant.begin() + at);
        }
    }
    if (!isTerminated(variant) && random() % 2 == 0)
        variant.push_back(0);
    return variant;
}

struct Areas {
    GuardedArea first;
    GuardedArea second;
};

Areas& areas()
{
    static Areas all;
    return all;
}

// Whether all allocations of a call fail.
bool failsNow(Random& random)
{
    return random() % 16 == 0;
}

template <class Reference, class Tested>
bool compareBytes(World& world, Random& random, Reference reference, Tested tested)
{
    const std::int32_t state1 = pick(random, 0, 1);
    const std::int32_t state2 = random() % 4 == 0 ? 1 - state1 : state1;
    const oracle::Bytes first = world.text(random, state1, pick(random, 0, 7));
    const oracle::Bytes second = variantOf(world, random, first);
    const oracle::Text text1{oracle::Span(first), state1,
                             anyLength(random, first.size(), isTerminated(first))};
    const oracle::Text text2{oracle::Span(second), state2,
                             random() % 4 != 0 && isTerminated(second) && text1.length < 0
                                 ? -1
                                 : anyLength(random, second.size(), isTerminated(second))};
    const std::uint32_t options = anyOptions(random);
    const WorkingMemory memory(failsNow(random));
    const oracle::Comparison comparison{world.reference, world.pairs, !memory.fails()};
    const auto wanted = wellDefined([&] { return reference(comparison, text1, text2, options); });
    if (!wanted && !(world.isSound && mustStayInside(options, {text1.length, text2.length})))
        return false;
    const auto* const string1 =
        reinterpret_cast<const char*>(areas().first.place(first, anyGuard(random)));
    const auto* const string2 =
        reinterpret_cast<const char*>(areas().second.place(second, anyGuard(random)));
    const auto print = [&] {
        std::ostringstream out;
        printBytes(out, "string1", first);
        out << ", length " << text1.length << ", state " << state1;
        printBytes(out, ", string2", second);
        out << ", length " << text2.length << ", state " << state2 << ", options 0x" << std::hex
            << options << (memory.fails() ? ", no memory" : "") << ", upper pairs "
            << world.pairs.upper.size();
        return out.str();
    };
    const std::int32_t result =
        tested(world.handle(random), string1, text1, string2, text2, options);
    EXPECT_TRUE(memory.allGivenBack()) << print();
    EXPECT_TRUE(areas().first.holds(first) && areas().second.holds(second)) << print();
    if (!wanted)
        return false;
    EXPECT_EQ(result, wanted->result) << print();
    EXPECT_EQ(world.locale.lastError, wanted->error) << print();
    return true;
}

TEST(ComparisonAgainstOracle, TSStrcmp)
{
    callInWorlds([](World& world, Random& random) {
        return compareBytes(
            world, random,
            [](const oracle::Comparison& comparison, const oracle::Text& text1,
               const oracle::Text& text2,
               std::uint32_t options) { return comparison.plain(text1, text2, options); },
            [](TSLocale* handle, const char* string1, const oracle::Text& text1,
               const char* string2, const oracle::Text& text2, std::uint32_t options) {
                return TSStrcmp(handle, string1, text1.length, string2, text2.length, options);
            });
    });
}

TEST(ComparisonAgainstOracle, TSStrcmpEx)
{
    callInWorlds([](World& world, Random& random) {
        return compareBytes(
            world, random,
            [](const oracle::Comparison& comparison, const oracle::Text& text1,
               const oracle::Text& text2,
               std::uint32_t options) { return comparison.shifted(text1, text2, options); },
            [](TSLocale* handle, const char* string1, const oracle::Text& text1,
               const char* string2, const oracle::Text& text2, std::uint32_t options) {
                return TSStrcmpEx(handle, string1, text1.state, text1.length, string2, text2.state,
                                  text2.length, options);
            });
    });
}

oracle::Units variantOf(const World& world, Random& random, const oracle::Units& units, bool packed)
{
    oracle::Units variant = units;
    const oracle::Units others = world.units(random, 3, packed);
    for (std::uint64_t changes = random() % 3; changes > 0 && !variant.empty(); --changes) {
        const auto at = static_cast<std::ptrdiff_t>(random() % variant.size());
        const std::uint32_t other = others[random() % others.size()];
        if (random() % 3 == 0)
            variant.insert(variant.begin() + at, other);
        else if (random() % 2 == 0)
            variant[static_cast<std::size_t>(at)] ^= 0x20;
        else
            variant[static_cast<std::size_t>(at)] = other;
    }
    return variant;
}

template <class Unit, class Reference, class Tested>
bool compareUnits(World& world, Random& random, Reference reference, Tested tested)
{
    constexpr bool kPacked = sizeof(Unit) == 4;
    oracle::Units first = world.units(random, pick(random, 0, 7), kPacked);
    for (std::uint64_t blanks = random() % 3; blanks > 0 && isTerminated(first); --blanks)
        first.insert(first.end() - 1, kPacked ? random() % 2 == 0 ? 0x20 : 0x40 : 0x2000);
    const oracle::Units second = variantOf(world, random, first, kPacked);
    const std::int32_t length1 = anyLength(random, first.size(), isTerminated(first));
    const std::int32_t length2 = anyLength(random, second.size(), isTerminated(second));
    const std::uint32_t options = anyOptions(random);
    const WorkingMemory memory(failsNow(random));
    const oracle::Comparison comparison{world.reference, world.pairs, !memory.fails()};
    const auto wanted = wellDefined(
        [&] { return reference(comparison, first, length1, second, length2, options); });
    if (!wanted)
        return false;
    const Unit* const string1 = areas().first.place(narrowed<Unit>(first), anyGuard(random));
    const Unit* const string2 = areas().second.place(narrowed<Unit>(second), anyGuard(random));
    EXPECT_EQ(tested(world.handle(random), string1, length1, string2, length2, options),
              wanted->result)
        << std::hex << options;
    EXPECT_EQ(world.locale.lastError, wanted->error) << std::hex << options;
    EXPECT_TRUE(memory.allGivenBack());
    return true;
}

TEST(ComparisonAgainstOracle, TSStrcmpU)
{
    callInWorlds([](World& world, Random& random) {
        return compareUnits<TSChar16>(
            world, random,
            [](const oracle::Comparison& comparison, const oracle::Units& first,
               std::int32_t length1, const oracle::Units& second, std::int32_t length2,
               std::uint32_t options) {
                return comparison.units(first, length1, second, length2, options);
            },
            TSStrcmpU);
    });
}

TEST(ComparisonAgainstOracle, TSWcscmp)
{
    callInWorlds([](World& world, Random& random) {
        return compareUnits<TSChar32>(
            world, random,
            [](const oracle::Comparison& comparison, const oracle::Units& first,
               std::int32_t length1, const oracle::Units& second, std::int32_t length2,
               std::uint32_t options) {
                return comparison.packed(first, length1, second, length2, options);
            },
            TSWcscmp);
    });
}

} // namespace
} // namespace vlx::test
