// Calls of NLS1_TranslateString, and what they wrote.
#pragma once

#include <cstring>
#include <string>

#include "facade/facade_fixture.hpp"

namespace vlx::test {

// The pages of the fixture's directory. The yen U+5186 is 0x8A42 in the double-byte page and 0x4243
// in the stateful one, whose shift bytes are 0x0E and 0x0F.
inline constexpr std::uint32_t kRaw = 1200;
inline constexpr std::uint32_t kLatin = 30;
inline constexpr std::uint32_t kUs = 31;
inline constexpr std::uint32_t kDouble = 32;
inline constexpr std::uint32_t kShift = 33;

class Translate : public Facade {
  protected:
    static constexpr std::uint32_t kUntouched = 4711;
    static constexpr char kFill = '#';

    // 16-bit text as bytes of this machine.
    static std::string raw(const std::u16string& text)
    {
        return std::string(reinterpret_cast<const char*>(text.data()), 2 * text.size());
    }

    std::int32_t run(std::uint32_t target, std::int32_t size, std::uint32_t source,
                     const std::string& input, std::uint32_t options = 0)
    {
        output_.assign(200, kFill);
        consumed_ = error_ = kUntouched;
        const std::string terminated = input + std::string(2, '\0');
        return NLS1_TranslateString(target, output_.data(), size, source, terminated.data(),
                                    length_ == kWhole ? static_cast<std::int32_t>(input.size())
                                                      : length_,
                                    &consumed_, options, &error_);
    }

    // The output up to the last byte that was written.
    std::string written() const { return output_.substr(0, output_.find_last_not_of(kFill) + 1); }

    static constexpr std::int32_t kWhole = INT32_MAX;
    std::int32_t length_ = kWhole; // of the input
    std::uint32_t consumed_ = kUntouched;
    std::uint32_t error_ = kUntouched;

  private:
    std::string output_;
};

} // namespace vlx::test
