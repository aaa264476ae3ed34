// Numbers, read.
#include <algorithm>

#include "chars/unitypes.hpp"
#include "support/oracle_strings_walk.hpp"
#include "text/oracle_text.hpp"

namespace vlx::oracle {

namespace {

// The value of a digit or letter of a byte.
std::int32_t digitValue(const TextLocale& locale, Member member, std::uint32_t byte)
{
    const auto within = [&](std::uint32_t first, std::uint32_t last, std::int32_t value) {
        return byte >= first && byte <= last ? value + static_cast<std::int32_t>(byte - first) : -1;
    };
    std::vector<std::int32_t> found;
    if (locale.ascii || member == Member::kUnicode) {
        found = {within(0x30, 0x39, 0), within(0x41, 0x5A, 10), within(0x61, 0x7A, 10)};
    } else {
        found = {within(0xF0, 0xF9, 0), within(0xC1, 0xC9, 10), within(0xD1, 0xD9, 19),
                 within(0xE2, 0xE9, 28)};
        std::vector<std::int32_t> small = {within(0x81, 0x89, 10), within(0x91, 0x99, 19),
                                           within(0xA2, 0xA9, 28)};
        if (member != Member::kPlain && locale.base.page.id == 930)
            small = {within(0x62, 0x69, 10), within(0x71, 0x78, 18), within(0x8B, 0x8B, 26),
                     within(0x9B, 0x9B, 27), within(0xAB, 0xAB, 28), within(0xB3, 0xB9, 29)};
        found.insert(found.end(), small.begin(), small.end());
    }
    return *std::max_element(found.begin(), found.end());
}

std::uint32_t wordAt(const Page& page, std::ptrdiff_t offset)
{
    return page.sections[0].at(offset) | page.sections[0].at(offset + 1) << 8 |
           page.sections[0].at(offset + 2) << 16 | page.sections[0].at(offset + 3) << 24;
}

// What a parser reads by.
struct Texts {
    std::uint32_t group = 0;
    std::optional<std::uint32_t> point;
    Units plus;
    Units minus;
    bool maps = false;
};

class Tokens {
  public:
    Tokens(const TextLocale& locale, Member member, const Units& text, std::int32_t state,
           std::int32_t length)
        : at_(0), state_(state), locale_(locale), member_(member), text_(text), length_(length)
    {
    }

    std::int32_t next(const Texts& texts)
    {
        const std::ptrdiff_t at = at_;
        const std::int32_t state = state_;
        const std::int32_t token = read(texts);
        if (token < 0) {
            at_ = at;
            state_ = state;
        }
        return token;
    }

    std::ptrdiff_t at_;
    std::int32_t state_;

  private:
    bool isShift(std::ptrdiff_t at) const
    {
        return member_ == Member::kEx && isShiftUnit(locale_, unitAt(text_, at));
    }
    void passShift() { state_ = unitAt(text_, at_++) == shiftIn(locale_.base.page) ? 1 : 0; }

    // The length of the character here.
    std::ptrdiff_t length() const
    {
        if (member_ == Member::kPlain)
            return lengthAt(locale_, text_, at_);
        if (member_ == Member::kEx && state_ == 1)
            return static_cast<std::ptrdiff_t>(maxCharBytes(locale_.base.page));
        return 1;
    }

    Units character() const
    {
        Units units;
        for (std::ptrdiff_t i = 0; i < length(); ++i)
            units.push_back(unitAt(text_, at_ + i));
        return units;
    }

    bool isBlank() const
    {
        const std::uint32_t unit = unitAt(text_, at_);
        const Page& page = locale_.base.page;
        std::uint32_t type;
        if (member_ == Member::kUnicode) {
            type = uniTypeWord(static_cast<std::uint16_t>(unit));
        } else if (member_ == Member::kPacked && unit > 255) {
            type = wordAt(page, static_cast<std::ptrdiff_t>(charTypeRecordW(page, unit)));
        } else if (length() > 1) {
            const Bytes bytes = narrowBytes(character());
            type = wordAt(page, static_cast<std::ptrdiff_t>(charTypeRecord(page, Span(bytes))));
        } else {
            type = wordAt(page, 0x050C + 4 * static_cast<std::ptrdiff_t>(unit));
        }
        return (type & 0x40) != 0;
    }

