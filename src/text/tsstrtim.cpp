// TSStringToTime: a broken-down time from text, by a pattern.
#include "text/timeread.hpp"

TS_TRACE_UNIT("tsstrtim");

int32_t TSStringToTime(TSLocale* handle, TSTimeFields* time, const char* string, int32_t length,
                       const char* pattern, int32_t patternLength, uint32_t options)
{
    TS_TRACE(TSStringToTime);
    TSLocale* const locale = tsLocale(handle);
    const bool counted = (options & TS_OPT_CHAR_COUNT) != 0;
    if (options & ~(TS_OPT_OBJECT_VALUE | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (counted && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, 0, length);
    if (counted && patternLength > 0)
        patternLength = TSCpCharsToBytes(locale->codePage, pattern, 0, patternLength);
    const bool ofObject = (options & TS_OPT_OBJECT_VALUE) != 0;
    const vlx::TimeInput call{*locale, *time, vlx::plainPattern(*locale), vlx::signsOf(*locale)};
    int32_t taken = 0;
    const int32_t code = vlx::withPlainForm(*locale, [&](const auto& form) {
        using Form = std::remove_cvref_t<decltype(form)>;
        const vlx::UnitInput<Form, vlx::PlainReader> input{{*locale, ofObject}};
        vlx::TimeReader reader(call, input, textOf(form, string, length), 0);
        const int32_t result = reader.read(textOf(form, pattern, patternLength));
        taken = static_cast<int32_t>(reader.text().at - string);
        return result;
    });
    if (code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, code, -1, "The text does not match, code %d", code);
    if (counted)
        taken = TSNumChars(locale, string, taken, 0);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(taken);
}
