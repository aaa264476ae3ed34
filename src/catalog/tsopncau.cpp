// TSOpenCatalogU: TSOpenCatalog() with 16-bit templates and name.
#include "catalog/catname.hpp"

TS_TRACE_UNIT("tsopncau");

TSCatalog* TSOpenCatalogU(TSLocale* handle, const TSChar16* templates, const TSChar16* name,
                          uint32_t flags)
{
    TS_TRACE(TSOpenCatalogU);
    TSCatalog* const none = nullptr;
    TSLocale* const locale = tsLocale(handle);
    const vlx::TextBytes<TSChar16> templateBytes(locale, templates, TSUnicodeToStringEx);
    const vlx::TextBytes<TSChar16> nameBytes(locale, name, TSUnicodeToStringEx);
    for (const auto* const bytes : {&templateBytes, &nameBytes})
        if (const int32_t code = bytes->code(); code != TS_ERR_NONE)
            TS_FAIL(locale->lastError, code, none, "Unable to convert the catalog name, rc = %d",
                    code);
    TS_RETURN(TSOpenCatalog(locale, templateBytes.get(), nameBytes.get(), flags));
}
