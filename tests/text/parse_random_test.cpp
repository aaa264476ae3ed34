// The parsers of numbers against the oracle: the number, the code, where it ends, and the state
// there.
#include <cstring>

#include "text/random_text.hpp"

namespace vlx::test {
namespace {

// Texts that look like numbers in the locale's form.
std::u16string anyNumber(TextCall& call)
{
    constexpr std::u16string_view kPieces = u"0123456789012345678909.,,.-+ xXeEdDfz\tq";
    const oracle::TextLocale& locale = call.locale.reference;
    std::u16string text;
    for (std::int32_t count = pick(call.random, 0, 14); count > 0; --count) {
        switch (call.random() % 24) {
        case 0:
            text += TextLocale::kLong[call.random() % std::size(TextLocale::kLong)];
            break;
        case 1: // a sign text, a separator
            for (const std::uint32_t unit : locale.textsU[3 + call.random() % 2])
                text += static_cast<char16_t>(unit);
            break;
        case 2:
            text += static_cast<char16_t>(locale.separatorsU[call.random() % 5]);
            break;
        default:
            text += kPieces[call.random() % kPieces.size()];
        }
    }
    return text;
}

// Texts that look like what a formatter writes, and now and then have one character more.
std::u16string anyUsualNumber(TextCall& call)
{
    const oracle::TextLocale& locale = call.locale.reference;
    Random& random = call.random;
    std::u16string text;
    if (random() % 2 == 0)
        text += random() % 2 == 0 ? u'-' : u'+';
    const auto separator = static_cast<char16_t>(locale.separatorsU[random() % 8 == 0 ? 4 : 1]);
    for (std::int32_t digits = pick(random, 0, random() % 4 == 0 ? 18 : 9); digits > 0; --digits) {
        text += static_cast<char16_t>(u'0' + random() % 10);
        if (random() % 5 == 0)
            text += separator;
    }
    if (random() % 2 == 0) {
        text += static_cast<char16_t>(locale.separatorsU[0]);
        for (std::int32_t digits = pick(random, 0, random() % 8 == 0 ? 340 : 7); digits > 0;
             --digits)
            text += static_cast<char16_t>(u'0' + random() % 10);
    }
    if (random() % 4 == 0)
        text.insert(random() % (text.size() + 1), 1, u" -+.,e5x"[random() % 8]);
    return text;
}

struct Reading {
    std::int32_t state;
    std::int32_t length;
    std::uint32_t options;
    bool wantsEnd;
    oracle::Units text;
};

Reading anyReading(TextCall& call, Member member, std::uint32_t accepted)
{
    Reading reading;
    reading.state = member == Member::kEx ? pick(call.random, 0, 1) : 0;
    reading.text = call.encode(member, anyNumber(call), reading.state);
    const auto all = static_cast<std::int32_t>(reading.text.size());
    reading.length = call.random() % 2 == 0 ? -1 : pick(call.random, 0, all);
    if (reading.length >= 0 && call.random() % 2 == 0)
        reading.text.resize(static_cast<std::size_t>(reading.length)); // and nothing behind
    reading.options = anyOptions(call.random, accepted);
    reading.wantsEnd = call.random() % 8 != 0;
    return reading;
}

// A number as it is mostly read: up to the terminator, and with no options.
Reading usualReading(TextCall& call)
{
    Reading reading{0, -1, 0, call.random() % 8 != 0, {}};
    reading.text = call.encode(Member::kPlain, anyUsualNumber(call), 0);
    return reading;
}

std::ostream& operator<<(std::ostream& out, const Reading& reading)
{
    out << "text" << std::hex;
    for (const std::uint32_t unit : reading.text)
        out << ' ' << unit;
    return out << ", options 0x" << reading.options << std::dec << ", length " << reading.length
               << ", state " << reading.state;
}

template <class Value>
bool same(Value value, Value wanted)
{
    return std::memcmp(&value, &wanted, sizeof value) == 0;
}

constexpr std::int32_t kNoState = 77;

// `tested(handle, text, end, endState)` is the call.
template <class Unit, class Value, class Tested>
bool compareReading(TextCall& call, const Reading& reading,
                    const std::optional<oracle::Parsed<Value>>& wanted, const Tested& tested)
{
    if (!wanted)
        return false;
    const auto units = narrowUnits<Unit>(reading.text);
    const Unit* const text = textAreas().text.place(units, anyGuardOf(call.random));
    Unit mark{};
    Unit* end = &mark;
    std::int32_t endState = kNoState;
    const Value value = tested(call.handle(), text, reading.wantsEnd ? &end : nullptr, &endState);
    EXPECT_PRED2(same<Value>, value, wanted->value) << reading;
    EXPECT_EQ(call.locale.record.lastError, wanted->error) << reading;
    if (reading.wantsEnd && wanted->end)
        EXPECT_EQ(end - text, *wanted->end) << reading;
    else
        EXPECT_EQ(end, &mark) << reading;
    EXPECT_EQ(endState, wanted->endState.value_or(kNoState)) << reading;
    EXPECT_TRUE(textAreas().text.holds(units)) << reading;
    return true;
}

constexpr std::uint32_t kReadOptions = TS_OPT_OBJECT_VALUE | TS_OPT_MAP_DIGITS | TS_OPT_MONETARY;

template <class Unit, class Tested>
bool compareLong(TextCall& call, Member member, const Tested& tested)
{
    const Reading reading = anyReading(call, member, kReadOptions | TS_OPT_UNSIGNED);
    constexpr std::int32_t kBases[] = {0, 0, 10, 10, 16, 16, 8, 2, 36, 1, -1, 37};
    const std::int32_t base = kBases[call.random() % std::size(kBases)];
    const auto wanted = wellDefined([&] {
        return oracle::stringToLong(call.locale.reference, member,
                                    {reading.text, reading.state, reading.length}, base,
                                    reading.options);
    });
    return compareReading<Unit, std::int32_t>(
        call, reading, wanted,
        [&](TSLocale* handle, const Unit* text, Unit** end, std::int32_t* endState) {
            return tested(handle, text, reading, end, endState, base);
        });
}

template <class Unit, class Tested>
bool compareDouble(TextCall& call, Member member, const Tested& tested)
{
    const Reading reading = anyReading(call, member, kReadOptions);
    const auto wanted = wellDefined([&] {
        return oracle::stringToDouble(call.locale.reference, member,
                                      {reading.text, reading.state, reading.length},
                                      reading.options);
    });
    return compareReading<Unit, double>(
        call, reading, wanted,
        [&](TSLocale* handle, const Unit* text, Unit** end, std::int32_t* endState) {
            return tested(handle, text, reading, end, endState);
        });
}

// The calls of members without and with a state.
template <auto Function>
constexpr auto kLong = [](TSLocale* handle, const auto* text, const Reading& reading, auto** end,
                          std::int32_t*, std::int32_t base) {
    return Function(handle, text, reading.length, end, base, reading.options);
};
template <auto Function>
constexpr auto kDouble =
    [](TSLocale* handle, const auto* text, const Reading& reading, auto** end, std::int32_t*) {
        return Function(handle, text, reading.length, end, reading.options);
    };

TEST(ReadingAgainstOracle, TSStringToLong)
{
    callTexts([](TextCall& call) {
        return compareLong<char>(call, Member::kPlain, kLong<TSStringToLong>);
    });
}
TEST(ReadingAgainstOracle, TSStringToLongEx)
{
    callTexts([](TextCall& call) {
        return compareLong<char>(call, Member::kEx,
                                 [](TSLocale* handle, const char* text, const Reading& reading,
                                    char** end, std::int32_t* endState, std::int32_t base) {
                                     return TSStringToLongEx(handle, text, reading.state,
                                                             reading.length, end, endState, base,
                                                             reading.options);
                                 });
    });
}
TEST(ReadingAgainstOracle, TSStringToLongU)
{
    callTexts([](TextCall& call) {
        return compareLong<TSChar16>(call, Member::kUnicode, kLong<TSStringToLongU>);
    });
}
TEST(ReadingAgainstOracle, TSStringToLongW)
{
    callTexts([](TextCall& call) {
        return compareLong<TSChar32>(call, Member::kPacked, kLong<TSStringToLongW>);
    });
}

TEST(ReadingAgainstOracle, UsualLongs)
{
    callTexts([](TextCall& call) {
        const Reading reading = usualReading(call);
        const auto wanted = wellDefined([&] {
            return oracle::stringToLong(call.locale.reference, Member::kPlain,
                                        {reading.text, 0, reading.length}, 10, 0);
        });
        return compareReading<char, std::int32_t>(
            call, reading, wanted,
            [&](TSLocale* handle, const char* text, char** end, std::int32_t*) {
                return TSStringToLong(handle, text, reading.length, end, 10, 0);
            });
    });
}
TEST(ReadingAgainstOracle, UsualDoubles)
{
    callTexts([](TextCall& call) {
        const Reading reading = usualReading(call);
        const auto wanted = wellDefined([&] {
            return oracle::stringToDouble(call.locale.reference, Member::kPlain,
                                          {reading.text, 0, reading.length}, 0);
        });
        return compareReading<char, double>(
            call, reading, wanted,
            [&](TSLocale* handle, const char* text, char** end, std::int32_t*) {
                return TSStringToDouble(handle, text, reading.length, end, 0);
            });
    });
}

TEST(ReadingAgainstOracle, TSStringToDouble)
{
    callTexts([](TextCall& call) {
        return compareDouble<char>(call, Member::kPlain, kDouble<TSStringToDouble>);
    });
}
TEST(ReadingAgainstOracle, TSStringToDoubleEx)
{
    callTexts([](TextCall& call) {
        return compareDouble<char>(call, Member::kEx,
                                   [](TSLocale* handle, const char* text, const Reading& reading,
                                      char** end, std::int32_t* endState) {
                                       return TSStringToDoubleEx(handle, text, reading.state,
                                                                 reading.length, end, endState,
                                                                 reading.options);
                                   });
    });
}
TEST(ReadingAgainstOracle, TSStringToDoubleU)
{
    callTexts([](TextCall& call) {
        return compareDouble<TSChar16>(call, Member::kUnicode, kDouble<TSStringToDoubleU>);
    });
}
TEST(ReadingAgainstOracle, TSStringToDoubleW)
{
    callTexts([](TextCall& call) {
        return compareDouble<TSChar32>(call, Member::kPacked, kDouble<TSStringToDoubleW>);
    });
}

} // namespace
} // namespace vlx::test
