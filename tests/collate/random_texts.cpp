#include "collate/random_texts.hpp"

namespace vlx::test {

std::uint32_t anyCollationOptions(Random& random)
{
    constexpr std::uint32_t kOptions[] = {
        0,
        0,
        0,
        0,
        0,
        0,
        0,
        0,
        TS_OPT_IGNORE_CASE,
        TS_OPT_IGNORE_CASE,
        TS_OPT_IGNORE_WIDTH,
        TS_OPT_IGNORE_WIDTH,
        0x40,
        0x80000000,
        0x1,
        0x80000001u,
    };
    std::uint32_t options = kOptions[random() % std::size(kOptions)];
    if (random() % 6 == 0)
        options |= TS_OPT_STRIP_BLANKS;
    if (random() % 4 == 0)
        options |= TS_OPT_CHAR_COUNT;
    return random() % 64 == 0 ? options ^ 1u << random() % 32 : options;
}

Areas& areas()
{
    static Areas all;
    return all;
}

BytePair::BytePair(SortWorld& sorted, Random& random)
{
    const std::int32_t state1 = pick(random, 0, 1);
    const std::int32_t state2 = random() % 4 == 0 ? 1 - state1 : state1;
    first = sorted.world.text(random, state1,
                              random() % 16 == 0 ? pick(random, 8, 40) : pick(random, 0, 7));
    second = sorted.variantOf(random, first, state2);
    if (random() % 4 == 0)
        sorted.insertTwins(random, first, second);
    text1 = {oracle::Span(first), state1, anyLength(random, first.size(), isTerminated(first))};
    text2 = {oracle::Span(second), state2,
             random() % 4 != 0 && isTerminated(second) && text1.length < 0
                 ? -1
                 : anyLength(random, second.size(), isTerminated(second))};
}

const char* BytePair::placeFirst(Random& random) const
{
    return reinterpret_cast<const char*>(areas().first.place(first, anyGuard(random)));
}

const char* BytePair::placeSecond(Random& random) const
{
    return reinterpret_cast<const char*>(areas().second.place(second, anyGuard(random)));
}

std::ostream& operator<<(std::ostream& out, const BytePair& pair)
{
    printBytes(out, "string1", pair.first);
    out << ", length " << pair.text1.length << ", state " << pair.text1.state;
    printBytes(out, ", string2", pair.second);
    return out << ", length " << pair.text2.length << ", state " << pair.text2.state;
}

} // namespace vlx::test
