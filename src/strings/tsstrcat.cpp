// TSStrcat: an append that splits no character. The caller gives the room.
#include "strings/copy.hpp"

TS_TRACE_UNIT("tsstrcat");

int32_t TSStrcat(TSLocale* handle, char* destination, const char* source, int32_t length,
                 uint32_t options)
{
    TS_TRACE(TSStrcat);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~(TS_OPT_CHAR_COUNT | TS_OPT_TERMINATE))
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    const bool counted = (options & TS_OPT_CHAR_COUNT) != 0;
    const int32_t before = vlx::unitsOf(destination);
    if (length == 0) {
        // Deliberate: bytes count the terminator here, characters do not.
        locale->lastError = TS_ERR_NONE;
        TS_RETURN(counted ? TSNumChars(locale, destination, before, 0) : before + 1);
    }
    int32_t count = length;
    if (length < 0)
        count = vlx::unitsOf(source);
    else if (counted)
        count = TSCpCharsToBytes(locale->codePage, source, 0, length);
    if (length > 0)
        count = vlx::wholeBytes(*locale, source, count);
    std::memmove(destination + before, source, static_cast<std::size_t>(count));
    int32_t total = before + count;
    if (length < 0 || (options & TS_OPT_TERMINATE))
        destination[total++] = 0;
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(counted ? TSNumChars(locale, destination, total, 0) : total);
}
