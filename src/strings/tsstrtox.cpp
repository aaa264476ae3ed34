// TSStrtokEx: the next token of a stateful string. Such a string cannot be cut in place, so the
// token is copied into a buffer.
#include <algorithm>

#include "chars/form.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"

TS_TRACE_UNIT("tsstrtox");

namespace {

// A place in the string and what is left from there.
struct Rest {
    const char* at;
    int32_t state;
    int32_t length;
};

struct Delimiters {
    const char* set;
    int32_t state;
    int32_t length;
};

int32_t bytesOf(const TSLocale& locale, const char* text, int32_t state, int32_t count,
                bool counted)
{
    if (count < 0)
        return vlx::unitsOf(text);
    return counted ? TSCpCharsToBytes(locale.codePage, text, state, count) : count;
}

int32_t upToDelimiter(TSLocale* locale, const Rest& rest, const Delimiters& delimiters)
{
    return TSStrcspnEx(locale, rest.at, rest.state, rest.length, delimiters.set, delimiters.state,
                       delimiters.length, 0);
}

// The bytes of the token that begins behind the delimiters at the rest's start.
int32_t findToken(TSLocale* locale, Rest& rest, const Delimiters& delimiters)
{
    const int32_t token = upToDelimiter(locale, rest, delimiters);
    if (token != 0)
        return token;
    const int32_t leading = TSStrspnEx(locale, rest.at, rest.state, rest.length, delimiters.set,
                                       delimiters.state, delimiters.length, 0);
    rest.at = TSMoveStringPointerEx(locale, rest.at, rest.state, leading, &rest.state, 0);
    rest.length -= leading;
    return rest.length > 0 ? upToDelimiter(locale, rest, delimiters) : 0;
}

// Ends the token in its buffer with the shift byte that it needs and a terminator. The last
// character goes back if the token has filled the buffer, which keeps one place for the terminator
// alone.
int32_t terminateToken(TSLocale* locale, char* token, int32_t state, int32_t used, int32_t size)
{
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    int32_t endState = state;
    const char* const end = TSMoveStringPointerEx(locale, token, state, used, &endState, 0);
    if ((locale->flags & vlx::kLocaleStateful) && endState != 0) {
        used = static_cast<int32_t>(end - token);
        if (used >= size) {
            used -= std::min<int32_t>(page.maxCharBytes, used);
            if (used > 0 && vlx::isShiftIn(page, token[used - 1])) {
                --used;
                endState = 0;
            }
        }
        if (endState != 0 && used < size)
            token[used++] = static_cast<char>(page.shiftOut);
    }
    token[used] = 0;
    return used;
}

} // namespace

int32_t TSStrtokEx(TSLocale* handle, char* token, int32_t tokenState, int32_t size, char* string,
                   int32_t state, int32_t* length, const char* delimiters, int32_t delimiterState,
                   int32_t delimiterLength, char** next, int32_t* nextState, uint32_t options)
{
    TS_TRACE(TSStrtokEx);
    TSLocale* const locale = tsLocale(handle);
    locale->lastError = TS_ERR_NONE;
    *next = nullptr;
    if (!string) {
        *length = 0;
        TS_RETURN(0);
    }
    const bool counted = (options & TS_OPT_CHAR_COUNT) != 0;
    Rest rest{string, state, bytesOf(*locale, string, state, *length, counted)};
    const Delimiters set{delimiters, delimiterState,
                         bytesOf(*locale, delimiters, delimiterState, delimiterLength, counted)};
    if (counted && size > 0) // the room of as many characters as the string's own begin with
        size = TSCpCharsToBytesWithin(locale->codePage, string, state, size, rest.length);
    const int32_t room = size > 0 ? size - 1 : 0;

    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    if ((locale->flags & vlx::kLocaleStateful) && rest.length > 0 &&
        (vlx::isShiftIn(page, *rest.at) || vlx::isShiftOut(page, *rest.at))) {
        rest.state = vlx::isShiftIn(page, *rest.at++);
        --rest.length;
    }
    const int32_t span = findToken(locale, rest, set);
    int32_t used = TSStrcpyEx(locale, token, tokenState, room, rest.at, rest.state, span, 0);
    if (size > 0)
        used = terminateToken(locale, token, tokenState, used, room);

    *length = span == 0 || span >= rest.length ? 0 : rest.length - span;
    if (*length > 0) {
        int32_t behind = 0;
        *next = TSMoveStringPointerEx(locale, rest.at, rest.state, span, &behind, 0);
        if (nextState && (locale->flags & vlx::kLocaleStateful))
            *nextState = behind;
        if (counted)
            *length = TSNumCharsEx(locale, *next, behind, *length, 0);
    }
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(counted ? TSNumCharsEx(locale, token, tokenState, used, 0) : used);
}
