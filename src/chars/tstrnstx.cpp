// TSTruncateStringEx: cuts stateful text in place to a size and closes it, and takes blanks off its
// end.
#include "chars/shiftcut.hpp"

TS_TRACE_UNIT("tstrnstx");

namespace {

// Leaves the multi-byte state at the end of a text, and gives where the terminator goes. Where
// there is no room for the shift byte the last character goes; a text of none gets it all the same.
int32_t closeText(const TSCodePageHeader& page, char* string, int32_t end, int32_t size)
{
    const auto isBehindShiftIn = [&](int32_t at) {
        return at > 0 && vlx::isShiftIn(page, string[at - 1]);
    };
    if (!isBehindShiftIn(end) && end > size - 2)
        end = std::max(end - page.maxCharBytes, 0);
    if (isBehindShiftIn(end))
        return end - 1; // it has become pointless
    string[end] = static_cast<char>(page.shiftOut);
    return end + 1;
}

} // namespace

int32_t TSTruncateStringEx(TSLocale* handle, char* string, int32_t state, int32_t size,
                           uint32_t options)
{
    TS_TRACE(TSTruncateStringEx);
    TSLocale* const locale = tsLocale(handle);
    if (!(locale->flags & vlx::kLocaleStateful))
        TS_RETURN(TSTruncateString(locale, string, size, options));
    locale->lastError = TS_ERR_NONE;
    const TSCodePageHeader& page = tsCodePage(locale->codePage);
    const bool strips = (options & TS_TRUNC_STRIP_BLANKS) != 0;
    size = std::max(size, 0);
    vlx::Cut cut{0, state};
    if (size > 0) {
        const int32_t length = vlx::unitsOf(string);
        size = vlx::truncationSize(*locale, string, state, length, size, options);
        if (size > length && !strips)
            TS_RETURN(0); // Deliberate: a string that fits gives 0, not its length.
        const vlx::Blanks blanks(locale, strips ? options : 0);
        cut = vlx::ShiftCut(tsTrace, page, string, length + 1, strips ? &blanks : nullptr)
                  .run(state, size);
    }
    const int32_t end = cut.state ? closeText(page, string, cut.offset, size) : cut.offset;
    string[end] = 0;
    const int32_t whole = end + 1;
    // Deliberate: characters are counted in the state that the cut has, not the first one.
    TS_RETURN(options & TS_OPT_CHAR_COUNT ? TSNumCharsEx(locale, string, cut.state, whole, 0)
                                          : whole);
}
