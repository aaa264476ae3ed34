// The object table: every locale object by type, id and name, and the manager that holds it. The
// table comes from the control file, or is the built-in one of three objects.
#pragma once

#include <cstdint>

#include "frame/objfile.hpp"
#include "tessera.h"

struct TSAliasNode;
struct TSFile;

// What is known of a sort. Zero says nothing of a sort and costs time alone.
struct TSSortTraits {
    std::uint8_t forwardLevels;  // of four bits, level 1 the highest: no weight there is backward
    std::uint8_t backwardLevels; // no weight there is forward
    bool isWithout4;             // nothing has a level 4 weight
    bool isOrdered;              // expansions and contractions stand in strictly ascending order
    std::uint64_t alone;         // by the low six bits of a value: set if it begins no contraction
};

// One locale object. It is listed (no sections, no file), loaded (sections mapped or on the heap,
// the file open) or built-in (static sections, no file), and stays as it is until the last TSTerm.
struct TSObject {
    std::uint16_t id;
    std::uint8_t type;
    std::uint8_t flags; // TS_OBJ_BUILTIN, TS_OBJ_SECTION1_HEAP and so on
    char name[TSObjDisk::kNameSize];
    TSFile* file;
    // Section 1 is published last: whoever sees it sees the others too. Code that holds an object
    // from a lookup reads them plainly; only the lookups and the load use the two functions.
    const std::uint8_t* sections[TSObjHeader::kMaxSections];
    // Of a sort alone: found by the first comparison, since that reads all of the data.
    TSSortTraits sortTraits;
    std::uint8_t sortTraitsState; // one of the next three
    static constexpr std::uint8_t kTraitsThere = 0, kTraitsWanted = 1, kTraitsSought = 2;

    const std::uint8_t* section1() const { return __atomic_load_n(&sections[0], __ATOMIC_ACQUIRE); }
    void publishSection1(const std::uint8_t* section)
    {
        __atomic_store_n(&sections[0], section, __ATOMIC_RELEASE);
    }
    bool hasSortTraits() const
    {
        return __atomic_load_n(&sortTraitsState, __ATOMIC_ACQUIRE) == kTraitsThere;
    }
};

struct TSObjManager {
    static constexpr int kDirectorySize = 260;

    TSObject* objects; // in the order of the control file
    // Where each type's range begins; a range ends where the next one begins.
    std::uint16_t firstLanguage;
    std::uint16_t firstTerritory;
    std::uint16_t firstCodePage;
    std::uint16_t firstSort;
    std::uint16_t objectCount;
    bool strict;                        // a failed load gives no object
    char directory[kDirectorySize + 1]; // the locale directory; empty on the built-in table
    TSAliasNode* aliases;

    // The first index of a type's range; of the type behind the last one, the number of objects.
    std::uint16_t first(unsigned type) const
    {
        const std::uint16_t firsts[] = {firstLanguage, firstTerritory, firstCodePage, firstSort,
                                        objectCount};
        return firsts[type];
    }
};

// Makes the manager and fills it from the control file of the first locale directory that has one,
// or with the built-in objects. Null without memory for it. A code that is not 0 beside a manager
// tells why it does not stand on a control file.
TSObjManager* TSInitObjManager(const char* directory, std::uint32_t options, std::int32_t* code);

// Unloads all objects and frees the manager; 0, 1 for a failed free, or a file code.
std::int32_t TSDestroyObjManager(TSObjManager* manager);

// Finds an object by name, in any case, and loads it unless `noLoad` is 1. `length` is the name's
// length, or one more if it counts a terminator. Null with code 0 is the binary sort; 37: not
// found.
TSObject* TSGetObjFromName(TSObjManager* manager, std::uint16_t type, const char* name,
                           std::int32_t length, std::int32_t noLoad, std::int32_t* code);

// TSGetObjFromName with 32-bit values, of which the low bytes count.
TSObject* TSGetObjFromNameW(TSObjManager* manager, std::uint16_t type, const TSChar32* name,
                            std::int32_t length, std::int32_t noLoad, std::int32_t* code);

// Finds an object by id. Null with code 0 is the binary sort, id 0; 37: not found.
TSObject* TSGetObjFromID(TSObjManager* manager, std::uint16_t type, std::uint16_t id,
                         std::int32_t noLoad, std::int32_t* code);

// Points an object at the built-in data of its type; 1 for a sort, which has none.
std::int32_t TSInstallBuiltin(TSObjManager* manager, TSObject* object);

// Makes the manager's table the built-in one; false without memory.
bool TSInstallBuiltinTable(TSObjManager* manager);

// Maps the sections of an object under the library's lock. A failed object that is no sort takes
// the built-in data, with the code still naming the failure, unless the manager is strict.
TSObject* TSLoadObject(TSObjManager* manager, TSObject* object, std::int32_t* code);

// Gives back an object's sections and file; 0 or the last failure.
std::int32_t TSUnloadObject(TSObjManager* manager, TSObject* object);
