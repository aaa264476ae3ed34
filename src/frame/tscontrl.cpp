#include "frame/control.hpp"

#include <algorithm>
#include <cstring>

#include "frame/alias.hpp"
#include "frame/file.hpp"
#include "frame/globals.hpp"
#include "frame/locdir.hpp"
#include "frame/objman.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tscontrl");

namespace {

constexpr int kPathSize = 260;

// Looks for a control file, directory by directory.
class ControlSearch {
  public:
    ControlSearch(TSObjManager& manager, vlx::TraceGuard& trace) : tsTrace(trace), manager_(manager)
    {
    }

    // The open control file, or null with `code`.
    TSFile* run(const char* directory, std::int32_t& code);

  private:
    enum class Outcome { kOpen, kFailed, kStop };

    Outcome tryGiven(const char* directory, std::int32_t& code);
    Outcome tryCandidate(std::int32_t which, std::int32_t& code);
    Outcome open(const char* name, std::int32_t& code);

    vlx::TraceGuard& tsTrace;
    TSObjManager& manager_;
    TSFile* file_ = nullptr;
};

TSFile* ControlSearch::run(const char* directory, std::int32_t& code)
{
    Outcome outcome = Outcome::kFailed;
    if (directory)
        outcome = tryGiven(directory, code);
    for (std::int32_t which = 0; which <= 1 && outcome == Outcome::kFailed; ++which)
        outcome = tryCandidate(which, code);
    if (!file_) {
        TS_PRINT(TRC1_ERRORS, "Unable to open control file");
        manager_.directory[0] = 0; // none of the candidates worked
    }
    return file_;
}

ControlSearch::Outcome ControlSearch::tryGiven(const char* directory, std::int32_t& code)
{
    char name[kPathSize];
    if (!TSComposeControlName(directory, name, sizeof name)) {
        code = TS_ERR_FILE_READ;
        TS_PRINT(TRC1_ERRORS, "Unable to construct control file name in directory %s", directory);
        TS_PRINT(TRC1_ERRORS, "control size = %d", kPathSize);
        return Outcome::kStop;
    }
    const Outcome outcome = open(name, code);
    if (outcome == Outcome::kOpen) // the name fitted, so the directory does
        std::memcpy(manager_.directory, directory, std::strlen(directory) + 1);
    return outcome;
}

// A candidate is kept in the manager's own directory field.
ControlSearch::Outcome ControlSearch::tryCandidate(std::int32_t which, std::int32_t& code)
{
    const std::int32_t length =
        TSLocaleDirCandidate(manager_.directory, TSObjManager::kDirectorySize, which);
    if (length < 0)
        return Outcome::kFailed;
    char name[kPathSize];
    if (length == 0 || !TSComposeControlName(manager_.directory, name, sizeof name)) {
        code = TS_ERR_FILE_READ;
        return Outcome::kStop;
    }
    return open(name, code);
}

ControlSearch::Outcome ControlSearch::open(const char* name, std::int32_t& code)
{
    file_ = TSOpenFile(static_cast<TSContext>(tsGlobals->active), name, TS_FILE_READ, 0, &code);
    if (file_)
        return Outcome::kOpen;
    TS_PRINT(TRC1_ERRORS, "Unable to open %s, err = %d", name, code);
    return Outcome::kFailed;
}

// Where each type's range begins, found by one walk over the table.
void setBoundaries(TSObjManager& manager, int count)
{
    std::uint16_t* const firsts[] = {&manager.firstLanguage, &manager.firstTerritory,
                                     &manager.firstCodePage, &manager.firstSort,
                                     &manager.objectCount};
    unsigned reached = 0; // the last type whose range has begun
    *firsts[0] = 0;
    for (int i = 0; i < count; ++i)
        while (reached < manager.objects[i].type && reached < vlx::kObjectTypes - 1)
            *firsts[++reached] = static_cast<std::uint16_t>(i);
    while (reached < vlx::kObjectTypes)
        *firsts[++reached] = static_cast<std::uint16_t>(count);
}

void copyEntry(TSObject& object, const TSObjDisk& entry)
{
    object.id = entry.id;
    object.type = entry.type;
    object.flags = 0; // what the file says is not used
    std::memcpy(object.name, entry.name, sizeof object.name);
    object.name[sizeof object.name - 1] = 0;
}

// Reads the object table behind a good header.
class TableReader {
  public:
    TableReader(TSObjManager& manager, TSFile& file, vlx::TraceGuard& trace)
        : tsTrace(trace), manager_(manager), file_(file)
    {
    }

