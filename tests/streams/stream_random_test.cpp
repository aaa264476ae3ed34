// Streams against the oracle: random calls of all functions on one stream, over random pages and
// devices that answer short, not at all, too much or with failures. Each output is of the size that
// the call is given, and what lies behind it may not be touched.
#include <sstream>

#include "chars/situations.hpp"
#include "frame/globals.hpp"
#include "streams/oracle_stream.hpp"
#include "streams/stream.hpp"
#include "strings/guarded_area.hpp"

namespace vlx::test {
namespace {

constexpr int kPagesOfShape = 6;
constexpr int kCallsOfStream = 40;
constexpr std::uint32_t kAnyLineEnd = TS_EOL_LF | TS_EOL_CRLF | TS_EOL_3 | TS_EOL_4;

std::vector<PageBuilder>& pages()
{
    static std::vector<PageBuilder> made = [] {
        std::vector<PageBuilder> all;
        Random random(20260803);
        const auto byte = [&] { return static_cast<std::uint8_t>(0x20 + random() % 0x30); };
        for (const PageShape shape : kPageShapes)
            for (int i = 0; i < kPagesOfShape; ++i) {
                all.push_back(randomPage(random, shape));
                if (i % 2 == 0)
                    all.back().lineEnds(byte(), byte(), byte(), byte()).build();
            }
        return all;
    }();
    return made;
}

// Texts with line ends between them, mostly in the single-byte state.
oracle::Bytes anyData(Random& random, const PageBuilder& page)
{
    const std::uint8_t* const header = page.sections()[0].data();
    oracle::Bytes data;
    for (std::int32_t pieces = pick(random, 0, 6); pieces > 0; --pieces) {
        const oracle::Bytes text = randomText(random, page);
        data.insert(data.end(), text.begin(), text.end());
        if (isStateful(page.shape()) && random() % 4 != 0)
            data.push_back(page.shiftOut());
        const auto end = static_cast<unsigned>(random() % 6);
        if (end == 0) {
            data.push_back(header[2]);
            data.push_back(header[1]);
        } else if (end < 5) {
            data.push_back(header[end]);
        }
    }
    return data;
}

Device::Mood anyMood(Random& random)
{
    constexpr Device::Mood kMoods[] = {
        {},
        {.brief = 40, .nothing = 4},
        {.brief = 20, .nothing = 4, .ended = 4, .failed = 2, .tooMany = 1},
        {.brief = 10, .ended = 20, .failed = 10},
        {.ended = 60, .failed = 2}, // a buffer gets full
    };
    return kMoods[random() % std::size(kMoods)];
}

std::uint32_t anyOptions(Random& random)
{
    if (random() % 32 == 0)
        return static_cast<std::uint32_t>(random());
    std::uint32_t options = static_cast<std::uint32_t>(random()) & kAnyLineEnd;
    for (const std::uint32_t bit : {TS_OPT_TERMINATE, TS_OPT_CHAR_COUNT, TS_EOL_STRIP})
        if (random() % 2 == 0)
            options |= bit;
    return options;
}

// One stream of the library and the oracle's, each over a device of its own.
class Pair {
  public:
    Pair(Random& random, PageBuilder& page, bool isWriter)
        : random_(random), page_(page), reference_(oracleLocale(page)), isWriter_(isWriter),
          seed_(random()), mood_(anyMood(random)), data_(anyData(random, page)),
          ours_(data_, mood_, seed_), theirs_(data_, mood_, seed_),
          oracle_(reference_, theirs_, isWriter), locale_(localeOn(page.object()))
    {
        tsDefaultLocale = &locale_;
        stream_ = TSOpenStream(handle(), isWriter ? Device::write : Device::read, ours_.context(),
                               isWriter ? TS_STREAM_WRITE : TS_STREAM_READ);
        EXPECT_EQ(locale_.lastError, 0);
    }
    ~Pair() { tsDefaultLocale = nullptr; }

    int run()
    {
        int calls = 0;
        for (int i = 0; i < kCallsOfStream && !testing::Test::HasFailure(); ++i)
            calls += call();
        calls += 1;
        EXPECT_EQ(TSCloseStream(stream_, handle()), oracle_.close());
        compareEnds();
        return calls;
    }