    bool takeSign(Units sign)
    {
        if (member_ == Member::kEx) {
            if (!sign.empty() && sign.front() == shiftIn(locale_.base.page))
                sign.erase(sign.begin());
            if (!sign.empty() && sign.back() == shiftOut(locale_.base.page))
                sign.pop_back();
        }
        if (sign.empty() || static_cast<std::ptrdiff_t>(sign.size()) > length_ - at_)
            return false;
        for (std::size_t i = 0; i < sign.size(); ++i)
            if (unitAt(text_, at_ + static_cast<std::ptrdiff_t>(i)) != sign[i])
                return false;
        for (const std::ptrdiff_t end = at_ + static_cast<std::ptrdiff_t>(sign.size()); at_ < end;)
            if (isShift(at_))
                passShift();
            else
                ++at_;
        return true;
    }

    // What stands here, mapped or not; none if it is no single unit.
    std::optional<std::uint32_t> unit(const Texts& texts) const
    {
        const std::ptrdiff_t own = length();
        if (!texts.maps)
            return own == 1 ? std::optional(unitAt(text_, at_)) : std::nullopt;
        const Units whole = character();
        if (member_ == Member::kUnicode || member_ == Member::kPacked) {
            Units image(1, whole[0]);
            if (member_ == Member::kUnicode)
                mapStringU(locale_.pairs, image, 1, whole, 1, kMapDigits);
            else
                mapStringW(locale_.base, locale_.pairs, image, 1, whole, 1, kMapDigits);
            return image[0];
        }
        Bytes image(5, 0);
        const Bytes bytes = narrowBytes(whole);
        const Text source{Span(bytes), state_, static_cast<std::int32_t>(own)};
        const Outcome mapped =
            member_ == Member::kPlain
                ? mapString(locale_.base, locale_.pairs, image, 5, source, kMapDigits)
                : mapStringEx(locale_.base, locale_.pairs, image, 0, 5, source, kMapDigits);
        if (mapped.result != 1)
            return std::nullopt;
        return image[0];
    }

    std::int32_t read(const Texts& texts)
    {
        if (isShift(at_)) {
            passShift();
            if (at_ >= length_)
                return -1;
        }
        if (length() > length_ - at_)
            return -1;
        if (isBlank()) {
            while (at_ < length_) {
                if (isShift(at_))
                    passShift();
                else if (length() <= length_ - at_ && isBlank())
                    at_ += length();
                else
                    break;
            }
            return 44;
        }
        if (takeSign(texts.plus))
            return 40;
        if (takeSign(texts.minus))
            return 41;
        const std::optional<std::uint32_t> here = unit(texts);
        if (!here)
            return -1;
        const bool bytes = member_ == Member::kPlain || member_ == Member::kEx;
        if (*here == texts.group && (bytes || *here != 0)) {
            ++at_;
            return 42;
        }
        if (texts.point && *here == *texts.point && (bytes || *here != 0)) {
            ++at_;
            return 43;
        }
        if (*here > 255)
            return -1;
        const std::int32_t value = digitValue(locale_, member_, *here);
        if (value >= 0)
            at_ += length();
        return value;
    }

