// TSStrcpy: a copy that splits no character.
#include "strings/copy.hpp"

TS_TRACE_UNIT("tsstrcpy");

int32_t TSStrcpy(TSLocale* handle, char* destination, int32_t size, const char* source,
                 int32_t length, uint32_t options)
{
    TS_TRACE(TSStrcpy);
    TSLocale* const locale = tsLocale(handle);
    if (options & ~TS_OPT_CHAR_COUNT)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, -1, "Invalid options %#x", options);
    locale->lastError = TS_ERR_NONE;
    if (length == 0 || size <= 0)
        TS_RETURN(0);
    const bool counted = options != 0;
    const auto countOf = [&](int32_t bytes) { return TSNumChars(locale, source, bytes, 0); };
    length = vlx::copyLength(*locale, source, 0, length, size, counted, countOf);
    const int32_t budget = counted ? length : std::min(length, size);
    const int32_t taken = vlx::wholeBytes(*locale, source, budget);
    std::memmove(destination, source, static_cast<std::size_t>(taken));
    TS_RETURN(counted ? TSNumChars(locale, destination, taken, 0) : taken);
}
