// TSCurrencyToString: an amount of money in the form of the locale.
#include "text/counted.hpp"
#include "text/money.hpp"

TS_TRACE_UNIT("tscurstr");

namespace {

// Deliberate: the negative sign has room for three bytes only.
constexpr vlx::MoneySizes kSizes{32, 32, 32, 4};

// Writes an amount; one place of `size` is kept for the terminator, if that is wanted.
vlx::Written write(const TSLocale& locale, double value, char* destination, int32_t size,
                   uint32_t options)
{
    const vlx::PlainReader reader{locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    const vlx::Signs& signs = vlx::signsOf(locale);
    const vlx::MoneyText<char> money(reader, reader, signs, kSizes, value,
                                     (options & TS_OPT_INTERNATIONAL) != 0);
    if (locale.flags & vlx::kLocaleSingleByte)
        return vlx::putMoney(money, signs, destination, size, vlx::kWholeUnits);
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    return vlx::putMoney(money, signs, destination, size,
                         [&](const auto& at, int32_t length, int32_t room) {
                             const int32_t most = std::min(length, room);
                             int32_t taken = 0;
                             while (taken < most) {
                                 const int32_t step = page.charLength[vlx::valueOf(at(taken))];
                                 if (step > most - taken)
                                     break;
                                 taken += step;
                             }
                             return taken;
                         });
}

} // namespace

int32_t TSCurrencyToString(TSLocale* handle, double value, char* destination, int32_t size,
                           uint32_t options)
{
    TS_TRACE(TSCurrencyToString);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    // Deliberate: where characters are counted the size is looked at before the options.
    if (asked.counted && size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    if (options & ~(vlx::kMoneyOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    if (!asked.counted) {
        const vlx::Written written =
            write(*locale, value, destination, size - asked.terminated, options);
        if (asked.terminated)
            destination[written.count] = 0;
        TS_STORE(locale->lastError, written.code, "Not all of the amount was written, err = %d");
        TS_RETURN(written.count + asked.terminated);
    }

    vlx::CountedText text(size);
    const vlx::Written written =
        write(*locale, value, text.bytes(), text.size() - asked.terminated, options);
    const auto handed = vlx::withPlainForm(*locale, [&](const auto& form) {
        return text.handOver(form, 0, written.count, destination, size, asked.terminated);
    });
    TS_STORE(locale->lastError, handed.whole ? written.code : TS_ERR_BUFFER,
             "Not all of the amount was written, err = %d");
    TS_RETURN(handed.characters);
}
