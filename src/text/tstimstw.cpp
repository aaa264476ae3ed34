// TSTimeToStringW: a broken-down time as 32-bit text, by a pattern.
#include "text/timetext.hpp"

TS_TRACE_UNIT("tstimstw");

int32_t TSTimeToStringW(TSLocale* handle, const TSTimeFields* time, TSChar32* destination,
                        int32_t size, const TSChar32* pattern, int32_t patternLength,
                        uint32_t options)
{
    TS_TRACE(TSTimeToStringW);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kTimeOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    vlx::TimeCall call{*locale, *time, asked.ofObject, vlx::patternOf(*locale),
                       vlx::signsOf(*locale)};
    const vlx::Written written = vlx::writeTime<vlx::PackedForm, vlx::PackedReader>(
        call, textOf(vlx::PackedForm{}, pattern, patternLength), destination,
        size - asked.terminated);
    if (asked.terminated)
        destination[written.count] = 0;
    TS_STORE(locale->lastError, written.code, "Not all of the time was written, err = %d");
    TS_RETURN(written.count + asked.terminated);
}