  private:
    // Null now and then, for the default locale.
    TSLocale* handle() { return random_() % 4 == 0 ? nullptr : &locale_; }

    bool call()
    {
        name_.str("");
        // The other direction is tried now and then.
        const bool reads = random_() % 16 == 0 ? isWriter_ : !isWriter_;
        locale_.lastError = kUntouchedError;
        if (random_() % 24 == 0) {
            name_ << "flush";
            EXPECT_EQ(TSFlushStream(stream_, handle()), oracle_.flush());
        } else if (!(reads ? random_() % 4 == 0 ? callUnget() : callRead() : callWrite())) {
            return false;
        }
        compareState();
        return true;
    }

    bool callRead()
    {
        const std::int32_t size = pick(random_, -1, 24);
        const std::uint32_t options = anyOptions(random_);
        const std::int32_t state = pick(random_, 0, 1);
        name_ << "read, size " << size << ", options " << std::hex << options << ", state "
              << state;
        switch (random_() % 7) {
        case 0:
            EXPECT_EQ(oracle_.readCharW(), TSReadCharW(stream_, handle()));
            break;
        case 1:
            EXPECT_EQ(oracle_.readCharU(), TSReadCharU(stream_, handle()));
            break;
        case 2:
            compareLine(oracle_.readStringU(size, options), size, [&](TSChar16* output) {
                return TSReadStringU(stream_, handle(), output, size, options);
            });
            break;
        case 3:
            compareLine(oracle_.readStringW(size, options), size, [&](TSChar32* output) {
                return TSReadStringW(stream_, handle(), output, size, options);
            });
            break;
        case 4:
            compareLine(oracle_.readString(size, options), roomOf(size, options),
                        [&](auto* output) {
                            return TSReadString(stream_, handle(), asText(output), size, options);
                        });
            break;
        default:
            compareLine(oracle_.readStringEx(state, size, options), roomOf(size, options),
                        [&](auto* output) {
                            return TSReadStringEx(stream_, handle(), asText(output), state, size,
                                                  options);
                        });
        }
        return true;
    }

    // A character for the call, at the end of what may be read; none that is cut.
    template <class Reference, class Call>
    bool withCharacter(Reference reference, Call call)
    {
        oracle::Bytes bytes = randomText(random_, page_);
        bytes.resize(std::min<std::size_t>(bytes.size(), 1 + random_() % 5));
        const auto wanted = wellDefined([&] { return reference(oracle::Span(bytes)); });
        if (!wanted)
            return false;
        const char* const place =
            reinterpret_cast<const char*>(area_.place(bytes, GuardedArea::Guard::kAbove));
        name_ << testing::PrintToString(bytes);
        EXPECT_EQ(call(place), *wanted);
        return true;
    }

    bool callUnget()
    {
        const TSChar32 value = anyValue();
        const std::int32_t state = pick(random_, 0, 1);
        name_ << "unget " << std::hex << value << ", state " << state << ' ';
        switch (random_() % 5) {
        case 0:
            return withCharacter(
                [&](oracle::Span at) { return oracle_.ungetChar(at); },
                [&](const char* at) { return TSUngetChar(stream_, handle(), at); });
        case 1:
            EXPECT_EQ(TSUngetCharU(stream_, handle(), static_cast<TSChar16>(value)),
                      oracle_.ungetCharU(static_cast<TSChar16>(value)));
            return true;
        case 2:
            EXPECT_EQ(TSUngetCharW(stream_, handle(), value), oracle_.ungetCharW(value));
            return true;
        default:
            return withCharacter(
                [&](oracle::Span at) { return oracle_.ungetCharEx(at, state); },
                [&](const char* at) { return TSUngetCharEx(stream_, handle(), at, state); });
        }
    }

