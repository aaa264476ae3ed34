// Line ends against the oracle, on random pages with random line ends.
#include "convert/conversions.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t kNoState = 77;
constexpr std::uint32_t kMasks[] = {TS_EOL_LF, TS_EOL_CRLF, TS_EOL_3, TS_EOL_4};

// Pages of every shape whose line ends are left to chance: different ones, equal ones, and some
// that are lead bytes.
std::vector<Sample>& lineEndSamples()
{
    static std::vector<PageBuilder> pages = [] {
        std::vector<PageBuilder> made;
        Random random(20260706);
        const auto any = [&](const PageBuilder& page) {
            std::uint8_t byte = 0;
            while (byte == 0 || byte == page.shiftIn() || byte == page.shiftOut())
                byte = static_cast<std::uint8_t>(random() % 8 == 0 ? random() : random() % 0x40);
            return byte;
        };
        for (int i = 0; i < 6; ++i) {
            for (const PageShape shape : kPageShapes) {
                PageBuilder page = randomPage(random, shape);
                const std::uint8_t third = any(page);
                page.lineEnds(any(page), any(page), third, i % 3 == 0 ? third : any(page)).build();
                made.push_back(std::move(page));
            }
        }
        return made;
    }();
    static std::vector<Sample> samples = [] {
        std::vector<Sample> made;
        for (PageBuilder& page : pages)
            made.push_back({&page, oracleLocale(page), {}, {}});
        return made;
    }();
    return samples;
}

std::uint32_t anyLineEnds(Random& random)
{
    if (random() % 32 == 0)
        return static_cast<std::uint32_t>(random());
    std::uint32_t options = random() % 4 == 0 ? TS_OPT_CHAR_COUNT : 0;
    if (random() % 4 == 0)
        return options | kMasks[random() % 4];
    for (const std::uint32_t mask : kMasks)
        options |= random() % 2 == 0 ? mask : 0;
    if ((options & 0xF00) == 0xF00 && random() % 4 == 0)
        options |= static_cast<std::uint32_t>(random());
    return options;
}

std::vector<std::uint32_t> lineEndsOf(const Sample& sample)
{
    const oracle::Span header = sample.reference.page.sections[0];
    return {header.at(1), header.at(2), header.at(3), header.at(4)};
}

template <class Unit>
void addLineEnds(Random& random, std::vector<Unit>& text, const std::vector<std::uint32_t>& chars)
{
    for (std::int32_t count = pick(random, 0, 4); count > 0; --count) {
        const auto at = static_cast<std::ptrdiff_t>(random() % (text.size() + 1));
        text.insert(text.begin() + at, static_cast<Unit>(chars[random() % 4]));
        if (random() % 3 == 0)
            text.insert(text.begin() + at, static_cast<Unit>(chars[1]));
    }
}

template <class Unit>
std::int32_t anyLength(Random& random, const std::vector<Unit>& text)
{
    const bool isTerminated = std::find(text.begin(), text.end(), Unit{0}) != text.end();
    if (isTerminated && random() % 2 == 0)
        return -1;
    return pick(random, 0, static_cast<std::int32_t>(text.size()));
}

// Where a search happens.
struct Search {
    Random& random;
    Party& party;
    oracle::Bytes text;
    oracle::Units units;
    std::int32_t length;
    std::int32_t state;
    std::uint32_t options;
    GuardedArea& area;

    // What the library does, in the oracle's terms.
    template <class Unit, class Call>
    oracle::LineEnd run(const std::vector<Unit>& string, Call call)
    {
        const Unit* const begin = area.place(string, GuardedArea::Guard::kAbove);
        oracle::LineEnd lineEnd{std::nullopt, 4711, 4711, std::nullopt, 0};
        std::int32_t newState = kNoState;
        const Unit* const behind = call(begin, lineEnd, newState);
        if (behind != nullptr)
            lineEnd.behind = behind - begin;
        if (newState != kNoState)
            lineEnd.state = newState;
        lineEnd.error = party.record.lastError;
        return lineEnd;
    }
};

using SearchCheck = bool (*)(Search& search);

void searchEverywhere(SearchCheck check)
{
    GuardedArea area;
    Random random(20260707);
    int calls = 0;
    for (int tries = 0; calls < kWantedCalls && tries < 10 * kWantedCalls; ++tries) {
        const Sample& sample = lineEndSamples()[random() % lineEndSamples().size()];
        Party party(sample);
        Search search{random,
                      party,
                      randomText(random, *sample.page),
                      {},
                      0,
                      pick(random, 0, 1),
                      anyLineEnds(random),
                      area};
        addLineEnds(random, search.text, lineEndsOf(sample));
        search.units.assign(search.text.begin(), search.text.end());
        addLineEnds(random, search.units, {0x0A, 0x0D, 0x2028, 0x2029});
        party.handle = &party.record;
        if (random() % 8 == 0) {
            tsDefaultLocale = &party.record;
            party.handle = nullptr;
        }
        calls += check(search) ? 1 : 0;
        tsDefaultLocale = nullptr;
        ASSERT_FALSE(testing::Test::HasFailure())
            << "shape " << static_cast<int>(sample.page->shape()) << ", shifts "
            << +sample.page->shiftIn() << ' ' << +sample.page->shiftOut() << ", line ends "
            << testing::PrintToString(lineEndsOf(sample)) << ", text "
            << testing::PrintToString(search.text) << ", units "
            << testing::PrintToString(search.units) << ", length " << search.length << ", state "
            << search.state << std::hex << ", options 0x" << search.options;
    }
    EXPECT_GE(calls, kWantedCalls) << "too few of the calls were well defined";
}

