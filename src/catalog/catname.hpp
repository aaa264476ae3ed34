// Opening a catalog by a name of elements: templates and name as bytes of the locale's code page.
#pragma once

#include <optional>

#include "frame/globals.hpp"
#include "frame/scratch.hpp"
#include "frame/trace.hpp"
#include "strings/length.hpp"

namespace vlx {

// The bytes of a terminated text, by the conversion of its form. A null text stays null.
template <class Unit>
class TextBytes {
  public:
    using Convert = std::int32_t (*)(TSLocale* locale, char* output, std::int32_t state,
                                     std::int32_t size, const Unit* input, std::int32_t count,
                                     std::uint32_t options);

    TextBytes(TSLocale* locale, const Unit* text, Convert convert)
    {
        if (!text)
            return;
        const std::uint64_t size = 4 * (static_cast<std::uint64_t>(unitsOf(text)) + 1) + 1;
        bytes_.emplace(size + 1);
        if (!*bytes_ || size > INT32_MAX) {
            code_ = TS_ERR_MEMORY;
            return;
        }
        auto* const bytes = bytes_->template as<char>();
        const std::int32_t written =
            convert(locale, bytes, 0, static_cast<std::int32_t>(size), text, -1, 0);
        bytes[written < 0 ? 0 : written] = 0;
        if (written < 0)
            code_ = TS_ERR_NO_CATALOG;
    }

    // 0, 20 without memory, 71 for a conversion that failed.
    std::int32_t code() const { return code_; }
    const char* get() const { return bytes_ ? bytes_->template as<char>() : nullptr; }

  private:
    std::optional<Scratch> bytes_; // none for a null text
    std::int32_t code_ = TS_ERR_NONE;
};

} // namespace vlx
