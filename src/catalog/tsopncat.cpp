// TSOpenCatalog: finds a message catalog and opens it.
#include "catalog/catalog.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsopncat");

namespace {

// A zeroed record with its file, which it takes over; null, and the file closed, after a failure.
TSCatalog* newCatalog(TSFile* file, TSLocale* locale, bool preload, int32_t& code)
{
    uint32_t size = 0;
    code = TS_ERR_NO_CATALOG;
    TSCatalog* catalog = nullptr;
    if (TSFileSize(file, &size)) {
        code = TS_ERR_MEMORY;
        catalog = static_cast<TSCatalog*>(vlx::allocate(sizeof(TSCatalog)));
    }
    if (!catalog) {
        TSCloseFile(file, 0);
        return nullptr;
    }
    std::memset(catalog, 0, sizeof *catalog);
    catalog->file = file;
    catalog->fileSize = size;
    catalog->locale = locale;
    catalog->preloaded = preload;
    code = preload ? vlx::preloadCatalog(*catalog) : TS_ERR_NONE;
    if (code == TS_ERR_NONE)
        return catalog;
    if (catalog->catalogLocale)
        TSReleaseLocale(catalog->catalogLocale);
    vlx::closeCatalog(catalog);
    return nullptr;
}

} // namespace

TSCatalog* TSOpenCatalog(TSLocale* handle, const char* templates, const char* name, uint32_t flags)
{
    TS_TRACE(TSOpenCatalog);
    constexpr uint32_t kFlags = TS_CATALOG_SEARCH_ONCE | TS_CATALOG_PRELOAD;
    TSCatalog* const none = nullptr;
    TSLocale* const locale = tsLocale(handle);
    locale->lastError = TS_ERR_NONE;
    if (flags & ~kFlags)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "Invalid flags %#x", flags);
    if (!name || !*name)
        TS_FAIL(locale->lastError, TS_ERR_ARGUMENT, none, "No catalog name");
    // Deliberate: only the whole values count; a single bit of them has no effect.
    const bool preload = flags == TS_CATALOG_PRELOAD;
    int32_t code = TS_ERR_NONE;
    TSFile* const file =
        vlx::findCatalog(locale, templates, name, preload || flags == TS_CATALOG_SEARCH_ONCE, code);
    if (!file)
        TS_FAIL(locale->lastError, code, none, "Catalog %s not found, rc = %d", name, code);
    TSCatalog* const catalog = newCatalog(file, locale, preload, code);
    if (!catalog)
        TS_FAIL(locale->lastError, code, none, "Catalog %s not loaded, rc = %d", name, code);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(catalog);
}
