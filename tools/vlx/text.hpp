// A text as the library's functions may step through it: with room on both sides, so that a look
// behind its last byte or a step back before its first stays inside the buffer.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vlx::cli {

class PaddedText {
  public:
    // Reads a file, or standard input for "-".
    explicit PaddedText(const std::string& fileName);

    const char* begin() const { return buffer_.data() + kRoom; }
    const char* end() const { return begin() + size(); }
    std::int32_t size() const { return static_cast<std::int32_t>(buffer_.size() - 2 * kRoom); }

    const char* at(std::int32_t offset) const { return begin() + offset; }
    std::uint8_t byte(std::int32_t offset) const { return static_cast<std::uint8_t>(*at(offset)); }

  private:
    static constexpr std::size_t kRoom = 16; // more than a character and its shift bytes

    std::vector<char> buffer_;
};

} // namespace vlx::cli
