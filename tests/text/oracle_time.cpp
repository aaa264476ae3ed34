// Times, written.
#include "support/oracle_strings_walk.hpp"
#include "text/oracle_write.hpp"

namespace vlx::oracle {

char letterOf(const TextLocale& locale, Member member, std::uint32_t unit)
{
    static const std::string letters = "abcdjmpwxyzABHIMSUWXYZ";
    if (member == Member::kUnicode && unit > 255)
        return 0;
    unit &= 0xFF; // of packed values, whatever is above
    const bool ascii = locale.ascii || member == Member::kUnicode;
    if (unit == (ascii ? 0x25u : 0x6Cu))
        return '%';
    if (unit == (ascii ? 0x23u : 0x7Bu))
        return '#';
    for (const char letter : letters) {
        std::uint32_t code = static_cast<unsigned char>(letter);
        if (!ascii) {
            const bool isSmall = letter >= 'a';
            const int index = letter - (isSmall ? 'a' : 'A');
            const std::uint32_t start = isSmall ? 0x80 : 0xC0;
            if (index < 9)
                code = start + 1 + static_cast<std::uint32_t>(index);
            else if (index < 18)
                code = start + 0x11 + static_cast<std::uint32_t>(index - 9);
            else
                code = start + 0x22 + static_cast<std::uint32_t>(index - 18);
            if (isSmall && member != Member::kPlain && locale.base.page.id == 930) {
                if (index < 4)
                    code = 0x62 + static_cast<std::uint32_t>(index);
                else if (letter == 'j')
                    code = 0x72;
                else if (letter == 'm')
                    code = 0x75;
                else if (letter == 'p')
                    code = 0x78;
                else
                    code = 0xB6 + static_cast<std::uint32_t>(letter - 'w');
            }
        }
        if (code == unit)
            return letter;
    }
    return 0;
}

std::int32_t nameSize(Member member)
{
    return member == Member::kUnicode ? 64 : member == Member::kPacked ? 128 : 32;
}

bool isBytes(Member member)
{
    return member == Member::kPlain || member == Member::kEx;
}

namespace {

constexpr int kDeepest = 3;

struct Number {
    std::int64_t value;
    int width;
};

// The number of a directive that has one; an error if its fields are out of range.
std::optional<Number> numberOf(char letter, const TimeFields& time, std::int32_t& error)
{
    const auto field = [&](std::size_t index, std::int32_t most) {
        if (time[index] < 0 || time[index] > most)
            error = 37;
        return std::int64_t{time[index]};
    };
    const auto week = [&](bool mondayFirst) {
        std::int64_t weekday = field(6, 6);
        const std::int64_t day = field(7, 365);
        if (error != 0)
            return std::int64_t{0};
        if (mondayFirst)
            weekday = weekday == 0 ? 6 : weekday - 1;
        return day / 7 + (day % 7 >= weekday ? 1 : 0);
    };
    switch (letter) {
    case 'd':
        return Number{field(3, 31), 2};
    case 'j':
        return Number{field(7, 365), 3};
    case 'm':
        return Number{field(4, 11) + 1, 2};
    case 'w':
        return Number{field(6, 6), 1};
    case 'y':
        return Number{std::int64_t{time[5]} + 1900, 2};
    case 'Y':
        return Number{std::int64_t{time[5]} + 1900, 4};
    case 'H':
        return Number{field(2, 23), 2};
    case 'I': {
        const std::int64_t hour = field(2, 23) % 12;
        return Number{hour == 0 ? 12 : hour, 2};
    }
    case 'M':
        return Number{field(1, 59), 2};
    case 'S':
        return Number{field(0, 59), 2};
    case 'U':
        return Number{week(false), 2};
    case 'W':
        return Number{week(true), 2};
    default:
        return std::nullopt;
    }
}

std::string digitsOf(const Number& number, bool flag)
{
    std::string digits;
    std::int64_t value = number.value < 0 ? -number.value : number.value;
    for (int i = 0; i < number.width; ++i) {
        digits.insert(digits.begin(), static_cast<char>('0' + value % 10));
        value /= 10;
        if (flag && value == 0)
            break;
    }
    return digits;
}

// The item of a name, -1 if the directive has none.
std::int32_t nameOf(char letter, const TimeFields& time, std::int32_t& error)
{
    const auto item = [&](std::int32_t first, std::int32_t value, std::int32_t most) {
        if (value < 0 || value > most)
            error = 37;
        return error != 0 ? first : first + value;
    };
    switch (letter) {
    case 'a':
        return item(23, time[6], 6);
    case 'b':
        return item(43, time[4], 11);
    case 'A':
        return item(16, time[6], 6);
    case 'B':
        return item(30, time[4], 11);
    case 'p':
        item(0, time[2], 23);
        return time[2] < 12 ? 56 : 57;
    default:
        return -1;
    }
}

// A text that is written from some place of a memory on.
class Writer {
  public:
    Writer(const TextLocale& locale, Member member, const TimeFields& time, bool ofObject,
           Units& memory, std::ptrdiff_t start, std::int32_t state, std::int32_t size, int depth)
        : locale_(locale), member_(member), codes_(codesOf(locale, member)), time_(time),
          ofObject_(ofObject), memory_(memory), start_(start), firstState_(state), state_(state),
          size_(size), depth_(depth)
    {
    }

