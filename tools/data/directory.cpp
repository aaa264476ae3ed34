#include "directory.hpp"

#include <fstream>
#include <iomanip>
#include <ostream>
#include <set>

#include "codepage_compile.hpp"
#include "container.hpp"
#include "content.hpp"
#include "sort_compile.hpp"
#include "sourcefile.hpp"

#include "tsconst.h"

namespace vlx::data {

namespace {

namespace fs = std::filesystem;

constexpr const char* kTypeNames[] = {"language", "territory", "codepage", "sort"};

// What a file name of the form cp_01252.nls says.
struct ObjectName {
    std::uint8_t type;
    std::uint16_t id;
};

std::optional<ObjectName> parseFileName(const std::string& name)
{
    if (name.size() != 12 || name[2] != '_' || name.substr(8) != ".nls")
        return std::nullopt;
    const auto id = parseDecimal(name.substr(3, 5), 0xFFFF);
    for (std::uint8_t type = 0; id && type < kObjectTypes; ++type)
        if (name.substr(0, 2) == kObjectTypeCode[type])
            return ObjectName{type, static_cast<std::uint16_t>(*id)};
    return std::nullopt;
}

std::string fingerprintText(const Container& container)
{
    if (!container.stamp.present())
        return "no stamp";
    const std::uint64_t fingerprint = container.stamp.fingerprint();
    return hexText(static_cast<std::uint32_t>(fingerprint >> 32), 8) +
           hexText(static_cast<std::uint32_t>(fingerprint), 8);
}

void dumpHeader(const Container& container, std::ostream& out)
{
    const TSObjHeader& header = container.header;
    out << "version " << hexText(header.version, 8) << ", sections " << header.sectionCount << '\n';
    for (std::size_t i = 0; i < container.sections.size(); ++i)
        out << "section " << i + 1 << ": offset " << header.sectionOffset(static_cast<int>(i))
            << ", size " << container.sections[i].size() << '\n';
    out << "data version " << container.stamp.dataVersion << ", fingerprint "
        << fingerprintText(container) << "\n\n";
}

void dumpControl(const Container& control, std::ostream& out)
{
    for (const TSObjDisk& entry : controlEntries(control)) {
        const bool known = entry.type < kObjectTypes;
        out << (known ? kTypeNames[entry.type] : "unknown type") << '\t' << entry.id << '\t'
            << nameOf(entry) << '\n';
    }
}

void dumpObject(const Container& container, ObjectName object, std::ostream& out)
{
    if (object.type == TS_OBJ_LANGUAGE)
        dumpLanguage(container.sections.front(), out);
    else if (object.type == TS_OBJ_TERRITORY)
        dumpTerritory(container.sections.front(), out);
    else if (object.type == TS_OBJ_CODEPAGE)
        dumpCodePage(container.sections, object.id, out);
    else
        dumpSort(container.sections.front(), out);
}

void lintStamp(const Container& container, Reporter& report)
{
    if (!container.stamp.present())
        report.error(0, "has no data stamp");
    else if (container.stamp.fingerprint() != fingerprintOf(container.sections))
        report.error(0, "the sections do not have the fingerprint of the header");
}

void lintEntryName(const TSObjDisk& entry, const std::string& which, Reporter& report)
{
    const std::string name = nameOf(entry);
    if (name.empty() || name.size() > kMaxNameLength)
        report.error(0, which + ": the name is not terminated, or not 1 to 33 bytes long");
}

void lintEntries(const std::vector<TSObjDisk>& entries, Reporter& report)
{
    if (entries.size() > TSObjDisk::kMaxEntries)
        report.error(0, "more than 1,092 entries");
    Catalogue names;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const TSObjDisk& entry = entries[i];
        const std::string which = "entry " + std::to_string(i + 1);
        lintEntryName(entry, which, report);
        if (entry.type >= kObjectTypes)
            report.error(0, which + ": unknown type " + std::to_string(entry.type));
        if (entry.flags != 0)
            report.error(0, which + ": the flags are not 0");
        if (i > 0 && std::pair(entries[i - 1].type, std::uint16_t{entries[i - 1].id}) >=
                         std::pair(entry.type, std::uint16_t{entry.id}))
            report.error(0, which + ": not above the entry ahead of it by type and id");
        if (!names.add(entry.type, static_cast<std::uint16_t>(i), nameOf(entry)))
            report.error(0, which + ": the name " + nameOf(entry) + " is taken");
    }
}

void lintObject(const std::string& path, const TSObjDisk& entry, const LintExceptions& exceptions,
                Diagnostics& diagnostics)
{
    const auto container = readContainer(path, diagnostics);
    if (!container)
        return;
    Reporter report(path, diagnostics);
    lintStamp(*container, report);
    if (container->header.formatVersion() == 1)
        report.error(0, "is of the older format");
    if (entry.type == TS_OBJ_LANGUAGE)
        lintLanguage(container->sections.front(), path, diagnostics);
    else if (entry.type == TS_OBJ_TERRITORY)
        lintTerritory(container->sections.front(), path, diagnostics);
    else if (entry.type == TS_OBJ_CODEPAGE)
        lintCodePage(container->sections, entry.id, path, exceptions, diagnostics);
    else if (entry.type == TS_OBJ_SORT)
        lintSort(container->sections.front(), path, diagnostics);
}

// Object files that the control file does not list are never read.
void lintStrays(const std::string& directory, const std::set<std::string>& listed,
                Diagnostics& diagnostics)
{
    std::error_code none;
    for (const fs::directory_entry& file : fs::directory_iterator(directory, none)) {
        const std::string name = file.path().filename().string();
        if (parseFileName(name) && !listed.contains(name))
            diagnostics.push_back({file.path().string(), 0, "is not in control.nls", true});
    }
}

} // namespace

