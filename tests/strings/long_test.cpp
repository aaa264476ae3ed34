// Long texts against the oracle: counting, finding, spans and copies, which walk in runs and look
// at many characters at a time.
#include <algorithm>
#include <array>

#include "chars/long_texts.hpp"
#include "strings/guarded_area.hpp"
#include "support/oracle_strings.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

constexpr int kTexts = 4000;

class LongStrings : public testing::Test {
  protected:
    struct Text {
        oracle::Bytes bytes;
        std::int32_t length;
        const char* string;

        oracle::Text text() const { return {oracle::Span(bytes), 0, length}; }
    };

    void chooseScene()
    {
        on_ = &longPages()[random_() % longPages().size()];
        locale_ = localeOn(on_->page.object());
    }

    template <class Unit>
    std::int32_t anyLength(const std::vector<Unit>& text)
    {
        const auto all = static_cast<std::int32_t>(text.size());
        if (!text.empty() && text.back() == 0 && random_() % 3 == 0)
            return -1;
        return random_() % 2 == 0 ? all : pick(random_, 0, all);
    }

    Text anyText(std::int32_t most)
    {
        Text text{longText(random_, *on_, 0, pick(random_, 0, most)), 0, nullptr};
        text.length = anyLength(text.bytes);
        text.string = reinterpret_cast<const char*>(
            areas_[0].place(text.bytes, random_() % 2 == 0 ? GuardedArea::Guard::kAbove
                                                           : GuardedArea::Guard::kBelow));
        return text;
    }

    // A character of the text or of the page, with as much behind it as may be read.
    oracle::Bytes anyCharacter(const oracle::Bytes& text)
    {
        oracle::Bytes character = on_->characters[random_() % on_->characters.size()];
        if (!text.empty() && random_() % 2 == 0)
            character.assign(text.begin() +
                                 pick(random_, 0, static_cast<std::int32_t>(text.size()) - 1),
                             text.end());
        character.resize(4);
        return character;
    }

    Random random_{20261122};
    LongPage* on_ = nullptr;
    TSLocale locale_{};
    std::array<GuardedArea, 2> areas_;
    int calls_ = 0;
};

TEST_F(LongStrings, AreCountedAsTheOracleCounts)
{
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        chooseScene();
        const Text text = anyText(300);
        const auto wanted = wellDefined([&] {
            return oracle::numChars(on_->reference, oracle::Span(text.bytes), text.length);
        });
        if (!wanted)
            continue;
        EXPECT_EQ(TSNumChars(&locale_, text.string, text.length, 0), *wanted);
        ++calls_;
    }
    EXPECT_GT(calls_, kTexts / 2);
}

TEST_F(LongStrings, AreSearchedAsTheOracleSearches)
{
    constexpr std::uint32_t kOptions[] = {0, TS_OPT_LAST_MATCH, TS_OPT_CHAR_COUNT};
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        chooseScene();
        const Text text = anyText(300);
        const oracle::Bytes character = anyCharacter(text.bytes);
        const auto* const sought =
            reinterpret_cast<const char*>(areas_[1].place(character, GuardedArea::Guard::kAbove));
        for (const std::uint32_t options : kOptions) {
            const auto wanted = wellDefined([&] {
                return oracle::find(on_->reference, text.text(), oracle::Span(character), options);
            });
            if (!wanted)
                continue;
            const char* const found = TSStrchr(&locale_, text.string, text.length, sought, options);
            EXPECT_EQ(found == nullptr, !wanted->position.has_value());
            if (found && wanted->position) {
                EXPECT_EQ(found - text.string, *wanted->position);
            }
            ++calls_;
        }
    }
    EXPECT_GT(calls_, kTexts);
}

TEST_F(LongStrings, HaveTheSpansOfTheOracle)
{
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        chooseScene();
        const Text text = anyText(120);
        // Most of the characters of the text, so that spans are long.
        oracle::Bytes set = text.bytes;
        if (random_() % 2 == 0 && !set.empty())
            set.resize(1 + random_() % set.size());
        const auto* const setString =
            reinterpret_cast<const char*>(areas_[1].place(set, GuardedArea::Guard::kAbove));
        const oracle::Text setText{oracle::Span(set), 0, static_cast<std::int32_t>(set.size())};
        for (const auto members : {oracle::Members::kIn, oracle::Members::kNotIn}) {
            const auto wanted = wellDefined(
                [&] { return oracle::span(on_->reference, members, text.text(), setText, 0); });
            if (!wanted)
                continue;
            const auto call = members == oracle::Members::kIn ? TSStrspn : TSStrcspn;
            EXPECT_EQ(call(&locale_, text.string, text.length, setString, setText.length, 0),
                      wanted->result);
            ++calls_;
        }
    }
    EXPECT_GT(calls_, kTexts);
}

