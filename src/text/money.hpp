// What the members share that write an amount of money: its pieces, their order, and how much of
// them is delivered.
#pragma once

#include "text/number.hpp"

namespace vlx {

inline constexpr std::uint32_t kMoneyOptions =
    TS_OPT_OBJECT_VALUE | TS_OPT_TERMINATE | TS_OPT_INTERNATIONAL;

// The room of the texts, terminator included; longer ones are cut.
struct MoneySizes {
    std::int32_t grouping;
    std::int32_t symbol;
    std::int32_t positiveSign;
    std::int32_t negativeSign;
};
inline constexpr std::int32_t kMostMoneyText = 64;

// The order of the pieces: the symbol S, the sign G, the value V, the blank P between symbol and
// value, and parentheses.
const char* moneyLayout(std::int32_t signPosition, bool symbolPrecedes);

// The items of an amount, by its sign.
struct MoneyItems {
    int symbol;
    int digits;
    int sign;
    int precedes;
    int spaced;
    int position;
};
inline constexpr MoneyItems moneyItems(bool negative, bool international)
{
    const int symbol = international ? TS_LI_INT_CURRENCY_SYMBOL : TS_LI_CURRENCY_SYMBOL;
    const int digits = international ? TS_LI_INT_FRAC_DIGITS : TS_LI_MON_FRAC_DIGITS;
    if (negative)
        return {symbol,
                digits,
                TS_LI_NEGATIVE_SIGN,
                TS_LI_N_CS_PRECEDES,
                TS_LI_N_SEP_BY_SPACE,
                TS_LI_N_SIGN_POSN};
    return {
        symbol,           digits, TS_LI_POSITIVE_SIGN, TS_LI_P_CS_PRECEDES, TS_LI_P_SEP_BY_SPACE,
        TS_LI_P_SIGN_POSN};
}

// The pieces of an amount. `pieces` reads the symbol and the sign, `reader` all else.
template <class Unit>
class MoneyText {
  public:
    template <class Reader, class PieceReader>
    MoneyText(const Reader& reader, const PieceReader& pieces, const Signs& signs,
              const MoneySizes& sizes, double value, bool international)
        : items_(moneyItems(value < 0, international)), signs_(signs), text_(value),
          groups_(reader, signs, TS_LI_MON_GROUPING, sizes.grouping,
                  reader.separator(TS_LI_MON_THOUSANDS_SEP)),
          amount_(text_, value < 0 ? 1 : 0, groups_, true,
                  reader.separator(TS_LI_MON_DECIMAL_POINT),
                  numberItem(reader.locale, items_.digits, reader.ofObject), signs.zero),
          symbol_(pieces.text(items_.symbol, symbolRoom_, sizes.symbol)),
          sign_(pieces.text(items_.sign, signRoom_,
                            value < 0 ? sizes.negativeSign : sizes.positiveSign)),
          spaced_(numberItem(reader.locale, items_.spaced, reader.ofObject) != 0),
          layout_(moneyLayout(numberItem(reader.locale, items_.position, reader.ofObject),
                              numberItem(reader.locale, items_.precedes, reader.ofObject) != 0))
    {
    }

    const Amount<Unit>& amount() const { return amount_; }

    // Calls `put(piece)` for each piece before the value until a call gives false; true if none
    // did.
    template <class Put>
    bool eachOfHead(const Put& put) const
    {
        for (const char* at = layout_; *at != 'V'; ++at)
            if (!put(piece(*at)))
                return false;
        return true;
    }

    // Writes the pieces behind the value, at most kMostTail units, and gives their number.
    static constexpr std::int32_t kMostTail = 2 * kMostMoneyText + 2;
    std::int32_t copyTail(Unit* destination) const
    {
        std::int32_t count = 0;
        const char* at = layout_;
        while (*at++ != 'V') {
        }
        for (; *at; ++at) {
            const ValueText<Unit> text = piece(*at);
            std::copy_n(text.at, text.length, destination + count);
            count += text.length;
        }
        return count;
    }

  private:
    ValueText<Unit> piece(char name) const
    {
        switch (name) {
        case 'S':
            return symbol_;
        case 'G':
            return sign_;
        case 'P':
            return {singles_, spaced_};
        default:
            return {singles_ + (name == '(' ? 1 : 2), 1};
        }
    }

    const MoneyItems items_;
    const Signs& signs_;
    FixedText text_;
    Groups<Unit> groups_;
    Amount<Unit> amount_;
    Unit symbolRoom_[kMostMoneyText];
    Unit signRoom_[kMostMoneyText];
    const Unit singles_[3] = {static_cast<Unit>(signs_.blank), static_cast<Unit>(signs_.open),
                              static_cast<Unit>(signs_.close)};
    const ValueText<Unit> symbol_;
    const ValueText<Unit> sign_;
    const bool spaced_;
    const char* const layout_;
};

// The value and the pieces behind it, as one row of units.
template <class Unit>
class MoneyTail {
  public:
    MoneyTail(const MoneyText<Unit>& money, const Signs& signs)
        : amount_(money.amount()), zero_(static_cast<Unit>(signs.zero)),
          tailLength_(money.copyTail(tail_))
    {
    }

    std::int32_t length() const { return amount_.length() + tailLength_; }

    Unit operator[](std::int32_t index) const
    {
        if (index < amount_.written())
            return amount_.begin()[index];
        return index < amount_.length() ? zero_ : tail_[index - amount_.length()];
    }

    void copy(Unit* destination, std::int32_t count) const
    {
        const std::int32_t direct = std::min(count, amount_.length());
        amount_.copy(destination, direct, static_cast<std::int32_t>(valueOf(zero_)));
        std::copy_n(tail_, count - direct, destination + direct);
    }

  private:
    const Amount<Unit>& amount_;
    const Unit zero_;
    Unit tail_[MoneyText<Unit>::kMostTail];
    const std::int32_t tailLength_;
};

// Writes an amount: the pieces before the value, and then as much of the rest as fits.
// `wholeUnits(text, length, room)` gives the units of the whole characters that fit.
template <class Unit, class Whole>
Written putMoney(const MoneyText<Unit>& money, const Signs& signs, Unit* destination,
                 std::int32_t size, const Whole& whole)
{
    std::int32_t count = 0;
    const bool headFits = money.eachOfHead([&](const ValueText<Unit>& piece) {
        const std::int32_t room = size - count;
        const bool fits = piece.length <= room;
        const auto at = [&](std::int32_t index) { return piece.at[index]; };
        const std::int32_t taken = fits ? piece.length : whole(at, piece.length, room);
        std::copy_n(piece.at, taken, destination + count);
        count += taken;
        return fits;
    });
    // Deliberate: then nothing of the value is written either.
    if (!headFits)
        return {count, TS_ERR_BUFFER};
    const MoneyTail<Unit> tail(money, signs);
    const auto at = [&](std::int32_t index) { return tail[index]; };
    const std::int32_t taken = whole(at, tail.length(), size - count);
    tail.copy(destination + count, taken);
    return {count + taken, taken == tail.length() ? TS_ERR_NONE : TS_ERR_BUFFER};
}

// The whole characters where every unit is one.
inline constexpr auto kWholeUnits = [](const auto&, std::int32_t length, std::int32_t room) {
    return std::min(length, room);
};

} // namespace vlx
