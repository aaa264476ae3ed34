// Random translations between random code pages of every shape, compared with the oracle: result,
// count, error and every byte of the output, those past the size included.
#include <random>

#include "facade/facade_fixture.hpp"
#include "facade/oracle_translate.hpp"
#include "support/page_builder.hpp"

namespace vlx::test {
namespace {

using Random = std::mt19937_64;

constexpr int kCalls = 110000;
constexpr unsigned char kFill = 0x5A;
constexpr std::size_t kArea = 2048; // room for twice the size, and for all of a text

// A side of a call: its id, the oracle's view, and what texts are made of.
struct Party {
    std::uint32_t id = 1200;
    std::optional<oracle::Page> page;
    PageBuilder* builder = nullptr;

    oracle::Side side() const { return page ? &*page : nullptr; }
};

class TranslateRandom : public FacadeTest {
  protected:
    TranslateRandom()
    {
        LocaleDirectory directory;
        directory.add(LanguageSpec{1, "English", 1, 100, 0}).add(TerritorySpec{.id = 1});
        std::vector<PageBuilder> pages;
        for (const PageShape shape : kPageShapes)
            for (int i = 0; i < (shape == PageShape::kUtf8 ? 1 : 3); ++i)
                builders_.push_back(randomPage(random_, shape));
        parties_.emplace_back();
        for (std::size_t i = 0; i < builders_.size(); ++i) {
            PageBuilder& page = builders_[i];
            const bool utf8 = page.shape() == PageShape::kUtf8;
            const auto id = static_cast<std::uint16_t>(utf8 ? 57352 : 100 + i);
            page.id(id).build();
            directory.add("P" + std::to_string(i), page);
            oracle::Page view{id, {}};
            for (std::size_t section = 0; section < 4; ++section)
                view.sections[section] =
                    oracle::Span(page.sections()[section].data(), page.sections()[section].size());
            parties_.push_back({id, view, &page});
        }
        start(directory);
    }

    std::uint32_t below(std::uint32_t limit)
    {
        return static_cast<std::uint32_t>(random_() % limit);
    }

    const Party& anyParty()
    {
        return parties_[below(3) == 0 ? 0 : below(static_cast<std::uint32_t>(parties_.size()))];
    }

    void addUnit(oracle::Bytes& text, std::uint16_t value)
    {
        unsigned char bytes[2];
        std::memcpy(bytes, &value, 2);
        text.insert(text.end(), bytes, bytes + 2);
    }

    // A value that some page of the call knows.
    std::uint16_t knownValue(const Party& party)
    {
        const auto& encoded = party.builder ? party.builder->encoded() : builders_[0].encoded();
        if (encoded.empty() || below(6) == 0)
            return static_cast<std::uint16_t>(random_());
        auto at = encoded.begin();
        std::advance(at, static_cast<long>(below(static_cast<std::uint32_t>(encoded.size()))));
        return at->first;
    }

    oracle::Bytes randomText(const Party& source, const Party& target)
    {
        oracle::Bytes text;
        for (std::uint32_t i = below(12) == 0 ? below(150) : below(14); i > 0; --i) {
            const std::uint16_t value = knownValue(below(2) == 0 ? source : target);
            if (!source.page) {
                addUnit(text, value);
            } else if (below(8) == 0) {
                text.push_back(static_cast<unsigned char>(random_()));
            } else {
                const oracle::Bytes bytes = oracle::unicodeToMb(*source.page, value);
                if (oracle::isStateful(*source.page) && below(3) == 0)
                    text.push_back(static_cast<unsigned char>(
                        bytes.size() > 1 ? oracle::shiftIn(*source.page)
                                         : oracle::shiftOut(*source.page)));
                text.insert(text.end(), bytes.begin(), bytes.end());
            }
        }
        for (std::uint32_t i = below(3) == 0 ? below(6) : 0; i > 0; --i) { // blanks at the end
            if (!source.page)
                addUnit(text, 0x20);
            else
                text.push_back(oracle::unicodeToMb(*source.page, 0x20)[0]);
        }
        return text;
    }

    std::uint32_t randomOptions()
    {
        static constexpr std::uint32_t kBits[] = {8, 0x4000, 0x400000, 0x800000};
        std::uint32_t options = below(60) == 0 ? 1u << below(32) : 0;
        for (const std::uint32_t bit : kBits)
            if (below(2) == 0)
                options |= bit;
        return options;
    }

    bool compare(const Party& source, const Party& target);

    Random random_{10300};
    std::vector<PageBuilder> builders_;
    std::vector<Party> parties_;
};

bool TranslateRandom::compare(const Party& source, const Party& target)
{
    oracle::Bytes text = randomText(source, target);
    const bool terminated = below(3) == 0;
    auto length = static_cast<std::int32_t>(text.size());
    if (terminated) {
        length = -1 - static_cast<std::int32_t>(below(3));
        text.insert(text.end(), source.page ? 1u : 2u, 0);
    } else if (below(3) == 0) {
        length = static_cast<std::int32_t>(below(static_cast<std::uint32_t>(length) + 1));
    }
    const auto size = static_cast<std::int32_t>(below(4) == 0   ? below(60)
                                                : below(8) == 0 ? below(500)
                                                                : below(20));
    const std::uint32_t options = randomOptions();
    oracle::Bytes wanted(kArea, kFill);
    oracle::Translated reference;
    try {
        reference = oracle::translate(target.side(), wanted, size, source.side(),
                                      oracle::Span(text), length, options);
    } catch (const oracle::StrayRead&) {
        return false;
    }
    const auto exact = std::make_unique<unsigned char[]>(text.size()); // its end is watched
    std::copy(text.begin(), text.end(), exact.get());
    oracle::Bytes output(kArea, kFill);
    std::uint32_t consumed = 4711;
    std::uint32_t error = 4711;
    const std::int32_t result = NLS1_TranslateString(
        target.id, output.data(), size, source.id, exact.get(), length, &consumed, options, &error);
    EXPECT_EQ(result, reference.result);
    EXPECT_EQ(error, reference.error);
    EXPECT_EQ(consumed,
              reference.consumed < 0 ? 4711u : static_cast<std::uint32_t>(reference.consumed));
    EXPECT_EQ(output, wanted);
    if (HasFailure())
        ADD_FAILURE() << source.id << " to " << target.id << ", size " << size << ", length "
                      << length << std::hex << ", options " << options << ", text "
                      << testing::PrintToString(text);
    return true;
}

TEST_F(TranslateRandom, AgreesWithTheOracle)
{
    int defined = 0;
    for (int calls = 0; defined < kCalls && !HasFailure(); ++calls) {
        ASSERT_LT(calls, 3 * kCalls);
        defined += compare(anyParty(), anyParty());
    }
}

} // namespace
} // namespace vlx::test
