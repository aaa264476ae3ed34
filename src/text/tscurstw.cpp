// TSCurrencyToStringW: an amount of money as 32-bit text.
#include "text/money.hpp"

TS_TRACE_UNIT("tscurstw");

namespace {

// Deliberate: symbol and signs have room for three characters only.
constexpr vlx::MoneySizes kSizes{128, 4, 4, 4};

} // namespace

int32_t TSCurrencyToStringW(TSLocale* handle, double value, TSChar32* destination, int32_t size,
                            uint32_t options)
{
    TS_TRACE(TSCurrencyToStringW);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kMoneyOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    const vlx::PackedReader reader{*locale, asked.ofObject};
    const vlx::Signs& signs = vlx::signsOf(*locale);
    const vlx::MoneyText<TSChar32> money(reader, reader, signs, kSizes, value,
                                         (options & TS_OPT_INTERNATIONAL) != 0);
    const vlx::Written written =
        vlx::putMoney(money, signs, destination, size - asked.terminated, vlx::kWholeUnits);
    if (asked.terminated)
        destination[written.count] = 0;
    TS_STORE(locale->lastError, written.code, "Not all of the amount was written, err = %d");
    TS_RETURN(written.count + asked.terminated);
}
