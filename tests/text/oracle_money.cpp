// Money, written.
#include "support/oracle_strings_walk.hpp"
#include "text/oracle_write.hpp"

namespace vlx::oracle {

namespace {

// The pieces of an amount and the order in which they stand.
struct Money {
    Units symbol;
    Units sign;
    bool precedes;
    bool spaced;
    std::int32_t position;
    Codes codes;

    Units piece(char name) const
    {
        switch (name) {
        case 'S':
            return symbol;
        case 'G':
            return sign;
        case 'P':
            return spaced ? Units{codes.blank} : Units{};
        case '(':
            return {codes.open};
        default:
            return {codes.close};
        }
    }

    std::string layout() const
    {
        if (position == 0)
            return precedes ? "(SPV)" : "(VPS)";
        if (position == 1)
            return precedes ? "GSPV" : "GVPS";
        if (position == 2)
            return precedes ? "SPVG" : "VPSG";
        if (position == 3)
            return precedes ? "GSPV" : "VPGS";
        return precedes ? "SGPV" : "VPSG";
    }
};

// Copies an amount into stateful text.
class ShiftWriter {
  public:
    ShiftWriter(const TextLocale& locale, Units& memory, std::int32_t state, std::int32_t size)
        : locale_(locale), memory_(memory), state_(state), size_(size)
    {
    }

    // By TSStrcpyEx; false if not all of the piece's characters are there afterwards.
    bool putPiece(const Units& piece)
    {
        if (piece.empty())
            return true;
        Bytes room(static_cast<std::size_t>(std::max(size_ - count_, 0)), 0);
        Bytes whole(piece.size() + 2, 0);
        const Bytes bytes = narrowBytes(piece);
        const Text source{Span(bytes), 0, static_cast<std::int32_t>(bytes.size())};
        const std::int32_t all =
            copyEx(locale_.base, whole, state_, static_cast<std::int32_t>(whole.size()), source, 0)
                .result;
        const std::int32_t copied =
            copyEx(locale_.base, room, state_, size_ - count_, source, 0).result;
        for (std::int32_t i = 0; i < copied; ++i)
            put(memory_, count_ + i, room[static_cast<std::size_t>(i)]);
        const std::int32_t end = count_ + copied;
        while (count_ < end) {
            const std::uint32_t unit = unitAt(memory_, count_);
            if (isShiftUnit(locale_, unit)) {
                state_ = unit == shiftIn(locale_.base.page) ? 1 : 0;
                ++count_;
            } else {
                count_ +=
                    state_ == 1 ? static_cast<std::int32_t>(maxCharBytes(locale_.base.page)) : 1;
            }
        }
        return copied == all;
    }

    // Out of the reversed text; false if it is not used up.
    bool putReversed(Units reversed)
    {
        std::int32_t state = 0;
        while (!reversed.empty()) {
            if (isShiftUnit(locale_, reversed.back())) {
                state = reversed.back() == shiftIn(locale_.base.page) ? 1 : 0;
                reversed.pop_back();
                continue;
            }
            const std::size_t length = state == 1 ? maxCharBytes(locale_.base.page) : 1;
            const bool shifts = state != state_;
            if (length > reversed.size() ||
                static_cast<std::int32_t>(length) + (shifts ? 1 : 0) > size_ - count_)
                return false;
            if (shifts) {
                lastShiftIn_ = state == 1 ? count_ : lastShiftIn_;
                put(memory_, count_++,
                    state == 1 ? shiftIn(locale_.base.page) : shiftOut(locale_.base.page));
                state_ = state;
            }
            for (std::size_t i = 0; i < length; ++i) {
                put(memory_, count_++, reversed.back());
                reversed.pop_back();
            }
        }
        return true;
    }

    bool terminate()
    {
        bool fits = true;
        if (state_ == 1) {
            const auto longest = static_cast<std::int32_t>(maxCharBytes(locale_.base.page));
            if (count_ >= size_) {
                fits = false;
                if (count_ >= longest)
                    count_ -= longest;
            }
            if (count_ > 0 && isShiftInAt(count_ - 1))
                --count_;
            else if (count_ < size_)
                put(memory_, count_++, shiftOut(locale_.base.page));
        }
        put(memory_, count_++, 0);
        return fits;
    }