    // The walk through a pattern, and its code.
    std::int32_t write(const Units& pattern, std::int32_t length, std::int32_t patternState)
    {
        std::ptrdiff_t at = 0;
        std::int32_t error = 0;
        while (at < length && count_ < size_ && error == 0) {
            const std::uint32_t unit = unitAt(pattern, at);
            if (member_ == Member::kEx && isShiftUnit(locale_, unit)) {
                patternState = unit == shiftIn(locale_.base.page) ? 1 : 0;
                ++at;
                continue;
            }
            std::ptrdiff_t step = 1;
            if (member_ == Member::kPlain)
                step = lengthAt(locale_, pattern, at);
            if (member_ == Member::kEx && patternState == 1)
                step = static_cast<std::ptrdiff_t>(maxCharBytes(locale_.base.page));
            if (step > 1) {
                error = step > length - at ? 51 : putLong(pattern, at, step);
            } else if (letterOf(locale_, member_, unit) != '%') {
                error = putSingle(unit);
            } else {
                step = 2;
                bool flag = false;
                char letter =
                    at + 1 < length ? letterOf(locale_, member_, unitAt(pattern, at + 1)) : '\0';
                if (letter == '#') {
                    step = 3;
                    flag = true;
                    letter = at + 2 < length ? letterOf(locale_, member_, unitAt(pattern, at + 2))
                                             : '\0';
                }
                error = directive(letter, flag);
            }
            if (error == 0)
                at += step;
        }
        const bool sparesShift = member_ == Member::kEx && at == length - 1 &&
                                 unitAt(pattern, at) == shiftOut(locale_.base.page);
        if (error == 0 && at < length && !sparesShift)
            error = count_ >= size_ ? 40 : 51;
        return error;
    }

    void terminate()
    {
        if (member_ == Member::kEx && state_ == 1) {
            const auto longest = static_cast<std::int32_t>(maxCharBytes(locale_.base.page));
            if (count_ >= size_ && count_ >= longest)
                count_ -= longest;
            if (count_ > 0 && lastShiftIn_ == count_ - 1)
                --count_;
            else if (count_ < size_)
                put(memory_, start_ + count_++, shiftOut(locale_.base.page));
        }
        put(memory_, start_ + count_++, 0);
    }

    std::int32_t count_ = 0;
    bool tooDeep_ = false;

  private:
    void emit(std::uint32_t unit) { put(memory_, start_ + count_++, unit); }

    void shiftTo(std::int32_t state)
    {
        if (state == 1)
            lastShiftIn_ = count_;
        emit(state == 1 ? shiftIn(locale_.base.page) : shiftOut(locale_.base.page));
        state_ = state;
    }

    std::int32_t putSingle(std::uint32_t unit)
    {
        if (member_ == Member::kEx && state_ == 1) {
            if (size_ - count_ < 3)
                return 40;
            shiftTo(0);
        }
        if (count_ >= size_)
            return 40;
        emit(unit);
        return 0;
    }

    std::int32_t putLong(const Units& pattern, std::ptrdiff_t at, std::ptrdiff_t length)
    {
        const bool shifts = member_ == Member::kEx && state_ == 0;
        if (length + (shifts ? 1 : 0) > size_ - count_)
            return 40;
        if (shifts)
            shiftTo(1);
        for (std::ptrdiff_t i = 0; i < length; ++i)
            emit(unitAt(pattern, at + i));
        return 0;
    }

    std::int32_t directive(char letter, bool flag)
    {
        std::int32_t error = 0;
        if (const auto number = numberOf(letter, time_, error))
            return error != 0 ? error : putNumber(digitsOf(*number, flag));
        if (const std::int32_t item = nameOf(letter, time_, error); item >= 0)
            return error != 0 ? error : putName(item);
        const int date = flag ? 81 : 80;
        switch (letter) {
        case '%':
            return putSingle(codes_.mark);
        case 'x':
            return nested(date, true);
        case 'X':
            return nested(79, true);
        case 'c':
            error = nested(date, true);
            if (error == 0)
                error = putSingle(codes_.blank);
            return error != 0 ? error : nested(79, false);
        default:
            return 51;
        }
    }

