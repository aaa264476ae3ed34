// Ids and names of objects, without loading them.
#include <cstring>

#include "facade/facade.hpp"
#include "frame/alias.hpp"

TS_TRACE_UNIT_OF("*", "vlxnls1");

namespace {

constexpr std::int32_t kNoLoad = 1;

// The id of the object of a name, or 0. The binary sort has id 0 and no code.
std::int32_t idOf(std::uint16_t type, const char* name, std::int32_t* code)
{
    std::int32_t unused = TS_ERR_NONE;
    std::int32_t& result = code ? *code : unused;
    if (!vlx::facadeRuns()) {
        result = TS_ERR_NO_OBJECTS;
        return 0;
    }
    if (!name) {
        result = TS_ERR_ARGUMENT;
        return 0;
    }
    TSObjManager* const manager = vlx::objectManager();
    // Here alone aliases count.
    if (type == TS_OBJ_CODEPAGE)
        if (const char* const target = TSGetCodepageFromAlias(manager, name))
            name = target;
    const TSObject* const object = TSGetObjFromName(
        manager, type, name, static_cast<std::int32_t>(std::strlen(name)), kNoLoad, &result);
    return object ? object->id : 0;
}

std::int32_t NLS1_GetObjectName(std::int32_t id, char* buffer, std::int32_t size,
                                std::uint16_t type)
{
    TS_TRACE(NLS1_GetObjectName);
    if (!vlx::facadeRuns()) {
        TS_PRINT(TRC1_ERRORS, "The library does not run");
        TS_RETURN(TS_ERR_NO_OBJECTS);
    }
    std::int32_t code = TS_ERR_NONE;
    const TSObject* const object =
        TSGetObjFromID(vlx::objectManager(), type, static_cast<std::uint16_t>(id), kNoLoad, &code);
    if (!object) // Deliberate: the binary sort is no object and no error
        TS_RETURN(code);
    const auto length = static_cast<std::int32_t>(std::strlen(object->name));
    if (length >= size) {
        TS_PRINT(TRC1_ERRORS, "Object name length (%d) for %s exceeds output buffer length (%d)",
                 length, object->name, size);
        TS_RETURN(TS_ERR_BUFFER);
    }
    if (!buffer)
        TS_RETURN(TS_ERR_ARGUMENT);
    std::memcpy(buffer, object->name, static_cast<std::size_t>(length) + 1);
    TS_RETURN(TS_ERR_NONE);
}

} // namespace

int32_t NLS1_GetLanguageId(const char* name, int32_t* code)
{
    TS_TRACE(NLS1_GetLanguageId);
    TS_RETURN(idOf(TS_OBJ_LANGUAGE, name, code));
}

int32_t NLS1_GetTerritoryId(const char* name, int32_t* code)
{
    TS_TRACE(NLS1_GetTerritoryId);
    TS_RETURN(idOf(TS_OBJ_TERRITORY, name, code));
}

int32_t NLS1_GetCodepageId(const char* name, int32_t* code)
{
    TS_TRACE(NLS1_GetCodepageId);
    TS_RETURN(idOf(TS_OBJ_CODEPAGE, name, code));
}

int32_t NLS1_GetSortId(const char* name, int32_t* code)
{
    TS_TRACE(NLS1_GetSortId);
    TS_RETURN(idOf(TS_OBJ_SORT, name, code));
}

int32_t NLS1_GetLanguageName(int32_t id, char* buffer, int32_t size)
{
    TS_TRACE(NLS1_GetLanguageName);
    if (id >= vlx::IdPair::kBase)
        id = vlx::IdPair(id).language;
    TS_RETURN(NLS1_GetObjectName(id, buffer, size, TS_OBJ_LANGUAGE));
}

int32_t NLS1_GetTerritoryName(int32_t id, char* buffer, int32_t size)
{
    TS_TRACE(NLS1_GetTerritoryName);
    if (id >= vlx::IdPair::kBase)
        id = vlx::IdPair(id).territory;
    TS_RETURN(NLS1_GetObjectName(id, buffer, size, TS_OBJ_TERRITORY));
}

int32_t NLS1_GetCodepageName(int32_t id, char* buffer, int32_t size)
{
    TS_TRACE(NLS1_GetCodepageName);
    TS_RETURN(NLS1_GetObjectName(id, buffer, size, TS_OBJ_CODEPAGE));
}

int32_t NLS1_GetSortName(int32_t id, char* buffer, int32_t size)
{
    TS_TRACE(NLS1_GetSortName);
    TS_RETURN(NLS1_GetObjectName(id, buffer, size, TS_OBJ_SORT));
}
