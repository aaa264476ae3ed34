// What the oracles of numbers and of money share.
#pragma once

#include <algorithm>

#include "text/oracle_text.hpp"

namespace vlx::oracle {

inline constexpr std::int32_t kTooSmall = 40;

inline std::uint32_t firstOf(const Units& text)
{
    return text.empty() ? 0 : text[0];
}

// The separators of the byte members are read by the plain query.
inline std::uint32_t separator(const TextLocale& locale, Member member, int item, bool ofObject,
                               std::int32_t size)
{
    return firstOf(
        textItem(locale, member == Member::kEx ? Member::kPlain : member, item, ofObject, 0, size));
}

inline Units groupText(const TextLocale& locale, Member member, int item, bool ofObject,
                       std::int32_t size)
{
    return textItem(locale, member == Member::kEx ? Member::kPlain : member, item, ofObject, 0,
                    size);
}

// The form of a digit; the 16-bit members take it as it is.
inline std::uint32_t digitOf(Member member, const Codes& codes, char digit)
{
    if (member == Member::kUnicode)
        return static_cast<std::uint32_t>(digit);
    const std::int32_t unit = digit - '0' + static_cast<std::int32_t>(codes.zero);
    return member == Member::kPacked ? static_cast<std::uint32_t>(unit)
                                     : static_cast<unsigned char>(unit);
}

// The fraction and the point, backward.
inline void putFraction(Units& reversed, Member member, const Codes& codes, const std::string& text,
                        std::int32_t digits, std::uint32_t point)
{
    if (digits > 6) {
        for (std::int32_t i = 0; i < digits - 6; ++i)
            reversed.push_back(codes.zero);
        digits = 5;
    }
    const std::size_t dot = text.find('.');
    if (dot != std::string::npos)
        for (std::int32_t i = digits; i > 0; --i)
            reversed.push_back(digitOf(member, codes, text[dot + static_cast<std::size_t>(i)]));
    reversed.push_back(point);
}

// The mark at which separators are written while digits are put backward.
class Mark {
  public:
    Mark(const Units& list, const Codes& codes, std::uint32_t separator, std::size_t start)
        : list_(list, codes), separator_(separator), active_(separator != 0 && !list.empty()),
          at_(static_cast<std::int64_t>(start))
    {
    }

    // After a digit.
    void look(Units& reversed)
    {
        const auto cursor = [&] { return static_cast<std::int64_t>(reversed.size()); };
        if (active_ && at_ < cursor()) {
            last_ = list_.next();
            if (last_ > 0) {
                at_ += last_;
                saved_ = last_;
            } else {
                active_ = false;
            }
        }
        if (at_ < cursor() && last_ == 0)
            at_ += saved_;
        separates_ = cursor() == at_;
        if (separates_) {
            reversed.push_back(separator_);
            ++at_;
        }
    }

    // Whether the last unit is a separator.
    bool separates() const { return separates_; }

  private:
    GroupList list_;
    std::uint32_t separator_;
    bool active_;
    std::int64_t at_;
    std::int32_t last_ = -1;
    std::int64_t saved_ = 512;
    bool separates_ = false;
};

// The options of a member, and its early failures.
struct Checked {
    bool counted;
    bool terminated;
    bool ofObject;
    std::optional<Outcome> failed;
};
inline Checked checkedOptions(Member member, std::int32_t size, std::uint32_t options,
                              std::uint32_t accepted)
{
    Checked result{};
    const bool bytes = member == Member::kPlain || member == Member::kEx;
    result.counted = bytes && (options & kCounted) != 0;
    options &= ~kCounted;
    if ((options & ~accepted) != 0)
        result.failed = Outcome{-1, 2};
    else if (size <= 0)
        result.failed = Outcome{0, kTooSmall};
    result.terminated = (options & kTerminated) != 0;
    result.ofObject = (options & kObjectValue) != 0;
    return result;
}

// The characters of a local buffer go to the destination, up to its size.
Outcome handOver(const TextLocale& locale, Member member, const Units& local, std::int32_t length,
                 const Target& target, bool terminated);

} // namespace vlx::oracle
