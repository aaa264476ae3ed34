#include "chars/situations.hpp"

#include <gtest/gtest.h>
#include <iomanip>

namespace vlx::test {

namespace {

constexpr int kPagesOfEachShape = 8;
constexpr int kPlacesInText = 8;

const CharBytes& anyLongCharacter(Random& random, const PageBuilder& page)
{
    const auto& known = page.decoded();
    auto entry = known.begin();
    std::advance(entry, pick(random, 0, static_cast<std::int32_t>(known.size()) - 1));
    return entry->first;
}

std::uint8_t anyByte(Random& random)
{
    return static_cast<std::uint8_t>(random());
}

// A three-byte form of UTF-8 or a two-byte one; the first byte alone is kept to the rule.
oracle::Bytes anyUtf8(Random& random)
{
    if (random() % 2 == 0)
        return {static_cast<std::uint8_t>(0xC0 | random() % 0x20), anyByte(random)};
    return {static_cast<std::uint8_t>(0xE0 | random() % 0x10), anyByte(random), anyByte(random)};
}

class TextWriter {
  public:
    TextWriter(Random& random, const PageBuilder& page) : random_(random), page_(page) {}

    oracle::Bytes write()
    {
        for (std::int32_t tokens = pick(random_, 0, 9); tokens > 0; --tokens)
            addToken();
        if (state_ == 1 && random_() % 2 == 0)
            text_.push_back(page_.shiftOut());
        if (random_() % 2 == 0)
            text_.push_back(0);
        return text_;
    }

  private:
    void addToken()
    {
        switch (random_() % 12) {
        case 0:
            text_.push_back(anyByte(random_));
            break;
        case 1:
            if (isStateful(page_.shape()))
                text_.push_back(random_() % 2 == 0 ? page_.shiftIn() : page_.shiftOut());
            break;
        case 2:
            text_.push_back(randomLongCharacter(random_, page_)[0]);
            break;
        case 3:
        case 4:
        case 5:
            enter(0);
            text_.push_back(static_cast<std::uint8_t>(0x20 + random_() % 0x50));
            break;
        default:
            enter(1);
            for (const std::uint8_t byte : randomLongCharacter(random_, page_))
                text_.push_back(byte);
        }
    }

    // Mostly writes the shift byte that the next character needs.
    void enter(int state)
    {
        if (!isStateful(page_.shape()) || state == state_ || random_() % 10 == 0)
            return;
        text_.push_back(state == 1 ? page_.shiftIn() : page_.shiftOut());
        state_ = state;
    }

    Random& random_;
    const PageBuilder& page_;
    int state_ = 0;
    oracle::Bytes text_;
};

} // namespace

oracle::Page oraclePage(const PageBuilder& page)
{
    oracle::Page result;
    result.id = page.object().id;
    for (std::size_t i = 0; i < page.sections().size(); ++i)
        result.sections[i] = oracle::Span(page.sections()[i]);
    return result;
}

oracle::Locale oracleLocale(const PageBuilder& page)
{
    return {oraclePage(page), longestCharacter(page.shape()) == 1, isStateful(page.shape())};
}

std::vector<PageBuilder>& randomPages()
{
    static std::vector<PageBuilder> pages = [] {
        std::vector<PageBuilder> made;
        Random random(20260611);
        for (const PageShape shape : kPageShapes)
            for (int i = 0; i < kPagesOfEachShape; ++i)
                made.push_back(randomPage(random, shape));
        return made;
    }();
    return pages;
}

std::int32_t pick(Random& random, std::int32_t first, std::int32_t last)
{
    return first +
           static_cast<std::int32_t>(random() % static_cast<std::uint64_t>(last - first + 1));
}

TSChar32 randomValue(Random& random)
{
    const TSChar32 value = static_cast<TSChar32>(random()) >> 8 * (random() % 4);
    const TSChar32 limit = TSChar32{1} << 8 * (random() % 4);
    return random() % 4 == 0 ? limit - static_cast<TSChar32>(random() % 2) : value;
}

std::uint32_t randomMapping(Random& random)
{
    if (random() % 4 == 0)
        return static_cast<std::uint32_t>(random());
    return 1U << random() % 32;
}

oracle::Bytes randomLongCharacter(Random& random, const PageBuilder& page)
{
    if (page.shape() == PageShape::kSingleByte)
        return {anyByte(random)};
    if (page.shape() == PageShape::kUtf8)
        return anyUtf8(random);
    if (page.decoded().empty())
        return {anyByte(random), anyByte(random)};
    oracle::Bytes bytes = anyLongCharacter(random, page);
    if (random() % 5 == 0)
        bytes[random() % bytes.size()] = anyByte(random);
    return bytes;
}

oracle::Bytes randomText(Random& random, const PageBuilder& page)
{
    return TextWriter(random, page).write();
}

std::ostream& operator<<(std::ostream& out, const Situation& situation)
{
    out << "shape " << static_cast<int>(situation.page.shape()) << ", shift bytes " << std::hex
        << +situation.page.shiftIn() << ' ' << +situation.page.shiftOut() << ", text";
    for (const unsigned char byte : situation.text)
        out << ' ' << std::setw(2) << std::setfill('0') << +byte;
    return out << std::dec << ", position " << situation.position << ", state " << situation.state;
}

void compareEverywhere(Check check)
{
    GuardedText room;
    Random random(4376);
    int calls = 0;
    for (long tries = 0; calls < kWantedCalls && tries < 10L * kWantedCalls;) {
        for (PageBuilder& page : randomPages()) {
            const oracle::Locale reference = oracleLocale(page);
            TSLocale locale = localeOn(page.object());
            const oracle::Bytes text = randomText(random, page);
            char* const string = room.endingAtGuard(text.data(), text.size());
            for (int place = 0; place < kPlacesInText; ++place, ++tries) {
                const std::int32_t last = static_cast<std::int32_t>(text.size());
                const Situation situation{random,
                                          page,
                                          reference,
                                          locale,
                                          text,
                                          string,
                                          pick(random, 0, last),
                                          pick(random, 0, 1)};
                locale.lastError = kUntouchedError;
                calls += check(situation) ? 1 : 0;
                if (::testing::Test::HasFailure())
                    FAIL() << situation;
            }
        }
    }
    EXPECT_GE(calls, kWantedCalls) << "too few of the calls were well defined";
}

bool Output::holds(const oracle::Bytes& bytes) const
{
    Output expected;
    std::copy(bytes.begin(), bytes.end(), expected.area_ + kMargin);
    return std::equal(std::begin(area_), std::end(area_), std::begin(expected.area_));
}

} // namespace vlx::test
