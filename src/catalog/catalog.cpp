// What both forms of a catalog share: its header and its end.
#include "catalog/catalog.hpp"

#include "frame/globals.hpp"

namespace vlx {

bool isCatalogHeader(const TSCatalogHeader& header)
{
    return header.version == TSCatalogHeader::kVersion && header.setCount >= 1 &&
           header.byteOrder == kOwnCatalogOrder && header.magic == TSCatalogHeader::kMagic;
}

bool openCatalogLocale(TSCatalog& catalog, const TSCatalogHeader& header)
{
    if (!std::memchr(header.localeName, 0, sizeof header.localeName))
        return false;
    catalog.catalogLocale = TSGetLocale(header.localeName, 0, nullptr);
    return catalog.catalogLocale != nullptr;
}

void closeCatalog(TSCatalog* catalog)
{
    for (std::uint32_t i = 0; i < catalog->setCount; ++i)
        if (catalog->sets[i].ready)
            release(catalog->sets[i].ready);
    if (catalog->sets)
        release(catalog->sets);
    if (catalog->image)
        release(catalog->image);
    TSCloseFile(catalog->file, 0);
    release(catalog);
}

} // namespace vlx
