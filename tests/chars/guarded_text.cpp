#include "chars/guarded_text.hpp"

#include <cstring>
#include <stdexcept>

namespace vlx::test {

char* GuardedText::endingAtGuard(const void* text, std::size_t size)
{
    if (size > room_)
        throw std::length_error("the text is too long");
    char* const place = area_ + 2 * room_ - size;
    if (size != 0)
        std::memcpy(place, text, size);
    return place;
}

char* GuardedText::beginningAtGuard(const void* text, std::size_t size)
{
    if (size > room_)
        throw std::length_error("the text is too long");
    if (size != 0)
        std::memcpy(area_ + room_, text, size);
    return area_ + room_;
}

} // namespace vlx::test