    std::int32_t count() const { return count_; }

  private:
    // Whether a shift byte, and no byte of a character, stands there.
    bool isShiftInAt(std::int32_t wanted) const
    {
        std::int32_t state = firstState_;
        for (std::int32_t at = 0; at < count_;) {
            const std::uint32_t unit = unitAt(memory_, at);
            if (isShiftUnit(locale_, unit)) {
                state = unit == shiftIn(locale_.base.page) ? 1 : 0;
                if (at == wanted)
                    return state == 1;
                ++at;
            } else {
                at += state == 1 ? static_cast<std::int32_t>(maxCharBytes(locale_.base.page)) : 1;
            }
        }
        return false;
    }

    const TextLocale& locale_;
    Units& memory_;
    std::int32_t state_;
    const std::int32_t firstState_ = state_;
    const std::int32_t size_;
    std::int32_t count_ = 0;
    std::int32_t lastShiftIn_ = -1;
};

// The value and the pieces behind it, backward.
Units reversedAmount(const TextLocale& locale, Member member, const Money& money, double value,
                     bool ofObject, bool international)
{
    const std::string layout = money.layout();
    Units reversed;
    for (std::size_t i = layout.size(); layout[--i] != 'V';) {
        const Units piece = money.piece(layout[i]);
        reversed.insert(reversed.end(), piece.rbegin(), piece.rend());
    }
    const std::string text = fixedText(value);
    putFraction(reversed, member, money.codes, text,
                numberItem(locale, international ? 70 : 69, ofObject),
                separator(locale, member, 66, ofObject, member == Member::kUnicode ? 4 : 2));
    const std::int32_t listSize = member == Member::kUnicode  ? 64
                                  : member == Member::kPacked ? 128
                                                              : 32;
    Mark mark(groupText(locale, member, 68, ofObject, listSize), money.codes,
              separator(locale, member, 67, ofObject, 2), reversed.size());
    std::size_t at = text.find('.') == std::string::npos ? text.size() : text.find('.');
    bool separatedBefore = false;
    while (at > 0) {
        separatedBefore = mark.separates();
        reversed.push_back(digitOf(member, money.codes, text[--at]));
        mark.look(reversed);
    }
    if (mark.separates())
        reversed.pop_back();
    if (value < 0) {
        reversed.pop_back();
        if (separatedBefore)
            reversed.pop_back();
    }
    return reversed;
}

// The amount in a buffer without a terminator; false if not all fits.
bool putAmount(const TextLocale& locale, Member member, const Money& money, const Units& reversed,
               Units& memory, std::int32_t size, std::int32_t& count)
{
    const bool bytes = member == Member::kPlain;
    for (const char name : money.layout()) {
        if (name == 'V')
            break;
        const Units piece = money.piece(name);
        if (static_cast<std::int32_t>(piece.size()) > size - count) {
            Units room(static_cast<std::size_t>(size - count), 0);
            std::int32_t copied;
            if (bytes) {
                Bytes narrow = narrowBytes(room);
                const Bytes source = narrowBytes(piece);
                copied = copy(locale.base, narrow, size - count,
                              {Span(source), 0, static_cast<std::int32_t>(source.size())}, 0)
                             .result;
                room = wideUnits(narrow);
            } else {
                copied =
                    copyUnits(room, size - count, piece, static_cast<std::int32_t>(piece.size()))
                        .result;
            }
            for (std::int32_t i = 0; i < copied; ++i)
                put(memory, count++, room[static_cast<std::size_t>(i)]);
            return false;
        }
        for (const std::uint32_t unit : piece)
            put(memory, count++, unit);
    }
    std::size_t left = reversed.size();
    while (left > 0) {
        std::size_t length = 1;
        if (bytes && !locale.base.singleByte)
            length = charLength(locale.base.page, reversed[left - 1]);
        if (length > left || static_cast<std::int32_t>(length) > size - count)
            return false;
        for (; length > 0; --length)
            put(memory, count++, reversed[--left]);
    }
    return true;
}

} // namespace

Outcome handOver(const TextLocale& locale, Member member, const Units& local, std::int32_t length,
                 const Target& target, bool terminated)
{
    const std::int32_t most = target.size - (terminated ? 1 : 0);
    std::int32_t state = target.state;
    std::int32_t at = 0;
    std::int32_t characters = 0;
    const auto passShifts = [&] {
        while (member == Member::kEx && at < length && isShiftUnit(locale, unitAt(local, at)))
            state = unitAt(local, at++) == shiftIn(locale.base.page) ? 1 : 0;
    };
    while (characters < most) {
        passShifts();
        if (at >= length)
            break;
        std::ptrdiff_t step = lengthAt(locale, local, at);
        if (member == Member::kEx)
            step = state == 1 ? static_cast<std::ptrdiff_t>(maxCharBytes(locale.base.page)) : 1;
        if (step > length - at)
            break;
        at += static_cast<std::int32_t>(step);
        ++characters;
    }
    // The text ends behind its last character, or with the shift byte that closes it.
    const std::int32_t end = at;
    const std::int32_t endState = state;
    passShifts();
    const bool whole = at >= length;
    if (endState == 0) {
        at = end;
        state = 0;
    }
    std::int32_t count = 0;
    for (; count < at; ++count)
        put(target.memory, count, unitAt(local, count));
    if (terminated) {
        if (member == Member::kEx && state == 1)
            put(target.memory, count++, shiftOut(locale.base.page));
        put(target.memory, count, 0);
        ++characters;
    }
    return {characters, whole ? 0 : kTooSmall};
}

Outcome currencyToString(const TextLocale& locale, Member member, double value,
                         const Target& target, std::uint32_t options)
{
    if (member == Member::kEx && !locale.base.stateful)
        member = Member::kPlain;
    const Checked checked =
        checkedOptions(member, target.size, options, kObjectValue | kTerminated | kInternational);
    if (checked.counted && target.size <= 0)
        return {0, kTooSmall};
    if (checked.failed)
        return *checked.failed;
    const bool negative = value < 0;
    const bool international = (options & kInternational) != 0;
    const bool ofObject = checked.ofObject;
    std::int32_t symbolSize = 32;
    std::int32_t signSize = negative ? 4 : 32;
    if (member == Member::kEx)
        signSize = 32;
    if (member == Member::kUnicode)
        symbolSize = signSize = 64;
    if (member == Member::kPacked)
        symbolSize = signSize = 4;
    const Money money{
        textItem(locale, member, international ? 65 : 64, ofObject, 0, symbolSize),
        textItem(locale, member, negative ? 72 : 71, ofObject, 0, signSize),
        numberItem(locale, negative ? 75 : 73, ofObject) != 0,
        numberItem(locale, negative ? 76 : 74, ofObject) != 0,
        numberItem(locale, negative ? 78 : 77, ofObject),
        codesOf(locale, member),
    };
    const Units reversed = reversedAmount(locale, member, money, value, ofObject, international);
    Units local(1024, 0);
    Units& memory = checked.counted ? local : target.memory;
    const std::int32_t given = checked.counted ? std::min(target.size * 6, 512) : target.size;
    const std::int32_t size = given - (checked.terminated ? 1 : 0);
    std::int32_t count = 0;
    bool fitted;
    if (member == Member::kEx) {
        ShiftWriter writer(locale, memory, target.state, size);
        fitted = true;
        const std::string layout = money.layout();
        for (std::size_t i = 0; fitted && layout[i] != 'V'; ++i)
            fitted = writer.putPiece(money.piece(layout[i]));
        fitted = fitted && writer.putReversed(reversed);
        if (checked.terminated)
            fitted = writer.terminate() && fitted;
        count = writer.count() - (checked.counted && checked.terminated ? 1 : 0);
    } else {
        fitted = putAmount(locale, member, money, reversed, memory, size, count);
        if (!checked.counted && checked.terminated)
            put(memory, count++, 0);
    }
    if (checked.counted) {
        Outcome outcome = handOver(locale, member, local, count, target, checked.terminated);
        if (!fitted)
            outcome.error = kTooSmall;
        return outcome;
    }
    return {count, fitted ? 0 : kTooSmall};
}

} // namespace vlx::oracle
