// TSGetMessageW: a message of a catalog as packed values.
#include "catalog/catunits.hpp"

TS_TRACE_UNIT("tsgetmsw");

namespace {

void toUnits(TSLocale* locale, TSChar32* output, int32_t count, const char* bytes, int32_t length)
{
    TSMbToWideEx(locale, output, count, bytes, 0, length, 0);
}

} // namespace

int32_t TSGetMessageW(TSCatalog* catalog, int32_t set, int32_t message, TSChar32* output,
                      int32_t size, const TSChar32* defaultText)
{
    TS_TRACE(TSGetMessageW);
    const int32_t result =
        vlx::messageUnits(catalog, set, message, output, size, defaultText, TSWideToMbEx, toUnits);
    if (result != TS_ERR_NONE && catalog)
        TS_PRINT(TRC1_ERRORS, "No message %d in set %d, err = %d", message, set,
                 catalog->locale->lastError);
    TS_RETURN(result);
}
