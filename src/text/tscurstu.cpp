// TSCurrencyToStringU: an amount of money as 16-bit text.
#include "text/money.hpp"

TS_TRACE_UNIT("tscurstu");

namespace {

constexpr vlx::MoneySizes kSizes{64, 64, 64, 64};

} // namespace

int32_t TSCurrencyToStringU(TSLocale* handle, double value, TSChar16* destination, int32_t size,
                            uint32_t options)
{
    TS_TRACE(TSCurrencyToStringU);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kMoneyOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    const vlx::UnicodeReader reader{*locale, asked.ofObject};
    const vlx::Signs& signs = vlx::kAsciiSigns;
    const vlx::MoneyText<TSChar16> money(reader, reader, signs, kSizes, value,
                                         (options & TS_OPT_INTERNATIONAL) != 0);
    const vlx::Written written =
        vlx::putMoney(money, signs, destination, size - asked.terminated, vlx::kWholeUnits);
    if (asked.terminated)
        destination[written.count] = 0;
    TS_STORE(locale->lastError, written.code, "Not all of the amount was written, err = %d");
    TS_RETURN(written.count + asked.terminated);
}
