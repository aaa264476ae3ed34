// TSCloseCatalog: the end of a message catalog.
#include "catalog/catalog.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsclscat");

int32_t TSCloseCatalog(TSCatalog* catalog)
{
    TS_TRACE(TSCloseCatalog);
    if (!catalog) {
        TS_PRINT(TRC1_ERRORS, "No catalog to close");
        TS_RETURN(TS_ERR_NULL_CATALOG);
    }
    vlx::closeCatalog(catalog);
    TS_RETURN(TS_ERR_NONE);
}