    std::int32_t putNumber(const std::string& digits)
    {
        if (member_ == Member::kEx && state_ == 1)
            shiftTo(0);
        for (const char digit : digits)
            if (count_ < size_)
                emit(codes_.zero + static_cast<std::uint32_t>(digit - '0'));
        return count_ >= size_ ? 40 : 0;
    }

    std::int32_t putName(std::int32_t item)
    {
        Units name = textItem(locale_, member_, item, ofObject_, state_, nameSize(member_));
        if (member_ == Member::kEx && !name.empty() && name.back() == shiftOut(locale_.base.page))
            name.pop_back();
        const std::int32_t room = size_ - count_;
        const auto length = static_cast<std::int32_t>(name.size());
        Units copied(static_cast<std::size_t>(std::max(room, 0)), 0);
        std::int32_t taken;
        if (isBytes(member_)) {
            Bytes narrow = narrowBytes(copied);
            const Bytes source = narrowBytes(name);
            const Text text{Span(source), state_, length};
            taken = member_ == Member::kEx
                        ? copyEx(locale_.base, narrow, state_, room, text, 0).result
                        : copy(locale_.base, narrow, room, text, 0).result;
            copied = wideUnits(narrow);
        } else {
            taken = copyUnits(copied, room, name, length).result;
        }
        const std::int32_t end = count_ + taken;
        for (std::int32_t i = 0; i < taken; ++i)
            put(memory_, start_ + count_ + i, copied[static_cast<std::size_t>(i)]);
        while (count_ < end) {
            const std::uint32_t unit = unitAt(memory_, start_ + count_);
            if (member_ == Member::kEx && isShiftUnit(locale_, unit)) {
                state_ = unit == shiftIn(locale_.base.page) ? 1 : 0;
                lastShiftIn_ = state_ == 1 ? count_ : lastShiftIn_;
                ++count_;
            } else if (member_ == Member::kEx && state_ == 1) {
                count_ += static_cast<std::int32_t>(maxCharBytes(locale_.base.page));
            } else {
                ++count_;
            }
        }
        return length > room ? 40 : 0;
    }

    std::int32_t nested(int item, bool atStart)
    {
        if (depth_ == kDeepest) {
            tooDeep_ = true;
            return 51;
        }
        const Units pattern = textItem(locale_, member_, item, ofObject_, 0, nameSize(member_));
        Writer inner(locale_, member_, time_, ofObject_, memory_,
                     atStart ? start_ : start_ + count_, atStart ? firstState_ : state_,
                     size_ - count_, depth_ + 1);
        if (size_ - count_ > 0 && !pattern.empty())
            inner.write(pattern, static_cast<std::int32_t>(pattern.size()), 0);
        // What is nested at the start does not stand before the end if text came before.
        const bool isBeforeEnd = inner.start_ == start_ + count_;
        lastShiftIn_ = isBeforeEnd && inner.lastShiftIn_ >= 0 ? count_ + inner.lastShiftIn_ : -1;
        count_ += inner.count_;
        state_ = inner.state_;
        tooDeep_ = inner.tooDeep_;
        return tooDeep_ ? 51 : 0;
    }

    const TextLocale& locale_;
    const Member member_;
    const Codes codes_;
    const TimeFields& time_;
    const bool ofObject_;
    Units& memory_;
    const std::ptrdiff_t start_;
    const std::int32_t firstState_;
    std::int32_t state_;
    const std::int32_t size_;
    const int depth_;
    std::int32_t lastShiftIn_ = -1;
};

} // namespace

Outcome timeToString(const TextLocale& locale, Member member, const TimeFields& time,
                     const Target& target, const Source& pattern, std::uint32_t options)
{
    if (member == Member::kEx && !locale.base.stateful)
        member = Member::kPlain;
    const bool counted = isBytes(member) && (options & kCounted) != 0;
    options &= ~kCounted;
    if ((options & ~(kObjectValue | kTerminated)) != 0)
        return {-1, 2};
    if (target.size <= 0)
        return {0, 40};
    const bool terminated = (options & kTerminated) != 0;
    const std::int32_t length = lengthOf(locale, member, pattern, counted ? kCounted : 0);
    Units local(1024, 0);
    const std::int32_t size =
        (counted ? std::min(target.size * 6, 512) : target.size) - (terminated ? 1 : 0);
    Writer writer(locale, member, time, (options & kObjectValue) != 0,
                  counted ? local : target.memory, 0, target.state, size, 0);
    const std::int32_t error = length > 0 ? writer.write(pattern.text, length, pattern.state) : 0;
    if (terminated)
        writer.terminate();
    if (!counted)
        return {writer.count_, error};

    // The local text is counted off without its terminator.
    const std::int32_t localLength = writer.count_ - (terminated ? 1 : 0);
    const Outcome handed = handOver(locale, member, local, localLength, target, terminated);
    return {handed.result, error};
}

} // namespace vlx::oracle
