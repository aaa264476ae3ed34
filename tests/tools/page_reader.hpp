// The code page format read a second time, slowly and literally, by byte offsets: nothing here
// knows the structs that the compiler and the library share. Whatever leads outside a section
// throws.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

class PageReader {
  public:
    using Bytes = std::vector<std::uint8_t>;

    struct TypeRecord {
        std::uint32_t type;
        std::uint32_t delta;
    };

    PageReader(const std::string& path, int id);

    int maxBytes() const { return byte(1, 5); }
    bool stateful() const { return (word(1, 0x110C) & 2) != 0; }
    std::uint8_t substitution() const { return byte(1, 0); }
    std::uint8_t lineFeed() const { return byte(1, 1); }
    std::size_t sectionSize(int section) const
    {
        return sections_.at(static_cast<std::size_t>(section)).size();
    }
    int length(std::uint8_t lead) const { return byte(1, 0x0Au + lead); }
    std::uint8_t toUpper(std::uint8_t at) const { return byte(1, 0x10Au + at); }
    std::uint8_t toLower(std::uint8_t at) const { return byte(1, 0x20Au + at); }
    std::uint32_t type(std::uint8_t at) const { return dword(1, 0x50Cu + 4u * at); }

    // 0xFFFD where there is none.
    std::uint16_t decode(std::uint32_t character) const;
    // substitution() where there is none.
    std::uint32_t encode(std::uint16_t value) const;
    TypeRecord record(std::uint32_t character) const;
    std::uint32_t mapValue(std::uint32_t character) const;

    // Every character of the page by trying all byte sequences.
    std::map<std::uint32_t, std::uint16_t> allDecoded() const;
    // Every value that the page encodes, tested by the way back.
    std::map<std::uint16_t, std::uint32_t> allEncoded() const;

    static Bytes bytesOf(std::uint32_t character);

  private:
    std::uint8_t byte(int section, std::size_t offset) const
    {
        return sections_.at(static_cast<std::size_t>(section)).at(offset);
    }
    std::uint16_t word(int section, std::size_t offset) const
    {
        return static_cast<std::uint16_t>(byte(section, offset) | byte(section, offset + 1) << 8);
    }
    std::uint32_t dword(int section, std::size_t offset) const
    {
        return word(section, offset) | static_cast<std::uint32_t>(word(section, offset + 2)) << 16;
    }

    std::vector<Bytes> sections_; // by number; 0 is not used
    int id_;
};
