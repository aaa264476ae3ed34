// Loading an object: its sections are mapped, checked and published, under the library's lock.
#include <cstring>

#include "convert/cpupgrad.hpp"
#include "frame/file.hpp"
#include "frame/globals.hpp"
#include "frame/locdir.hpp"
#include "frame/objman.hpp"
#include "frame/sections.hpp"
#include "frame/trace.hpp"

TS_TRACE_UNIT("tsobjlod");

namespace {

using vlx::LoadedSections;
using vlx::Section;

constexpr int kPathSize = 260;
constexpr int kSections = TSObjHeader::kMaxSections;

constexpr std::uint8_t heapFlag(int section)
{
    return static_cast<std::uint8_t>(TS_OBJ_SECTION1_HEAP << section);
}

// Gives a section back the way it came; a section that is not there is none.
void drop(Section& section)
{
    if (section.data && section.onHeap)
        vlx::releaseObject(const_cast<std::uint8_t*>(section.data));
    else if (section.data)
        TSUnloadFile(section.data);
    section = {};
}

void dropAll(LoadedSections& sections)
{
    for (int i = kSections - 1; i >= 0; --i)
        drop(sections[i]);
}

// Puts sections of a new form in the place of the old ones, as far as there are new ones.
void replaceWith(LoadedSections& sections, const LoadedSections& copy)
{
    for (int i = 0; i < kSections; ++i)
        if (copy[i].data) {
            drop(sections[i]);
            sections[i] = copy[i];
        }
}

// Brings the sections of one object in from its file.
class ObjectLoader {
  public:
    ObjectLoader(const TSObject& object, TSFile& file) : object_(object), file_(file) {}

    // 0, or the failure's code, after which nothing is mapped.
    std::int32_t load();

    LoadedSections sections;

  private:
    std::int32_t mapSections(const TSObjHeader& header);
    std::int32_t upgrade();
    std::int32_t makeSafe();
    bool isSound() const;
    bool copySafely(LoadedSections& copy) const;