    std::int32_t read(const TSObjHeader& header);

  private:
    void* allocate(std::uint32_t bytes);
    std::int32_t readRaw(const TSObjHeader& header, void* raw);
    void fill(const TSObjDisk* raw, int count);

    vlx::TraceGuard& tsTrace;
    TSObjManager& manager_;
    TSFile& file_;
};

void* TableReader::allocate(std::uint32_t bytes)
{
    // An empty table is a table: no allocator is asked for nothing.
    void* const block = vlx::allocateObject(std::max(bytes, 1u));
    if (!block)
        TS_PRINT(TRC1_ERRORS, "Unable to allocate %d bytes for control data",
                 static_cast<int>(bytes));
    return block;
}

std::int32_t TableReader::read(const TSObjHeader& header)
{
    TS_PRINT(TRC1_DETAIL, "TSObjDisk size = %d", static_cast<int>(sizeof(TSObjDisk)));
    void* const raw = allocate(header.sectionSize1);
    if (!raw)
        return TS_ERR_MEMORY;
    const int count =
        std::min(static_cast<int>(header.sectionSize1 / sizeof(TSObjDisk)), TSObjDisk::kMaxEntries);
    const auto size = static_cast<std::uint32_t>(count) * std::uint32_t{sizeof(TSObject)};
    std::int32_t code = TS_ERR_MEMORY;
    manager_.objects = static_cast<TSObject*>(allocate(size));
    if (manager_.objects) {
        std::memset(manager_.objects, 0, size);
        code = readRaw(header, raw);
        if (code == TS_ERR_NONE) {
            fill(static_cast<const TSObjDisk*>(raw), count);
            if (TSBuildAliasList(&manager_) != 0)
                TS_PRINT(TRC1_ERRORS, "Alias list build failed. No aliases supported");
        } else {
            vlx::releaseObject(manager_.objects);
            manager_.objects = nullptr;
        }
    }
    vlx::releaseObject(raw);
    return code;
}

// A read that gives less than the table is a failure too: the table would have no boundaries.
std::int32_t TableReader::readRaw(const TSObjHeader& header, void* raw)
{
    const std::uint32_t offset = header.sectionOffset1;
    if (offset > INT32_MAX ||
        TSSeekFile(&file_, static_cast<std::int32_t>(offset), TS_SEEK_SET) != 0) {
        TS_PRINT(TRC1_ERRORS, "Seek to offset %d failed for file %p", static_cast<int>(offset),
                 static_cast<void*>(&file_));
        return TS_ERR_FILE_READ;
    }
    std::int32_t code = TS_ERR_NONE;
    const std::uint32_t size = header.sectionSize1;
    if (TSReadFile(&file_, raw, size, &code) == size)
        return TS_ERR_NONE;
    TS_PRINT(TRC1_ERRORS, "Read of %d bytes from file %p failed with error %d",
             static_cast<int>(size), static_cast<void*>(&file_), code);
    return TS_ERR_FILE_READ;
}

void TableReader::fill(const TSObjDisk* raw, int count)
{
    for (int i = 0; i < count; ++i) {
        TSObject& object = manager_.objects[i];
        copyEntry(object, raw[i]);
        TS_PRINT(TRC1_DETAIL, "Entry = %d, Object Type = %d, Object Id = %d, Object Name = %s", i,
                 object.type, object.id, object.name);
    }
    setBoundaries(manager_, count);
}

} // namespace

std::int32_t vlx::readControl(TSObjManager& manager, const char* directory)
{
    TS_TRACE(readControl);
    std::int32_t code = TS_ERR_NONE;
    TSFile* const file = ControlSearch(manager, tsTrace).run(directory, code);
    if (!file)
        TS_RETURN(code);

    const void* const mapped = TSLoadFile(file, 0, sizeof(TSObjHeader), &code);
    if (mapped) {
        const auto& header = *static_cast<const TSObjHeader*>(mapped);
        if (header.magic == TSObjHeader::kMagic) {
            code = TableReader(manager, *file, tsTrace).read(header);
        } else {
            TS_PRINT(TRC1_ERRORS, "Control file header is corrupted");
            code = TS_ERR_HEADER;
        }
        TSUnloadFile(mapped);
    }
    TSCloseFile(file, 0);
    TS_RETURN(code);
}
