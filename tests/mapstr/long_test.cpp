// Mapping of long texts against the oracle, with and without the pairs of a language.
#include "chars/long_texts.hpp"
#include "mapstr/language.hpp"
#include "mapstr/oracle_mapstr.hpp"
#include "strings/guarded_area.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

constexpr int kTexts = 4000;
constexpr std::uint32_t kMappings[] = {
    TS_MAP_UPPER,
    TS_MAP_LOWER,
    TS_MAP_UPPER | TS_MAP_SIMPLE,
    TS_MAP_LOWER | TS_MAP_SIMPLE,
};

class LongMappings : public testing::Test {
  protected:
    // No pairs, the pair of sharp s, or pairs of letters that texts have.
    void choosePairs(const LongPage& on)
    {
        pairs_ = {};
        const std::uint64_t kind = random_() % 3;
        if (kind > 0)
            pairs_.upper.push_back({0xDF, 0, 'S', 'S'});
        for (auto* table : {&pairs_.upper, &pairs_.lower}) {
            for (int i = 0; kind == 2 && i < 4; ++i) {
                const auto letter = [&] {
                    return static_cast<std::uint16_t>(
                        random_() % 2 == 0 ? 0x40 + random_() % 0x40
                                           : on.unicode[random_() % on.unicode.size()]);
                };
                table->push_back({letter(), random_() % 2 == 0 ? letter() : std::uint16_t{0},
                                  letter(), random_() % 2 == 0 ? letter() : std::uint16_t{0}});
            }
        }
        language_ = TestLanguage(pairs_.upper, pairs_.lower);
    }

    Random random_{20261123};
    oracle::Language pairs_;
    TestLanguage language_;
    GuardedArea source_;
    GuardedArea destination_;
    int calls_ = 0;
};

TEST_F(LongMappings, OfBytes)
{
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        LongPage& on = longPages()[random_() % longPages().size()];
        choosePairs(on);
        TSLocale locale = localeOn(on.page.object());
        locale.language = &language_.object();
        const oracle::Bytes text = longText(random_, on, 0, pick(random_, 0, 160));
        const auto length = static_cast<std::int32_t>(text.size());
        const std::uint32_t mapping = kMappings[random_() % std::size(kMappings)];
        const std::int32_t size = random_() % 2 == 0 ? 2 * length + 8 : pick(random_, 0, length);
        oracle::Bytes wantedBytes(static_cast<std::size_t>(size), 0xCD);
        auto* const destination =
            reinterpret_cast<char*>(destination_.place(wantedBytes, GuardedArea::Guard::kAbove));
        const auto wanted = wellDefined([&] {
            return oracle::mapString(on.reference, pairs_, wantedBytes, size,
                                     {oracle::Span(text), 0, length}, mapping);
        });
        if (!wanted)
            continue;
        const auto* const source =
            reinterpret_cast<const char*>(source_.place(text, GuardedArea::Guard::kAbove));
        EXPECT_EQ(TSMapString(&locale, destination, size, source, length, mapping), wanted->result);
        EXPECT_TRUE(destination_.holds(wantedBytes));
        ++calls_;
    }
    EXPECT_GT(calls_, kTexts / 2);
}

TEST_F(LongMappings, OfUnits)
{
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        LongPage& on = longPages()[random_() % longPages().size()];
        choosePairs(on);
        TSLocale locale = localeOn(on.page.object());
        locale.language = &language_.object();
        const std::vector<TSChar16> units = longUnits(random_, on, pick(random_, 0, 160));
        const auto length = static_cast<std::int32_t>(units.size());
        const std::uint32_t mapping = kMappings[random_() % std::size(kMappings)];
        const std::int32_t size = random_() % 2 == 0 ? 2 * length + 8 : pick(random_, 0, length);
        std::vector<TSChar16> area(static_cast<std::size_t>(size), 0xCD);
        oracle::Units wantedUnits(area.begin(), area.end());
        const auto wanted = wellDefined([&] {
            return oracle::mapStringU(pairs_, wantedUnits, size, {units.begin(), units.end()},
                                      length, mapping);
        });
        if (!wanted)
            continue;
        TSChar16* const destination = destination_.place(area, GuardedArea::Guard::kAbove);
        const TSChar16* const source = source_.place(units, GuardedArea::Guard::kAbove);
        EXPECT_EQ(TSMapStringU(&locale, destination, size, source, length, mapping),
                  wanted->result);
        for (std::size_t at = 0; at < area.size(); ++at)
            area[at] = static_cast<TSChar16>(wantedUnits[at]);
        EXPECT_TRUE(destination_.holds(area));
        ++calls_;
    }
    EXPECT_GT(calls_, kTexts / 2);
}

} // namespace
} // namespace vlx::test
