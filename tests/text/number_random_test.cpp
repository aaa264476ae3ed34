// The formatters of numbers and of money against the oracle: result, code, every unit of the
// destination and of what lies around it.
#include "text/random_text.hpp"

namespace vlx::test {
namespace {

std::int32_t anyLong(Random& random)
{
    constexpr std::int32_t kSpecial[] = {0, 1, -1, 999, 1000, -1000, INT32_MAX, INT32_MIN, -10};
    switch (random() % 3) {
    case 0:
        return kSpecial[random() % std::size(kSpecial)];
    case 1:
        return pick(random, -20000, 20000);
    default:
        return static_cast<std::int32_t>(random());
    }
}

template <class Unit, class Value, class Reference, class Tested>
bool compareNumber(TextCall& call, Value value, std::uint32_t accepted, Reference reference,
                   Tested tested)
{
    const Writing writing = anyWriting(call.random, accepted);
    return compareWriting<Unit>(
        call, writing,
        [&](const oracle::Target& target) {
            return reference(call.locale.reference, value, target, writing.options);
        },
        [&](Unit* destination) { return tested(call.handle(), value, destination, writing); },
        [&] { return ::testing::PrintToString(value); });
}

template <class Unit, class Tested>
bool compareLong(TextCall& call, Member member, Tested tested)
{
    return compareNumber<Unit>(
        call, anyLong(call.random), TS_OPT_OBJECT_VALUE | TS_OPT_TERMINATE | TS_OPT_UNSIGNED,
        [&](const oracle::TextLocale& locale, std::int32_t value, const oracle::Target& target,
            std::uint32_t options) {
            return oracle::longToString(locale, member, value, target, options);
        },
        tested);
}

template <class Unit, class Tested>
bool compareDouble(TextCall& call, Member member, Tested tested)
{
    return compareNumber<Unit>(
        call, anyDouble(call.random), TS_OPT_OBJECT_VALUE | TS_OPT_TERMINATE,
        [&](const oracle::TextLocale& locale, double value, const oracle::Target& target,
            std::uint32_t options) {
            return oracle::doubleToString(locale, member, value, target, options);
        },
        tested);
}

template <class Unit, class Tested>
bool compareCurrency(TextCall& call, Member member, Tested tested)
{
    return compareNumber<Unit>(
        call, anyDouble(call.random), TS_OPT_OBJECT_VALUE | TS_OPT_TERMINATE | TS_OPT_INTERNATIONAL,
        [&](const oracle::TextLocale& locale, double value, const oracle::Target& target,
            std::uint32_t options) {
            return oracle::currencyToString(locale, member, value, target, options);
        },
        tested);
}

// The calls of members without and with a state.
template <auto Function>
constexpr auto kWrite =
    [](TSLocale* handle, auto value, auto* destination, const Writing& writing) {
        return Function(handle, value, destination, writing.size, writing.options);
    };
template <auto Function>
constexpr auto kWriteEx =
    [](TSLocale* handle, auto value, char* destination, const Writing& writing) {
        return Function(handle, value, destination, writing.state, writing.size, writing.options);
    };

TEST(WritingAgainstOracle, TSLongToString)
{
    callTexts([](TextCall& call) {
        return compareLong<char>(call, Member::kPlain, kWrite<TSLongToString>);
    });
}
TEST(WritingAgainstOracle, TSLongToStringEx)
{
    callTexts([](TextCall& call) {
        return compareLong<char>(call, Member::kEx, kWriteEx<TSLongToStringEx>);
    });
}
TEST(WritingAgainstOracle, TSLongToStringU)
{
    callTexts([](TextCall& call) {
        return compareLong<TSChar16>(call, Member::kUnicode, kWrite<TSLongToStringU>);
    });
}
TEST(WritingAgainstOracle, TSLongToStringW)
{
    callTexts([](TextCall& call) {
        return compareLong<TSChar32>(call, Member::kPacked, kWrite<TSLongToStringW>);
    });
}

TEST(WritingAgainstOracle, TSDoubleToString)
{
    callTexts([](TextCall& call) {
        return compareDouble<char>(call, Member::kPlain, kWrite<TSDoubleToString>);
    });
}
TEST(WritingAgainstOracle, TSDoubleToStringEx)
{
    callTexts([](TextCall& call) {
        return compareDouble<char>(call, Member::kEx, kWriteEx<TSDoubleToStringEx>);
    });
}
TEST(WritingAgainstOracle, TSDoubleToStringU)
{
    callTexts([](TextCall& call) {
        return compareDouble<TSChar16>(call, Member::kUnicode, kWrite<TSDoubleToStringU>);
    });
}
TEST(WritingAgainstOracle, TSDoubleToStringW)
{
    callTexts([](TextCall& call) {
        return compareDouble<TSChar32>(call, Member::kPacked, kWrite<TSDoubleToStringW>);
    });
}

TEST(WritingAgainstOracle, TSCurrencyToString)
{
    callTexts([](TextCall& call) {
        return compareCurrency<char>(call, Member::kPlain, kWrite<TSCurrencyToString>);
    });
}
TEST(WritingAgainstOracle, TSCurrencyToStringEx)
{
    callTexts([](TextCall& call) {
        return compareCurrency<char>(call, Member::kEx, kWriteEx<TSCurrencyToStringEx>);
    });
}
TEST(WritingAgainstOracle, TSCurrencyToStringU)
{
    callTexts([](TextCall& call) {
        return compareCurrency<TSChar16>(call, Member::kUnicode, kWrite<TSCurrencyToStringU>);
    });
}
TEST(WritingAgainstOracle, TSCurrencyToStringW)
{
    callTexts([](TextCall& call) {
        return compareCurrency<TSChar32>(call, Member::kPacked, kWrite<TSCurrencyToStringW>);
    });
}

} // namespace
} // namespace vlx::test
