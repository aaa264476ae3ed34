// Conversion of long texts against the oracle: whole texts into rooms of every size around what
// they need, and pieces of them through a handle.
#include "chars/long_texts.hpp"
#include "convert/conversions.hpp"

namespace vlx::test {
namespace {

constexpr int kTexts = 1500;
constexpr std::int32_t kPlenty = 1200;

struct Pair {
    explicit Pair(Random& random)
        : source(longPages()[random() % longPages().size()]),
          target(longPages()[random() % longPages().size()]), from(localeOn(source.page.object())),
          to(localeOn(target.page.object()))
    {
    }

    LongPage& source;
    LongPage& target;
    TSLocale from;
    TSLocale to;
};

std::ostream& operator<<(std::ostream& out, const Pair& pair)
{
    return out << "shapes " << static_cast<int>(pair.source.page.shape()) << " to "
               << static_cast<int>(pair.target.page.shape());
}

std::uint32_t anyOptions(Random& random)
{
    constexpr std::uint32_t kOptions[] = {0, 0, TS_OPT_TERMINATE, TS_OPT_CHAR_COUNT};
    return kOptions[random() % std::size(kOptions)];
}

class LongTexts : public testing::Test {
  protected:
    // Sizes around what an output needs, and some below.
    std::vector<std::int32_t> sizesFor(std::int32_t needed)
    {
        std::vector<std::int32_t> sizes;
        for (std::int32_t size = std::max(needed - 4, 0); size <= needed + 3; ++size)
            sizes.push_back(size);
        for (int i = 0; i < 6; ++i)
            sizes.push_back(pick(random_, 0, needed));
        sizes.push_back(needed + 40);
        return sizes;
    }

    // Compares calls of several sizes; `units` of the output that the oracle has not written have
    // to be as they were, also where the size reaches behind them.
    template <class Unit, class Reference, class Call>
    void compareSizes(const Pair& pair, Reference reference, Call call)
    {
        const auto all = wellDefined([&] { return reference(kPlenty); });
        if (!all)
            return;
        for (const std::int32_t size : sizesFor(static_cast<std::int32_t>(all->written.size()))) {
            const auto wanted = wellDefined([&] { return reference(size); });
            if (!wanted)
                continue;
            const auto room =
                std::max<std::size_t>(wanted->written.size(), static_cast<std::size_t>(size));
            std::vector<Unit> area(room, Unit{0x5A});
            Unit* const output = output_.place(
                area, random_() % 2 == 0 ? GuardedArea::Guard::kAbove : GuardedArea::Guard::kBelow);
            const std::int32_t result = call(output, size);
            std::copy(wanted->written.begin(), wanted->written.end(), area.begin());
            ASSERT_EQ(result, wanted->result) << pair << ", size " << size;
            ASSERT_TRUE(output_.holds(area)) << pair << ", size " << size;
            ++calls_;
        }
    }

    template <class Unit>
    std::int32_t anyLength(const std::vector<Unit>& text)
    {
        const bool isTerminated = !text.empty() && text.back() == 0;
        if (random_() % 2 == 0)
            return isTerminated ? -1 : static_cast<std::int32_t>(text.size());
        return pick(random_, 0, static_cast<std::int32_t>(text.size()));
    }

