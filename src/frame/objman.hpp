// The object table: every locale object by type, id and name, and the manager that holds it.
#pragma once

#include <atomic>
#include <cstdint>

#include "frame/objfile.hpp"
#include "tessera.h"

struct TSAliasNode;
struct TSFile;

// One locale object. It is listed (no sections, no file), loaded (sections mapped or on the heap, the
// file open) or built-in (static sections, no file), and stays as it is until the last TSTerm.
struct TSObject {
    std::uint16_t id;
    std::uint8_t type;
    std::uint8_t flags; // TS_OBJ_BUILTIN, TS_OBJ_SECTION1_HEAP and so on
    char name[TSObjDisk::kNameSize];
    TSFile* file;
    // Section 1 is published last: whoever sees it sees the others too. Code that holds an object
    // from a lookup reads them plainly; only the lookups use section1().
    const std::uint8_t* sections[TSObjHeader::kMaxSections];

    const std::uint8_t* section1() const
    {
        return __atomic_load_n(&sections[0], __ATOMIC_ACQUIRE);
    }
    void publishSection1(const std::uint8_t* section)
    {
        __atomic_store_n(&sections[0], section, __ATOMIC_RELEASE);
    }
};

struct TSObjManager {
    static constexpr int kDirectorySize = 260;

    TSObject* objects; // in the order of the control file
    // One index for each type, where its range begins, and then the number of objects.
    std::uint16_t firstLanguage;
    std::uint16_t firstTerritory;
    std::uint16_t firstCodePage;
    std::uint16_t firstSort;
    std::uint16_t objectCount;
    bool strict;                        // a failed load gives no object
    char directory[kDirectorySize + 1]; // the locale directory; empty on the built-in table
    TSAliasNode* aliases;

    // The range of a type, as indices; empty for a type that does not exist.
    std::uint16_t first(unsigned type) const;
    std::uint16_t last(unsigned type) const; // one behind
};
