// What the named tests of the string functions run on: a locale of each kind, and buffers that show
// what was written.
#pragma once

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "frame/globals.hpp"
#include "support/page_builder.hpp"
#include "support/test_locale.hpp"
#include "tessera.h"

namespace vlx::test {

// Bytes with zeros among them.
template <std::size_t N>
std::string bytes(const char (&text)[N])
{
    return {text, N - 1};
}

// An output area; `written` is all up to the last byte that was touched.
class Area {
  public:
    explicit Area(std::string_view begin = {})
    {
        std::fill(std::begin(bytes_), std::end(bytes_), kFill);
        std::copy(begin.begin(), begin.end(), std::begin(bytes_));
    }
    char* at() { return bytes_; }
    std::string written() const
    {
        std::size_t size = std::size(bytes_);
        while (size > 0 && bytes_[size - 1] == kFill)
            --size;
        return {bytes_, size};
    }

  private:
    static constexpr char kFill = '\x7C';
    char bytes_[64];
};

class StringTest : public testing::Test {
  protected:
    ~StringTest() override { tsDefaultLocale = nullptr; }

    PageBuilder singlePage_{PageShape::kSingleByte};
    PageBuilder doublePage_{PageShape::kDoubleByte};
    PageBuilder statefulPage_{PageShape::kStateful2};

    TSLocale single_ = localeOn(singlePage_.asciiHalf().build());
    // 0x81 leads a character of two bytes.
    TSLocale double_ = localeOn(doublePage_.asciiHalf().lead(0x81, 2).build());
    // Shift in is 0x0E, shift out 0x0F, and a character of the multi-byte state has two bytes.
    TSLocale stateful_ = localeOn(statefulPage_.asciiHalf().build());
    TSLocale* const all_[3] = {&single_, &double_, &stateful_};
};

// Calls `refuses(options)` for every option value of one bit and some of more, but for those that
// are accepted.
template <class Accepts, class Check>
void forRefusedOptions(Accepts accepts, Check check)
{
    for (int bit = 0; bit < 32; ++bit) {
        for (const std::uint32_t with : {0U, 0x4000U, 0x8U, 0x80000020U}) {
            const std::uint32_t options = 1U << bit | with;
            if (!accepts(options))
                check(options);
        }
    }
    check(~0U);
}

} // namespace vlx::test
