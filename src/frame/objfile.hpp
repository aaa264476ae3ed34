// The container of locale data on disk: the control file and the object files. The library reads
// these structs in place; the data compiler writes them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "frame/endian.hpp"

// One entry of the section table. The first is packed with the section count, so the two bytes
// before its size are the count; in the others they would be the bytes behind the size.
struct TSObjSection {
    vlx::Le16 size;
    vlx::Le16 reserved;
    vlx::Le32 offset;
};
static_assert(sizeof(TSObjSection) == 8);

// The header of the control file and of every object file.
struct TSObjHeader {
    static constexpr std::uint32_t kMagic = 0x5A3C9E17;
    static constexpr int kMaxSections = 4;

    vlx::Le32 magic;
    vlx::Le32 version; // the top four bits are the format version of a code page object
    vlx::Le16 sectionCount;
    vlx::Le16 sectionSize1;
    vlx::Le32 sectionOffset1;
    TSObjSection sections2to4[3];
    // Not read by the library. The data compiler keeps the data version and a fingerprint here.
    std::uint8_t reserved[36];

    std::uint32_t formatVersion() const { return version >> 28; }
    std::uint16_t sectionSize(int index) const
    {
        return index == 0 ? sectionSize1 : sections2to4[index - 1].size;
    }
    std::uint32_t sectionOffset(int index) const
    {
        return index == 0 ? sectionOffset1 : sections2to4[index - 1].offset;
    }
};
static_assert(sizeof(TSObjHeader) == 76);
static_assert(offsetof(TSObjHeader, magic) == 0);
static_assert(offsetof(TSObjHeader, version) == 4);
static_assert(offsetof(TSObjHeader, sectionCount) == 8);
static_assert(offsetof(TSObjHeader, sectionSize1) == 10);
static_assert(offsetof(TSObjHeader, sectionOffset1) == 12);
static_assert(offsetof(TSObjHeader, sections2to4) == 16);
static_assert(offsetof(TSObjHeader, reserved) == 40);

// An object as the control file lists it. Entries stand in ascending order of type, then id.
struct TSObjDisk {
    static constexpr int kNameSize = 34;
    static constexpr int kMaxEntries = 1092;

    vlx::Le16 id;
    std::uint8_t type;
    std::uint8_t flags; // written as 0
    char name[kNameSize];
};
static_assert(sizeof(TSObjDisk) == 38);
static_assert(offsetof(TSObjDisk, id) == 0);
static_assert(offsetof(TSObjDisk, type) == 2);
static_assert(offsetof(TSObjDisk, flags) == 3);
static_assert(offsetof(TSObjDisk, name) == 4);

namespace vlx {

// File name prefixes by object type.
inline constexpr const char* kObjectTypeCode[] = {"la", "te", "cp", "so"};
inline constexpr int kObjectTypes = 4;

} // namespace vlx
