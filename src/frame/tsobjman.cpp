#include "frame/objman.hpp"

#include <algorithm>
#include <cstring>

#include "frame/alias.hpp"
#include "frame/builtin.hpp"
#include "frame/control.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "host/host.hpp"

TS_TRACE_UNIT("tsobjman");

namespace {

constexpr char kBinarySort[] = "BINARY";

constexpr int kBuiltinObjects = 3;
struct BuiltinEntry {
    std::uint8_t type;
    const char* name;
};
constexpr BuiltinEntry kBuiltinTable[kBuiltinObjects] = {
    {TS_OBJ_LANGUAGE, "English"},
    {TS_OBJ_TERRITORY, "UnitedStates"},
    {TS_OBJ_CODEPAGE, "US-ASCII"},
};

// The last step of a lookup: the object with its data, unless that is not wanted.
TSObject* withData(TSObjManager* manager, TSObject* object, std::int32_t noLoad, std::int32_t* code)
{
    if (noLoad != 1 && !object->section1())
        return TSLoadObject(manager, object, code);
    return object;
}

// A name with a terminator, for a message; a long one is cut.
struct ShownName {
    ShownName(const char* name, std::int32_t length)
    {
        const auto size = static_cast<std::size_t>(std::clamp(length, 0, kMost));
        std::memcpy(text, name, size);
        text[size] = 0;
    }

    static constexpr std::int32_t kMost = 127;
    char text[kMost + 1];
};

// `length` may count a terminator, which then has to stand there.
bool nameMatches(const TSObject& object, std::uint16_t type, const char* name, std::size_t length)
{
    const std::size_t own = std::strlen(object.name);
    return object.type == type && (own == length || own + 1 == length) &&
           vlx::host::equalIgnoringCase(object.name, name, length);
}

bool isBinarySort(const char* name, std::size_t length)
{
    constexpr std::size_t kLength = sizeof kBinarySort - 1;
    return (length == kLength || length == kLength + 1) &&
           vlx::host::equalIgnoringCase(kBinarySort, name, length);
}

} // namespace

TSObjManager* TSInitObjManager(const char* directory, std::uint32_t options, std::int32_t* code)
{
    TS_TRACE(TSInitObjManager);
    *code = TS_ERR_NONE;
    if (directory)
        TS_PRINT(TRC1_INPUTS, "directory = %s.", directory);
    else
        TS_PRINT(TRC1_INPUTS, "No directory specified");
    TS_PRINT(TRC1_INPUTS, "options = %d", static_cast<int>(options));

    TSObjManager* const none = nullptr;
    auto* const manager = static_cast<TSObjManager*>(vlx::allocateObject(sizeof(TSObjManager)));
    if (!manager)
        TS_FAIL(*code, TS_ERR_MEMORY, none, "Unable to allocate %d bytes for object manager",
                static_cast<int>(sizeof(TSObjManager)));
    std::memset(manager, 0, sizeof *manager);
    manager->strict = options == TS_STRICT_OBJECTS;
    *code = vlx::readControl(*manager, directory);
    if (*code == TS_ERR_NONE || *code == TS_ERR_MEMORY || manager->strict)
        TS_RETURN(manager);
    if (!TSInstallBuiltinTable(manager)) {
        vlx::release(manager);
        TS_RETURN(none);
    }
    TS_RETURN(manager);
}

std::int32_t TSDestroyObjManager(TSObjManager* manager)
{
    TS_TRACE(TSDestroyObjManager);
    TSDestroyAliasList(manager);
    std::int32_t result = TS_ERR_NONE;
    for (int i = 0; i < manager->objectCount; ++i) {
        TSObject& object = manager->objects[i];
        if (!(object.flags & TS_OBJ_BUILTIN) && (object.sections[0] || object.file))
            result = TSUnloadObject(manager, &object);
    }
    // Deliberate: both blocks came from allocateObject and go back through free.
    if (manager->objects && !vlx::release(manager->objects))
        result = TS_ERR_FAILED;
    if (!vlx::release(manager))
        result = TS_ERR_FAILED;
    TS_RETURN(result);
}

TSObject* TSGetObjFromName(TSObjManager* manager, std::uint16_t type, const char* name,
                           std::int32_t length, std::int32_t noLoad, std::int32_t* code)
{
    TS_TRACE(TSGetObjFromName);
    *code = TS_ERR_NONE;
    TSObject* const none = nullptr;
    TS_PRINT(TRC1_INPUTS, "Searching for type %d, name %s", type, ShownName(name, length).text);
    const auto size = static_cast<std::size_t>(length < 0 ? 0 : length);
    if (type == TS_OBJ_SORT && isBinarySort(name, size))
        TS_RETURN(none);
    if (type < vlx::kObjectTypes)
        for (int i = manager->first(type); i < manager->first(type + 1u); ++i)
            if (nameMatches(manager->objects[i], type, name, size))
                TS_RETURN(withData(manager, &manager->objects[i], noLoad, code));
    *code = TS_ERR_NOT_FOUND;
    TS_RETURN(none);
}

