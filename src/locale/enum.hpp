// The walk over the object table that the members of TSEnumLocales share.
#pragma once

#include "frame/globals.hpp"
#include "frame/objman.hpp"
#include "locale/locale.hpp"

namespace vlx {

// Calls `visit(type, name)` for each object in table order until a call returns 0.
template <class Visit>
void enumObjects(const Visit& visit)
{
    const TSObjManager& manager = *tsGlobals->objectManager;
    for (int i = 0; i < manager.objectCount; ++i)
        if (visit(std::int32_t{manager.objects[i].type}, manager.objects[i].name) == 0)
            return;
}

} // namespace vlx
