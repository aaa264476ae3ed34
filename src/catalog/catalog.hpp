// An open message catalog. The slim form reads the file for each message; the preloaded form keeps
// a copy of the file and its texts as the caller's locale shows them.
//
// Nothing in a file is trusted: all offsets and sizes are worked out in 64 bits and compared with
// the size of the file before anything is read or allocated.
#pragma once

#include <cstdint>
#include <cstring>

#include "catalog/catfile.hpp"
#include "frame/file.hpp"
#include "frame/objman.hpp"
#include "locale/locale.hpp"
#include "tessera.h"

namespace vlx {

// A text that was converted when the catalog was opened.
struct ReadyText {
    const char* text;   // null: this one is converted at each call
    std::uint32_t size; // with its terminator
};

// A set in memory. Its table and texts stand in the copy of the file, on any byte.
struct LoadedSet {
    std::uint32_t number;
    std::uint32_t messageCount;
    const std::uint8_t* messages;
    const char* texts;
    std::uint32_t textSize;
    ReadyText* ready; // one for each message, or null
};

} // namespace vlx

struct TSCatalog {
    TSFile* file;
    std::uint32_t fileSize;
    std::uint32_t firstSetOffset; // known with `catalogLocale`
    TSLocale* locale;             // of the caller, who keeps it
    TSLocale* catalogLocale;      // of the texts; null until the header was read
    bool preloaded;
    // Of the preloaded form alone.
    std::uint8_t* image; // the file
    vlx::LoadedSet* sets;
    std::uint32_t setCount;
    const TSObject* readyFor; // the code page that the ready texts are in
};

namespace vlx {

// Opens the first file that the search finds. Null with a code: 20, or 71 if there is none.
TSFile* findCatalog(TSLocale* locale, const char* templates, const char* name, bool searchOnce,
                    std::int32_t& code);

// A format struct that stands on any byte.
template <class Record>
Record recordAt(const std::uint8_t* bytes)
{
    Record record;
    std::memcpy(&record, bytes, sizeof record);
    return record;
}

// True if a header that was read is that of a good catalog.
bool isCatalogHeader(const TSCatalogHeader& header);

// Makes the locale of the texts; false if there is none.
bool openCatalogLocale(TSCatalog& catalog, const TSCatalogHeader& header);

// Loads index and texts of a catalog; 0, 20, 71 or the code of the mapping. Whatever it returns,
// closeCatalog gives back what was taken.
std::int32_t preloadCatalog(TSCatalog& catalog);

// Gives back the record and all that it owns. Deliberate: the locale of the texts is not released.
void closeCatalog(TSCatalog* catalog);

// A message in the catalog's code page.
struct FoundText {
    const char* text = nullptr;       // null: no message
    std::uint32_t length = 0;         // without its terminator
    const ReadyText* ready = nullptr; // the same text, converted
};

// Searches the memory of a preloaded catalog.
FoundText findLoaded(const TSCatalog& catalog, std::int32_t set, std::int32_t message);

// Searches the file of a slim catalog. The text is the caller's, to be given to `release`. An
// unreadable file is 71 in the locale's error code, and no message.
FoundText readMessage(TSCatalog& catalog, std::int32_t set, std::int32_t message);

} // namespace vlx
