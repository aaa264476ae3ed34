// TSOpenCatalogW: TSOpenCatalog() with packed templates and name.
#include "catalog/catname.hpp"

TS_TRACE_UNIT("tsopncaw");

TSCatalog* TSOpenCatalogW(TSLocale* handle, const TSChar32* templates, const TSChar32* name,
                          uint32_t flags)
{
    TS_TRACE(TSOpenCatalogW);
    TSCatalog* const none = nullptr;
    TSLocale* const locale = tsLocale(handle);
    const vlx::TextBytes<TSChar32> templateBytes(locale, templates, TSWideToMbEx);
    const vlx::TextBytes<TSChar32> nameBytes(locale, name, TSWideToMbEx);
    for (const auto* const bytes : {&templateBytes, &nameBytes})
        if (const int32_t code = bytes->code(); code != TS_ERR_NONE)
            TS_FAIL(locale->lastError, code, none, "Unable to convert the catalog name, rc = %d",
                    code);
    TS_RETURN(TSOpenCatalog(locale, templateBytes.get(), nameBytes.get(), flags));
}