    const TSObject& object_;
    TSFile& file_;
};

std::int32_t ObjectLoader::load()
{
    std::int32_t code = TS_ERR_NONE;
    const void* const mapped = TSLoadFile(&file_, 0, sizeof(TSObjHeader), &code);
    if (!mapped)
        return code;
    const auto& header = *static_cast<const TSObjHeader*>(mapped);
    code = header.magic == TSObjHeader::kMagic ? mapSections(header) : TS_ERR_HEADER;
    if (code == TS_ERR_NONE && object_.type == TS_OBJ_CODEPAGE && header.formatVersion() == 1)
        code = upgrade();
    TSUnloadFile(mapped);
    if (code == TS_ERR_NONE)
        code = makeSafe();
    if (code != TS_ERR_NONE)
        dropAll(sections);
    return code;
}

std::int32_t ObjectLoader::mapSections(const TSObjHeader& header)
{
    const int count = header.sectionCount;
    for (int i = 0; i < kSections && (i == 0 || i < count); ++i) {
        std::int32_t code = TS_ERR_NONE;
        const std::uint16_t size = header.sectionSize(i);
        const void* const data = TSLoadFile(&file_, header.sectionOffset(i), size, &code);
        if (code != TS_ERR_NONE)
            return code;
        sections[i] = {static_cast<const std::uint8_t*>(data), size, false};
    }
    return TS_ERR_NONE;
}

// Rebuilds a code page of the older form: a new section 1, and a new section 2 if there was one.
std::int32_t ObjectLoader::upgrade()
{
    LoadedSections upgraded;
    const std::int32_t code = vlx::upgradeCodePage(sections, upgraded);
    if (code != TS_ERR_NONE)
        return code;
    replaceWith(sections, upgraded);
    return TS_ERR_NONE;
}

std::int32_t ObjectLoader::makeSafe()
{
    if (isSound())
        return TS_ERR_NONE;
    LoadedSections copy;
    if (!copySafely(copy)) {
        dropAll(copy);
        return TS_ERR_MEMORY;
    }
    replaceWith(sections, copy);
    return TS_ERR_NONE;
}

bool ObjectLoader::isSound() const
{
    switch (object_.type) {
    case TS_OBJ_LANGUAGE:
        return vlx::languageIsSound(sections[0]);
    case TS_OBJ_TERRITORY:
        return vlx::territoryIsSound(sections[0]);
    case TS_OBJ_CODEPAGE:
        return vlx::codePageIsSound(object_.id, sections);
    default:
        return vlx::sortIsSound(sections[0]);
    }
}

bool ObjectLoader::copySafely(LoadedSections& copy) const
{
    switch (object_.type) {
    case TS_OBJ_LANGUAGE:
        return vlx::rebuildLanguage(sections[0], copy[0]);
    case TS_OBJ_TERRITORY:
        return vlx::rebuildTerritory(sections[0], copy[0]);
    case TS_OBJ_CODEPAGE:
        return vlx::padCodePage(object_.id, sections, copy);
    default:
        return vlx::padSort(sections[0], copy[0]);
    }
}

// Fills the object, section 1 last: from then on other threads use it without the lock.
void publish(TSObject& object, const LoadedSections& sections)
{
    object.flags = 0;
    for (int i = 0; i < kSections; ++i)
        if (sections[i].onHeap)
            object.flags |= heapFlag(i);
    for (int i = 1; i < kSections; ++i)
        object.sections[i] = sections[i].data;
    if (object.type == TS_OBJ_SORT)
        object.sortTraitsState = TSObject::kTraitsWanted;
    object.publishSection1(sections[0].data);
}

// Opens and loads; 0 or the failure's code.
std::int32_t loadFromFile(TSObjManager& manager, TSObject& object)
{
    char path[kPathSize];
    if (!TSComposeObjectName(manager.directory, object.type, object.id, path, sizeof path))
        return TS_ERR_FILE_READ;
    std::int32_t code = TS_ERR_NONE;
    TSFile* const file =
        TSOpenFile(static_cast<TSContext>(tsGlobals->active), path, TS_FILE_READ, 0, &code);
    if (!file)
        return code;
    ObjectLoader loader(object, *file);
    code = loader.load();
    if (code != TS_ERR_NONE) {
        TSCloseFile(file, 0);
        return code;
    }
    object.file = file;
    publish(object, loader.sections);
    return TS_ERR_NONE;
}

// What a failed load leaves: the built-in data under the object's own name and id, or nothing.
TSObject* afterFailure(TSObjManager& manager, TSObject& object)
{
    if (manager.strict || TSInstallBuiltin(&manager, &object) != 0)
        return nullptr;
    return &object;
}

// Gives back one section; 0 or the failure's code.
std::int32_t unloadSection(TSObject& object, int index)
{
    const std::uint8_t* const section = object.sections[index];
    if (object.flags & heapFlag(index))
        return vlx::releaseObject(const_cast<std::uint8_t*>(section)) ? TS_ERR_NONE : TS_ERR_FREE;
    return TSUnloadFile(section);
}

} // namespace

TSObject* TSLoadObject(TSObjManager* manager, TSObject* object, std::int32_t* code)
{
    TS_TRACE(TSLoadObject);
    SYS1_GetLock(&tsGlobals->lock);
    TSObject* result = object;
    *code = TS_ERR_NONE;
    // A sort whose section 1 is empty stays without one, but it is loaded once.
    if (!object->sections[0] && !object->file) {
        *code = loadFromFile(*manager, *object);
        if (*code != TS_ERR_NONE) {
            TS_PRINT(TRC1_ERRORS, "Load of object %s failed, err = %d", object->name, *code);
            result = afterFailure(*manager, *object);
        }
    }
    SYS1_ReleaseLock(&tsGlobals->lock);
    TS_RETURN(result);
}

std::int32_t TSUnloadObject(TSObjManager*, TSObject* object)
{
    TS_TRACE(TSUnloadObject);
    std::int32_t result = TS_ERR_NONE;
    const auto keep = [&result](std::int32_t code) {
        if (code != TS_ERR_NONE)
            result = code;
    };
    for (int i = kSections - 1; i >= 0; --i)
        if (object->sections[i])
            keep(unloadSection(*object, i));
    if (object->file)
        keep(TSCloseFile(object->file, 0));
    object->file = nullptr;
    for (const std::uint8_t*& section : object->sections)
        section = nullptr;
    TS_RETURN(result);
}