    bool callWrite()
    {
        const TSChar32 value = anyValue();
        const std::int32_t state = pick(random_, 0, 1);
        name_ << "write " << std::hex << value << ", state " << state << ' ';
        switch (random_() % 5) {
        case 0:
            return withCharacter(
                [&](oracle::Span at) { return oracle_.writeChar(at); },
                [&](const char* at) { return TSWriteChar(stream_, handle(), at); });
        case 1:
            EXPECT_EQ(TSWriteCharU(stream_, handle(), static_cast<TSChar16>(value)),
                      oracle_.writeCharU(static_cast<TSChar16>(value)));
            return true;
        case 2:
            EXPECT_EQ(TSWriteCharW(stream_, handle(), value), oracle_.writeCharW(value));
            return true;
        default:
            return withCharacter(
                [&](oracle::Span at) { return oracle_.writeCharEx(at, state); },
                [&](const char* at) { return TSWriteCharEx(stream_, handle(), at, state); });
        }
    }

    // The elements that a line may take; without a bound in bytes, none but those it takes.
    static std::int32_t roomOf(std::int32_t size, std::uint32_t options)
    {
        return options & TS_OPT_CHAR_COUNT ? -1 : size;
    }
    static char* asText(unsigned char* output) { return reinterpret_cast<char*>(output); }

    template <class Unit, class Call>
    void compareLine(const oracle::Line<Unit>& line, std::int32_t room, Call call)
    {
        std::vector<Unit> area(line.area.size(), Unit{0x5A});
        if (room >= 0) {
            ASSERT_LE(std::ssize(line.area), room) << "the oracle writes over the end";
            area.resize(static_cast<std::size_t>(room), Unit{0x5A});
        }
        Unit* const output = area_.place(area, random_() % 2 == 0 ? GuardedArea::Guard::kAbove
                                                                  : GuardedArea::Guard::kBelow);
        EXPECT_EQ(call(output), line.result);
        std::copy(line.area.begin(), line.area.end(), area.begin());
        EXPECT_TRUE(area_.holds(area)) << "wanted " << testing::PrintToString(area);
    }

    TSChar32 anyValue()
    {
        if (random_() % 4 == 0)
            return randomValue(random_);
        TSChar32 value = 0;
        for (const unsigned char byte : randomLongCharacter(random_, page_))
            value = value << 8 | byte;
        return random_() % 2 == 0 ? value : value & 0xFF;
    }

    void compareState()
    {
        EXPECT_EQ(locale_.lastError, oracle_.error);
        EXPECT_EQ(stream_->shiftState, oracle_.shiftState);
        if (!oracle_.held.empty()) {
            EXPECT_EQ(stream_->bufferState, oracle_.bufferState);
        }
        EXPECT_EQ(oracle::Bytes(stream_->buffer, stream_->buffer + stream_->heldCount),
                  oracle_.held);
        compareEnds();
    }

    void compareEnds()
    {
        EXPECT_EQ(ours_.asked, theirs_.asked);
        EXPECT_EQ(ours_.data, theirs_.data);
        EXPECT_EQ(ours_.written, theirs_.written);
        if (testing::Test::HasFailure())
            ADD_FAILURE() << name_.str() << "; shape " << static_cast<int>(page_.shape())
                          << ", shift bytes " << +page_.shiftIn() << ' ' << +page_.shiftOut()
                          << ", data " << testing::PrintToString(data_);
    }

    Random& random_;
    PageBuilder& page_;
    const oracle::Locale reference_;
    const bool isWriter_;
    const std::uint64_t seed_;
    const Device::Mood mood_;
    const oracle::Bytes data_;
    Device ours_;
    Device theirs_;
    oracle::Stream oracle_;
    TSLocale locale_;
    TSStream* stream_ = nullptr;
    GuardedArea& area_ = areaOfAll();
    std::ostringstream name_;

    static GuardedArea& areaOfAll()
    {
        static GuardedArea area;
        return area;
    }
};

class RandomStreams : public testing::Test {
  protected:
    RandomStreams() { TSInit(nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0); }
    ~RandomStreams() override { EXPECT_EQ(TSTerm(), 0); }

    void compare(bool isWriter, std::uint64_t seed)
    {
        Random random(seed);
        for (int calls = 0; calls < 2 * kWantedCalls && !HasFailure();)
            calls += Pair(random, pages()[random() % pages().size()], isWriter).run();
    }
};

TEST_F(RandomStreams, ReadAsTheOracleDoes)
{
    compare(false, 20260804);
}

TEST_F(RandomStreams, WriteAsTheOracleDoes)
{
    compare(true, 20260805);
}

} // namespace
} // namespace vlx::test
