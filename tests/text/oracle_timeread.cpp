// Times, read.
#include <algorithm>

#include "support/oracle_strings_walk.hpp"
#include "text/oracle_text.hpp"

namespace vlx::oracle {

namespace {

constexpr int kDeepest = 3;

class Reader {
  public:
    Reader(const TextLocale& locale, Member member, TimeFields& time, bool ofObject,
           const Units& text, std::ptrdiff_t at, std::ptrdiff_t end, std::int32_t state, int depth)
        : at_(at), state_(state), locale_(locale), member_(member), codes_(codesOf(locale, member)),
          time_(time), ofObject_(ofObject), text_(text), end_(end), depth_(depth)
    {
    }

    // The walk through pattern and text, and its code.
    std::int32_t read(const Units& pattern, std::ptrdiff_t length, std::int32_t patternState)
    {
        std::ptrdiff_t p = 0;
        for (;;) {
            if (p < length && at_ < end_) { // shift bytes as they come
                while (p < length && isShift(unitAt(pattern, p)))
                    patternState = stateOf(unitAt(pattern, p++));
                if (p < length)
                    passShifts();
            }
            if (p >= length || at_ >= end_)
                break;
            const std::uint32_t unit = unitAt(pattern, p);
            std::ptrdiff_t step = 1;
            if (member_ == Member::kPlain)
                step = lengthAt(locale_, pattern, p);
            if (member_ == Member::kEx && patternState == 1)
                step = longest();
            if (step > 1) {
                if (step > length - p || step > end_ - at_)
                    break;
                if (member_ == Member::kEx && state_ == 0)
                    break;
                for (std::ptrdiff_t i = 0; i < step; ++i)
                    if (unitAt(pattern, p + i) != unitAt(text_, at_ + i))
                        return 37;
                p += step;
                at_ += step;
            } else if (letterOf(locale_, member_, unit) != '%') {
                if (unitAt(text_, at_) != unit)
                    return 37;
                ++p;
                ++at_;
            } else {
                std::ptrdiff_t used = 2;
                bool flag = false;
                if (p + 1 >= length)
                    return 51;
                char letter = letterOf(locale_, member_, unitAt(pattern, p + 1));
                if (letter == '#') {
                    if (p + 2 >= length)
                        return 51;
                    letter = letterOf(locale_, member_, unitAt(pattern, p + 2));
                    used = 3;
                    flag = true;
                }
                const std::int32_t error = directive(letter, flag);
                if (error != 0)
                    return error;
                p += used;
            }
        }
        if (afternoon_ && time_[2] < 12)
            time_[2] += 12;
        return 0;
    }

    std::ptrdiff_t at_;
    std::int32_t state_;

  private:
    bool isShift(std::uint32_t unit) const
    {
        return member_ == Member::kEx && isShiftUnit(locale_, unit);
    }
    std::int32_t stateOf(std::uint32_t unit) const
    {
        return unit == shiftIn(locale_.base.page) ? 1 : 0;
    }
    std::ptrdiff_t longest() const
    {
        return static_cast<std::ptrdiff_t>(maxCharBytes(locale_.base.page));
    }
    void passShifts()
    {
        while (at_ < end_ && isShift(unitAt(text_, at_)))
            state_ = stateOf(unitAt(text_, at_++));
    }

    std::int32_t directive(char letter, bool flag)
    {
        switch (letter) {
        case '%':
            if (state_ != 0 || unitAt(text_, at_) != codes_.mark)
                return 37;
            ++at_;
            return 0;
        case 'a':
            return name(23, 7, 6);
        case 'b':
            return name(43, 12, 4);
        case 'A':
            return name(16, 7, 6);
        case 'B':
            return name(30, 12, 4);
        case 'p':
            return name(56, 2, -1);
        case 'd':
            return number(2, 31, 3, 0);
        case 'j':
            return number(3, 366, 7, 0);
        case 'm':
            return number(2, 12, 4, -1);
        case 'w':
            return number(1, 6, 6, 0);
        case 'y':
            return number(2, 99, 5, 0);
        case 'H':
            return number(2, 23, 2, 0);
        case 'I': {
            const std::int32_t error = number(2, 12, 2, 0);
            if (time_[2] == 12)
                time_[2] = 0;
            return error;
        }
        case 'M':
            return number(2, 59, 1, 0);
        case 'S':
            return number(2, 59, 0, 0);
        case 'Y':
            return number(4, 9999, 5, -1900);
        case 'x':
            return nested(flag ? 81 : 80);
        case 'X':
            return nested(79);
        case 'c': {
            const std::int32_t error = nested(flag ? 81 : 80);
            if (error != 0)
                return error;
            passShifts();
            if (at_ >= end_)
                return 37;
            std::ptrdiff_t step = 1;
            if (member_ == Member::kPlain)
                step = lengthAt(locale_, text_, at_);
            if (member_ == Member::kEx && state_ == 1)
                step = longest();
            at_ = std::min(end_, at_ + step);
            return nested(79);
        }
        default:
            return 51;
        }
    }

