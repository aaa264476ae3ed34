// Every primitive against the oracle, on random pages: the result and the bytes written.
#include "chars/codepage.hpp"
#include "chars/situations.hpp"

namespace vlx::test {
namespace {

// Compares a primitive, which knows no error code.
template <class Reference, class Call>
bool comparePlain(Reference reference, Call call)
{
    const auto wanted = wellDefined(reference);
    if (wanted) {
        EXPECT_EQ(call(), *wanted);
    }
    return wanted.has_value();
}

// Compares what a primitive writes. `call` returns the number of bytes if the primitive does.
template <class Reference, class Call>
bool compareWritten(Reference reference, Call call)
{
    const std::optional<oracle::Bytes> wanted = wellDefined(reference);
    if (!wanted)
        return false;
    Output output;
    const std::optional<std::int32_t> count = call(output.at());
    if (count) {
        EXPECT_EQ(*count, std::ssize(*wanted));
    }
    EXPECT_TRUE(output.holds(*wanted));
    return true;
}

bool hasLongCharacters(const Situation& s)
{
    return s.page.shape() != PageShape::kSingleByte;
}

// The offset of a type record in section 1, as the oracle tells it.
std::size_t offsetOf(const Situation& s, const TSTypeRecord* record)
{
    return static_cast<std::size_t>(reinterpret_cast<const std::uint8_t*>(record) -
                                    s.page.sections()[0].data());
}

// A long character in memory that ends at a guard, and the same one for the oracle.
class LongCharacter {
  public:
    explicit LongCharacter(const Situation& s)
        : bytes_(randomLongCharacter(s.random, s.page)),
          at_(room().endingAtGuard(bytes_.data(), bytes_.size()))
    {
    }

    oracle::Span span() const { return oracle::Span(bytes_); }
    const char* at() const { return at_; }
    TSChar32 value() const
    {
        TSChar32 value = 0;
        for (const unsigned char byte : bytes_)
            value = value << 8 | byte;
        return value;
    }

  private:
    static GuardedText& room()
    {
        static GuardedText room;
        return room;
    }

