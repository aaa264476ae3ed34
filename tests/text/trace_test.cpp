// What formatters and parsers trace of their failures: one message before each is told, also where
// the text that was made so far stands.
#include <functional>

#include "frame/trace.hpp"
#include "support/recording_services.hpp"
#include "text/formatted.hpp"

namespace vlx::test {
namespace {

constexpr TSTimeFields kTime{9, 5, 13, 7, 2, 105, 1, 65};
constexpr std::int32_t kSize = 100;

class TextTrace : public ::testing::Test {
  protected:
    TextTrace() : stateful_(statefulSpec()) {}
    ~TextTrace() override { Trace::setMask(0); }

    static LocaleSpec statefulSpec()
    {
        LocaleSpec spec = LocaleSpec::builtin();
        spec.shape = PageShape::kStateful2;
        return spec;
    }

    // The messages of a call, whose function and code are told.
    void expectMessages(const char* function, std::int32_t code, int count,
                        const std::function<void(TSLocale*)>& call)
    {
        Trace::setMask(TRC1_ERRORS);
        Trace::clear();
        call(stateful_.handle());
        EXPECT_EQ(stateful_.record().lastError, code) << function;
        EXPECT_EQ(Trace::count(function, TraceKind::kPrint), count) << function;
        EXPECT_EQ(Trace::records().size(), static_cast<std::size_t>(count)) << function;
    }

    // Calls a formatter with a size, which fits or does not.
    void expectOfSize(const char* function,
                      const std::function<void(TSLocale*, std::int32_t size)>& call)
    {
        expectMessages(function, TS_ERR_BUFFER, 1, [&](TSLocale* locale) { call(locale, 1); });
        EXPECT_TRUE(Trace::printed("was written, err = 40")) << function;
        expectMessages(function, TS_ERR_NONE, 0, [&](TSLocale* locale) { call(locale, kSize); });
    }

    Formatted stateful_;
    char text_[kSize] = {};
    TSChar16 unicode_[kSize] = {};
    TSChar32 packed_[kSize] = {};
};

TEST_F(TextTrace, TellsOfANumberThatDoesNotFit)
{
    expectOfSize("TSLongToString", [&](TSLocale* locale, std::int32_t size) {
        TSLongToString(locale, 123, text_, size, 0);
    });
    expectOfSize("TSLongToStringEx", [&](TSLocale* locale, std::int32_t size) {
        TSLongToStringEx(locale, 123, text_, 0, size, 0);
    });
    expectOfSize("TSLongToStringU", [&](TSLocale* locale, std::int32_t size) {
        TSLongToStringU(locale, 123, unicode_, size, 0);
    });
    expectOfSize("TSLongToStringW", [&](TSLocale* locale, std::int32_t size) {
        TSLongToStringW(locale, 123, packed_, size, 0);
    });
    expectOfSize("TSDoubleToString", [&](TSLocale* locale, std::int32_t size) {
        TSDoubleToString(locale, 123, text_, size, 0);
    });
    expectOfSize("TSDoubleToStringEx", [&](TSLocale* locale, std::int32_t size) {
        TSDoubleToStringEx(locale, 123, text_, 0, size, 0);
    });
    expectOfSize("TSDoubleToStringU", [&](TSLocale* locale, std::int32_t size) {
        TSDoubleToStringU(locale, 123, unicode_, size, 0);
    });
    expectOfSize("TSDoubleToStringW", [&](TSLocale* locale, std::int32_t size) {
        TSDoubleToStringW(locale, 123, packed_, size, 0);
    });
}

TEST_F(TextTrace, TellsOfAnAmountThatDoesNotFit)
{
    for (const std::uint32_t options : {0u, TS_OPT_CHAR_COUNT}) {
        expectOfSize("TSCurrencyToString", [&](TSLocale* locale, std::int32_t size) {
            TSCurrencyToString(locale, 123, text_, size, options);
        });
        expectOfSize("TSCurrencyToStringU", [&](TSLocale* locale, std::int32_t size) {
            TSCurrencyToStringU(locale, 123, unicode_, size, options);
        });
        expectOfSize("TSCurrencyToStringW", [&](TSLocale* locale, std::int32_t size) {
            TSCurrencyToStringW(locale, 123, packed_, size, options);
        });
    }
    expectOfSize("TSCurrencyToStringEx", [&](TSLocale* locale, std::int32_t size) {
        TSCurrencyToStringEx(locale, 123, text_, 0, size, TS_OPT_CHAR_COUNT);
    });
}

TEST_F(TextTrace, TellsOfATimeThatCannotBeWritten)
{
    const TSChar16 unicode[] = {'%', 'Z', 0};
    const TSChar32 packed[] = {'%', 'Z', 0};
    for (const std::uint32_t options : {0u, TS_OPT_CHAR_COUNT}) {
        expectMessages("TSTimeToString", TS_ERR_DIRECTIVE, 1, [&](TSLocale* locale) {
            TSTimeToString(locale, &kTime, text_, kSize, "%Z", -1, options);
        });
        expectMessages("TSTimeToStringEx", TS_ERR_DIRECTIVE, 1, [&](TSLocale* locale) {
            TSTimeToStringEx(locale, &kTime, text_, 0, kSize, "%Z", 0, -1, options);
        });
        expectMessages("TSTimeToStringU", TS_ERR_DIRECTIVE, 1, [&](TSLocale* locale) {
            TSTimeToStringU(locale, &kTime, unicode_, kSize, unicode, -1, options);
        });
        expectMessages("TSTimeToStringW", TS_ERR_DIRECTIVE, 1, [&](TSLocale* locale) {
            TSTimeToStringW(locale, &kTime, packed_, kSize, packed, -1, options);
        });
        expectMessages("TSTimeToString", TS_ERR_NONE, 0, [&](TSLocale* locale) {
            TSTimeToString(locale, &kTime, text_, kSize, "%c", -1, options);
        });
    }
}

TEST_F(TextTrace, TellsOfATimeThatCannotBeRead)
{
    TSTimeFields time{};
    expectMessages("TSStringToTime", TS_ERR_NOT_FOUND, 1,
                   [&](TSLocale* locale) { TSStringToTime(locale, &time, "x", -1, "%d", -1, 0); });
    expectMessages("TSStringToTimeEx", TS_ERR_DIRECTIVE, 1, [&](TSLocale* locale) {
        TSStringToTimeEx(locale, &time, "x", 0, -1, "%Z", 0, -1, 0);
    });
}

TEST_F(TextTrace, SaysNothingOfATextThatIsNoNumber)
{
    expectMessages("TSStringToDouble", TS_ERR_NONE, 0,
                   [&](TSLocale* locale) { TSStringToDouble(locale, "x", -1, nullptr, 0); });
    expectMessages("TSStringToLong", TS_ERR_BASE, 1,
                   [&](TSLocale* locale) { TSStringToLong(locale, "x", -1, nullptr, 1, 0); });
}

} // namespace
} // namespace vlx::test
