// TSGetMessage: a message of a catalog in the caller's code page.
#include "catalog/catalog.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsgetmsg");

namespace {

// Writes a message that was found, cut to the room.
void putMessage(const TSCatalog& catalog, const vlx::FoundText& found, char* output, int32_t size)
{
    // A ready text is what the conversion gives wherever it fits whole.
    if (found.ready && found.ready->size <= static_cast<uint32_t>(size) &&
        catalog.readyFor == catalog.locale->codePage) {
        std::memcpy(output, found.ready->text, found.ready->size);
        return;
    }
    TSConvertStringEx(catalog.locale, output, 0, size, catalog.catalogLocale, found.text, 0,
                      static_cast<int32_t>(found.length), TS_OPT_TERMINATE);
}

} // namespace

int32_t TSGetMessage(TSCatalog* catalog, int32_t set, int32_t message, char* output, int32_t size,
                     const char* defaultText)
{
    TS_TRACE(TSGetMessage);
    if (!catalog) {
        if (output)
            *output = 0;
        TS_RETURN(TS_ERR_NO_MESSAGE);
    }
    if (!output)
        TS_FAIL(catalog->locale->lastError, TS_ERR_ARGUMENT, TS_ERR_NO_MESSAGE, "No output");
    if (size < 1) {
        *output = 0;
        TS_RETURN(TS_ERR_NONE);
    }
    TSLocale& locale = *catalog->locale;
    if (locale.lastError != TS_ERR_NONE) // threads share the record while all goes well
        locale.lastError = TS_ERR_NONE;
    const vlx::FoundText found = catalog->preloaded ? vlx::findLoaded(*catalog, set, message)
                                                    : vlx::readMessage(*catalog, set, message);
    if (locale.lastError != TS_ERR_NONE)
        TS_PRINT(TRC1_ERRORS, "Catalog not readable, err = %d", locale.lastError);
    if (found.text) {
        putMessage(*catalog, found, output, size);
        if (!catalog->preloaded)
            vlx::release(const_cast<char*>(found.text));
        TS_RETURN(TS_ERR_NONE);
    }
    if (defaultText) {
        TSStrcpyEx(&locale, output, 0, size, defaultText, 0, -1, 0);
        TS_RETURN(TS_ERR_NONE);
    }
    *output = 0;
    TS_FAIL(locale.lastError, TS_ERR_NO_MESSAGE, TS_ERR_NO_MESSAGE, "No message %d in set %d",
            message, set);
}
