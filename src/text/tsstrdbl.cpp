// TSStringToDouble: a double from text in the form of the locale.
#include "text/parse.hpp"
#include "text/usual.hpp"

TS_TRACE_UNIT("tsstrdbl");

namespace {

// The digits before the point, at most so many that a double holds them, with separators between
// them; -1 if there are none or more. Stops behind them.
std::int64_t readWhole(const vlx::UsualBytes& bytes, char separator, const char*& at)
{
    constexpr int kMostDigits = 15;
    std::int64_t whole = 0;
    int digits = 0;
    bool isSeparated = true; // the last character is no digit
    for (; *at != 0 && digits <= kMostDigits && !bytes.isBlank(*at); ++at) {
        const std::uint32_t digit = bytes.digit(*at);
        if (digit <= 9) {
            whole = whole * 10 + digit;
            ++digits;
            isSeparated = false;
        } else if (*at == separator && !isSeparated) {
            isSeparated = true;
        } else {
            break;
        }
    }
    return isSeparated || digits > kMostDigits ? -1 : whole;
}

// Reads the usual text of a double, without an exponent. False if it is another one.
bool readUsual(const TSLocale& locale, const char* string, const char*& at, double& value)
{
    const vlx::UsualBytes bytes(locale);
    const auto separator = static_cast<char>(locale.thousandsSeparator);
    const auto point = static_cast<char>(locale.decimalPoint);
    if (bytes.isAmbiguous(locale.thousandsSeparator) || bytes.isAmbiguous(locale.decimalPoint))
        return false;
    at = string;
    const bool negative = bytes.takeSign(at);
    const std::int64_t whole = readWhole(bytes, separator, at);
    if (whole < 0)
        return false;
    auto mantissa = static_cast<double>(whole);
    if (*at == point && *at != 0 && point != separator && !bytes.isBlank(point)) {
        std::int32_t exponent = 0;
        while (*++at != 0) {
            const std::uint32_t digit = bytes.digit(*at);
            if (digit > 9 || bytes.isBlank(*at))
                return false;
            if (exponent > -vlx::kMostExponent)
                --exponent;
            mantissa = mantissa + vlx::powerOfTen(exponent) * digit;
        }
    }
    value = negative ? -mantissa : mantissa;
    return *at == 0;
}

} // namespace

double TSStringToDouble(TSLocale* handle, const char* string, int32_t length, char** end,
                        uint32_t options)
{
    TS_TRACE(TSStringToDouble);
    TSLocale* const locale = tsLocale(handle);
    // Deliberate: refused options leave the end alone.
    if (options & ~(vlx::kParseDoubleOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, 0.0, "Invalid options %#x", options);
    const char* at = string;
    double value;
    if (vlx::UsualBytes::isFor(*locale, length, options) && readUsual(*locale, string, at, value)) {
        if (end)
            *end = vlx::writable(at);
        locale->lastError = TS_ERR_NONE;
        TS_RETURN(value);
    }
    if ((options & TS_OPT_CHAR_COUNT) && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, 0, length);
    const vlx::PlainReader reader{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    const vlx::Signs& signs = vlx::signsOf(*locale);
    vlx::NumberTexts<char> texts;
    takeTexts(texts, reader, reader, signs, vlx::plainDigits(*locale), options, true);
    const char* const limit = string + (length < 0 ? vlx::unitsOf(string) : length);

    const auto read = [&](const auto& tokens, auto text) {
        const double result = readDouble(tokens, texts, signs, text);
        at = text.at;
        return result;
    };
    if (locale->flags & vlx::kLocaleSingleByte)
        value = read(vlx::SingleTokens(*locale, texts, signs),
                     vlx::Text<vlx::SingleForm>{string, limit});
    else
        value = read(vlx::MultiTokens{*locale, texts}, vlx::Text<vlx::MultiForm>{string, limit});
    if (end)
        *end = vlx::writable(at);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(value);
}
