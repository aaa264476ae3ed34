// TSStrstrEx: finds a stateful string in another one.
#include "strings/search.hpp"
#include "strings/shiftcmp.hpp"

TS_TRACE_UNIT("tsstrstx");

namespace {

using Text = vlx::SearchText<char>;

// A string whose length counts bytes or, where width is ignored, characters.
Text textOf(TSLocale* locale, const char* string, int32_t state, int32_t length,
            const vlx::SearchOptions& options)
{
    // Deliberate: a counted length of 0 is the whole string, but not where width is ignored.
    const bool isWhole = length < 0 || (length == 0 && options.counts() && !options.ignoresWidth());
    int32_t bytes = isWhole ? vlx::unitsOf(string) : length;
    if (!isWhole && options.counts())
        bytes = TSCpCharsToBytes(locale->codePage, string, state, length);
    if (!options.ignoresWidth())
        return {string, bytes, string + bytes};
    if (isWhole || !options.counts())
        length = TSNumCharsEx(locale, string, state, bytes, 0);
    return {string, length, string + bytes};
}

// A place in a stateful text.
struct Place {
    bool atShift() const { return vlx::isShiftIn(page, *at) || vlx::isShiftOut(page, *at); }
    void passShift() { state = vlx::isShiftIn(page, *at++); }
    void step() { at += state ? page.maxCharBytes : 1; }

    const TSCodePageHeader& page;
    const char* at;
    int32_t state;
};

// By collation of as many characters as the sought string has. True if the place is a match.
bool findCounted(TSLocale* locale, Place& place, const Text& text, const Text& sought,
                 int32_t soughtState, uint32_t options)
{
    const int32_t soughtBytes = vlx::bytesWithin(*locale, sought.string, soughtState, sought.length,
                                                 sought.left(sought.string));
    for (int32_t turn = 0; turn <= text.length - sought.length && place.at < text.end;) {
        if (place.atShift()) {
            place.passShift();
            continue;
        }
        const int32_t bytes =
            vlx::bytesWithin(*locale, place.at, place.state, sought.length, text.left(place.at));
        if (TSStrcollEx(locale, place.at, place.state, bytes, sought.string, soughtState,
                        soughtBytes, options) == 0)
            return true;
        place.step();
        ++turn;
    }
    return false;
}

// By bytes, or by collation of bytes. Deliberate: the states are not compared.
bool findBytes(TSLocale* locale, Place& place, const Text& text, Place sought, int32_t length,
               uint32_t options)
{
    if (sought.atShift()) {
        sought.passShift();
        --length;
    }
    int32_t whole = vlx::adjustLength(sought.page, sought.at, sought.state, length);
    if (whole > 0 && Place{sought.page, sought.at + whole - 1, 0}.atShift())
        --whole;
    if (whole == 0) {
        place.at = text.string;
        return true;
    }
    const vlx::SearchOptions asked(options);
    const char* const last = text.end - whole;
    for (; place.at <= last; place.step()) {
        if (place.atShift())
            place.passShift();
        if (place.at > last)
            break;
        const bool isMatch =
            asked.hasCaseBits()
                ? TSStrcollEx(locale, place.at, place.state, std::min(length, text.left(place.at)),
                              sought.at, sought.state, length, options) == 0
                : std::memcmp(place.at, sought.at, static_cast<size_t>(whole)) == 0;
        if (isMatch)
            return true;
    }
    return false;
}

} // namespace

char* TSStrstrEx(TSLocale* handle, const char* string1, int32_t state1, int32_t length1,
                 const char* string2, int32_t state2, int32_t length2, int32_t* matchState,
                 uint32_t options)
{
    TS_TRACE(TSStrstrEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSStrstr(locale, string1, length1, string2, length2, options));
    // Deliberate: options are not refused here.
    const vlx::SearchOptions asked(options);
    const Text text = textOf(locale, string1, state1, length1, asked);
    const Text sought = textOf(locale, string2, state2, length2, asked);
    const uint32_t rest = asked.withoutCount().all;
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    Place place{page, string1, state1};
    bool found = sought.length == 0;
    if (!found && asked.ignoresWidth()) {
        TS_PRINT(TRC1_INPUTS, "len1 = %d, len2 = %d", text.length, sought.length);
        found = findCounted(locale, place, text, sought, state2, rest);
    } else if (!found && text.length >= sought.length) {
        found = findBytes(locale, place, text, {page, string2, state2}, sought.length, rest);
    }
    locale->lastError = TS_ERR_NONE;
    if (matchState)
        *matchState = place.state;
    TS_RETURN(found ? const_cast<char*>(place.at) : static_cast<char*>(nullptr));
}
