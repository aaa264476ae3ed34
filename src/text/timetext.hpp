// A broken-down time as text, by a pattern: the walk through the pattern, over any output.
#pragma once

#include <type_traits>

#include "strings/whole.hpp"
#include "text/number.hpp"
#include "text/pattern.hpp"

namespace vlx {

inline constexpr std::uint32_t kTimeOptions = TS_OPT_OBJECT_VALUE | TS_OPT_TERMINATE;

// What a call and the patterns nested in it share.
struct TimeCall {
    TSLocale& locale;
    const TSTimeFields& time;
    bool ofObject;
    const PatternTable& table;
    const Signs& signs;
    bool tooDeep = false; // patterns name each other
};

// The number of a directive that writes one; false if a field is out of range.
inline bool numberOf(const TimeDirective& known, const TSTimeFields& time, TimeNumber& number)
{
    const std::int32_t field = time.*known.field;
    if (static_cast<std::uint32_t>(field) > known.most)
        return false;
    if (known.text == TimeText::kNumber) {
        const std::int64_t sum = std::int64_t{field} + known.base;
        number = {static_cast<std::uint32_t>(sum < 0 ? -sum : sum), known.width};
    } else if (known.text == TimeText::kHour) {
        number = {field % 12 == 0 ? 12 : static_cast<std::uint32_t>(field % 12), known.width};
    } else {
        constexpr std::uint32_t kLastDay = 365;
        if (static_cast<std::uint32_t>(time.dayOfYear) > kLastDay)
            return false;
        number = {weekOfYear(time.dayOfYear, field, known.base), known.width};
    }
    return true;
}

// The item of a directive that writes a name; 0 if the field is out of range.
inline int nameOf(const TimeDirective& known, const TSTimeFields& time)
{
    const std::int32_t field = time.*known.field;
    if (static_cast<std::uint32_t>(field) > known.most)
        return 0;
    if (known.text == TimeText::kName)
        return known.base + field;
    return field < 12 ? TS_LI_AM : TS_LI_PM;
}

// Writes a directive that has no field and gives its code.
template <class Output>
std::int32_t putOther(TimeCall& call, const Directive& directive, Output& output, int depth)
{
    using Unit = typename Output::Form::Unit;
    // Deliberate: a nested pattern is written over the start of the text, and what it has written
    // counts behind the place of its directive.
    switch (directive.letter) {
    case kMark:
        return output.putUnit(static_cast<Unit>(call.signs.mark));
    case 'x':
        return output.nest(datePattern(directive.flag), true, depth);
    case 'X':
        return output.nest(TS_LI_TIME_FORMAT, true, depth);
    case 'c': {
        std::int32_t code = output.nest(datePattern(directive.flag), true, depth);
        if (code == TS_ERR_NONE)
            code = output.room() > 0 ? output.putUnit(static_cast<Unit>(call.signs.blank))
                                     : TS_ERR_BUFFER;
        // The time goes where it belongs.
        return code == TS_ERR_NONE ? output.nest(TS_LI_TIME_FORMAT, false, depth) : code;
    }
    default:
        return TS_ERR_DIRECTIVE;
    }
}

// Writes a directive and gives its code. The output has room for a unit.
template <class Output>
std::int32_t putDirective(TimeCall& call, const Directive& directive, Output& output, int depth)
{
    const TimeDirective& known = kTimeDirectives[static_cast<std::uint8_t>(directive.letter)];
    if (known.text == TimeText::kOther)
        return putOther(call, directive, output, depth);
    if (isName(known.text)) {
        const int item = nameOf(known, call.time);
        return item ? output.putName(item) : TS_ERR_NOT_FOUND;
    }
    TimeNumber number;
    return numberOf(known, call.time, number) ? output.putNumber(number, directive.flag)
                                              : TS_ERR_NOT_FOUND;
}

// Walks through a pattern and gives the code of the walk.
template <class Output>
std::int32_t putTime(TimeCall& call, Text<typename Output::Form>& pattern, Output& output,
                     int depth)
{
    std::int32_t code = TS_ERR_NONE;
    while (code == TS_ERR_NONE) {
        output.putUsual(pattern);
        if (output.room() <= 0 || !output.form().settle(pattern))
            break;
        const std::int32_t length = output.form().length(pattern);
        if (length > 1) {
            code = length > pattern.left() ? TS_ERR_DIRECTIVE : output.putLong(pattern.at, length);
            pattern.at += code == TS_ERR_NONE ? length : 0;
        } else if (letterOf(call.table, *pattern.at) != kMark) {
            code = output.putUnit(*pattern.at++);
        } else {
            Directive directive;
            if (!readDirective(call.table, pattern.at, pattern.left(), directive))
                code = TS_ERR_DIRECTIVE;
            else
                code = putDirective(call, directive, output, depth);
            pattern.at += code == TS_ERR_NONE ? directive.length : 0;
        }
    }
    if (code == TS_ERR_NONE && !output.ends(pattern))
        code = output.room() <= 0 ? TS_ERR_BUFFER : TS_ERR_DIRECTIVE;
    return code;
}

// The output of text without shift states.
template <class TextForm, class Reader>
class TimeOutput {
  public:
    using Form = TextForm;
    using Unit = typename Form::Unit;

