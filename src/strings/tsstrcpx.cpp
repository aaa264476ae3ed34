// TSStrcpyEx: a copy of stateful text that brings the states of source and destination together.
#include "chars/form.hpp"
#include "strings/copy.hpp"

TS_TRACE_UNIT("tsstrcpx");

namespace {

// How the states of the two are brought together.
struct Junction {
    bool skips = false;  // the source's first byte sets the destination's state: it is left out
    bool writes = false; // a shift byte goes before the copy
    bool fails = false;  // the destination has no room for it
};

Junction junctionOf(const TSCodePageHeader& page, int32_t state, int32_t size, const char* source,
                    int32_t sourceState)
{
    Junction junction;
    if ((state != 0) == (sourceState != 0))
        return junction;
    const bool toMulti = sourceState != 0;
    junction.skips = toMulti ? vlx::isShiftOut(page, *source) : vlx::isShiftIn(page, *source);
    junction.writes = !junction.skips;
    junction.fails = junction.writes && size < (toMulti ? page.maxCharBytes + 1 : 2);
    return junction;
}

} // namespace

int32_t TSStrcpyEx(TSLocale* handle, char* destination, int32_t state, int32_t size,
                   const char* source, int32_t sourceState, int32_t length, uint32_t options)
{
    TS_TRACE(TSStrcpyEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStrcpy(locale, destination, size, source, length, options));
    if (options & ~TS_OPT_CHAR_COUNT)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (length == 0 || size <= 0)
        TS_RETURN(0);
    const bool counted = options != 0;
    const auto countOf = [&](int32_t bytes) {
        return TSNumCharsEx(locale, source, sourceState, bytes, 0);
    };
    length = vlx::copyLength(*locale, source, sourceState, length, size, counted, countOf);

    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    const Junction junction = junctionOf(page, state, size, source, sourceState);
    if (junction.fails)
        TS_RETURN(0);
    if (junction.skips) { // both go on in the state that the byte sets, the destination's own
        sourceState = state;
        ++source;
        --length;
    }
    if (junction.writes) {
        *destination++ = static_cast<char>(sourceState ? page.shiftIn : page.shiftOut);
        --size;
    }
    const int32_t budget = counted ? length : std::min(length, size);

    const vlx::ShiftForm form{locale->codePage};
    vlx::Text<vlx::ShiftForm> text{source, source + budget, sourceState};
    const char* end = source; // behind the last character: no copy ends on a dangling shift
    const char* lastShift = nullptr;
    while (text.at != text.end) {
        if (vlx::isShiftIn(page, *text.at) || vlx::isShiftOut(page, *text.at)) {
            lastShift = text.at;
            text.state = vlx::isShiftIn(page, *text.at);
            end = ++text.at;
            continue;
        }
        if (form.length(text) > text.left())
            break;
        end = text.at += form.length(text);
    }
    if (lastShift && end == lastShift + 1)
        --end;
    const auto taken = static_cast<int32_t>(end - source);
    std::memmove(destination, source, static_cast<std::size_t>(taken));
    if (counted)
        TS_RETURN(TSNumCharsEx(locale, destination, sourceState, taken, 0));
    TS_RETURN(taken + (junction.writes ? 1 : 0));
}