    const TextLocale& locale_;
    Member member_;
    const Units& text_;
    std::int32_t length_;
};

void fixSigns(Texts& texts, const Codes& codes)
{
    texts.plus = {codes.plus};
    texts.minus = {codes.minus};
}

Texts textsOf(const TextLocale& locale, Member member, std::uint32_t options, bool withPoint)
{
    const bool ofObject = (options & kObjectValue) != 0;
    const bool monetary = (options & kMonetary) != 0;
    const Member separators = member == Member::kEx ? Member::kPlain : member;
    const auto first = [&](int item) {
        const Units text = textItem(locale, separators, item, ofObject, 0, 2);
        return text.empty() ? 0 : text[0];
    };
    Texts texts;
    texts.group = first(monetary ? 67 : 60);
    if (withPoint)
        texts.point = first(monetary ? 66 : 59);
    texts.maps = (options & kMapsDigits) != 0;
    if (monetary) {
        texts.plus = textItem(locale, member, 71, ofObject, 0, 32);
        texts.minus = textItem(locale, member, 72, ofObject, 0, 32);
    } else {
        fixSigns(texts, codesOf(locale, member));
    }
    return texts;
}

// The state machine, a row for each arrow of its table.
class Machine {
  public:
    // The next state, -1 at the end.
    int step(std::int32_t token)
    {
        const bool digit = token >= 0 && token <= 9;
        switch (state_) {
        case 0:
            if (digit)
                mantissa_ = token;
            if (token == 41)
                sign_ = -1;
            return state_ = digit         ? 3
                            : token == 44 ? 0
                            : token == 40 ? 1
                            : token == 41 ? 1
                            : token == 43 ? 2
                                          : -1;
        case 1:
        case 4:
            if (digit)
                mantissa_ = mantissa_ * 10 + token;
            return state_ = digit ? 3 : state_ == 1 && token == 43 ? 2 : -1;
        case 2:
            if (digit) {
                fractionExponent_ = -1;
                mantissa_ = static_cast<double>(token) / 10;
            }
            return state_ = digit ? 5 : -1;
        case 3:
            if (digit)
                mantissa_ = mantissa_ * 10 + token;
            if (token == 43)
                fractionExponent_ = 0;
            return state_ = digit ? 3 : token == 43 ? 5 : token == 42 ? 4 : -1;
        case 5:
            if (digit) {
                --fractionExponent_;
                mantissa_ = mantissa_ + powerOfTen(fractionExponent_) * token;
            }
            return state_ = digit ? 5 : token == 13 || token == 14 ? 6 : -1;
        case 6:
            if (token == 41)
                exponentSign_ = -1;
            [[fallthrough]];
        case 7:
            if (digit)
                exponent_ = token;
            return state_ = digit ? 8 : state_ == 6 && (token == 40 || token == 41) ? 7 : -1;
        default:
            if (digit)
                exponent_ = std::min(exponent_ * 10 + token, 1000000);
            return state_ = digit ? 8 : -1;
        }
    }

    double value() const { return powerOfTen(exponentSign_ * exponent_) * (sign_ * mantissa_); }

