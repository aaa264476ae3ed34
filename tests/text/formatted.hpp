// What the named tests of formatters and parsers run on: a locale with the built-in values, whose
// values a test can change, and calls that return what was written.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "text/world.hpp"

namespace vlx::test {

// A result, what was written, and the code.
struct Written {
    std::string text;
    std::int32_t result;
    std::int32_t code;

    bool operator==(const Written&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Written& written);

class Formatted {
  public:
    explicit Formatted(const LocaleSpec& spec = LocaleSpec::builtin()) : locale(spec) {}

    // The call gets a destination of `size` bytes or characters.
    Written number(std::int32_t value, std::uint32_t options = 0, std::int32_t size = 100);
    Written number(double value, std::uint32_t options = 0, std::int32_t size = 100);
    Written money(double value, std::uint32_t options = 0, std::int32_t size = 100);
    Written time(const TSTimeFields& time, const std::string& pattern, std::uint32_t options = 0,
                 std::int32_t size = 100);
    Written numberEx(std::int32_t value, std::int32_t state, std::uint32_t options = 0,
                     std::int32_t size = 100);
    Written numberEx(double value, std::int32_t state, std::uint32_t options = 0,
                     std::int32_t size = 100);
    Written moneyEx(double value, std::int32_t state, std::uint32_t options = 0,
                    std::int32_t size = 100);
    Written timeEx(const TSTimeFields& time, const std::string& pattern, std::int32_t state,
                   std::uint32_t options = 0, std::int32_t size = 100);

    TSLocale* handle() { return &locale.record; }
    TSLocale& record() { return locale.record; }

    TextLocale locale;

  private:
    template <class Call>
    Written written(const Call& call);
};

// Units of the wider members as text.
std::u16string textOf(const TSChar16* units, std::int32_t count);
std::u32string textOf(const TSChar32* units, std::int32_t count);

} // namespace vlx::test
