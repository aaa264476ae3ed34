// TSTimeToString: a broken-down time as text, by a pattern.
#include "text/counted.hpp"
#include "text/timetext.hpp"

TS_TRACE_UNIT("tstimstr");

int32_t TSTimeToString(TSLocale* handle, const TSTimeFields* time, char* destination, int32_t size,
                       const char* pattern, int32_t patternLength, uint32_t options)
{
    TS_TRACE(TSTimeToString);
    TSLocale* const locale = tsLocale(handle);
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kTimeOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    if (asked.counted && patternLength > 0)
        patternLength = TSCpCharsToBytes(locale->codePage, pattern, 0, patternLength);
    vlx::TimeCall call{*locale, *time, asked.ofObject, vlx::plainPattern(*locale),
                       vlx::signsOf(*locale)};
    const auto write = [&](const auto& form, char* to, int32_t room) {
        using Form = std::remove_cvref_t<decltype(form)>;
        return vlx::writeTime<Form, vlx::PlainReader>(call, textOf(form, pattern, patternLength),
                                                      to, room - asked.terminated);
    };
    if (!asked.counted) {
        const vlx::Written written = vlx::withPlainForm(
            *locale, [&](const auto& form) { return write(form, destination, size); });
        if (asked.terminated)
            destination[written.count] = 0;
        TS_STORE(locale->lastError, written.code, "Not all of the time was written, err = %d");
        TS_RETURN(written.count + asked.terminated);
    }

    vlx::CountedText text(size);
    int32_t code = TS_ERR_NONE;
    const auto handed = vlx::withPlainForm(*locale, [&](const auto& form) {
        const vlx::Written written = write(form, text.bytes(), text.size());
        code = written.code;
        return text.handOver(form, 0, written.count, destination, size, asked.terminated);
    });
    TS_STORE(locale->lastError, code, "Not all of the time was written, err = %d");
    TS_RETURN(handed.characters);
}
