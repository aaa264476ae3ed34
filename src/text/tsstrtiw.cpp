// TSStringToTimeW: a broken-down time from 32-bit text, by a pattern.
#include "text/timeread.hpp"

TS_TRACE_UNIT("tsstrtiw");

int32_t TSStringToTimeW(TSLocale* handle, TSTimeFields* time, const TSChar32* string,
                        int32_t length, const TSChar32* pattern, int32_t patternLength,
                        uint32_t options)
{
    TS_TRACE(TSStringToTimeW);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~(TS_OPT_OBJECT_VALUE | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    const vlx::TimeInput call{*locale, *time, vlx::patternOf(*locale), vlx::signsOf(*locale)};
    const vlx::UnitInput<vlx::PackedForm, vlx::PackedReader> input{
        {*locale, (options & TS_OPT_OBJECT_VALUE) != 0}};
    vlx::TimeReader reader(call, input, textOf(input.form(), string, length), 0);
    const int32_t code = reader.read(textOf(input.form(), pattern, patternLength));
    if (code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, code, -1, "The text does not match, code %d", code);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(static_cast<int32_t>(reader.text().at - string));
}