    std::int32_t number(int width, std::int32_t most, std::size_t field, std::int32_t add)
    {
        std::int32_t value = -1;
        const auto digitHere = [&] {
            const std::uint32_t unit = unitAt(text_, at_);
            return unit >= codes_.zero && unit <= codes_.zero + 9
                       ? static_cast<std::int32_t>(unit - codes_.zero)
                       : -1;
        };
        if (state_ == 0) {
            for (int i = 0; i < width && at_ < end_ && digitHere() >= 0; ++i) {
                value = (i == 0 ? 0 : value * 10) + digitHere();
                ++at_;
            }
        }
        time_[field] = value + add;
        return value < 0 || value > most ? 37 : 0;
    }

    std::int32_t name(int first, int count, int field)
    {
        std::int32_t best = -1;
        std::size_t length = 0;
        for (int i = 0; i < count; ++i) {
            Units text =
                textItem(locale_, member_, first + i, ofObject_, state_, nameSize(member_));
            if (member_ == Member::kEx && !text.empty() &&
                text.back() == shiftOut(locale_.base.page))
                text.pop_back();
            if (static_cast<std::ptrdiff_t>(text.size()) > end_ - at_)
                continue;
            bool equal = true;
            for (std::size_t k = 0; k < text.size(); ++k)
                equal = equal && unitAt(text_, at_ + static_cast<std::ptrdiff_t>(k)) == text[k];
            if (equal && text.size() > length) {
                best = i;
                length = text.size();
            }
        }
        if (field >= 0)
            time_[static_cast<std::size_t>(field)] = best;
        else
            afternoon_ = best == 1;
        if (best < 0)
            return 37;
        for (const std::ptrdiff_t stop = at_ + static_cast<std::ptrdiff_t>(length); at_ < stop;) {
            if (isShift(unitAt(text_, at_)))
                state_ = stateOf(unitAt(text_, at_++));
            else
                at_ = std::min(stop, at_ + (member_ == Member::kEx && state_ == 1 ? longest() : 1));
        }
        return 0;
    }

    std::int32_t nested(int item)
    {
        if (depth_ == kDeepest)
            return 51;
        const Units pattern = textItem(locale_, member_, item, ofObject_, 0, nameSize(member_));
        if (pattern.empty() || at_ >= end_)
            return 0;
        Reader inner(locale_, member_, time_, ofObject_, text_, at_, end_, state_, depth_ + 1);
        const std::int32_t error =
            inner.read(pattern, static_cast<std::ptrdiff_t>(pattern.size()), 0);
        at_ = inner.at_;
        state_ = inner.state_;
        return error;
    }

    const TextLocale& locale_;
    const Member member_;
    const Codes codes_;
    TimeFields& time_;
    const bool ofObject_;
    const Units& text_;
    const std::ptrdiff_t end_;
    const int depth_;
    bool afternoon_ = false;
};

} // namespace

Outcome stringToTime(const TextLocale& locale, Member member, TimeFields& time, const Source& text,
                     const Source& pattern, std::uint32_t options)
{
    if (member == Member::kEx && !locale.base.stateful)
        member = Member::kPlain;
    const std::uint32_t counted = isBytes(member) ? options & kCounted : 0;
    if ((options & ~(kObjectValue | kCounted)) != 0)
        return {-1, 2};
    const std::int32_t length = lengthOf(locale, member, text, counted);
    const std::int32_t patternLength = lengthOf(locale, member, pattern, counted);
    if (length == 0 || patternLength == 0)
        return {0, 0};
    Reader reader(locale, member, time, (options & kObjectValue) != 0, text.text, 0, length,
                  member == Member::kEx ? text.state : 0, 0);
    const std::int32_t error = reader.read(pattern.text, patternLength, pattern.state);
    if (error != 0)
        return {-1, error};
    auto result = static_cast<std::int32_t>(reader.at_);
    if (counted != 0 && result > 0) {
        const Bytes bytes = narrowBytes(text.text);
        result = member == Member::kEx ? numCharsEx(locale.base, Span(bytes), text.state, result)
                                       : numChars(locale.base, Span(bytes), result);
    }
    return {result, 0};
}

} // namespace vlx::oracle
