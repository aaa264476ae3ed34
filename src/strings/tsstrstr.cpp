// TSStrstr: finds a string in another one.
#include "strings/multisch.hpp"
#include "strings/whole.hpp"

TS_TRACE_UNIT("tsstrstr");

namespace {

using Text = vlx::SearchText<char>;

// A string whose length counts bytes or, where width is ignored, characters.
Text textOf(TSLocale* locale, const char* string, int32_t length, const vlx::SearchOptions& options)
{
    // Deliberate: a counted length of 0 is the whole string, but not where width is ignored.
    const bool isWhole = length < 0 || (length == 0 && options.counts() && !options.ignoresWidth());
    int32_t bytes = isWhole ? vlx::unitsOf(string) : length;
    if (!isWhole && options.counts())
        bytes = TSCpCharsToBytes(locale->codePage, string, 0, length);
    if (!options.ignoresWidth())
        return {string, bytes, string + bytes};
    if (isWhole || !options.counts())
        length = TSNumChars(locale, string, bytes, 0);
    return {string, length, string + bytes};
}

char* findSingle(TSLocale* locale, const Text& text, const Text& sought,
                 const vlx::SearchOptions& options)
{
    const char* const last = text.string + (text.length - sought.length);
    const char* found = nullptr;
    // Deliberate: also where width is to be ignored, it is case that is.
    if (options.hasCaseBits())
        found = vlx::findPlace(text.string, last, [&](const char* at) {
            return TSStrcmp(locale, at, sought.length, sought.string, sought.length,
                            TS_OPT_IGNORE_CASE) == 0;
        });
    else
        found = vlx::findSame(text.string, last, sought.string, sought.length);
    return const_cast<char*>(found);
}

char* findMulti(TSLocale* locale, const Text& text, const Text& sought,
                const vlx::SearchOptions& options)
{
    if (!options.isExact())
        return const_cast<char*>(vlx::findCollated(locale, text, sought, options));
    const char* const last = text.string + (text.length - sought.length);
    const int32_t bytes = vlx::wholeBytes(*locale, sought.string, sought.length);
    return const_cast<char*>(
        vlx::findCharacters(tsCodePage(locale->codePage), text.string, last, sought.string, bytes));
}

} // namespace

char* TSStrstr(TSLocale* handle, const char* string1, int32_t length1, const char* string2,
               int32_t length2, uint32_t options)
{
    TS_TRACE(TSStrstr);
    TSLocale* const locale = tsLocale(handle);
    char* found = nullptr;
    vlx::SearchOptions asked(options);
    if (!asked.withoutCount().isGood())
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, found, "Invalid options %#x", options);
    const Text text = textOf(locale, string1, length1, asked);
    const Text sought = textOf(locale, string2, length2, asked);
    asked = asked.withoutCount();
    if (sought.length == 0)
        found = const_cast<char*>(string1);
    else if (text.length >= sought.length)
        found = locale->flags & vlx::kLocaleSingleByte ? findSingle(locale, text, sought, asked)
                                                       : findMulti(locale, text, sought, asked);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(found);
}
