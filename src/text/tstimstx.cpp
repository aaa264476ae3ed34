// TSTimeToStringEx: a broken-down time as stateful text, by a pattern.
#include "text/counted.hpp"
#include "text/shifted.hpp"
#include "text/timetext.hpp"

TS_TRACE_UNIT("tstimstx");

namespace {

class ShiftTimeOutput {
  public:
    using Form = vlx::ShiftForm;

    ShiftTimeOutput(vlx::TimeCall& call, char* destination, int32_t state, int32_t size)
        : call_(call), destination_(destination), firstState_(state),
          output_(call.locale, destination, state, size)
    {
    }

    Form form() const { return {call_.locale.codePage}; }
    vlx::ShiftedOutput& written() { return output_; }
    int32_t room() const { return output_.room(); }

    // A shift byte that closes the pattern may be left.
    bool ends(const vlx::Text<Form>& pattern) const
    {
        return pattern.at == pattern.end ||
               (pattern.left() == 1 && vlx::isShiftOut(page(), *pattern.at));
    }

    void putUsual(vlx::Text<Form>&) {} // there is no short way

    // Deliberate: a place more than the two that are used has to be left behind a shift byte.
    int32_t putUnit(char unit)
    {
        if (output_.state() && room() < 3)
            return TS_ERR_BUFFER;
        return output_.putCharacter(&unit, 0) ? TS_ERR_NONE : TS_ERR_BUFFER;
    }

    int32_t putLong(const char* character, int32_t)
    {
        return output_.putCharacter(character, 1) ? TS_ERR_NONE : TS_ERR_BUFFER;
    }

    // Deliberate: as in text without states, a number that ends with the room is reported as cut.
    int32_t putNumber(const vlx::TimeNumber& value, bool flag)
    {
        const vlx::TimeDigits number = timeDigits(value, flag);
        if (output_.state())
            output_.putShift(0);
        for (int i = 0; i < number.count && room() > 0; ++i) {
            const auto digit = static_cast<char>(number.digits[i] - '0' + call_.signs.zero);
            output_.putCharacter(&digit, 0);
        }
        return room() <= 0 ? TS_ERR_BUFFER : TS_ERR_NONE;
    }

    int32_t putName(int item)
    {
        char buffer[vlx::PlainReader::kNameSize];
        const int32_t state = output_.state();
        const vlx::ValueText<char> name =
            vlx::unclosed(page(), vlx::shiftItem(call_.locale, item, call_.ofObject, state, buffer,
                                                 sizeof buffer));
        return output_.putText(name.at, state, name.length) ? TS_ERR_NONE : TS_ERR_BUFFER;
    }

    int32_t nest(int item, bool atStart, int depth)
    {
        if (depth == vlx::kDeepestPattern) {
            call_.tooDeep = true;
            return TS_ERR_DIRECTIVE;
        }
        char buffer[vlx::PlainReader::kNameSize];
        const vlx::ValueText<char> pattern =
            vlx::shiftItem(call_.locale, item, call_.ofObject, 0, buffer, sizeof buffer);
        ShiftTimeOutput nested(call_, atStart ? destination_ : destination_ + output_.count(),
                               atStart ? firstState_ : output_.state(), room());
        vlx::Text<Form> walk{pattern.at, pattern.at + pattern.length};
        vlx::putTime(call_, walk, nested, depth + 1);
        output_.advance(nested.output_);
        return call_.tooDeep ? TS_ERR_DIRECTIVE : TS_ERR_NONE;
    }

  private:
    const TSCodePageHeader& page() const { return tsCodePage(call_.locale.codePage); }

    vlx::TimeCall& call_;
    char* const destination_;
    const int32_t firstState_;
    vlx::ShiftedOutput output_;
};

} // namespace

int32_t TSTimeToStringEx(TSLocale* handle, const TSTimeFields* time, char* destination,
                         int32_t state, int32_t size, const char* pattern, int32_t patternState,
                         int32_t patternLength, uint32_t options)
{
    TS_TRACE(TSTimeToStringEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSTimeToString(locale, time, destination, size, pattern, patternLength, options));
    const vlx::WriteOptions asked(options);
    if (options & ~(vlx::kTimeOptions | TS_OPT_CHAR_COUNT))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    if (size <= 0)
        TS_FAIL(locale->lastError, TS_ERR_BUFFER, 0, "No room, size %d", size);
    if (asked.counted && patternLength > 0)
        patternLength = TSCpCharsToBytes(locale->codePage, pattern, patternState, patternLength);
    vlx::TimeCall call{*locale, *time, asked.ofObject, vlx::patternOf(*locale),
                       vlx::signsOf(*locale)};
    const vlx::ShiftForm form{locale->codePage};
    vlx::Text<vlx::ShiftForm> text = textOf(form, pattern, patternLength, patternState);
    const auto write = [&](ShiftTimeOutput& output) {
        return text.at == text.end ? TS_ERR_NONE : vlx::putTime(call, text, output, 0);
    };
    if (!asked.counted) {
        ShiftTimeOutput output(call, destination, state, size - asked.terminated);
        const int32_t code = write(output);
        if (asked.terminated)
            output.written().terminate();
        TS_STORE(locale->lastError, code, "Not all of the time was written, err = %d");
        TS_RETURN(output.written().count());
    }

    vlx::CountedText counted(size);
    ShiftTimeOutput output(call, counted.bytes(), state, counted.size() - asked.terminated);
    const int32_t code = write(output);
    if (asked.terminated) // what fills the buffer gives way for the shift byte here, too
        output.written().close();
    const auto handed = counted.handOver(form, state, output.written().count(), destination, size,
                                         asked.terminated);
    TS_STORE(locale->lastError, code, "Not all of the time was written, err = %d");
    TS_RETURN(handed.characters);
}