  private:
    int state_ = 0;
    double mantissa_ = 0;
    double sign_ = 1;
    std::int32_t fractionExponent_ = 0;
    std::int32_t exponent_ = 0;
    std::int32_t exponentSign_ = 1;
};

// Takes the digits behind the first one; true if the number is too large.
template <class ReadNext>
bool takeDigits(const ReadNext& readNext, const std::int32_t& token, std::int32_t base,
                bool isUnsigned, std::uint32_t& value)
{
    const std::uint32_t limit = 0xFFFFFFFFu / static_cast<std::uint32_t>(base) + 1;
    bool limited = false;
    bool overflow = false;
    while (readNext()) {
        if (token == 42)
            continue;
        if (token < 0 || token >= base)
            break;
        if (limited) {
            overflow = true;
            break;
        }
        value = value * static_cast<std::uint32_t>(base) + static_cast<std::uint32_t>(token);
        if (value >= limit)
            limited = true;
        if (!isUnsigned && value > 0x7FFFFFFF) {
            overflow = true;
            break;
        }
    }
    return overflow;
}

} // namespace

Parsed<double> stringToDouble(const TextLocale& locale, Member member, const Source& source,
                              std::uint32_t options)
{
    const bool shifts = member == Member::kEx && locale.base.stateful;
    if (member == Member::kEx && !shifts)
        member = Member::kPlain;
    if ((options & ~(kObjectValue | kMapsDigits | kMonetary | kCounted)) != 0)
        return {0, 2, std::nullopt, std::nullopt};
    const std::int32_t length = lengthOf(locale, member, source, options);
    Texts texts = textsOf(locale, member, options, true);
    Tokens tokens(locale, member, source.text, source.state, length);
    Machine machine;
    while (tokens.at_ < length) {
        Tokens ahead = tokens;
        const std::int32_t token = ahead.next(texts);
        if (token == -1)
            break;
        const int state = machine.step(token);
        if (state == -1)
            break;
        if (state == 6)
            fixSigns(texts, codesOf(locale, member));
        tokens.at_ = ahead.at_;
        tokens.state_ = ahead.state_;
    }
    return {machine.value(), 0, tokens.at_, shifts ? std::optional(tokens.state_) : std::nullopt};
}

Parsed<std::int32_t> stringToLong(const TextLocale& locale, Member member, const Source& source,
                                  std::int32_t base, std::uint32_t options)
{
    const bool shifts = member == Member::kEx && locale.base.stateful;
    if (member == Member::kEx && !shifts)
        member = Member::kPlain;
    const auto failed = [&](std::int32_t error) {
        return Parsed<std::int32_t>{0, error, 0,
                                    shifts ? std::optional(source.state) : std::nullopt};
    };
    if (base == 1 || base < 0 || base > 36)
        return failed(50);
    if ((options & ~(kObjectValue | kMapsDigits | kMonetary | kUnsigned | kCounted)) != 0)
        return failed(2);
    const bool isUnsigned = (options & kUnsigned) != 0;
    const std::int32_t length = lengthOf(locale, member, source, options);
    const Texts texts = textsOf(locale, member, options, false);
    Tokens tokens(locale, member, source.text, source.state, length);
    Tokens last = tokens; // at the last token read

    // 0 for a parse that ended without a number.
    const auto number = [&]() -> std::uint32_t {
        std::int32_t token = -1;
        bool negative = false;
        const auto readNext = [&] {
            if (tokens.at_ >= length)
                return false;
            last.at_ = tokens.at_;
            last.state_ = tokens.state_;
            token = tokens.next(texts);
            return true;
        };
        if (!readNext())
            return 0;
        if (token == 44 && !readNext())
            return 0;
        if (!((token >= 0 && token <= 35) || token == 40 || token == 41))
            return 0;
        if (token == 41) {
            if (isUnsigned)
                return 0;
            negative = true;
        }
        if (token == 40 || token == 41) {
            if (!readNext())
                return 0;
            if (shifts && token == -1)
                return 0;
        }
        if (base == 16 && token == 0) {
            if (!readNext())
                return 0;
        } else if (base == 0 && token == 0) {
            if (!readNext())
                return 0;
            base = token == 33 ? 16 : 8;
        } else if (base == 0) {
            base = 10;
        }
        std::uint32_t value = 0;
        if (!(base == 16 && token == 33)) {
            if (token >= base)
                return 0;
            value = static_cast<std::uint32_t>(token);
        }
        const bool overflow = takeDigits(readNext, token, base, isUnsigned, value);
        if (isUnsigned)
            return overflow ? 0xFFFFFFFF : value;
        if (overflow)
            return negative ? 0x80000000 : 0x7FFFFFFF;
        return negative ? ~value + 1 : value;
    };
    const auto value = static_cast<std::int32_t>(number());
    const Tokens& end = tokens.at_ < length ? last : tokens;
    return {value, 0, end.at_, shifts ? std::optional(end.state_) : std::nullopt};
}

} // namespace vlx::oracle
