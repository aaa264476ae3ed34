// Conversions whose output is an array of elements, 16-bit values or packed values.
#pragma once

#include <algorithm>
#include <cstdint>

#include "convert/output.hpp"
#include "convert/source.hpp"

namespace vlx {

// Has `fill` write elements until the source or the room ends, then writes a terminator: if
// `terminate`, for which a place is kept, or if `ifRoom` and all was read and a place is left.
// Gives the elements written.
template <class Element, class Source, class Fill>
std::int32_t fillAndEnd(Element* output, std::int32_t count, Source& source, bool terminate,
                        bool ifRoom, const Fill& fill)
{
    const std::int32_t room = terminate ? count - 1 : count;
    std::int32_t written = fill(source, room);
    if (terminate || (ifRoom && source.whole() && written < room))
        output[written++] = 0;
    return written;
}

// The values of a source as 16-bit text.
template <class Source>
std::int32_t convertToUnits(TSChar16* output, std::int32_t count, Source source, bool terminate,
                            bool ifRoom)
{
    return fillAndEnd(output, count, source, terminate, ifRoom,
                      [output](Source& from, auto room) { return readValues(from, output, room); });
}

// What `elementOf` makes of the values of a source.
template <class Element, class Source, class ElementOf>
std::int32_t convertToElements(Element* output, std::int32_t count, Source source, bool terminate,
                               bool ifRoom, const ElementOf& elementOf)
{
    return fillAndEnd(output, count, source, terminate, ifRoom, [&](Source& from, auto room) {
        std::int32_t written = 0;
        for (TSChar16 value; written < room && from.next(value);)
            output[written++] = elementOf(value);
        return written;
    });
}

} // namespace vlx
