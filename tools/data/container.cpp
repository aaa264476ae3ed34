#include "container.hpp"

#include <algorithm>
#include <cstdio>
#include <cstring>

#include "sourcefile.hpp"

namespace vlx::data {

namespace {

constexpr std::size_t alignedUp(std::size_t offset)
{
    return (offset + kSectionAlignment - 1) / kSectionAlignment * kSectionAlignment;
}

void setSection(TSObjHeader& header, std::size_t index, std::size_t size, std::size_t offset)
{
    const auto size16 = static_cast<std::uint16_t>(size);
    const auto offset32 = static_cast<std::uint32_t>(offset);
    if (index == 0) {
        header.sectionSize1 = size16;
        header.sectionOffset1 = offset32;
    } else {
        header.sections2to4[index - 1].size = size16;
        header.sections2to4[index - 1].offset = offset32;
    }
}

// Empty sections at the end need no entry: one that is missing and one that is empty are the same.
std::size_t usedSections(const std::vector<Bytes>& sections)
{
    std::size_t count = sections.size();
    while (count > 1 && sections[count - 1].empty())
        --count;
    return count;
}

} // namespace

bool DataStamp::present() const
{
    return std::memcmp(tag, kTag, sizeof tag) == 0 && layout == kLayout;
}

std::uint64_t fingerprintOf(const std::vector<Bytes>& sections)
{
    std::uint64_t hash = 0xCBF29CE484222325;
    for (const Bytes& section : sections)
        for (const std::uint8_t byte : section)
            hash = (hash ^ byte) * 0x100000001B3;
    return hash;
}

Bytes containerFile(const std::vector<Bytes>& sections, std::uint32_t dataVersion)
{
    TSObjHeader header{};
    header.magic = TSObjHeader::kMagic;
    header.version = kWrittenVersion;
    const std::size_t count = usedSections(sections);
    header.sectionCount = static_cast<std::uint16_t>(count);

    DataStamp stamp{};
    std::copy(std::begin(DataStamp::kTag), std::end(DataStamp::kTag), stamp.tag);
    stamp.layout = DataStamp::kLayout;
    stamp.dataVersion = dataVersion;
    const std::uint64_t fingerprint = fingerprintOf(sections);
    stamp.fingerprintLow = static_cast<std::uint32_t>(fingerprint);
    stamp.fingerprintHigh = static_cast<std::uint32_t>(fingerprint >> 32);
    std::memcpy(header.reserved, &stamp, sizeof stamp);

    Bytes file(sizeof header);
    for (std::size_t i = 0; i < count; ++i) {
        file.resize(alignedUp(file.size()));
        setSection(header, i, sections[i].size(), file.size());
        file.insert(file.end(), sections[i].begin(), sections[i].end());
    }
    std::memcpy(file.data(), &header, sizeof header);
    return file;
}

TSObjDisk controlEntry(std::uint8_t type, std::uint16_t id, const std::string& name)
{
    TSObjDisk entry{};
    entry.id = id;
    entry.type = type;
    name.copy(entry.name, kMaxNameLength);
    return entry;
}

Bytes controlFile(std::vector<TSObjDisk> entries, std::uint32_t dataVersion)
{
    std::sort(entries.begin(), entries.end(), [](const TSObjDisk& one, const TSObjDisk& other) {
        return std::pair<int, int>(one.type, one.id) < std::pair<int, int>(other.type, other.id);
    });
    Bytes table;
    for (const TSObjDisk& entry : entries) {
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&entry);
        table.insert(table.end(), bytes, bytes + sizeof entry);
    }
    return containerFile({table}, dataVersion);
}

std::optional<Container> readContainer(const std::string& path, Diagnostics& diagnostics)
{
    const auto file = readBytes(path, diagnostics);
    if (!file)
        return std::nullopt;
    Reporter report(path, diagnostics);
    Container container{};
    if (file->size() < sizeof container.header) {
        report.error(0, "shorter than a header");
        return std::nullopt;
    }
    std::memcpy(&container.header, file->data(), sizeof container.header);
    std::memcpy(&container.stamp, container.header.reserved, sizeof container.stamp);
    const TSObjHeader& header = container.header;
    if (header.magic != TSObjHeader::kMagic)
        report.error(0, "the magic number is wrong");
    else if (header.sectionCount < 1 || header.sectionCount > TSObjHeader::kMaxSections)
        report.error(0, "the number of sections is not 1 to 4");
    for (int i = 0; report.clean() && i < header.sectionCount; ++i) {
        const std::size_t begin = header.sectionOffset(i);
        const std::size_t size = header.sectionSize(i);
        if (begin > file->size() || size > file->size() - begin) {
            report.error(0, "section " + std::to_string(i + 1) + " reaches outside the file");
        } else {
            const auto at = file->begin() + static_cast<std::ptrdiff_t>(begin);
            container.sections.emplace_back(at, at + static_cast<std::ptrdiff_t>(size));
        }
    }
    if (!report.clean())
        return std::nullopt;
    return container;
}

std::vector<TSObjDisk> controlEntries(const Container& control)
{
    const Bytes& table = control.sections.front();
    std::vector<TSObjDisk> entries(table.size() / sizeof(TSObjDisk));
    if (!entries.empty())
        std::memcpy(entries.data(), table.data(), entries.size() * sizeof(TSObjDisk));
    return entries;
}

std::string nameOf(const TSObjDisk& entry)
{
    const auto* const end = std::find(std::begin(entry.name), std::end(entry.name), '\0');
    return {entry.name, end};
}

std::string objectFileName(std::uint8_t type, std::uint16_t id)
{
    char name[16];
    std::snprintf(name, sizeof name, "%s_%05d.nls", kObjectTypeCode[type], id);
    return name;
}

} // namespace vlx::data