TEST(LineEndsAgainstOracle, TSGetEol)
{
    searchEverywhere([](Search& s) {
        s.length = anyLength(s.random, s.text);
        const auto wanted = wellDefined([&] {
            return oracle::getEol(s.party.reference(), {oracle::Span(s.text), 0, s.length},
                                  s.options);
        });
        if (wanted) {
            EXPECT_EQ(s.run(s.text,
                            [&](const unsigned char* begin, oracle::LineEnd& out, std::int32_t&) {
                                return reinterpret_cast<const unsigned char*>(
                                    TSGetEol(s.party.handle, reinterpret_cast<const char*>(begin),
                                             s.length, &out.type, &out.length, s.options));
                            }),
                      *wanted);
        }
        return wanted.has_value();
    });
}

TEST(LineEndsAgainstOracle, TSGetEolEx)
{
    searchEverywhere([](Search& s) {
        s.length = anyLength(s.random, s.text);
        const auto wanted = wellDefined([&] {
            return oracle::getEolEx(s.party.reference(), {oracle::Span(s.text), s.state, s.length},
                                    s.options);
        });
        if (wanted) {
            EXPECT_EQ(s.run(s.text,
                            [&](const unsigned char* begin, oracle::LineEnd& out,
                                std::int32_t& newState) {
                                return reinterpret_cast<const unsigned char*>(TSGetEolEx(
                                    s.party.handle, reinterpret_cast<const char*>(begin), s.state,
                                    s.length, &out.type, &out.length, &newState, s.options));
                            }),
                      *wanted);
        }
        return wanted.has_value();
    });
}

TEST(LineEndsAgainstOracle, TSGetEolU)
{
    searchEverywhere([](Search& s) {
        s.length = anyLength(s.random, s.units);
        const auto wanted = wellDefined([&] {
            return oracle::getEolU({s.units, s.length}, s.options);
        });
        const std::vector<TSChar16> units(s.units.begin(), s.units.end());
        if (wanted) {
            EXPECT_EQ(s.run(units,
                            [&](const TSChar16* begin, oracle::LineEnd& out, std::int32_t&) {
                                return TSGetEolU(s.party.handle, begin, s.length, &out.type,
                                                 &out.length, s.options);
                            }),
                      *wanted);
        }
        return wanted.has_value();
    });
}

TEST(LineEndsAgainstOracle, TSGetEolW)
{
    searchEverywhere([](Search& s) {
        s.length = anyLength(s.random, s.units);
        const auto wanted = wellDefined([&] {
            return oracle::getEolW(s.party.reference(), {s.units, s.length}, s.options);
        });
        if (wanted) {
            EXPECT_EQ(s.run(s.units,
                            [&](const TSChar32* begin, oracle::LineEnd& out, std::int32_t&) {
                                return TSGetEolW(s.party.handle, begin, s.length, &out.type,
                                                 &out.length, s.options);
                            }),
                      *wanted);
        }
        return wanted.has_value();
    });
}

// Every set of masks, some of them with a bit that is refused.
std::vector<std::uint32_t> everyPutOptions()
{
    std::vector<std::uint32_t> all;
    for (std::uint32_t masks = 0; masks < 0x20; ++masks) {
        all.push_back(masks << 8);
        for (std::uint32_t bit = 0; bit < 32; ++bit)
            all.push_back(masks << 8 | 1U << bit);
    }
    return all;
}

// Compares what a call has written with the oracle; `call` returns the place behind it.
template <class Unit, class Call>
void comparePut(Party& party, GuardedArea& area, const oracle::LineEndsPut& wanted,
                std::uint32_t options, Call call)
{
    std::vector<Unit> content(wanted.written.size(), Unit{0x5A});
    Unit* const output = area.place(content, GuardedArea::Guard::kAbove);
    party.record.lastError = kUntouchedError;
    std::int32_t newState = kNoState;
    const Unit* const behind = call(output, newState);
    for (std::size_t i = 0; i < content.size(); ++i)
        content[i] = static_cast<Unit>(wanted.written[i]);
    ASSERT_EQ(behind, wanted.isNull ? nullptr : output + content.size()) << options;
    ASSERT_TRUE(area.holds(content)) << options;
    ASSERT_EQ(party.record.lastError, wanted.error) << options;
    ASSERT_EQ(newState, wanted.state.value_or(kNoState)) << options;
}

TEST(LineEndsAgainstOracle, TSPutEolInEveryForm)
{
    GuardedArea area;
    for (const Sample& sample : lineEndSamples()) {
        Party party(sample);
        const auto asBytes = [](char* text) { return reinterpret_cast<unsigned char*>(text); };
        for (const std::uint32_t options : everyPutOptions()) {
            comparePut<unsigned char>(party, area, oracle::putEol(sample.reference, options),
                                      options, [&](unsigned char* output, std::int32_t&) {
                                          return asBytes(TSPutEol(&party.record,
                                                                  reinterpret_cast<char*>(output),
                                                                  options));
                                      });
            for (const std::int32_t state : {0, 1, 2, -1})
                comparePut<unsigned char>(
                    party, area, oracle::putEolEx(sample.reference, state, options), options,
                    [&](unsigned char* output, std::int32_t& newState) {
                        return asBytes(TSPutEolEx(&party.record, reinterpret_cast<char*>(output),
                                                  state, &newState, options));
                    });
            comparePut<TSChar16>(party, area, oracle::putEolU(options), options,
                                 [&](TSChar16* output, std::int32_t&) {
                                     return TSPutEolU(&party.record, output, options);
                                 });
            comparePut<TSChar32>(party, area, oracle::putEolW(sample.reference, options), options,
                                 [&](TSChar32* output, std::int32_t&) {
                                     return TSPutEolW(&party.record, output, options);
                                 });
            if (HasFailure())
                return;
        }
    }
}

} // namespace
} // namespace vlx::test
