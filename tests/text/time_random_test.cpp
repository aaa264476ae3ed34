// The functions of times against the oracle.
#include <cstring>

#include "text/random_text.hpp"

namespace vlx::test {
namespace {

using oracle::TimeFields;

TimeFields anyTime(Random& random)
{
    TimeFields time{pick(random, 0, 59), pick(random, 0, 59), pick(random, 0, 23),
                    pick(random, 0, 31), pick(random, 0, 11), pick(random, 60, 140),
                    pick(random, 0, 6),  pick(random, 0, 365)};
    if (random() % 8 == 0)
        time[random() % time.size()] =
            random() % 2 == 0 ? pick(random, -2000, 10000) : static_cast<std::int32_t>(random());
    return time;
}

TSTimeFields recordOf(const TimeFields& time)
{
    return {time[0], time[1], time[2], time[3], time[4], time[5], time[6], time[7]};
}

TimeFields fieldsOf(const TSTimeFields& time)
{
    return {time.seconds, time.minutes, time.hours,     time.dayOfMonth,
            time.month,   time.year,    time.dayOfWeek, time.dayOfYear};
}

// A text and how much of it a call is told of.
struct Piece {
    oracle::Units text;
    std::int32_t state;
    std::int32_t length;

    oracle::Source source() const { return {text, state, length}; }
};

Piece anyPiece(TextCall& call, Member member, std::u16string_view text)
{
    const std::int32_t state = member == Member::kEx ? pick(call.random, 0, 1) : 0;
    Piece piece{call.encode(member, text, state), state, -1};
    if (call.random() % 2 == 0) {
        piece.length = pick(call.random, 0, static_cast<std::int32_t>(piece.text.size()));
        if (call.random() % 2 == 0)
            piece.text.resize(static_cast<std::size_t>(piece.length));
    }
    // Words whose low byte alone is one of the language.
    if (member == Member::kPacked && !piece.text.empty() && call.random() % 16 == 0)
        piece.text[0] |= 0x8100;
    return piece;
}

std::ostream& operator<<(std::ostream& out, const Piece& piece)
{
    out << std::hex;
    for (const std::uint32_t unit : piece.text)
        out << ' ' << unit;
    return out << std::dec << ", length " << piece.length << ", state " << piece.state;
}

template <class Unit, class Tested>
bool compareFormat(TextCall& call, Member member, const Tested& tested)
{
    const Writing writing = anyWriting(call.random, TS_OPT_OBJECT_VALUE | TS_OPT_TERMINATE);
    const TimeFields time = anyTime(call.random);
    const TSTimeFields record = recordOf(time);
    const Piece pattern = anyPiece(call, member, anyPattern(call.random, 1));
    const auto units = narrowUnits<Unit>(pattern.text);
    return compareWriting<Unit>(
        call, writing,
        [&](const oracle::Target& target) {
            return oracle::timeToString(call.locale.reference, member, time, target,
                                        pattern.source(), writing.options);
        },
        [&](Unit* destination) {
            const Unit* const at = textAreas().pattern.place(units, anyGuardOf(call.random));
            return tested(call.handle(), &record, destination, writing, at, pattern);
        },
        [&] { return "pattern" + ::testing::PrintToString(pattern.text); });
}

template <auto Function>
constexpr auto kFormat = [](TSLocale* handle, const TSTimeFields* time, auto* destination,
                            const Writing& writing, const auto* pattern, const Piece& piece) {
    return Function(handle, time, destination, writing.size, pattern, piece.length,
                    writing.options);
};

TEST(TimeAgainstOracle, TSTimeToString)
{
    callTexts([](TextCall& call) {
        return compareFormat<char>(call, Member::kPlain, kFormat<TSTimeToString>);
    });
}
TEST(TimeAgainstOracle, TSTimeToStringEx)
{
    callTexts([](TextCall& call) {
        return compareFormat<char>(
            call, Member::kEx,
            [](TSLocale* handle, const TSTimeFields* time, char* destination,
               const Writing& writing, const char* pattern, const Piece& piece) {
                return TSTimeToStringEx(handle, time, destination, writing.state, writing.size,
                                        pattern, piece.state, piece.length, writing.options);
            });
    });
}
TEST(TimeAgainstOracle, TSTimeToStringU)
{
    callTexts([](TextCall& call) {
        return compareFormat<TSChar16>(call, Member::kUnicode, kFormat<TSTimeToStringU>);
    });
}
TEST(TimeAgainstOracle, TSTimeToStringW)
{
    callTexts([](TextCall& call) {
        return compareFormat<TSChar32>(call, Member::kPacked, kFormat<TSTimeToStringW>);
    });
}

// A text that a pattern might have made, now and then with a slip.
oracle::Units formatted(TextCall& call, Member member, std::int32_t state, const TimeFields& time,
                        const oracle::Units& pattern, std::uint32_t options)
{
    oracle::Units memory(300, 0);
    const auto outcome = wellDefined([&] {
        return oracle::timeToString(call.locale.reference, member, time, {memory, state, 250},
                                    {pattern, 0, -1}, options & TS_OPT_OBJECT_VALUE);
    });
    memory.resize(static_cast<std::size_t>(outcome ? std::max(outcome->result, 0) : 0));
    if (!memory.empty() && call.random() % 6 == 0)
        memory[call.random() % memory.size()] ^= 1;
    memory.push_back(0);
    return memory;
}

template <class Unit, class Tested>
bool compareParse(TextCall& call, Member member, const Tested& tested)
{
    const std::u16string characters = anyPattern(call.random, 1);
    const std::uint32_t options = anyOptions(call.random, TS_OPT_OBJECT_VALUE);
    const Piece pattern = anyPiece(call, member, characters);
    const TimeFields shown = anyTime(call.random);
    Piece text = anyPiece(call, member, u"12 34");
    if (call.random() % 8 != 0) {
        const oracle::Units whole = call.encode(member, characters, 0);
        text.text = formatted(call, member, text.state, shown, whole, options);
        text.length = call.random() % 2 == 0
                          ? -1
                          : pick(call.random, 0, static_cast<std::int32_t>(text.text.size()));
    }
    TimeFields wantedTime = anyTime(call.random);
    TSTimeFields time = recordOf(wantedTime);
    const auto wanted = wellDefined([&] {
        return oracle::stringToTime(call.locale.reference, member, wantedTime, text.source(),
                                    pattern.source(), options);
    });
    if (!wanted)
        return false;
    const auto units = narrowUnits<Unit>(text.text);
    const auto patternUnits = narrowUnits<Unit>(pattern.text);
    const Unit* const at = textAreas().text.place(units, anyGuardOf(call.random));
    const Unit* const patternAt = textAreas().pattern.place(patternUnits, anyGuardOf(call.random));
    const std::int32_t result = tested(call.handle(), &time, at, text, patternAt, pattern, options);
    EXPECT_EQ(result, wanted->result) << "text" << text << "\npattern" << pattern;
    EXPECT_EQ(call.locale.record.lastError, wanted->error)
        << "text" << text << "\npattern" << pattern;
    EXPECT_EQ(fieldsOf(time), wantedTime) << "text" << text << "\npattern" << pattern;
    EXPECT_TRUE(textAreas().text.holds(units));
    EXPECT_TRUE(textAreas().pattern.holds(patternUnits));
    return true;
}

template <auto Function>
constexpr auto kParse = [](TSLocale* handle, TSTimeFields* time, const auto* text,
                           const Piece& piece, const auto* pattern, const Piece& patternPiece,
                           std::uint32_t options) {
    return Function(handle, time, text, piece.length, pattern, patternPiece.length, options);
};

TEST(TimeAgainstOracle, TSStringToTime)
{
    callTexts([](TextCall& call) {
        return compareParse<char>(call, Member::kPlain, kParse<TSStringToTime>);
    });
}
TEST(TimeAgainstOracle, TSStringToTimeEx)
{
    callTexts([](TextCall& call) {
        return compareParse<char>(
            call, Member::kEx,
            [](TSLocale* handle, TSTimeFields* time, const char* text, const Piece& piece,
               const char* pattern, const Piece& patternPiece, std::uint32_t options) {
                return TSStringToTimeEx(handle, time, text, piece.state, piece.length, pattern,
                                        patternPiece.state, patternPiece.length, options);
            });
    });
}
TEST(TimeAgainstOracle, TSStringToTimeU)
{
    callTexts([](TextCall& call) {
        return compareParse<TSChar16>(call, Member::kUnicode, kParse<TSStringToTimeU>);
    });
}
TEST(TimeAgainstOracle, TSStringToTimeW)
{
    callTexts([](TextCall& call) {
        return compareParse<TSChar32>(call, Member::kPacked, kParse<TSStringToTimeW>);
    });
}

} // namespace
} // namespace vlx::test
