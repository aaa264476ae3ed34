// Buffer conversion against the oracle, call by call, with the input and the output cut at every
// point; and the pieces against the conversion of the whole string.
#include "convert/conversions.hpp"

namespace vlx::test {
namespace {

constexpr std::int32_t kPlenty = 64;
constexpr int kMostCalls = 200; // of one stream

// Starts the library for its allocators.
class Buffers : public testing::Test {
  protected:
    void SetUp() override
    {
        ASSERT_NE(TSInit(nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0), 20);
    }
    void TearDown() override
    {
        tsDefaultLocale = nullptr;
        EXPECT_EQ(TSTerm(), 0);
    }

    const Sample& anySample() { return samples()[random_() % samples().size()]; }

    Random random_{20260705};
    GuardedArea inputArea_;
    GuardedArea outputArea_;
};

// A stream through a handle of the library and one of the oracle.
class Stream {
  public:
    Stream(Party& target, Party& source, GuardedArea& inputArea, GuardedArea& outputArea)
        : handle_(TSOpenConversion(&target.record, &source.record)),
          reference_(target.reference(), source.reference()), inputArea_(inputArea),
          outputArea_(outputArea)
    {
        target.record.lastError = source.record.lastError = kUntouchedError;
    }
    ~Stream() { EXPECT_EQ(TSCloseConversion(handle_), 0); }
    Stream(const Stream&) = delete;
    Stream& operator=(const Stream&) = delete;

    // One call on a slice and a room for the output; returns what it did.
    oracle::Progress call(const oracle::Bytes& slice, std::int32_t room)
    {
        const oracle::Progress wanted =
            reference_.convert(oracle::Span(slice), static_cast<std::int32_t>(slice.size()), room);
        const auto* const input =
            reinterpret_cast<const char*>(inputArea_.place(slice, GuardedArea::Guard::kAbove));
        oracle::Bytes area(static_cast<std::size_t>(room), 0x5A);
        auto* const place =
            reinterpret_cast<char*>(outputArea_.place(area, GuardedArea::Guard::kAbove));
        const char* inputAt = input;
        char* outputAt = place;
        auto inputCount = static_cast<std::int32_t>(slice.size());
        std::int32_t outputCount = room;
        EXPECT_EQ(TSConvertBuffer(handle_, &outputAt, &outputCount, &inputAt, &inputCount),
                  wanted.result);
        EXPECT_EQ(inputAt - input, wanted.consumed);
        EXPECT_EQ(inputCount, wanted.inputCount);
        EXPECT_EQ(outputAt - place, std::ssize(wanted.written));
        EXPECT_EQ(outputCount, wanted.outputCount);
        std::copy(wanted.written.begin(), wanted.written.end(), area.begin());
        EXPECT_TRUE(outputArea_.holds(area)) << "wanted " << testing::PrintToString(area);
        if (testing::Test::HasFailure())
            ADD_FAILURE() << "room " << room << ", slice " << testing::PrintToString(slice);
        return wanted;
    }

    // Offers a slice again and again until it is used up. The first room is given, the others are
    // small ones; returns the number of calls.
    int feed(const oracle::Bytes& slice, std::int32_t firstRoom, Random& random)
    {
        oracle::Bytes left = slice;
        std::int32_t room = firstRoom;
        int calls = 0;
        for (; calls < kMostCalls && !testing::Test::HasFailure(); ++calls) {
            const oracle::Progress progress = call(left, room);
            output.insert(output.end(), progress.written.begin(), progress.written.end());
            left.erase(left.begin(), left.begin() + progress.consumed);
            if (progress.result != TS_ERR_OUTPUT_FULL)
                return calls + 1;
            room = firstRoom >= kPlenty ? kPlenty : pick(random, 0, 6);
        }
        EXPECT_LT(calls, kMostCalls) << "a stream without an end";
        return calls;
    }

    oracle::Bytes output;

