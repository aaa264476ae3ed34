// The members of sort keys against the oracle: result, error code and every byte of the buffer, at
// every alignment; and keys against the comparison.
#include "collate/random_texts.hpp"

namespace vlx::test {
namespace {

// A buffer for a key, of any size and at any alignment, between bytes that nobody may change.
class KeyArea {
  public:
    explicit KeyArea(Random& random)
    {
        constexpr std::int32_t kSizes[] = {0, 1, 2, 3, 4, 5, 7, 12, 40, 64, 200, 400};
        const std::int32_t size =
            random() % 3 == 0 ? pick(random, 0, 60) : kSizes[random() % std::size(kSizes)];
        past_ = static_cast<unsigned>(random() % 4);
        before_.bytes.resize(static_cast<std::size_t>(size));
        for (unsigned char& byte : before_.bytes)
            byte = static_cast<unsigned char>(random() | 1);
        before_.past = past_;
    }

    // The buffer as it is before a call, for the oracle to change.
    oracle::KeyBuffer& wanted() { return before_; }
    std::int32_t size() const { return static_cast<std::int32_t>(before_.bytes.size()); }

    char* place()
    {
        std::vector<unsigned char> bytes(kAround + past_, kFill);
        bytes.insert(bytes.end(), before_.bytes.begin(), before_.bytes.end());
        bytes.resize((bytes.size() + 3) / 4 * 4 + kAround, kFill);
        at_ = area().place(bytes, GuardedArea::Guard::kAbove);
        return reinterpret_cast<char*>(at_ + kAround + past_);
    }
    bool isAsWanted() const
    {
        const unsigned char* const begin = at_;
        const unsigned char* const buffer = begin + kAround + past_;
        const unsigned char* const end = buffer + before_.bytes.size();
        return std::equal(buffer, end, before_.bytes.begin()) &&
               std::all_of(begin, buffer, [](unsigned char byte) { return byte == kFill; }) &&
               std::all_of(end, end + kAround, [](unsigned char byte) { return byte == kFill; });
    }

  private:
    static constexpr std::size_t kAround = 16;
    static constexpr unsigned char kFill = 0xA5;

    static GuardedArea& area()
    {
        static GuardedArea one;
        return one;
    }

    unsigned past_;
    oracle::KeyBuffer before_;
    unsigned char* at_ = nullptr;
};

std::uint32_t anyKeyOptions(Random& random)
{
    constexpr std::uint32_t kOptions[] = {0, 0, TS_OPT_IGNORE_CASE, TS_OPT_IGNORE_WIDTH};
    std::uint32_t options = kOptions[random() % std::size(kOptions)];
    if (random() % 4 == 0)
        options |= TS_OPT_CHAR_COUNT;
    return random() % 32 == 0 ? options ^ 1u << random() % 32 : options;
}

template <class Reference, class Tested>
bool keyOfBytes(SortWorld& sorted, Random& random, Reference reference, Tested tested)
{
    const BytePair pair(sorted, random);
    const std::uint32_t options = anyKeyOptions(random);
    const WorkingMemory memory(failsNow(random));
    const oracle::Collation collation = sorted.oracle(!memory.fails());
    KeyArea area(random);
    char* const buffer = area.place();
    const auto wanted =
        wellDefined([&] { return reference(collation, area.wanted(), pair.text1, options); });
    if (!wanted && !(sorted.world.isSound && mustStayInside(options, {pair.text1.length})))
        return false;
    const char* const string = pair.placeFirst(random);
    const std::int32_t result =
        tested(sorted.handle(random), buffer, area.size(), string, pair.text1, options);
    EXPECT_TRUE(memory.allGivenBack()) << pair;
    if (!wanted)
        return false;
    EXPECT_EQ(result, wanted->result) << pair << ", options 0x" << std::hex << options;
    EXPECT_EQ(sorted.world.locale.lastError, wanted->error) << pair;
    EXPECT_TRUE(area.isAsWanted()) << pair << ", options 0x" << std::hex << options;
    return true;
}

TEST(KeysAgainstOracle, TSStrxfrm)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return keyOfBytes(
            world, random,
            [](const oracle::Collation& collation, oracle::KeyBuffer& buffer,
               const oracle::Text& text,
               std::uint32_t options) { return collation.plainKey(buffer, text, options); },
            [](TSLocale* handle, char* buffer, std::int32_t size, const char* string,
               const oracle::Text& text, std::uint32_t options) {
                return TSStrxfrm(handle, buffer, size, string, text.length, options);
            });
    });
}

TEST(KeysAgainstOracle, TSStrxfrmEx)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return keyOfBytes(
            world, random,
            [](const oracle::Collation& collation, oracle::KeyBuffer& buffer,
               const oracle::Text& text,
               std::uint32_t options) { return collation.shiftedKey(buffer, text, options); },
            [](TSLocale* handle, char* buffer, std::int32_t size, const char* string,
               const oracle::Text& text, std::uint32_t options) {
                return TSStrxfrmEx(handle, buffer, size, string, text.state, text.length, options);
            });
    });
}

