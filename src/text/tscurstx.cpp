// TSCurrencyToStringEx: an amount of money in stateful text.
#include "text/counted.hpp"
#include "text/money.hpp"
#include "text/shifted.hpp"

TS_TRACE_UNIT("tscurstx");

namespace {

constexpr vlx::MoneySizes kSizes{32, 32, 32, 32};

// Writes the value and the pieces behind it, whose shift bytes tell the states of their characters.
bool putTail(const TSCodePageHeader& page, const vlx::MoneyTail<char>& tail,
             vlx::ShiftedOutput& output)
{
    int32_t state = 0;
    for (int32_t at = 0; at < tail.length();) {
        char bytes[256]; // of one character, whatever the page says
        bytes[0] = tail[at];
        if (vlx::isShiftIn(page, bytes[0]) || vlx::isShiftOut(page, bytes[0])) {
            state = vlx::isShiftIn(page, bytes[0]);
            ++at;
            continue;
        }
        const int32_t length = state ? page.maxCharBytes : 1;
        if (length > tail.length() - at)
            return false;
        for (int32_t i = 1; i < length; ++i)
            bytes[i] = tail[at + i];
        if (!output.putCharacter(bytes, state))
            return false;
        at += length;
    }
    return true;
}

// Writes an amount behind what the output has; false if not all of it fits.
bool write(TSLocale& locale, double value, vlx::ShiftedOutput& output, uint32_t options)
{
    const bool ofObject = (options & TS_OPT_OBJECT_VALUE) != 0;
    const vlx::Signs& signs = vlx::signsOf(locale);
    const vlx::MoneyText<char> money(vlx::PlainReader{locale, ofObject},
                                     vlx::ShiftReader{locale, ofObject}, signs, kSizes, value,
                                     (options & TS_OPT_INTERNATIONAL) != 0);
    const bool headFits = money.eachOfHead([&](const vlx::ValueText<char>& piece) {
        return output.putText(piece.at, 0, piece.length);
    });
    return headFits &&
           putTail(tsCodePage(locale.codePage), vlx::MoneyTail<char>(money, signs), output);
}

} // namespace

int32_t TSCurrencyToStringEx(TSLocale* handle, double value, char* destination, int32_t state,
                             int32_t size, uint32_t options)
{
    TS_TRACE(TSCurrencyToStringEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSCurrencyToString(locale, value, destination, size, options));
    const vlx::WriteOptions asked(options);
    // Deliberate: where characters are counted the size is looked at before the options.
    if (asked.counted && size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    if (options & ~(vlx::kMoneyOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    if (!asked.counted) {
        vlx::ShiftedOutput output(*locale, destination, state, size - asked.terminated);
        bool whole = write(*locale, value, output, options);
        if (asked.terminated)
            whole = output.terminate() && whole;
        TS_STORE(locale->lastError, whole ? TS_ERR_NONE : TS_ERR_BUFFER,
                 "Not all of the amount was written, err = %d");
        TS_RETURN(output.count());
    }

    vlx::CountedText text(size);
    vlx::ShiftedOutput output(*locale, text.bytes(), state, text.size() - asked.terminated);
    bool whole = write(*locale, value, output, options);
    if (asked.terminated) // what fills the buffer gives way for the shift byte here, too
        whole = output.close() && whole;
    const auto handed = text.handOver(vlx::ShiftForm{locale->codePage}, state, output.count(),
                                      destination, size, asked.terminated);
    TS_STORE(locale->lastError, whole && handed.whole ? TS_ERR_NONE : TS_ERR_BUFFER,
             "Not all of the amount was written, err = %d");
    TS_RETURN(handed.characters);
}
