// TSStringToLong: a whole number from text in the form of the locale.
#include "text/parse.hpp"

TS_TRACE_UNIT("tsstrlng");

namespace {

// Reads the usual text the short way: decimal digits, as many as fit for certain, behind a sign or
// none and with separators among them, up to the terminator. False if it is another one.
bool readUsual(const TSLocale& locale, const char* string, char** end, int32_t& value)
{
    constexpr int kMostDigits = 9;
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    const vlx::Signs& signs = vlx::signsOf(locale);
    const std::uint32_t separator = locale.thousandsSeparator;
    if (separator - signs.zero <= 9 || separator == signs.plus || separator == signs.minus)
        return false; // it passes for one of them
    const auto byteAt = [](const char* at) { return vlx::valueOf(*at); };
    const char* at = string;
    const bool negative = byteAt(at) == signs.minus;
    if (negative || byteAt(at) == signs.plus) {
        if (page.charType[byteAt(at)] & vlx::kBlankType)
            return false;
        ++at;
    }
    std::uint32_t magnitude = 0;
    int digits = 0;
    for (; *at != 0; ++at) {
        if (page.charType[byteAt(at)] & vlx::kBlankType)
            return false;
        const std::uint32_t digit = byteAt(at) - signs.zero;
        if (digit <= 9) {
            magnitude = magnitude * 10 + digit;
            ++digits;
        } else if (digits == 0 || byteAt(at) != separator) {
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
    if (options == 0 && base == 10 && length < 0 && (locale->flags & vlx::kLocaleSingleByte) &&
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
