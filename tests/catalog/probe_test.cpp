// The search in a preloaded catalog, step by step. Which elements it looks at shows where their
// order is broken: then it misses what another search would find.
#include <optional>
#include <random>

#include "catalog/catalog_fixture.hpp"

namespace vlx::test {
namespace {

using Numbers = std::vector<std::uint32_t>;

// What the search finds, and the indices that it looks at.
struct Probes {
    std::optional<std::size_t> found;
    std::vector<std::int64_t> indices;
};

Probes search(const Numbers& numbers, std::uint32_t wanted)
{
    const auto count = static_cast<std::int64_t>(numbers.size());
    const std::int64_t number = wanted;
    std::int64_t low = 0;
    std::int64_t high = count;
    std::int64_t index = count / 2;
    if (number - 1 < count) {
        index = number - 1;
        high = number;
    }
    Probes probes;
    while (count > 0) {
        probes.indices.push_back(index);
        const std::int64_t element = numbers.at(static_cast<std::size_t>(index));
        if (element == number) {
            probes.found = static_cast<std::size_t>(index);
            break;
        }
        const bool smaller = element < number;
        if (smaller) {
            low = index + 1;
            if (number - element + index + 1 < high)
                high = number - element + index + 1;
        } else {
            high = index;
        }
        if (low >= high)
            break;
        const std::int64_t step = high - low == 1 ? 1 : (high - low) / 2;
        index += smaller ? step : -step;
    }
    return probes;
}

class Search : public CatalogTest {
  protected:
    static constexpr std::uint32_t kSet = 4711; // the one with the messages

    // A catalog of sets of these numbers, each with a message 1 that is its index, and one of a
    // single set with messages of these numbers.
    void openBoth(const Numbers& numbers)
    {
        CatalogFile sets{.locale = "Codes_Codes", .sets = {}};
        CatalogFile messages{.locale = "Codes_Codes", .sets = {{kSet, {}}}};
        for (std::size_t i = 0; i < numbers.size(); ++i) {
            const std::string text = std::to_string(i);
            sets.sets.push_back({numbers[i], {{1, text}}});
            messages.sets[0].messages.push_back({numbers[i], text});
        }
        sets_ = openBytes(sets.bytes(), Form::kPreloaded, locale_.get());
        messages_ = openBytes(messages.bytes(), Form::kPreloaded, locale_.get());
        ASSERT_TRUE(sets_ && messages_);
    }

    void compare(const Numbers& numbers, std::uint32_t wanted)
    {
        const Probes probes = search(numbers, wanted);
        const auto text =
            probes.found ? std::optional(std::to_string(*probes.found)) : std::nullopt;
        const auto number = static_cast<std::int32_t>(wanted);
        EXPECT_EQ(message(sets_.get(), number, 1), text) << testing::PrintToString(numbers);
        EXPECT_EQ(message(messages_.get(), kSet, number), text) << testing::PrintToString(numbers);
    }

    std::uint32_t below(std::uint32_t limit)
    {
        return static_cast<std::uint32_t>(random_() % limit);
    }

    Catalog sets_;
    Catalog messages_;
    std::mt19937_64 random_{9201};
};

TEST_F(Search, OfSets1And5LooksAtTwoAtTheMost)
{
    const Numbers numbers{1, 5};
    EXPECT_EQ(search(numbers, 1).indices, (std::vector<std::int64_t>{0}));
    EXPECT_EQ(search(numbers, 5).indices, (std::vector<std::int64_t>{1}));
    EXPECT_LE(search(numbers, 3).indices.size(), 2u);
    openBoth(numbers);
    for (std::uint32_t wanted = 1; wanted < 8; ++wanted)
        compare(numbers, wanted);
}

TEST_F(Search, FindsAllInAscendingOrder)
{
    for (int round = 0; round < 200 && !HasFailure(); ++round) {
        Numbers numbers;
        std::uint32_t number = 0;
        for (std::size_t i = random_() % 30; i > 0; --i)
            numbers.push_back(number += below(random_() % 4 == 0 ? 40 : 2) + 1);
        if (numbers.empty())
            numbers.push_back(0x7FFFFFFF);
        openBoth(numbers);
        for (std::size_t i = 0; i < numbers.size(); ++i)
            EXPECT_EQ(search(numbers, numbers[i]).found, i);
        for (std::uint32_t wanted = 1; wanted < numbers.back() + 3 && wanted < 500; ++wanted)
            compare(numbers, wanted);
        compare(numbers, 0x7FFFFFFF);
    }
}

TEST_F(Search, LooksAtTheSameElementsWhereTheOrderIsBroken)
{
    for (int round = 0; round < 500 && !HasFailure(); ++round) {
        Numbers numbers;
        for (std::size_t i = 1 + random_() % 24; i > 0; --i)
            numbers.push_back(random_() % 12 == 0 ? static_cast<std::uint32_t>(random_())
                                                  : below(40));
        openBoth(numbers);
        for (std::uint32_t wanted = 1; wanted < 45; ++wanted)
            compare(numbers, wanted);
    }
}

} // namespace
} // namespace vlx::test