    oracle::Bytes bytes_;
    const char* at_;
};

TEST(PrimitivesAgainstOracle, TSCpGetWide)
{
    compareEverywhere([](const Situation& s) {
        return comparePlain([&] { return oracle::getWide(s.reference.page, s.here()); },
                            [&] { return TSCpGetWide(&s.page.object(), s.at()); });
    });
}

TEST(PrimitivesAgainstOracle, TSCpGetWideEx)
{
    compareEverywhere([](const Situation& s) {
        const std::int32_t state = pick(s.random, -1, 2);
        return comparePlain([&] { return oracle::getWideEx(s.reference.page, s.here(), state); },
                            [&] { return TSCpGetWideEx(&s.page.object(), s.at(), state); });
    });
}

TEST(PrimitivesAgainstOracle, TSCpPutWide)
{
    compareEverywhere([](const Situation& s) {
        const TSChar32 value = randomValue(s.random);
        return compareWritten([&] { return oracle::putWide(value); },
                              [&](char* output) { return TSCpPutWide(output, value); });
    });
}

TEST(PrimitivesAgainstOracle, TSCpCharsToBytes)
{
    compareEverywhere([](const Situation& s) {
        const std::int32_t count = pick(s.random, 0, 6);
        return comparePlain(
            [&] { return oracle::charsToBytes(s.reference.page, s.here(), s.state, count); },
            [&] { return TSCpCharsToBytes(&s.page.object(), s.at(), s.state, count); });
    });
}

TEST(PrimitivesAgainstOracle, TSCpMbToUnicode)
{
    compareEverywhere([](const Situation& s) {
        const LongCharacter character(s);
        return hasLongCharacters(s) &&
               comparePlain([&] { return oracle::mbToUnicode(s.reference.page, character.span()); },
                            [&] { return TSCpMbToUnicode(&s.page.object(), character.at()); });
    });
}

TEST(PrimitivesAgainstOracle, TSCpWideToUnicode)
{
    compareEverywhere([](const Situation& s) {
        const TSChar32 value = LongCharacter(s).value();
        return value > 0xFF &&
               comparePlain([&] { return oracle::wideToUnicode(s.reference.page, value); },
                            [&] { return TSCpWideToUnicode(&s.page.object(), value); });
    });
}

TEST(PrimitivesAgainstOracle, TSCpUnicodeToMbForEveryValue)
{
    for (PageBuilder& page : randomPages()) {
        const oracle::Page reference = oraclePage(page);
        for (std::uint32_t value = 0; value < 0x10000; ++value) {
            const auto unicode = static_cast<TSChar16>(value);
            EXPECT_TRUE(compareWritten(
                [&] { return oracle::unicodeToMb(reference, unicode); },
                [&](char* output) { return TSCpUnicodeToMb(&page.object(), unicode, output); }));
            ASSERT_FALSE(HasFailure())
                << "shape " << static_cast<int>(page.shape()) << ", value " << value;
        }
    }
}

TEST(PrimitivesAgainstOracle, TSCpUnicodeToWideForEveryValue)
{
    for (PageBuilder& page : randomPages()) {
        const oracle::Page reference = oraclePage(page);
        for (std::uint32_t value = 0; value < 0x10000; ++value) {
            const auto unicode = static_cast<TSChar16>(value);
            EXPECT_TRUE(comparePlain([&] { return oracle::unicodeToWide(reference, unicode); },
                                     [&] { return TSCpUnicodeToWide(&page.object(), unicode); }));
            ASSERT_FALSE(HasFailure())
                << "shape " << static_cast<int>(page.shape()) << ", value " << value;
        }
    }
}

TEST(PrimitivesAgainstOracle, TSCpCharTypeRecord)
{
    compareEverywhere([](const Situation& s) {
        const LongCharacter character(s);
        return hasLongCharacters(s) &&
               comparePlain(
                   [&] { return oracle::charTypeRecord(s.reference.page, character.span()); },
                   [&] {
                       return offsetOf(s, TSCpCharTypeRecord(&s.page.object(), character.at()));
                   });
    });
}

TEST(PrimitivesAgainstOracle, TSCpCharTypeRecordW)
{
    compareEverywhere([](const Situation& s) {
        const TSChar32 value = LongCharacter(s).value();
        return hasLongCharacters(s) && value > 0xFF &&
               comparePlain(
                   [&] { return oracle::charTypeRecordW(s.reference.page, value); },
                   [&] { return offsetOf(s, TSCpCharTypeRecordW(&s.page.object(), value)); });
    });
}

TEST(PrimitivesAgainstOracle, TSCpMapChar)
{
    compareEverywhere([](const Situation& s) {
        const LongCharacter character(s);
        const std::uint32_t mapping = randomMapping(s.random);
        return hasLongCharacters(s) &&
               compareWritten(
                   [&] { return oracle::mapChar(s.reference.page, character.span(), mapping); },
                   [&](char* output) -> std::optional<std::int32_t> {
                       TSCpMapChar(&s.page.object(), character.at(), output, mapping);
                       return std::nullopt;
                   });
    });
}

TEST(PrimitivesAgainstOracle, TSCpMapCharW)
{
    compareEverywhere([](const Situation& s) {
        const TSChar32 value = LongCharacter(s).value();
        const std::uint32_t mapping = randomMapping(s.random);
        return hasLongCharacters(s) && value > 0xFF &&
               comparePlain([&] { return oracle::mapCharW(s.reference.page, value, mapping); },
                            [&] { return TSCpMapCharW(&s.page.object(), value, mapping); });
    });
}

TEST(PrimitivesAgainstOracle, TSCpMapCharEx)
{
    compareEverywhere([](const Situation& s) {
        const LongCharacter character(s);
        const std::uint32_t mapping = randomMapping(s.random);
        return isStateful(s.page.shape()) &&
               compareWritten(
                   [&] { return oracle::mapCharEx(s.reference.page, character.span(), mapping); },
                   [&](char* output) {
                       return TSCpMapCharEx(&s.page.object(), character.at(), output, mapping);
                   });
    });
}

} // namespace
} // namespace vlx::test
