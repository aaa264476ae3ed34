// TSStringToLong: a whole number from text in the form of the locale.
#include "text/parse.hpp"
#include "text/usual.hpp"

TS_TRACE_UNIT("tsstrlng");

namespace {

// Reads the usual text of a whole number, with no more digits than fit for certain. False if it is
// another one.
bool readUsual(const TSLocale& locale, const char* string, char** end, int32_t& value)
{
    constexpr int kMostDigits = 9;
    const vlx::UsualBytes bytes(locale);
    const auto separator = static_cast<char>(locale.thousandsSeparator);
    if (bytes.isAmbiguous(locale.thousandsSeparator))
        return false;
    const char* at = string;
    const bool negative = bytes.takeSign(at);
    std::uint32_t magnitude = 0;
    int digits = 0;
    for (; *at != 0; ++at) {
        if (bytes.isBlank(*at))
            return false;
        const std::uint32_t digit = bytes.digit(*at);
        if (digit <= 9) {
            magnitude = magnitude * 10 + digit;
            ++digits;
        } else if (digits == 0 || *at != separator) {
            return false;
        }
        if (digits > kMostDigits)
            return false;
    }
    if (digits == 0)
        return false;
    value = static_cast<int32_t>(negative ? 0 - magnitude : magnitude);
    if (end)
        *end = vlx::writable(at);
    return true;
}

} // namespace

int32_t TSStringToLong(TSLocale* handle, const char* string, int32_t length, char** end,
                       int32_t base, uint32_t options)
{
    TS_TRACE(TSStringToLong);
    TSLocale* const locale = tsLocale(handle);
    if (end)
        *end = vlx::writable(string);
    if (!vlx::isBase(base))
        TS_FAIL(locale->lastError, TS_ERR_BASE, 0, "Invalid base %d", base);
    if (options & ~(vlx::kParseLongOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0, "Invalid options %#x", options);
    int32_t value;
    if (base == 10 && vlx::UsualBytes::isFor(*locale, length, options) &&
        readUsual(*locale, string, end, value)) {
        locale->lastError = TS_ERR_NONE;
        TS_RETURN(value);
    }
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, 0, length);
    const vlx::PlainReader reader{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    const vlx::Signs& signs = vlx::signsOf(*locale);
    vlx::NumberTexts<char> texts;
    takeTexts(texts, reader, reader, signs, vlx::plainDigits(*locale), options, false);
    const char* const limit = string + (length < 0 ? vlx::unitsOf(string) : length);

    const auto read = [&](const auto& tokens, const auto& text) {
        vlx::LongReader number(tokens, text, (options & TS_OPT_UNSIGNED) != 0, false);
        const int32_t result = number.read(base);
        if (end)
            *end = vlx::writable(number.end().at);
        return result;
    };
    if (locale->flags & vlx::kLocaleSingleByte)
        value = read(vlx::SingleTokens(*locale, texts, signs),
                     vlx::Text<vlx::SingleForm>{string, limit});
    else
        value = read(vlx::MultiTokens{*locale, texts}, vlx::Text<vlx::MultiForm>{string, limit});
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
