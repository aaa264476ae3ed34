// A broken-down time from text, by a pattern: the walk through both, over any form of text.
#pragma once

#include <array>
#include <cstring>

#include "text/pattern.hpp"

namespace vlx {

// What a call reads, and the patterns nested in it.
struct TimeInput {
    TSLocale& locale;
    TSTimeFields& time;
    const PatternTable& table;
    const Signs& signs;
};

// A number among the directives: its field, its digits, what is added to it, and the largest that
// the text may have.
struct TimeField {
    std::int32_t TSTimeFields::*field;
    int width;
    std::int32_t most;
    std::int32_t add;
    bool noonIsZero;
};
extern const std::array<TimeField, kLetters> kTimeFields; // by letter; a width of 0: no number

// A name among the directives: its items, and its field, which takes the number among them.
struct TimeNames {
    int firstItem; // 0: no name
    int count;
    std::int32_t TSTimeFields::*field; // null: the half of the day
};
extern const std::array<TimeNames, kLetters> kTimeNames;

// The longest of the names of a directive that stands at a place. `fetch(item, buffer, size)` gives
// a name.
template <class Unit, std::int32_t Size, class Fetch>
NameMatch matchName(const TimeNames& names, const Unit* at, const Unit* end, const Fetch& fetch)
{
    NameMatch match;
    for (int i = 0; i < names.count; ++i) {
        Unit buffer[Size];
        const ValueText<Unit> name = fetch(names.firstItem + i, buffer, Size);
        if (name.length > match.length && standsAt(name, at, end))
            match = {i, name.length};
    }
    return match;
}

// Reads a time: the walk and its directives. `Input` tells what differs between the forms.
template <class Input>
class TimeReader {
    using Form = typename Input::Form;
    using Unit = typename Form::Unit;
    using Place = Text<Form>;

  public:
    TimeReader(const TimeInput& call, const Input& input, const Place& text, int depth)
        : call_(call), input_(input), text_(text), depth_(depth)
    {
    }

    // Gives the code of the walk; the text is then read up to text().
    std::int32_t read(Place pattern)
    {
        while (input_.form().settle(pattern) && input_.form().settle(text_)) {
            const std::int32_t length = input_.form().length(pattern);
            if (length > 1) {
                if (length > pattern.left() || length > text_.left() || !input_.canCompare(text_))
                    break;
                if (!std::equal(pattern.at, pattern.at + length, text_.at))
                    return TS_ERR_NOT_FOUND;
                pattern.at += length;
                text_.at += length;
                continue;
            }
            std::int32_t code = TS_ERR_NONE;
            if (letterOf(call_.table, *pattern.at) != kMark) {
                code = takeUnit(*pattern.at++);
            } else {
                Directive directive;
                if (!readDirective(call_.table, pattern.at, pattern.left(), directive))
                    return TS_ERR_DIRECTIVE;
                code = take(directive);
                pattern.at += directive.length;
            }
            if (code != TS_ERR_NONE)
                return code;
        }
        if (afternoon_ && call_.time.hours < 12)
            call_.time.hours += 12;
        return TS_ERR_NONE;
    }

    const Place& text() const { return text_; }

  private:
    std::int32_t takeUnit(Unit unit)
    {
        if (*text_.at != unit)
            return TS_ERR_NOT_FOUND;
        ++text_.at;
        return TS_ERR_NONE;
    }

    std::int32_t take(const Directive& directive)
    {
        if (const TimeField& field = kTimeFields[static_cast<std::uint8_t>(directive.letter)];
            field.width != 0)
            return takeNumber(field);
        if (const TimeNames& names = kTimeNames[static_cast<std::uint8_t>(directive.letter)];
            names.firstItem != 0)
            return takeName(names);
        switch (directive.letter) {
        case kMark:
            return input_.isSingle(text_) ? takeUnit(static_cast<Unit>(call_.signs.mark))
                                          : TS_ERR_NOT_FOUND;
        case 'x':
            return nest(datePattern(directive.flag));
        case 'X':
            return nest(TS_LI_TIME_FORMAT);
        case 'c': {
            const std::int32_t code = nest(datePattern(directive.flag));
            if (code != TS_ERR_NONE)
                return code;
            if (!input_.form().settle(text_))
                return TS_ERR_NOT_FOUND;
            // Whatever stands between date and time.
            text_.at += std::min(input_.form().length(text_), text_.left());
            return nest(TS_LI_TIME_FORMAT);
        }
        default:
            return TS_ERR_DIRECTIVE;
        }
    }

    // Deliberate: the field is written whether or not the number is good.
    std::int32_t takeNumber(const TimeField& field)
    {
        const std::int32_t most = input_.isSingle(text_) ? std::min(field.width, text_.left()) : 0;
        const Unit* const at = text_.at;
        const std::uint32_t zero = call_.signs.zero;
        std::int32_t value = 0;
        std::int32_t count = 0;
        for (; count < most && valueOf(at[count]) - zero <= 9; ++count)
            value = value * 10 + static_cast<std::int32_t>(valueOf(at[count]) - zero);
        text_.at = at + count;
        if (count == 0)
            value = -1;
        const bool isNoon = field.noonIsZero && value == 12;
        call_.time.*field.field = isNoon ? 0 : value + field.add;
        return value >= 0 && value <= field.most ? TS_ERR_NONE : TS_ERR_NOT_FOUND;
    }

    std::int32_t takeName(const TimeNames& names)
    {
        const NameMatch match = input_.match(names, text_);
        if (names.field)
            call_.time.*names.field = match.index;
        else
            afternoon_ = match.index == 1;
        if (match.index < 0)
            return TS_ERR_NOT_FOUND;
        input_.advance(text_, match.length);
        return TS_ERR_NONE;
    }

    std::int32_t nest(int item)
    {
        if (depth_ == kDeepestPattern)
            return TS_ERR_DIRECTIVE;
        Unit buffer[Input::kTextSize];
        const ValueText<Unit> pattern = input_.pattern(item, buffer);
        if (pattern.length == 0 || text_.at == text_.end)
            return TS_ERR_NONE;
        TimeReader nested(call_, input_, text_, depth_ + 1);
        const std::int32_t code = nested.read({pattern.at, pattern.at + pattern.length});
        text_ = nested.text();
        return code;
    }

    const TimeInput& call_;
    const Input& input_;
    Place text_;
    bool afternoon_ = false;
    const int depth_;
};

// Text without shift states.
template <class TextForm, class Reader>
struct UnitInput {
    using Form = TextForm;
    using Unit = typename Form::Unit;
    static constexpr std::int32_t kTextSize = Reader::kNameSize;

    const Reader reader;

    Form form() const { return {reader.locale.codePage}; }
    bool isSingle(const Text<Form>&) const { return true; }
    bool canCompare(const Text<Form>&) const { return true; }
    ValueText<Unit> pattern(int item, Unit* buffer) const
    {
        return reader.text(item, buffer, kTextSize);
    }
    NameMatch match(const TimeNames& names, const Text<Form>& text) const
    {
        if constexpr (sizeof(Unit) == 1)
            return matchPlainName(reader.locale, names.firstItem, names.count, text.at, text.end,
                                  kTextSize);
        else
            return matchName<Unit, kTextSize>(names, text.at, text.end,
                                              [&](int item, Unit* buffer, std::int32_t size) {
                                                  return reader.text(item, buffer, size);
                                              });
    }
    void advance(Text<Form>& text, std::int32_t length) const { text.at += length; }
};

} // namespace vlx