TSObject* TSGetObjFromNameW(TSObjManager* manager, std::uint16_t type, const TSChar32* name,
                            std::int32_t length, std::int32_t noLoad, std::int32_t* code)
{
    TS_TRACE(TSGetObjFromNameW);
    *code = TS_ERR_NONE;
    TSObject* const none = nullptr;
    const auto size = static_cast<std::uint32_t>(length < 0 ? 0 : length);
    auto* const narrow = static_cast<char*>(vlx::allocate(size));
    if (!narrow)
        TS_FAIL(*code, TS_ERR_MEMORY, none, "Unable to allocate %d bytes for a name", length);
    // Deliberate: a value above 255 counts by its low byte.
    for (std::uint32_t i = 0; i < size; ++i)
        narrow[i] = static_cast<char>(name[i]);
    TSObject* const object =
        TSGetObjFromName(manager, type, narrow, static_cast<std::int32_t>(size), noLoad, code);
    vlx::release(narrow);
    TS_RETURN(object);
}

TSObject* TSGetObjFromID(TSObjManager* manager, std::uint16_t type, std::uint16_t id,
                         std::int32_t noLoad, std::int32_t* code)
{
    TS_TRACE(TSGetObjFromID);
    *code = TS_ERR_NONE;
    TSObject* const none = nullptr;
    TS_PRINT(TRC1_INPUTS, "Searching for type %d, id %d", type, id);
    if (type == TS_OBJ_SORT && id == 0)
        TS_RETURN(none);
    if (type < vlx::kObjectTypes && manager->objectCount > 0) {
        int low = manager->first(type);
        const int next = manager->first(type + 1u);
        int high = next > 0 ? next - 1 : 0;
        while (low < high) {
            const int middle = (low + high) / 2;
            if (manager->objects[middle].id < id)
                low = middle + 1;
            else
                high = middle;
        }
        // Deliberate: in an empty range this is the entry before it, of another type.
        TSObject& object = manager->objects[high];
        if (object.id == id && object.type < vlx::kObjectTypes)
            TS_RETURN(withData(manager, &object, noLoad, code));
    }
    *code = TS_ERR_NOT_FOUND;
    TS_RETURN(none);
}

std::int32_t TSInstallBuiltin(TSObjManager*, TSObject* object)
{
    TS_TRACE(TSInstallBuiltin);
    const auto* const codePage = reinterpret_cast<const std::uint8_t*>(&vlx::kBuiltinCodePage);
    const std::uint8_t* section1 = nullptr;
    switch (object->type) {
    case TS_OBJ_LANGUAGE:
        section1 = vlx::kBuiltinLanguage;
        break;
    case TS_OBJ_TERRITORY:
        section1 = vlx::kBuiltinTerritory;
        break;
    case TS_OBJ_CODEPAGE:
        section1 = codePage;
        // Deliberate: section 3 is the header block too, not the array that the header's pages are
        // made for, so that a Unicode value gives a byte of the header.
        object->sections[2] = codePage;
        break;
    default:
        TS_RETURN(1);
    }
    object->flags |= TS_OBJ_BUILTIN;
    object->publishSection1(section1);
    TS_RETURN(0);
}

bool TSInstallBuiltinTable(TSObjManager* manager)
{
    TS_TRACE(TSInstallBuiltinTable);
    constexpr std::uint32_t kSize = kBuiltinObjects * sizeof(TSObject);
    auto* const objects = static_cast<TSObject*>(vlx::allocateObject(kSize));
    if (!objects)
        TS_RETURN(false);
    std::memset(objects, 0, kSize);
    for (int i = 0; i < kBuiltinObjects; ++i) {
        TSObject& object = objects[i];
        object.id = 1;
        object.type = kBuiltinTable[i].type;
        std::strncpy(object.name, kBuiltinTable[i].name, sizeof object.name - 1);
        TSInstallBuiltin(manager, &object);
    }
    manager->objects = objects;
    manager->firstLanguage = 0;
    manager->firstTerritory = 1;
    manager->firstCodePage = 2;
    manager->firstSort = manager->objectCount = kBuiltinObjects;
    manager->strict = true;
    manager->directory[0] = 0;
    TS_RETURN(true);
}
