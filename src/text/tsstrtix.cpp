// TSStringToTimeEx: a broken-down time from stateful text, by a pattern.
#include "text/shifted.hpp"
#include "text/timeread.hpp"

TS_TRACE_UNIT("tsstrtix");

namespace {

struct ShiftInput {
    using Form = vlx::ShiftForm;
    static constexpr int32_t kTextSize = vlx::PlainReader::kNameSize;

    const TSLocale& locale;
    const bool ofObject;

    Form form() const { return {locale.codePage}; }
    bool isSingle(const vlx::Text<Form>& text) const { return text.state == 0; }
    bool canCompare(const vlx::Text<Form>& text) const { return text.state != 0; }

    vlx::ValueText<char> pattern(int item, char* buffer) const
    {
        return vlx::shiftItem(locale, item, ofObject, 0, buffer, kTextSize);
    }

    // Names stand in the state that the text is in, and need not be closed.
    vlx::NameMatch match(const vlx::TimeNames& names, const vlx::Text<Form>& text) const
    {
        return vlx::matchName<char, kTextSize>(
            names, text.at, text.end, [&](int item, char* buffer, int32_t size) {
                return vlx::unclosed(
                    page(), vlx::shiftItem(locale, item, ofObject, text.state, buffer, size));
            });
    }

    void advance(vlx::Text<Form>& text, int32_t length) const
    {
        const char* const end = text.at + length;
        while (text.at < end) {
            if (vlx::isShiftIn(page(), *text.at) || vlx::isShiftOut(page(), *text.at))
                text.state = vlx::isShiftIn(page(), *text.at++);
            else
                text.at = std::min(end, text.at + form().length(text));
        }
    }

    const TSCodePageHeader& page() const { return tsCodePage(locale.codePage); }
};

} // namespace

int32_t TSStringToTimeEx(TSLocale* handle, TSTimeFields* time, const char* string, int32_t state,
                         int32_t length, const char* pattern, int32_t patternState,
                         int32_t patternLength, uint32_t options)
{
    TS_TRACE(TSStringToTimeEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStringToTime(locale, time, string, length, pattern, patternLength, options));
    const bool counted = (options & TS_OPT_CHAR_COUNT) != 0;
    if (options & ~(TS_OPT_OBJECT_VALUE | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (counted && length > 0)
        length = TSCpCharsToBytes(locale->codePage, string, state, length);
    if (counted && patternLength > 0)
        patternLength = TSCpCharsToBytes(locale->codePage, pattern, patternState, patternLength);
    const vlx::TimeInput call{*locale, *time, vlx::patternOf(*locale), vlx::signsOf(*locale)};
    const ShiftInput input{*locale, (options & TS_OPT_OBJECT_VALUE) != 0};
    vlx::TimeReader reader(call, input, textOf(input.form(), string, length, state), 0);
    const int32_t code =
        length == 0 || patternLength == 0
            ? TS_ERR_NONE
            : reader.read(textOf(input.form(), pattern, patternLength, patternState));
    if (code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, code, -1, "The text does not match, code %d", code);
    auto taken = static_cast<int32_t>(reader.text().at - string);
    if (counted)
        taken = TSNumCharsEx(locale, string, state, taken, 0);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(taken);
}
