// Sorts made by hand for the tests of collation, and locales on them.
#pragma once

#include <string>

#include "compare/memory.hpp"
#include "mapstr/hand_pages.hpp"
#include "support/sort_builder.hpp"

namespace vlx::test {

// The level 1 weight of a letter of any case, without an accent.
constexpr std::uint16_t letterWeight(char letter)
{
    return static_cast<std::uint16_t>(0x0200 + 16 * (letter - 'a'));
}

// What the weights of two letters differ by.
constexpr std::int32_t step(char from, char to)
{
    return letterWeight(to) - letterWeight(from);
}

// Latin: capital letters differ from small ones on level 3, a letter with an accent from one
// without on level 2. '-' and '\'' are special, '_' has no weights, 0xDF is an expansion of two s,
// of which the first is told from s on level 2.
inline SortBuilder latinSort()
{
    SortBuilder sort;
    for (char letter = 'a'; letter <= 'z'; ++letter) {
        const auto small = static_cast<TSChar16>(letter);
        sort.letter(small, {letterWeight(letter), 1, 1});
        sort.letter(static_cast<TSChar16>(small - 0x20), {letterWeight(letter), 1, 2});
    }
    for (char digit = '0'; digit <= '9'; ++digit)
        sort.letter(static_cast<TSChar16>(digit), {static_cast<std::uint16_t>(0x0180 + digit)});
    sort.letter(' ', {0x0110});
    sort.letter(0xE4, {letterWeight('a'), 2, 1}).letter(0xC4, {letterWeight('a'), 2, 2});
    sort.special('-', 0x0102).special('\'', 0x0101).letter('_', {0, 0, 0});
    sort.expansion(0xDF, {letterWeight('s'), 2, 1}, {letterWeight('s'), 1, 1});
    return sort;
}

// A locale on a page, a sort and a language, with working memory that watches its blocks.
struct SortLocale : HandLocale {
    SortLocale(PageBuilder built, SortBuilder order, const Pairs& upper = {})
        : HandLocale(std::move(built), upper), sort(std::move(order))
    {
        record.sort = &sort.build();
        record.flags = static_cast<std::uint16_t>(record.flags & ~unsigned{kLocaleBinarySort});
    }

    SortBuilder sort;
};

// The sort is compared in the members for bytes, 16-bit and packed text, which must agree.
class SortedLatin {
  public:
    explicit SortedLatin(SortBuilder order = latinSort(), const Pairs& upper = {})
        : locale(latinPage(), std::move(order), upper)
    {
    }

    std::int32_t compare(const std::string& first, const std::string& second,
                         std::uint32_t options = 0)
    {
        locale.record.lastError = kUntouchedError;
        const std::int32_t result = TSStrcoll(locale.handle(), first.data(), lengthOf(first),
                                              second.data(), lengthOf(second), options);
        const auto units1 = unitsOf<TSChar16>(first);
        const auto units2 = unitsOf<TSChar16>(second);
        EXPECT_EQ(TSStrcollU(locale.handle(), units1.data(), lengthOf(first), units2.data(),
                             lengthOf(second), options),
                  result);
        const auto packed1 = unitsOf<TSChar32>(first);
        const auto packed2 = unitsOf<TSChar32>(second);
        EXPECT_EQ(TSWcscoll(locale.handle(), packed1.data(), lengthOf(first), packed2.data(),
                            lengthOf(second), options),
                  result);
        EXPECT_EQ(TSStrcollEx(locale.handle(), first.data(), 1, lengthOf(first), second.data(), 0,
                              lengthOf(second), options),
                  result)
            << "the page has no states";
        EXPECT_EQ(locale.record.lastError, kUntouchedError);
        EXPECT_TRUE(memory.allGivenBack());
        return result;
    }

    // The key as hex, which must be the same in all members.
    std::string key(const std::string& text, std::uint32_t options = 0)
    {
        char buffer[300];
        const std::int32_t size =
            TSStrxfrm(locale.handle(), buffer, sizeof buffer, text.data(), lengthOf(text), options);
        const std::string result = hex(buffer, size);
        const auto units = unitsOf<TSChar16>(text);
        EXPECT_EQ(hex(buffer, TSStrxfrmU(locale.handle(), buffer, sizeof buffer, units.data(),
                                         lengthOf(text), options)),
                  result);
        const auto packed = unitsOf<TSChar32>(text);
        EXPECT_EQ(hex(buffer, TSWcsxfrm(locale.handle(), buffer, sizeof buffer, packed.data(),
                                        lengthOf(text), options)),
                  result);
        EXPECT_TRUE(memory.allGivenBack());
        return result;
    }

    static std::int32_t lengthOf(const std::string& text)
    {
        return static_cast<std::int32_t>(text.size());
    }
    // The page has Latin-1 values, which are their own Unicode values and packed values.
    template <class Unit>
    static std::vector<Unit> unitsOf(const std::string& text)
    {
        std::vector<Unit> units;
        for (const char byte : text)
            units.push_back(static_cast<std::uint8_t>(byte));
        units.push_back(0);
        return units;
    }
    static std::string hex(const char* bytes, std::int32_t size)
    {
        constexpr char kDigits[] = "0123456789ABCDEF";
        std::string text;
        for (std::int32_t i = 0; i < size; ++i) {
            const auto byte = static_cast<std::uint8_t>(bytes[i]);
            if (i > 0)
                text += ' ';
            text += kDigits[byte >> 4];
            text += kDigits[byte & 15];
        }
        return text;
    }

    WorkingMemory memory;
    SortLocale locale;
};

} // namespace vlx::test
