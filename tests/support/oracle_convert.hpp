// Conversion and line ends once more, slow and literal: whole strings in all their forms, the
// handle of buffer conversion with its steps as they stand, and the search and writing of line
// ends. It stands on the oracles of the character model and of the string operations.
#pragma once

#include <optional>
#include <vector>

#include "support/oracle_strings.hpp"

namespace vlx::oracle {

// What a call returned, the error code that it left in the target's record, and all that it wrote,
// from the start of the output on. A character that was written and taken back stays in there, so
// there may be more of it than the result tells.
template <class Unit>
struct Converted {
    std::int32_t result = 0;
    std::int32_t error = 0;
    std::vector<Unit> written;
};
using ToBytes = Converted<unsigned char>;
using ToUnicode = Converted<std::uint16_t>;
using ToWide = Converted<std::uint32_t>;

// 16-bit or 32-bit input: all that may be read, and the length that the call is given.
struct UnitText {
    Units units;
    std::int32_t length = -1;
};

// The output that a call is offered; the plain members leave the state 0.
struct Room {
    std::int32_t state = 0;
    std::int32_t size = 0;
};

// Whole strings.
ToBytes convertString(const Locale& target, const Room& room, const Locale& source,
                      const Text& input, std::uint32_t options);
ToBytes convertStringEx(const Locale& target, const Room& room, const Locale& source,
                        const Text& input, std::uint32_t options);
ToWide convertStringW(const Locale& target, const Room& room, const Locale& source,
                      const UnitText& input, std::uint32_t options);
ToUnicode stringToUnicode(const Room& room, const Locale& locale, const Text& input,
                          std::uint32_t options);
ToUnicode stringToUnicodeEx(const Room& room, const Locale& locale, const Text& input,
                            std::uint32_t options);
ToUnicode stringToUnicodeW(const Room& room, const Locale& locale, const UnitText& input,
                           std::uint32_t options);
ToBytes unicodeToString(const Locale& locale, const Room& room, const UnitText& input,
                        std::uint32_t options);
ToBytes unicodeToStringEx(const Locale& locale, const Room& room, const UnitText& input,
                          std::uint32_t options);
ToWide unicodeToStringW(const Locale& locale, const Room& room, const UnitText& input,
                        std::uint32_t options);
ToWide mbToWide(const Locale& locale, const Room& room, const Text& input, std::uint32_t options);
ToWide mbToWideEx(const Locale& locale, const Room& room, const Text& input, std::uint32_t options);
ToBytes wideToMb(const Locale& locale, const Room& room, const UnitText& input,
                 std::uint32_t options);
ToBytes wideToMbEx(const Locale& locale, const Room& room, const UnitText& input,
                   std::uint32_t options);

// The Unicode value of a character that a length or a state has told the size of.
std::uint16_t unicodeOf(const Page& page, Span character, std::ptrdiff_t length);

// What one call of buffer conversion did.
struct Progress {
    std::int32_t result = 0;
    std::ptrdiff_t consumed = 0; // bytes that the input pointer has moved
    std::int32_t inputCount = 0;
    std::int32_t outputCount = 0;
    Bytes written;
};

// A conversion handle. The locales are borrowed.
class Conversion {
  public:
    Conversion(const Locale& target, const Locale& source) : target_(target), source_(source) {}

    Progress convert(Span input, std::int32_t inputCount, std::int32_t outputCount);

  private:
    struct Call;

    std::ptrdiff_t lengthAt(unsigned byte) const;
    bool isSourceShift(unsigned byte) const;
    std::uint16_t valueOf(Span character, std::ptrdiff_t length) const;
    bool drain(Call& call);                               // step 1
    bool finishPartial(Call& call, std::uint16_t& value); // step 2
    bool readCharacter(Call& call, std::uint16_t& value); // steps 3, 4e to 4h
    void putOrKeep(Call& call, std::optional<unsigned> shift, const Bytes& character); // step 5
    bool write(Call& call, std::uint16_t value); // steps 4a to 4d

    const Locale& target_;
    const Locale& source_;
    Bytes partial_;
    std::int32_t sourceState_ = 0;
    unsigned char pending_[5] = {};
    std::int32_t pendingCount_ = 0;
    std::int32_t targetState_ = 0;
};

std::int32_t conversionRatio(const Locale& target, const Locale& source);

// What a search for a line end returns and stores.
struct LineEnd {
    std::optional<std::ptrdiff_t> behind;
    std::uint32_t type = 0;
    std::int32_t length = 0;
    std::optional<std::int32_t> state;
    std::int32_t error = 0;

    bool operator==(const LineEnd&) const = default;
};
std::ostream& operator<<(std::ostream& out, const LineEnd& lineEnd);

LineEnd getEol(const Locale& locale, const Text& string, std::uint32_t options);
LineEnd getEolEx(const Locale& locale, const Text& string, std::uint32_t options);
LineEnd getEolU(const UnitText& string, std::uint32_t options);
LineEnd getEolW(const Locale& locale, const UnitText& string, std::uint32_t options);

// What the writing of line ends does.
struct LineEndsPut {
    bool isNull = false;
    Units written;
    std::optional<std::int32_t> state;
    std::int32_t error = 0;
};

LineEndsPut putEol(const Locale& locale, std::uint32_t options);
LineEndsPut putEolEx(const Locale& locale, std::int32_t state, std::uint32_t options);
LineEndsPut putEolU(std::uint32_t options);
LineEndsPut putEolW(const Locale& locale, std::uint32_t options);

} // namespace vlx::oracle
