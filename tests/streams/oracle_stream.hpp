// Streams once more, slow and literal: every step as it is told, each member written out, over the
// same device as the library's stream.
#pragma once

#include <optional>

#include "streams/device.hpp"
#include "support/oracle_chars.hpp"

namespace vlx::oracle {

// What a read of a line returned, and all that it ever wrote, from the start of the output on.
template <class Unit>
struct Line {
    std::int32_t result = 0;
    std::vector<Unit> area;
    std::size_t written = 0; // units that are there at the end
};

class Stream {
  public:
    Stream(const Locale& locale, test::Device& device, bool isWriter)
        : locale_(locale), device_(device), isWriter_(isWriter)
    {
    }

    std::int32_t error = 0; // `lastError` of the locale
    std::int32_t shiftState = 0;
    std::int32_t bufferState = 0;
    Bytes held;

    std::int32_t readCharW();
    std::uint16_t readCharU();
    Line<unsigned char> readString(std::int32_t size, std::uint32_t options);
    Line<unsigned char> readStringEx(std::int32_t state, std::int32_t size, std::uint32_t options);
    Line<std::uint16_t> readStringU(std::int32_t size, std::uint32_t options);
    Line<std::uint32_t> readStringW(std::int32_t size, std::uint32_t options);
    std::int32_t ungetChar(Span character);
    std::int32_t ungetCharEx(Span character, std::int32_t state);
    std::int32_t ungetCharU(std::uint16_t value);
    std::int32_t ungetCharW(std::uint32_t value);
    std::int32_t writeChar(Span character);
    std::int32_t writeCharEx(Span character, std::int32_t state);
    std::int32_t writeCharU(std::uint16_t value);
    std::int32_t writeCharW(std::uint32_t value);
    std::int32_t flush();
    std::int32_t close(); // without the release of the record

  private:
    std::int32_t fail(std::int32_t code, std::int32_t result);
    std::int32_t readNew();
    std::int32_t readHeld();
    std::int32_t stopInside(const Bytes& character, std::int32_t result);
    std::int32_t pushBack(const Bytes& bytes);
    std::int32_t pushBackInState(const Bytes& character);
    bool writeHeld();
    std::int32_t keep(const Bytes& bytes);
    std::int32_t writePlain(const Bytes& character);
    bool refuses(std::uint32_t options, std::int32_t& result);
    bool isShiftByte(unsigned byte) const;

    const Locale& locale_;
    test::Device& device_;
    const bool isWriter_;
};

} // namespace vlx::oracle
