// The Unicode values of a code page's characters, read from its object file. The library has no
// exported function from a character to Unicode yet; once the conversion functions stand, they take
// the place of this reader.
#pragma once

#include <cstdint>
#include <optional>

#include "chars/cpfile.hpp"
#include "localedir.hpp"

namespace vlx::cli {

class UnicodeView {
  public:
    // Nothing if the file is no code page object in the current form.
    static std::optional<UnicodeView> open(const ObjectFile& file, std::uint16_t id);

    const TSCodePageHeader& page() const { return page_; }

    // The value of a character of `size` bytes; nothing where it is unmapped.
    std::optional<std::uint16_t> unicode(const std::uint8_t* bytes, int size) const;

  private:
    template <class Item>
    std::optional<Item> item(std::size_t base, std::size_t index) const;
    std::uint16_t walk(const std::uint8_t* bytes, int size) const;

    TSCodePageHeader page_;
    Bytes tries_; // section 2
    bool utf8_ = false;
};

} // namespace vlx::cli