    Random random_{20261121};
    GuardedArea input_;
    GuardedArea output_;
    int calls_ = 0;
};

TEST_F(LongTexts, FromBytes)
{
    for (int i = 0; i < kTexts && !HasFailure(); ++i) {
        Pair pair(random_);
        const std::int32_t states[] = {pick(random_, 0, 1), pick(random_, 0, 1)};
        const oracle::Bytes text = longText(random_, pair.source, states[0], pick(random_, 0, 200));
        const oracle::Text input{oracle::Span(text), states[0], anyLength(text)};
        const auto* const bytes =
            reinterpret_cast<const char*>(input_.place(text, GuardedArea::Guard::kAbove));
        const std::uint32_t options = anyOptions(random_);
        compareSizes<unsigned char>(
            pair,
            [&](std::int32_t size) {
                return oracle::convertString(pair.target.reference, {0, size},
                                             pair.source.reference, input, options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSConvertString(&pair.to, reinterpret_cast<char*>(output), size, &pair.from,
                                       bytes, input.length, options);
            });
        compareSizes<unsigned char>(
            pair,
            [&](std::int32_t size) {
                return oracle::convertStringEx(pair.target.reference, {states[1], size},
                                               pair.source.reference, input, options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSConvertStringEx(&pair.to, reinterpret_cast<char*>(output), states[1], size,
                                         &pair.from, bytes, states[0], input.length, options);
            });
        compareSizes<TSChar16>(
            pair,
            [&](std::int32_t size) {
                return oracle::stringToUnicode({0, size}, pair.source.reference, input, options);
            },
            [&](TSChar16* output, std::int32_t size) {
                return TSStringToUnicode(output, size, &pair.from, bytes, input.length, options);
            });
        compareSizes<TSChar16>(
            pair,
            [&](std::int32_t size) {
                return oracle::stringToUnicodeEx({0, size}, pair.source.reference, input, options);
            },
            [&](TSChar16* output, std::int32_t size) {
                return TSStringToUnicodeEx(output, size, &pair.from, bytes, states[0], input.length,
                                           options);
            });
    }
    EXPECT_GT(calls_, 20 * kTexts);
}

TEST_F(LongTexts, FromUnicode)
{
    for (int i = 0; i < 2 * kTexts && !HasFailure(); ++i) {
        Pair pair(random_);
        const std::int32_t state = pick(random_, 0, 1);
        const std::vector<TSChar16> units = longUnits(random_, pair.target, pick(random_, 0, 150));
        const oracle::UnitText input{{units.begin(), units.end()}, anyLength(units)};
        const TSChar16* const values = input_.place(units, GuardedArea::Guard::kAbove);
        const std::uint32_t options = anyOptions(random_);
        compareSizes<unsigned char>(
            pair,
            [&](std::int32_t size) {
                return oracle::unicodeToString(pair.target.reference, {0, size}, input, options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSUnicodeToString(&pair.to, reinterpret_cast<char*>(output), size, values,
                                         input.length, options);
            });
        compareSizes<unsigned char>(
            pair,
            [&](std::int32_t size) {
                return oracle::unicodeToStringEx(pair.target.reference, {state, size}, input,
                                                 options);
            },
            [&](unsigned char* output, std::int32_t size) {
                return TSUnicodeToStringEx(&pair.to, reinterpret_cast<char*>(output), state, size,
                                           values, input.length, options);
            });
    }
    EXPECT_GT(calls_, 20 * kTexts);
}

// A handle of the library and one of the oracle, which get the same slices and rooms.
class Handles {
  public:
    Handles(Pair& pair, GuardedArea& input, GuardedArea& output)
        : handle_(TSOpenConversion(&pair.to, &pair.from)),
          reference_(pair.target.reference, pair.source.reference), input_(input), output_(output)
    {
    }
    ~Handles() { EXPECT_EQ(TSCloseConversion(handle_), 0); }
    Handles(const Handles&) = delete;
    Handles& operator=(const Handles&) = delete;

    oracle::Progress convert(const oracle::Bytes& slice, std::int32_t room)
    {
        oracle::Bytes area(static_cast<std::size_t>(room), 0x5A);
        const oracle::Progress progress =
            convert(slice, input_.place(slice, GuardedArea::Guard::kAbove),
                    output_.place(area, GuardedArea::Guard::kAbove), room);
        std::copy(progress.written.begin(), progress.written.end(), area.begin());
        EXPECT_TRUE(output_.holds(area));
        return progress;
    }

    // The same for slices that are too long for the guarded areas.
    void convertLong(const oracle::Bytes& slice, std::int32_t room)
    {
        oracle::Bytes area(static_cast<std::size_t>(room), 0x5A);
        oracle::Bytes wanted = area;
        const oracle::Progress progress = convert(slice, slice.data(), area.data(), room);
        std::copy(progress.written.begin(), progress.written.end(), wanted.begin());
        EXPECT_TRUE(area == wanted);
    }

  private:
    oracle::Progress convert(const oracle::Bytes& slice, const unsigned char* place,
                             unsigned char* outputPlace, std::int32_t room)
    {
        auto inputCount = static_cast<std::int32_t>(slice.size());
        const oracle::Progress wanted = reference_.convert(oracle::Span(slice), inputCount, room);
        const auto* const input = reinterpret_cast<const char*>(place);
        auto* const output = reinterpret_cast<char*>(outputPlace);
        const char* inputAt = input;
        char* outputAt = output;
        EXPECT_EQ(TSConvertBuffer(handle_, &outputAt, &room, &inputAt, &inputCount), wanted.result);
        EXPECT_EQ(inputAt - input, wanted.consumed);
        EXPECT_EQ(inputCount, wanted.inputCount);
        EXPECT_EQ(outputAt - output, std::ssize(wanted.written));
        EXPECT_EQ(room, wanted.outputCount);
        return wanted;
    }

    TSConversion* const handle_;
    oracle::Conversion reference_;
    GuardedArea& input_;
    GuardedArea& output_;
};

class LongSlices : public LongTexts {
  protected:
    void SetUp() override
    {
        ASSERT_NE(TSInit(nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0), 20);
    }
    void TearDown() override { EXPECT_EQ(TSTerm(), 0); }

    // Gives a text to two handles, in slices and rooms of these sizes at most.
    void convert(Pair& pair, oracle::Bytes text, std::int32_t slice, std::int32_t room)
    {
        Handles handles(pair, input_, output_);
        while (!text.empty() && !HasFailure()) {
            const auto size =
                pick(random_, 1, std::min(slice, static_cast<std::int32_t>(text.size())));
            const oracle::Bytes piece(text.begin(), text.begin() + size);
            const oracle::Progress progress = handles.convert(piece, pick(random_, 0, room));
            text.erase(text.begin(), text.begin() + progress.consumed);
        }
        if (HasFailure())
            ADD_FAILURE() << pair;
    }
};

TEST_F(LongSlices, DoWhatTheOracleDoes)
{
    for (int i = 0; i < 4 * kTexts && !HasFailure(); ++i) {
        Pair pair(random_);
        const oracle::Bytes text = longText(random_, pair.source, 0, pick(random_, 0, 400));
        convert(pair, text, pick(random_, 20, 300), pick(random_, 10, 600));
    }
}

// Of a count above 64 KiB the low 16 bits tell whether a character is whole.
TEST_F(LongSlices, OfMoreThan64KiBDoWhatTheOracleDoes)
{
    for (int i = 0; i < 40 && !HasFailure(); ++i) {
        Pair pair(random_);
        const oracle::Bytes text =
            longText(random_, pair.source, 0, 0x10000 + pick(random_, -8, 100));
        Handles handles(pair, input_, output_);
        handles.convertLong(text, i % 2 == 0 ? 4 * 0x10100 : pick(random_, 0, 0x10100));
        if (HasFailure())
            ADD_FAILURE() << pair;
    }
}

} // namespace
} // namespace vlx::test
