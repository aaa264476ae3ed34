// Comparison of long texts with copies of them in which little is changed, against the oracle.
#include "chars/long_texts.hpp"
#include "compare/memory.hpp"
#include "compare/oracle_compare.hpp"
#include "mapstr/language.hpp"
#include "strings/guarded_area.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

constexpr int kTexts = 6000;
constexpr std::uint32_t kOptions[] = {
    0, 0, TS_OPT_IGNORE_CASE, TS_OPT_IGNORE_CASE, TS_OPT_STRIP_BLANKS, TS_OPT_CHAR_COUNT};

// The letters of some run in the other case, and now and then a byte changed, added or taken away.
oracle::Bytes variantOf(Random& random, const oracle::Bytes& text)
{
    oracle::Bytes variant = text;
    const std::uint64_t begin = random() % (text.size() + 1);
    for (std::size_t i = begin; i < variant.size() && random() % 40 != 0; ++i)
        if ((variant[i] | 0x20) >= 'a' && (variant[i] | 0x20) <= 'z' && random() % 2 == 0)
            variant[i] ^= 0x20;
    if (variant.empty() || random() % 3 == 0)
        return variant;
    const auto at =
        variant.begin() + pick(random, 0, static_cast<std::int32_t>(variant.size()) - 1);
    switch (random() % 3) {
    case 0:
        *at = static_cast<unsigned char>(random());
        break;
    case 1:
        variant.insert(at, static_cast<unsigned char>(random()));
        break;
    default:
        variant.erase(at, variant.end() -
                              pick(random, 0, static_cast<std::int32_t>(variant.end() - at)));
    }
    return variant;
}

TEST(LongComparisons, AreThoseOfTheOracle)
{
    Random random(20261124);
    GuardedArea areas[2];
    int calls = 0;
    for (int i = 0; i < kTexts && !testing::Test::HasFailure(); ++i) {
        LongPage& on = longPages()[random() % longPages().size()];
        oracle::Language pairs;
        if (random() % 2 == 0)
            pairs.upper.push_back({0xDF, 0, 'S', 'S'});
        if (random() % 4 == 0)
            pairs.upper.push_back({'a', 'e', 0xC4, 0});
        TestLanguage language(pairs.upper, pairs.lower);
        TSLocale locale = localeOn(on.page.object());
        locale.language = &language.object();
        const oracle::Bytes first = longText(random, on, 0, pick(random, 0, 120));
        const oracle::Bytes second = variantOf(random, first);
        const auto lengthOf = [&](const oracle::Bytes& text) {
            const auto all = static_cast<std::int32_t>(text.size());
            if (!text.empty() && text.back() == 0 && random() % 2 == 0)
                return -1;
            return random() % 2 == 0 ? all : pick(random, std::max(all - 3, 0), all);
        };
        const oracle::Text text1{oracle::Span(first), 0, lengthOf(first)};
        const oracle::Text text2{oracle::Span(second), 0, lengthOf(second)};
        const std::uint32_t options = kOptions[random() % std::size(kOptions)];
        const WorkingMemory memory(random() % 16 == 0);
        const oracle::Comparison comparison{on.reference, pairs, !memory.fails()};
        const auto wanted = wellDefined([&] { return comparison.plain(text1, text2, options); });
        if (!wanted)
            continue;
        const auto* const string1 =
            reinterpret_cast<const char*>(areas[0].place(first, GuardedArea::Guard::kAbove));
        const auto* const string2 =
            reinterpret_cast<const char*>(areas[1].place(second, GuardedArea::Guard::kAbove));
        EXPECT_EQ(TSStrcmp(&locale, string1, text1.length, string2, text2.length, options),
                  wanted->result)
            << "lengths " << text1.length << ' ' << text2.length << ", options " << options;
        EXPECT_EQ(locale.lastError, wanted->error);
        EXPECT_TRUE(memory.allGivenBack());
        ++calls;
    }
    EXPECT_GT(calls, kTexts / 2);
}

} // namespace
} // namespace vlx::test
