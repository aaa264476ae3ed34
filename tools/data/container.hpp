// The container of locale data: object files and the control file, written and read as a whole.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "frame/objfile.hpp"
#include "object.hpp"

namespace vlx::data {

// What stands in the part of the header that the library does not read.
struct DataStamp {
    static constexpr char kTag[4] = {'v', 'l', 'x', 'd'};
    static constexpr std::uint16_t kLayout = 1;

    char tag[4];
    Le16 layout;
    Le16 reserved;
    Le32 dataVersion;    // of the set of sources, from data/version
    Le32 fingerprintLow; // 64-bit FNV-1a over the sections in their order
    Le32 fingerprintHigh;
    std::uint8_t unused[16];

    bool present() const;
    std::uint64_t fingerprint() const
    {
        return static_cast<std::uint64_t>(fingerprintHigh) << 32 | fingerprintLow;
    }
};
static_assert(sizeof(DataStamp) == sizeof(TSObjHeader::reserved));
static_assert(offsetof(DataStamp, dataVersion) == 8);
static_assert(offsetof(DataStamp, fingerprintLow) == 12);

inline constexpr std::size_t kMaxSectionSize = 0xFFFF;
inline constexpr std::size_t kSectionAlignment = 16;
inline constexpr std::size_t kMaxNameLength = TSObjDisk::kNameSize - 1;

// Format version 1 means the older code page form, which is rebuilt at load; these files are never
// of that form.
inline constexpr std::uint32_t kWrittenVersion = 2u << 28;

std::uint64_t fingerprintOf(const std::vector<Bytes>& sections);

// The file of these sections. They must be 1 to 4, none above kMaxSectionSize.
Bytes containerFile(const std::vector<Bytes>& sections, std::uint32_t dataVersion);

TSObjDisk controlEntry(std::uint8_t type, std::uint16_t id, const std::string& name);

// The object table, in the order in which the library searches it. At most kMaxEntries objects.
Bytes controlFile(std::vector<TSObjDisk> entries, std::uint32_t dataVersion);

struct Container {
    TSObjHeader header;
    DataStamp stamp;
    std::vector<Bytes> sections;
};

// Nothing, with a diagnostic, if the file is no container or a section lies outside of it.
std::optional<Container> readContainer(const std::string& path, Diagnostics& diagnostics);

// The entries of a control file; a remainder is left out, as the library does.
std::vector<TSObjDisk> controlEntries(const Container& control);
// The name up to its terminator, or all 34 bytes of one that lacks it.
std::string nameOf(const TSObjDisk& entry);

// cp_01252.nls and the like. `type` must be below kObjectTypes.
std::string objectFileName(std::uint8_t type, std::uint16_t id);

} // namespace vlx::data
