// A compiled code page read with care: nothing outside its sections is touched, whatever they hold.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "chars/cpfile.hpp"
#include "codepage_source.hpp"
#include "object.hpp"

namespace vlx::data {

class CodePageView {
  public:
    // Nothing if section 1 has no room for the header.
    static std::optional<CodePageView> open(const std::vector<Bytes>& sections, std::uint16_t id);

    const TSCodePageHeader& header() const { return header_; }
    const Bytes& section(int number) const
    {
        return sections_[static_cast<std::size_t>(number - 1)];
    }
    bool utf8() const { return id_ == kUtf8CodePage; }
    bool stateful() const { return header_.cpFlags & kStateful; }
    // The length of the characters that begin with this byte in the multi-byte state, or, in a page
    // without states, of all that begin with it.
    int lengthAt(std::uint8_t lead) const;

    std::optional<TSUnicodeNode> unicodeNode(std::size_t index) const;
    std::optional<std::uint16_t> unicodeValue(std::size_t index) const;
    std::optional<TSTypeNode> typeNode(std::size_t index) const;
    std::optional<TSTypeRecord> typeRecord(std::size_t index) const;
    std::optional<Packed> mapValue(std::uint8_t byte) const;
    std::optional<TSMapPair> mapPair(std::size_t index) const;
    const TSUnicodePage& page(std::uint16_t value) const
    {
        return header_.unicodePages[value >> 8];
    }

    // The characters of the page, by what its tables accept; those of UTF-8 by rule.
    std::vector<Packed> characters() const;
    // As the library does it. Nothing where that would read outside the sections.
    std::optional<std::uint16_t> decode(Packed character) const;
    std::optional<Packed> encode(std::uint16_t value) const;
    std::optional<TSTypeRecord> typeOf(Packed character) const;

  private:
    template <class Item>
    std::optional<Item> item(int number, std::size_t base, std::size_t index) const;
    std::optional<Packed> cell(int number, std::size_t offset, std::size_t width) const;
    void collect(std::size_t index, Packed lead, int left, int& visits,
                 std::vector<Packed>& found) const;

    TSCodePageHeader header_;
    std::vector<Bytes> sections_;
    std::uint16_t id_ = 0;
};

} // namespace vlx::data
