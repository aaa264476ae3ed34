// The character model once more, slow and literal: every rule is written out as it stands, with one
// function for each function of the library. It shares nothing with the library: it parses the
// sections of a code page from their bytes, and every read is checked against the bytes that the
// caller gave, so that a test can tell a well-defined call from one that is not.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace vlx::oracle {

// A read outside the bytes that the caller gave: the call that led here is not well defined.
struct StrayRead {};

using Bytes = std::vector<unsigned char>;

// Bytes that may be read. A position counts from the first of them.
class Span {
  public:
    Span() = default;
    Span(const unsigned char* data, std::size_t size) : data_(data), size_(size) {}
    explicit Span(const Bytes& bytes) : Span(bytes.data(), bytes.size()) {}

    const unsigned char* data() const { return data_; }
    unsigned at(std::ptrdiff_t position) const;

    // What is left from a position on.
    Span from(std::ptrdiff_t position) const;

  private:
    const unsigned char* data_ = nullptr;
    std::size_t size_ = 0;
};

// A code page object: its id and its four sections.
struct Page {
    std::uint16_t id = 0;
    Span sections[4];
};

// What the stepping functions see of a locale: its code page and the two flags that they test.
struct Locale {
    Page page;
    bool singleByte = false;
    bool stateful = false;
};

// Fields of section 1.
unsigned substChar(const Page& page);
unsigned maxCharBytes(const Page& page);
unsigned shiftIn(const Page& page);
unsigned shiftOut(const Page& page);
unsigned charLength(const Page& page, unsigned byte);
unsigned toUnicode(const Page& page, unsigned byte);
bool isStateful(const Page& page);

// The primitives. `text` begins at the position that the call is given; what a call writes is
// returned. A type record is told by its offset in section 1.
std::uint32_t getWide(const Page& page, Span text);
std::uint32_t getWideEx(const Page& page, Span text, std::int32_t state);
Bytes putWide(std::uint32_t value);
std::int32_t charsToBytes(const Page& page, Span text, std::int32_t state, std::int32_t count);
std::uint16_t mbToUnicode(const Page& page, Span text);
std::uint16_t wideToUnicode(const Page& page, std::uint32_t value);
Bytes unicodeToMb(const Page& page, std::uint16_t value);
std::uint32_t unicodeToWide(const Page& page, std::uint16_t value);
std::size_t charTypeRecord(const Page& page, Span text);
std::size_t charTypeRecordW(const Page& page, std::uint32_t value);
Bytes mapChar(const Page& page, Span text, std::uint32_t mapping);
std::uint32_t mapCharW(const Page& page, std::uint32_t value, std::uint32_t mapping);
Bytes mapCharEx(const Page& page, Span text, std::uint32_t mapping);

// A position that a stepping function returns, and the state that it stores, if it stores one.
struct Stop {
    std::ptrdiff_t position = 0;
    std::optional<std::int32_t> state;

    bool operator==(const Stop&) const = default;
};

// What TSTerminateStringEx does.
struct Ending {
    std::int32_t result = 0;
    std::int32_t error = 0;
    Bytes written;
};

// The stepping functions. `text` is the string as a whole, from its start.
std::int32_t byteLength(const Locale& locale, Span text);
std::int32_t byteLengthEx(const Locale& locale, Span text, std::int32_t state);
std::int32_t byteLengthW(std::uint32_t value);
std::uint32_t getChar(const Locale& locale, Span text);
std::uint32_t getCharEx(const Locale& locale, Span text, std::int32_t state);
Bytes putChar(std::uint32_t value);
Bytes putCharEx(const Locale& locale, std::int32_t state, std::uint32_t value);
std::ptrdiff_t nextChar(const Locale& locale, Span text);
Stop nextCharEx(const Locale& locale, Span text, std::int32_t state);
std::ptrdiff_t prevChar(const Locale& locale, Span text, std::ptrdiff_t position);
Stop prevCharEx(const Locale& locale, Span text, std::ptrdiff_t position, std::int32_t state);
std::int32_t numChars(const Locale& locale, Span text, std::int32_t length);
std::int32_t numCharsEx(const Locale& locale, Span text, std::int32_t state, std::int32_t length);
std::ptrdiff_t moveStringPointer(const Locale& locale, Span text, std::int32_t offset,
                                 std::uint32_t options);
Stop moveStringPointerEx(const Locale& locale, Span text, std::int32_t state, std::int32_t offset,
                         std::uint32_t options);
Ending terminateStringEx(const Locale& locale, std::int32_t state, std::uint32_t options);

} // namespace vlx::oracle