  private:
    TSConversion* handle_;
    oracle::Conversion reference_;
    GuardedArea& inputArea_;
    GuardedArea& outputArea_;
};

oracle::Bytes part(const oracle::Bytes& text, std::ptrdiff_t begin, std::ptrdiff_t end)
{
    return {text.begin() + begin, text.begin() + end};
}

TEST_F(Buffers, DoWhatTheOracleDoesWhereverInputAndOutputAreCut)
{
    int calls = 0;
    while (calls < 2 * kWantedCalls && !HasFailure()) {
        Party source(anySample());
        Party target(anySample());
        const oracle::Bytes text = randomText(random_, *source.sample->page);
        const auto size = std::ssize(text);
        for (std::ptrdiff_t cut = 0; cut <= size && !HasFailure(); ++cut) {
            for (std::int32_t room = 0; room <= 3 * size + 2 && !HasFailure(); ++room) {
                Stream stream(target, source, inputArea_, outputArea_);
                calls += stream.feed(part(text, 0, cut), room, random_);
                calls += stream.feed(part(text, cut, size), pick(random_, 0, 8), random_);
            }
        }
        EXPECT_EQ(target.record.lastError, kUntouchedError);
        EXPECT_EQ(source.record.lastError, kUntouchedError);
        if (HasFailure())
            ADD_FAILURE() << "shapes " << static_cast<int>(source.sample->page->shape()) << " to "
                          << static_cast<int>(target.sample->page->shape()) << ", text "
                          << testing::PrintToString(text);
    }
}

TEST_F(Buffers, DoWhatTheOracleDoesByteByByte)
{
    int calls = 0;
    while (calls < kWantedCalls && !HasFailure()) {
        Party source(anySample());
        Party target(anySample());
        const oracle::Bytes text = randomText(random_, *source.sample->page);
        Stream stream(target, source, inputArea_, outputArea_);
        for (std::ptrdiff_t i = 0; i < std::ssize(text) && !HasFailure(); ++i)
            calls += stream.feed(part(text, i, i + 1), pick(random_, 0, 6), random_);
        calls += stream.feed({}, 0, random_);
    }
}

// Where one shift byte follows another, the second one is a character for the whole string, and a
// shift byte for a slice that begins with it.
bool hasShiftBehindShift(const Sample& sample, const oracle::Bytes& text)
{
    const oracle::Page& page = sample.reference.page;
    const auto isShift = [&](std::size_t i) {
        return i < text.size() &&
               (text[i] == oracle::shiftIn(page) || text[i] == oracle::shiftOut(page));
    };
    if (!sample.reference.stateful)
        return false;
    std::size_t step = 1;
    for (std::size_t at = 0; at < text.size(); at += step) {
        if (!isShift(at))
            continue;
        step = text[at] == oracle::shiftIn(page) ? oracle::maxCharBytes(page) : 1;
        at += 1;
        if (isShift(at))
            return true;
    }
    return false;
}

TEST_F(Buffers, GiveTheWholeStringInPieces)
{
    int calls = 0;
    while (calls < kWantedCalls && !HasFailure()) {
        Party source(anySample());
        Party target(anySample());
        const oracle::Bytes text = randomText(random_, *source.sample->page);
        if (hasShiftBehindShift(*source.sample, text))
            continue;
        oracle::Bytes whole(8 * text.size() + 8);
        whole.resize(static_cast<std::size_t>(
            TSConvertStringEx(&target.record, reinterpret_cast<char*>(whole.data()), 0,
                              static_cast<std::int32_t>(whole.size()), &source.record,
                              reinterpret_cast<const char*>(text.data()), 0,
                              static_cast<std::int32_t>(text.size()), 0)));
        const auto size = std::ssize(text);
        for (std::ptrdiff_t first = 0; first <= size; ++first) {
            for (std::ptrdiff_t second = first; second <= size && !HasFailure(); ++second) {
                Stream stream(target, source, inputArea_, outputArea_);
                calls += stream.feed(part(text, 0, first), kPlenty, random_);
                calls += stream.feed(part(text, first, second), kPlenty, random_);
                calls += stream.feed(part(text, second, size), kPlenty, random_);
                EXPECT_EQ(stream.output, whole) << first << ' ' << second;
            }
        }
        if (HasFailure())
            ADD_FAILURE() << "shapes " << static_cast<int>(source.sample->page->shape()) << " to "
                          << static_cast<int>(target.sample->page->shape()) << ", text "
                          << testing::PrintToString(text);
    }
}

TEST_F(Buffers, HaveTheRatioOfTheOracle)
{
    for (const Sample& from : samples()) {
        for (const Sample& to : samples()) {
            Party source(from);
            Party target(to);
            EXPECT_EQ(TSConversionRatio(&target.record, &source.record),
                      oracle::conversionRatio(to.reference, from.reference));
            EXPECT_EQ(target.record.lastError, 0);
            EXPECT_EQ(source.record.lastError, kUntouchedError);
        }
    }
}

} // namespace
} // namespace vlx::test
