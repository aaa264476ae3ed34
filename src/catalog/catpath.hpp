// A path that is made from a template: characters of a locale's code page, with shift bytes where
// they are needed.
#pragma once

#include <cstdint>
#include <cstring>

#include "locale/locale.hpp"
#include "tessera.h"

namespace vlx {

// A place in a text of known length. What is read behind its end is zero, so that a text which ends
// inside a character leads nowhere.
class TemplateText {
  public:
    TemplateText(TSLocale* locale, const char* text, std::size_t length)
        : locale_(locale), at_(text), end_(text + length)
    {
    }

    // The packed value of the character there; 0 at the end.
    TSChar32 value() const
    {
        char window[kWindow];
        fill(window);
        return TSGetCharEx(locale_, window, state_);
    }

    void next()
    {
        char window[kWindow];
        const auto left = fill(window);
        const auto step = TSNextCharEx(locale_, window, state_, &state_) - window;
        at_ += step < left ? step : left;
    }

  private:
    static constexpr std::ptrdiff_t kWindow = 8; // a character and the shift bytes around it

    // Copies what is next; gives how much of the text is left.
    std::ptrdiff_t fill(char* window) const
    {
        const std::ptrdiff_t left = end_ - at_;
        std::memset(window, 0, kWindow);
        std::memcpy(window, at_, static_cast<std::size_t>(left < kWindow ? left : kWindow));
        return left;
    }

    TSLocale* locale_;
    const char* at_;
    const char* end_;
    std::int32_t state_ = 0;
};

class CatalogPath {
  public:
    explicit CatalogPath(TSLocale* locale) : locale_(locale) {}

    void put(TSChar32 value)
    {
        char bytes[5];
        const auto count = static_cast<std::size_t>(TSPutCharEx(locale_, bytes, state_, value));
        if (locale_->flags & kLocaleStateful)
            state_ = value > 0xFF;
        if (tooLong_ || count >= sizeof path_ - length_) {
            tooLong_ = true;
            return;
        }
        std::memcpy(path_ + length_, bytes, count);
        length_ += count;
    }

    void put(TemplateText text)
    {
        for (; text.value() != 0; text.next())
            put(text.value());
    }

    // The terminated path and a new beginning; null if it is empty or does not fit.
    const char* finish()
    {
        char end[2];
        const auto count = TSTerminateStringEx(locale_, end, state_, TS_OPT_TERMINATE);
        const bool fits =
            !tooLong_ && static_cast<std::size_t>(count) <= sizeof path_ - length_ && length_ > 0;
        if (fits)
            std::memcpy(path_ + length_, end, static_cast<std::size_t>(count));
        length_ = 0;
        state_ = 0;
        tooLong_ = false;
        return fits ? path_ : nullptr;
    }

  private:
    TSLocale* locale_;
    char path_[256];
    std::size_t length_ = 0;
    std::int32_t state_ = 0;
    bool tooLong_ = false;
};

} // namespace vlx
