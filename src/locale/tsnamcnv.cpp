// Object names to and from 16-bit text, by the code page object that is the ASCII of names.
#include "chars/codepage.hpp"
#include "frame/globals.hpp"
#include "frame/objman.hpp"
#include "locale/locale.hpp"

namespace {

// Units before the terminator, or `count` if it is not negative.
template <class Unit>
std::int32_t lengthOf(const Unit* text, std::int32_t count)
{
    if (count >= 0)
        return count;
    std::int32_t length = 0;
    while (text[length] != 0)
        ++length;
    return length;
}

} // namespace

const TSObject* vlx::asciiPage(std::int32_t* code)
{
    TSObject* const object =
        TSGetObjFromID(tsGlobals->objectManager, TS_OBJ_CODEPAGE, kAsciiCodePage, 0, code);
    return object && object->type == TS_OBJ_CODEPAGE ? object : nullptr;
}

std::int32_t TSNameFromUnicode(const TSChar16* source, std::int32_t count, char* target,
                               std::uint32_t size, std::int32_t* code)
{
    const TSObject* const page = vlx::asciiPage(code);
    if (count < 0) {
        count = lengthOf(source, count);
        if (count < 1)
            return -1;
    }
    if (!page || size == 0)
        return -1;
    std::int32_t done = 0;
    for (; done < count && source[done] != 0 && static_cast<std::uint32_t>(done) + 1 < size;
         ++done) {
        char bytes[4];
        TSCpUnicodeToMb(page, source[done], bytes);
        target[done] = bytes[0]; // one byte for each unit, whatever the page says
    }
    target[done] = 0;
    return done;
}

std::int32_t TSNameToUnicode(const char* source, std::int32_t count, TSChar16* target,
                             std::uint32_t size)
{
    std::int32_t code = TS_ERR_NONE;
    const TSObject* const page = vlx::asciiPage(&code);
    if (!page || size == 0)
        return -1;
    count = lengthOf(source, count);
    std::int32_t done = 0;
    for (; done < count && source[done] != 0 && static_cast<std::uint32_t>(done) + 1 < size; ++done)
        target[done] = tsCodePage(page).toUnicode[static_cast<std::uint8_t>(source[done])];
    target[done] = 0;
    return done;
}
