// A sort object read from the description of its format alone: the lookups, the comparison of
// 16-bit texts as it stands there, step by step, and the key. It shares nothing with the compiler
// or the library, and is slow.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class SortReader {
  public:
    using Bytes = std::vector<std::uint8_t>;

    struct Element {
        unsigned weight1 = 0;
        unsigned weight2 = 0;
        unsigned weight3 = 0;
        unsigned weight4 = 0;
    };
    struct Found {
        int count = 0;
        Element first;
        Element second;
        unsigned directions = 0;
    };

    // `content` is section 1. Reading outside of it throws.
    explicit SortReader(Bytes content) : content_(std::move(content)) {}
    // Section 1 of an object file.
    static SortReader ofFile(const std::string& path);

    const Bytes& content() const { return content_; }
    unsigned word(std::size_t at) const { return byte(at) | byte(at + 1) << 8; }
    unsigned byte(std::size_t at) const { return content_.at(at); }
    unsigned expansionCount() const { return word(2); }
    unsigned contractionCount() const { return word(4); }
    unsigned pageFlags(unsigned page) const { return byte(6 + 4 * page); }

    Found lookUp(char16_t character) const;
    Found lookUpPair(char16_t first, char16_t second) const;
    int compare(std::u16string_view one, std::u16string_view other) const;
    std::string key(std::u16string_view text) const;

  private:
    Bytes content_;
};