    TimeOutput(TimeCall& call, Unit* destination, std::int32_t size)
        : call_(call), destination_(destination), size_(size)
    {
    }

    Form form() const { return {call_.locale.codePage}; }
    std::int32_t count() const { return count_; }
    std::int32_t room() const { return size_ - count_; }
    bool ends(const Text<Form>& pattern) const { return pattern.at == pattern.end; }

    // The short way for what nearly all patterns are made of: characters of one unit, numbers with
    // their zeros, and names in bytes, as long as there is room for any of them.
    void putUsual(Text<Form>& pattern)
    {
        constexpr std::int32_t kMost = sizeof(Unit) == 1 ? Reader::kNameSize : kMostDigits + 1;
        const Form form = this->form();
        const Unit* const end = pattern.end;
        const Unit* at = pattern.at;
        std::int32_t count = count_;
        while (at != end && size_ - count >= kMost && form.length({at, end}) == 1) {
            if (letterOf(call_.table, *at) != kMark) {
                destination_[count++] = *at++;
                continue;
            }
            if (end - at < 2)
                break;
            const TimeDirective& known =
                kTimeDirectives[static_cast<std::uint8_t>(letterOf(call_.table, at[1]))];
            const std::int32_t written = putKnown(known, destination_ + count);
            if (written < 0)
                break;
            count += written;
            at += 2;
        }
        count_ = count;
        pattern.at = at;
    }

    std::int32_t putUnit(Unit unit)
    {
        destination_[count_++] = unit;
        return TS_ERR_NONE;
    }

    std::int32_t putLong(const Unit* character, std::int32_t length)
    {
        if (length > room())
            return TS_ERR_BUFFER;
        std::copy_n(character, length, destination_ + count_);
        count_ += length;
        return TS_ERR_NONE;
    }

    // Deliberate: a number that ends with the room has been written, and is reported as cut.
    std::int32_t putNumber(const TimeNumber& number, bool flag)
    {
        const TimeDigits digits = timeDigits(number, flag);
        const std::int32_t count = std::min(digits.count, room());
        for (std::int32_t i = 0; i < count; ++i)
            destination_[count_++] = static_cast<Unit>(digits.digits[i] - '0' + call_.signs.zero);
        return room() <= 0 ? TS_ERR_BUFFER : TS_ERR_NONE;
    }

    std::int32_t putName(int item)
    {
        Unit buffer[Reader::kNameSize];
        const ValueText<Unit> name =
            Reader{call_.locale, call_.ofObject}.text(item, buffer, Reader::kNameSize);
        const bool fits = name.length <= room();
        const std::int32_t length = wholeUnits(name.at, std::min(name.length, room()));
        std::copy_n(name.at, length, destination_ + count_);
        count_ += length;
        return fits ? TS_ERR_NONE : TS_ERR_BUFFER;
    }