template <class Unit, class Reference, class Tested>
bool keyOfUnits(SortWorld& sorted, Random& random, Reference reference, Tested tested)
{
    const UnitPair<Unit> pair(sorted, random);
    const std::uint32_t options = anyKeyOptions(random);
    const WorkingMemory memory(failsNow(random));
    const oracle::Collation collation = sorted.oracle(!memory.fails());
    KeyArea area(random);
    char* const buffer = area.place();
    const auto wanted = wellDefined(
        [&] { return reference(collation, area.wanted(), pair.first, pair.length1, options); });
    if (!wanted)
        return false;
    const Unit* const string = pair.placeFirst(random);
    EXPECT_EQ(tested(sorted.handle(random), buffer, area.size(), string, pair.length1, options),
              wanted->result)
        << pair << ", options 0x" << std::hex << options;
    EXPECT_EQ(sorted.world.locale.lastError, wanted->error) << pair;
    EXPECT_TRUE(area.isAsWanted()) << pair << ", options 0x" << std::hex << options;
    EXPECT_TRUE(memory.allGivenBack()) << pair;
    return true;
}

TEST(KeysAgainstOracle, TSStrxfrmU)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return keyOfUnits<TSChar16>(
            world, random,
            [](const oracle::Collation& collation, oracle::KeyBuffer& buffer,
               const oracle::Units& text, std::int32_t length,
               std::uint32_t options) { return collation.unitsKey(buffer, text, length, options); },
            TSStrxfrmU);
    });
}

TEST(KeysAgainstOracle, TSWcsxfrm)
{
    callInSortWorlds([](SortWorld& world, Random& random) {
        return keyOfUnits<TSChar32>(
            world, random,
            [](const oracle::Collation& collation, oracle::KeyBuffer& buffer,
               const oracle::Units& text, std::int32_t length, std::uint32_t options) {
                return collation.packedKey(buffer, text, length, options);
            },
            TSWcsxfrm);
    });
}

int sign(std::int64_t value)
{
    return value < 0 ? -1 : value > 0 ? 1 : 0;
}

// A sort of which the comparison and the keys promise the same order: all forward, no weight that
// keys trim, no contractions, something on level 1 in every string.
SortBuilder agreeingSort(Random& random)
{
    SortBuilder sort;
    sort.defaults(1, 1);
    for (TSChar16 value = 'a'; value <= 'z'; ++value)
        sort.letter(value, {static_cast<std::uint16_t>(0x0101 + random() % 4),
                            static_cast<std::uint8_t>(2 + random() % 2),
                            static_cast<std::uint8_t>(2 + random() % 2)});
    for (TSChar16 value = '0'; value <= '9'; ++value)
        sort.expansion(value, {static_cast<std::uint16_t>(0x0101 + random() % 4), 4, 2},
                       {static_cast<std::uint16_t>(0x0101 + random() % 4), 2, 3});
    return sort;
}

TEST(Keys, RankStringsAsTheComparisonDoes)
{
    Random random(99);
    PageBuilder page(PageShape::kSingleByte);
    page.asciiHalf().build();
    const TestLanguage language;
    const WorkingMemory memory;
    int ties = 0;
    for (int round = 0; round < 200; ++round) {
        SortBuilder sort = agreeingSort(random);
        TSLocale locale = localeOn(page.object());
        locale.flags = static_cast<std::uint16_t>(locale.flags & ~unsigned{kLocaleBinarySort});
        locale.sort = &sort.build();
        for (int i = 0; i < 200; ++i) {
            TSChar16 texts[2][8];
            char keys[2][256];
            std::int32_t lengths[2];
            std::int32_t sizes[2];
            for (int side = 0; side < 2; ++side) {
                lengths[side] = pick(random, 1, 7);
                for (std::int32_t at = 0; at < lengths[side]; ++at) {
                    const bool digit = at + 1 < lengths[side] && random() % 4 == 0;
                    texts[side][at] =
                        static_cast<TSChar16>(digit ? '0' + random() % 10 : 'a' + random() % 26);
                }
                sizes[side] = TSStrxfrmU(&locale, keys[side], sizeof keys[side], texts[side],
                                         lengths[side], 0);
            }
            const int order = std::memcmp(keys[0], keys[1],
                                          static_cast<std::size_t>(std::min(sizes[0], sizes[1])));
            const int byKeys = order != 0 ? sign(order) : sign(sizes[0] - sizes[1]);
            const int compared =
                sign(TSStrcollU(&locale, texts[0], lengths[0], texts[1], lengths[1], 0));
            ASSERT_EQ(compared, byKeys);
            ties += compared == 0;
        }
    }
    EXPECT_GT(ties, 0) << "some strings are equal";
}

} // namespace
} // namespace vlx::test
