// Where a call that counts characters writes first, and how its characters are handed over.
#pragma once

#include <algorithm>
#include <cstring>

#include "chars/form.hpp"

namespace vlx {

// Holds what six bytes for each character of the destination allow, and no more than its size.
class CountedText {
  public:
    static constexpr std::int32_t kSize = 512;

    explicit CountedText(std::int32_t characters)
        : size_(static_cast<std::int32_t>(
              std::min<std::int64_t>(6 * std::int64_t{characters}, kSize)))
    {
    }
    CountedText(const CountedText&) = delete;
    CountedText& operator=(const CountedText&) = delete;

    char* bytes() { return bytes_; }
    std::int32_t size() const { return size_; }

    struct Handed {
        std::int32_t characters; // with the terminator
        bool whole;              // nothing was left behind
    };

    // Copies as many whole characters of the first `length` bytes as a destination of `size`
    // characters takes, and the terminator if it is wanted. Stateful text is closed before that.
    template <class Form>
    Handed handOver(const Form& form, std::int32_t state, std::int32_t length, char* destination,
                    std::int32_t size, bool terminated) const
    {
        Text<Form> text{bytes_, bytes_ + length, state};
        std::int32_t count = 0;
        while (count < size - terminated && form.settle(text) && form.length(text) <= text.left()) {
            text.at += form.length(text);
            ++count;
        }
        const Text<Form> behindLast = text;
        const bool whole = !form.settle(text);
        if (!behindLast.state) // only a shift byte that closes the text belongs to it
            text = behindLast;
        const auto copied = static_cast<std::size_t>(text.at - bytes_);
        std::memcpy(destination, bytes_, copied);
        if (!terminated)
            return {count, whole};
        char* end = destination + copied;
        if (text.state)
            *end++ = static_cast<char>(tsCodePage(form.object).shiftOut);
        *end = 0;
        return {count + 1, whole};
    }

  private:
    const std::int32_t size_;
    char bytes_[kSize] = {}; // what no one writes is zero
};

} // namespace vlx