    // Writes a pattern of the locale at the start or at the place reached.
    //
    // Deliberate: what fails inside it is not passed on.
    std::int32_t nest(int item, bool atStart, int depth)
    {
        if (depth == kDeepestPattern) {
            call_.tooDeep = true;
            return TS_ERR_DIRECTIVE;
        }
        Unit buffer[Reader::kNameSize];
        const ValueText<Unit> pattern =
            Reader{call_.locale, call_.ofObject}.text(item, buffer, Reader::kNameSize);
        TimeOutput output(call_, atStart ? destination_ : destination_ + count_, room());
        Text<Form> walk{pattern.at, pattern.at + pattern.length};
        putTime(call_, walk, output, depth + 1);
        count_ += output.count();
        return call_.tooDeep ? TS_ERR_DIRECTIVE : TS_ERR_NONE;
    }

  private:
    // The units of the whole characters of a name, which is copied as any text is: what a table of
    // lengths takes for the start of a character that the name does not hold is left out.
    std::int32_t wholeUnits(const Unit* name, std::int32_t length) const
    {
        if constexpr (std::is_same_v<Form, MultiForm>)
            return wholeBytes(call_.locale, name, length);
        else
            return length;
    }

    // A directive where there is room for it; -1 if it takes the long way.
    std::int32_t putKnown(const TimeDirective& known, Unit* at) const
    {
        if (isNumber(known.text)) {
            TimeNumber number;
            if (!numberOf(known, call_.time, number))
                return -1;
            putDigits(number, at);
            return number.width;
        }
        if constexpr (sizeof(Unit) == 1) {
            if (isName(known.text))
                if (const int item = nameOf(known, call_.time))
                    return putKnownName(item, at);
        }
        return -1;
    }

    // The whole characters of a name of a multi-byte page are known only behind it.
    std::int32_t putKnownName(int item, Unit* at) const
    {
        if constexpr (std::is_same_v<Form, MultiForm>) {
            Unit name[Reader::kNameSize];
            const std::int32_t length =
                wholeUnits(name, putPlainName(call_.locale, item, name, Reader::kNameSize));
            std::copy_n(name, length, at);
            return length;
        } else {
            return putPlainName(call_.locale, item, at, Reader::kNameSize);
        }
    }

    // The last digits of a number, as many as its width; two at a time, as most numbers have two.
    void putDigits(const TimeNumber& number, Unit* at) const
    {
        if (number.width == 2) {
            putTwo(at, number.value % 100);
        } else if (number.width == 4) {
            putTwo(at, number.value / 100 % 100);
            putTwo(at + 2, number.value % 100);
        } else {
            std::uint32_t value = number.value;
            for (Unit* digit = at + number.width; digit != at; value /= 10)
                *--digit = static_cast<Unit>(value % 10 + call_.signs.zero);
        }
    }
    void putTwo(Unit* at, std::uint32_t value) const
    {
        const std::uint32_t zero = call_.signs.zero;
        at[0] = static_cast<Unit>(value / 10 + zero);
        at[1] = static_cast<Unit>(value % 10 + zero);
    }

    TimeCall& call_;
    Unit* const destination_;
    const std::int32_t size_;
    std::int32_t count_ = 0;
};

// Writes a time; one place of `size` is kept for the terminator, if that is wanted.
template <class Form, class Reader>
Written writeTime(TimeCall& call, Text<Form>&& pattern, typename Form::Unit* destination,
                  std::int32_t size)
{
    TimeOutput<Form, Reader> output(call, destination, size);
    const std::int32_t code =
        pattern.at == pattern.end ? TS_ERR_NONE : putTime(call, pattern, output, 0);
    return {output.count(), code};
}

} // namespace vlx