// Spans that end where the text does or at one character, by a set of all others.
TEST_F(LongStrings, HaveLongSpans)
{
    constexpr std::int32_t kMost = 1500;
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        LongPage& on = longPages()[random_() % 2]; // of single bytes
        TSLocale locale = localeOn(on.page.object());
        const oracle::Bytes text = longText(random_, on, 0, pick(random_, 0, kMost));
        oracle::Bytes set = text;
        std::sort(set.begin(), set.end());
        set.erase(std::unique(set.begin(), set.end()), set.end());
        if (!set.empty() && random_() % 2 == 0)
            set.erase(set.begin() + pick(random_, 0, static_cast<std::int32_t>(set.size()) - 1));
        const std::vector<TSChar16> units(text.begin(), text.end());
        std::vector<TSChar16> unitSet(set.begin(), set.end());
        if (random_() % 4 == 0)
            unitSet.push_back(0x2014);
        oracle::Bytes others; // for the span of what is not in a set
        for (int byte = 0; byte < 0x100; ++byte)
            if (std::find(set.begin(), set.end(), byte) == set.end())
                others.push_back(static_cast<unsigned char>(byte));
        const auto length = static_cast<std::int32_t>(text.size());
        std::int32_t wanted = 0;
        while (wanted < length && std::find(set.begin(), set.end(),
                                            text[static_cast<std::size_t>(wanted)]) != set.end())
            ++wanted;
        const auto* const string =
            reinterpret_cast<const char*>(areas_[0].place(text, GuardedArea::Guard::kAbove));
        const auto asChars = [](const oracle::Bytes& bytes) {
            return reinterpret_cast<const char*>(bytes.data());
        };
        EXPECT_EQ(TSStrspn(&locale, string, length, asChars(set),
                           static_cast<std::int32_t>(set.size()), 0),
                  wanted);
        EXPECT_EQ(TSStrcspn(&locale, string, length, asChars(others),
                            static_cast<std::int32_t>(others.size()), 0),
                  wanted);
        const TSChar16* const unitString = areas_[1].place(units, GuardedArea::Guard::kAbove);
        EXPECT_EQ(TSStrspnU(&locale, unitString, length, unitSet.data(),
                            static_cast<std::int32_t>(unitSet.size())),
                  wanted);
    }
}

TEST_F(LongStrings, AreCopiedAsTheOracleCopies)
{
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        chooseScene();
        const Text text = anyText(200);
        const std::int32_t size = pick(random_, 0, 210);
        oracle::Bytes wantedBytes(static_cast<std::size_t>(size), 0x5A);
        auto* const destination =
            reinterpret_cast<char*>(areas_[1].place(wantedBytes, GuardedArea::Guard::kAbove));
        const auto wanted = wellDefined(
            [&] { return oracle::copy(on_->reference, wantedBytes, size, text.text(), 0); });
        if (!wanted)
            continue;
        EXPECT_EQ(TSStrcpy(&locale_, destination, size, text.string, text.length, 0),
                  wanted->result);
        EXPECT_TRUE(areas_[1].holds(wantedBytes));
        ++calls_;
    }
    EXPECT_GT(calls_, kTexts / 2);
}

TEST_F(LongStrings, OfUnitsAreSearchedAndMeasuredAsByTheOracle)
{
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        chooseScene();
        const std::vector<TSChar16> units = longUnits(random_, *on_, pick(random_, 0, 200));
        const std::int32_t length = anyLength(units);
        const TSChar16* const string = areas_[0].place(
            units, random_() % 2 == 0 ? GuardedArea::Guard::kAbove : GuardedArea::Guard::kBelow);
        const oracle::Units all(units.begin(), units.end());
        const auto value = static_cast<TSChar16>(
            units.empty() || random_() % 4 == 0 ? random_() : units[random_() % units.size()]);
        for (const std::uint32_t options : {std::uint32_t{0}, std::uint32_t{TS_OPT_LAST_MATCH}}) {
            const auto wanted =
                wellDefined([&] { return oracle::findUnits(all, length, value, options); });
            if (!wanted)
                continue;
            const TSChar16* const found = TSStrchrU(&locale_, string, length, value, options);
            EXPECT_EQ(found == nullptr, !wanted->position.has_value());
            if (found && wanted->position) {
                EXPECT_EQ(found - string, *wanted->position);
            }
            ++calls_;
        }
        std::vector<TSChar16> set = units;
        if (random_() % 2 == 0 && !set.empty())
            set.resize(1 + random_() % set.size());
        const TSChar16* const setUnits = areas_[1].place(set, GuardedArea::Guard::kAbove);
        const auto setLength = static_cast<std::int32_t>(set.size());
        const oracle::Units wantedSet(set.begin(), set.end());
        for (const auto members : {oracle::Members::kIn, oracle::Members::kNotIn}) {
            const auto wanted = wellDefined(
                [&] { return oracle::spanUnits(members, all, length, wantedSet, setLength); });
            if (!wanted)
                continue;
            const auto call = members == oracle::Members::kIn ? TSStrspnU : TSStrcspnU;
            EXPECT_EQ(call(&locale_, string, length, setUnits, setLength), wanted->result);
            ++calls_;
        }
    }
    EXPECT_GT(calls_, 3 * kTexts);
}

} // namespace
} // namespace vlx::test
