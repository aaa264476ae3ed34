// Locale names and the values of a locale once more, slow and literal, with a reading of the object
// files of its own. It shares nothing with the library.
#pragma once

#include <array>
#include <cstdint>
#include <ostream>
#include <vector>

#include "locale/locale_builder.hpp"
#include "support/oracle_chars.hpp"

namespace vlx::oracle {

using Objects = std::vector<test::ListedObject>;
using Values32 = std::vector<std::uint32_t>; // the values of a name, without a terminator

// The indices of the four objects of a locale in the table, or a code.
struct Resolution {
    static constexpr int kNone = -1; // the binary sort, or an object that was not looked for

    std::int32_t code = 0;
    int language = kNone;
    int territory = kNone;
    int codePage = kNone;
    int sort = kNone;

    bool operator==(const Resolution&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Resolution& resolution);

// What a name of bytes or of 32-bit values leads to; options are 0 or the fallback's.
Resolution resolve(const Objects& objects, const Values32& name, std::uint32_t options);

// What a name of 16-bit units leads to.
Resolution resolveUnicode(const Objects& objects, const std::u16string& name,
                          std::uint32_t options);

// The modifiable area of a record and its masks. Texts are without their terminators.
struct Values {
    std::uint32_t modifiedMask = 0;
    std::uint16_t modifiedMaskU = 0;
    std::array<std::uint16_t, 3> digits{};
    std::uint16_t flags = 0;
    std::array<std::uint8_t, 2> positions{};
    std::array<std::uint8_t, 5> separators{};
    std::array<std::uint16_t, 5> separatorsU{};
    std::array<Bytes, 8> texts;
    std::array<std::vector<std::uint16_t>, 8> textsU;

    bool operator==(const Values&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Values& values);

Page pageOf(const test::ListedObject& object);

// The values of a new record: the flags of the objects, then those of the territory.
Values freshValues(const Page& page, Span territory, bool binarySort);

// Fills the values whose bit is clear.
void setModifiable(Values& values, const Page& page, Span territory);

// 0, or 36 with the values as they were.
std::int32_t changeCodePage(Values& values, const Page& from, const Page& to);

Bytes recodeString(const Page& from, const Page& to, const Bytes& text);

} // namespace vlx::oracle