void writeFile(const fs::path& path, const Bytes& content, Diagnostics& diagnostics)
{
    const fs::path temporary = path.string() + ".new";
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(content.data()),
              static_cast<std::streamsize>(content.size()));
    out.close();
    std::error_code failed;
    if (out)
        fs::rename(temporary, path, failed);
    if (!out || failed)
        diagnostics.push_back({path.string(), 0, "cannot be written"});
}

void listDirectory(const std::string& directory, std::ostream& out, Diagnostics& diagnostics)
{
    const auto control = readContainer(directory + "/control.nls", diagnostics);
    if (!control)
        return;
    for (const TSObjDisk& entry : controlEntries(*control)) {
        if (entry.type >= kObjectTypes)
            continue;
        const auto object =
            readContainer(directory + "/" + objectFileName(entry.type, entry.id), diagnostics);
        if (!object)
            continue;
        out << std::left << std::setw(10) << kTypeNames[entry.type] << std::right << std::setw(6)
            << entry.id << "  " << std::left << std::setw(34) << nameOf(entry) << std::right;
        for (std::size_t i = 0; i < TSObjHeader::kMaxSections; ++i)
            out << std::setw(6) << (i < object->sections.size() ? object->sections[i].size() : 0);
        out << "  " << fingerprintText(*object) << '\n';
    }
}

void dumpFile(const std::string& path, std::ostream& out, Diagnostics& diagnostics)
{
    const std::string name = fs::path(path).filename().string();
    const auto object = parseFileName(name);
    if (name != "control.nls" && !object) {
        diagnostics.push_back({path, 0, "is neither control.nls nor named like cp_01252.nls"});
        return;
    }
    const auto container = readContainer(path, diagnostics);
    if (!container)
        return;
    dumpHeader(*container, out);
    if (object)
        dumpObject(*container, *object, out);
    else
        dumpControl(*container, out);
}

void lintDirectory(const std::string& directory, const std::string& exceptions,
                   Diagnostics& diagnostics)
{
    LintExceptions listedCharacters;
    if (!exceptions.empty())
        if (const auto lines = readSource(exceptions, diagnostics))
            for (const SourceLine& line : *lines)
                listedCharacters.insert(line.text);
    const std::string path = directory + "/control.nls";
    const auto control = readContainer(path, diagnostics);
    if (!control)
        return;
    Reporter report(path, diagnostics);
    lintStamp(*control, report);
    const auto entries = controlEntries(*control);
    lintEntries(entries, report);
    std::set<std::string> listed;
    for (const TSObjDisk& entry : entries) {
        if (entry.type >= kObjectTypes)
            continue;
        const std::string name = objectFileName(entry.type, entry.id);
        listed.insert(name);
        lintObject(directory + "/" + name, entry, listedCharacters, diagnostics);
    }
    lintStrays(directory, listed, diagnostics);
}

} // namespace vlx::data
