// TSGetMessageU: a message of a catalog as 16-bit values.
#include "catalog/catunits.hpp"

TS_TRACE_UNIT("tsgetmsu");

namespace {

void toUnits(TSLocale* locale, TSChar16* output, int32_t count, const char* bytes, int32_t length)
{
    TSStringToUnicodeEx(output, count, locale, bytes, 0, length, 0);
}

} // namespace

int32_t TSGetMessageU(TSCatalog* catalog, int32_t set, int32_t message, TSChar16* output,
                      int32_t size, const TSChar16* defaultText)
{
    TS_TRACE(TSGetMessageU);
    const int32_t result = vlx::messageUnits(catalog, set, message, output, size, defaultText,
                                             TSUnicodeToStringEx, toUnits);
    if (result != TS_ERR_NONE && catalog)
        TS_PRINT(TRC1_ERRORS, "No message %d in set %d, err = %d", message, set,
                 catalog->locale->lastError);
    TS_RETURN(result);
}
