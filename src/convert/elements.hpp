// Conversions whose output is an array of elements, 16-bit values or packed values.
#pragma once

#include <algorithm>
#include <cstdint>

#include "convert/output.hpp"
#include "convert/source.hpp"

namespace vlx {

// Writes elements until the source or the room ends, then a terminator: if `terminate`, for which
// a place is kept, or if `ifRoom` and all was read and a place is left. `elementOf` makes the
// element of a value. Gives the elements written.
template <class Element, class Source, class ElementOf>
std::int32_t convertToElements(Element* output, std::int32_t count, Source source, bool terminate,
                               bool ifRoom, const ElementOf& elementOf)
{
    const std::int32_t room = terminate ? count - 1 : count;
    std::int32_t written = 0;
    for (TSChar16 value; written < room && source.next(value);)
        output[written++] = elementOf(value);
    if (terminate || (ifRoom && source.whole() && written < room))
        output[written++] = 0;
    return written;
}

inline TSChar16 sameValue(TSChar16 value)
{
    return value;
}

} // namespace vlx
