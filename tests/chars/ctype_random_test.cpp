// The classification functions against the oracle, on random pages and texts, with every kind.
#include "chars/situations.hpp"
#include "tessera.h"

namespace vlx::test {
namespace {

std::uint32_t wordAt(oracle::Span section, std::size_t offset)
{
    std::uint32_t word = 0;
    for (std::size_t i = 4; i > 0; --i)
        word = word << 8 | section.at(static_cast<std::ptrdiff_t>(offset + i - 1));
    return word;
}

std::uint32_t byteWord(const oracle::Locale& locale, unsigned byte)
{
    return wordAt(locale.page.sections[0], 0x050C + 4 * byte);
}

std::uint32_t recordWord(const oracle::Locale& locale, oracle::Span text)
{
    return wordAt(locale.page.sections[0], oracle::charTypeRecord(locale.page, text));
}

std::uint32_t plainWord(const oracle::Locale& locale, oracle::Span text)
{
    const unsigned byte = text.at(0);
    if (locale.singleByte)
        return byteWord(locale, byte);
    if (oracle::charLength(locale.page, byte) == 1)
        return byteWord(locale, byte);
    return recordWord(locale, text);
}

std::uint32_t shiftedWord(const oracle::Locale& locale, oracle::Span text, std::int32_t state)
{
    if (locale.singleByte)
        return byteWord(locale, text.at(0));
    if (!locale.stateful)
        return plainWord(locale, text);
    if (text.at(0) == oracle::shiftOut(locale.page)) {
        state = 0;
        text = text.from(1);
    } else if (text.at(0) == oracle::shiftIn(locale.page)) {
        state = 1;
        text = text.from(1);
    }
    return state == 1 ? recordWord(locale, text) : byteWord(locale, text.at(0));
}

// One of the three kinds, or a bad one.
std::uint32_t anyKind(Random& random)
{
    switch (random() % 8) {
    case 0:
        return static_cast<std::uint32_t>(random());
    case 1:
        return 0x8000000F + static_cast<std::uint32_t>(random() % 5);
    default:
        return 0x80000010 + static_cast<std::uint32_t>(random() % 3);
    }
}

struct Answer {
    std::uint32_t field;
    std::int32_t error;
    bool operator==(const Answer&) const = default;
};

Answer answerOf(std::uint32_t word, std::uint32_t kind)
{
    switch (kind) {
    case 0x80000010:
        return {word & 0x3FF, 0};
    case 0x80000011:
        return {(word & 0x3FFC00) >> 10, 0};
    case 0x80000012:
        return {(word & 0xFFC00000) >> 22, 0};
    default:
        return {word & 0x3FF, 2};
    }
}

// Compares field and error of a well-defined call.
template <class Reference, class Call>
bool compareType(const Situation& s, Reference wordOf, Call call)
{
    const std::uint32_t kind = anyKind(s.random);
    const auto word = wellDefined(wordOf);
    if (word) {
        const Answer wanted = answerOf(*word, kind);
        EXPECT_EQ(call(kind), wanted.field) << "word " << *word << ", kind " << kind;
        EXPECT_EQ(s.locale.lastError, wanted.error) << "kind " << kind;
    }
    return word.has_value();
}

TEST(TypesAgainstOracle, TSGetCharType)
{
    compareEverywhere([](const Situation& s) {
        return compareType(
            s, [&] { return plainWord(s.reference, s.here()); },
            [&](std::uint32_t kind) { return TSGetCharType(&s.locale, s.at(), kind); });
    });
}

TEST(TypesAgainstOracle, TSGetCharTypeEx)
{
    compareEverywhere([](const Situation& s) {
        return compareType(
            s, [&] { return shiftedWord(s.reference, s.here(), s.state); },
            [&](std::uint32_t kind) { return TSGetCharTypeEx(&s.locale, s.at(), s.state, kind); });
    });
}

TEST(TypesAgainstOracle, TSGetCharTypeW)
{
    compareEverywhere([](const Situation& s) {
        TSChar32 value = randomValue(s.random);
        if (s.random() % 2 == 0 && s.page.shape() != PageShape::kSingleByte) {
            const oracle::Bytes bytes = randomLongCharacter(s.random, s.page);
            value = 0;
            for (const unsigned char byte : bytes)
                value = value << 8 | byte;
        }
        return compareType(
            s,
            [&] {
                if (value <= 255)
                    return byteWord(s.reference, value);
                if (s.reference.singleByte)
                    return 0u; // no character
                const oracle::Bytes bytes = oracle::putWide(value);
                return recordWord(s.reference, oracle::Span(bytes));
            },
            [&](std::uint32_t kind) { return TSGetCharTypeW(&s.locale, value, kind); });
    });
}

} // namespace
} // namespace vlx::test
