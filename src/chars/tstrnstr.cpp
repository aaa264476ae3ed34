// TSTruncateString: cuts a string in place to a size, and takes blanks off its end.
#include "chars/plaincut.hpp"

TS_TRACE_UNIT("tstrnstr");

int32_t TSTruncateString(TSLocale* handle, char* string, int32_t size, uint32_t options)
{
    TS_TRACE(TSTruncateString);
    TSLocale* const locale = tsLocale(handle);
    locale->lastError = TS_ERR_NONE;
    TS_PRINT(TRC1_DETAIL, "Input length = %d", size);
    const bool strips = (options & TS_TRUNC_STRIP_BLANKS) != 0;
    int32_t end = 0;
    if (size > 0) {
        const int32_t length = vlx::unitsOf(string);
        size = vlx::truncationSize(*locale, string, 0, length, size, options);
        if (size > length && !strips)
            TS_RETURN(0); // Deliberate: a string that fits gives 0, not its length.
        const vlx::Blanks blanks(locale, strips ? options : 0);
        if (locale->flags & vlx::kLocaleSingleByte) {
            TS_PRINT(TRC1_DETAIL, "Single byte code page, string length = %d", length);
            end = strips ? vlx::cutSingle(tsTrace, string, size, blanks) : size - 1;
        } else {
            end = vlx::cutMulti(tsTrace, tsCodePage(locale->codePage), string, size,
                                strips ? &blanks : nullptr);
        }
    }
    string[end] = 0;
    const int32_t whole = end + 1;
    const int32_t result =
        options & TS_OPT_CHAR_COUNT ? TSNumChars(locale, string, whole, 0) : whole;
    TS_PRINT(TRC1_DETAIL, "Truncated string: %s", string);
    TS_RETURN(result);
}
