// TSSetLocaleNumInfo: changes a number item of a record.
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/update.hpp"

TS_TRACE_UNIT("tslsninf");

namespace {

constexpr std::int32_t kMaxSignPosition = 4;

struct ObjectItem {
    std::int32_t item;
    std::uint16_t type;
};
constexpr ObjectItem kObjectItems[] = {
    {TS_LI_LANGUAGE_ID, TS_OBJ_LANGUAGE},
    {TS_LI_TERRITORY_ID, TS_OBJ_TERRITORY},
    {TS_LI_CODEPAGE_ID, TS_OBJ_CODEPAGE},
    {TS_LI_SORT_ID, TS_OBJ_SORT},
};

// Any number, by its low 16 bits.
struct DigitsItem {
    std::int32_t item;
    std::uint16_t TSLocale::*field;
    std::uint32_t bit;
};
constexpr DigitsItem kDigitsItems[] = {
    {TS_LI_FRAC_DIGITS, &TSLocale::fractionDigits, vlx::kFractionDigits},
    {TS_LI_MON_FRAC_DIGITS, &TSLocale::currencyDigits, vlx::kCurrencyDigits},
    {TS_LI_INT_FRAC_DIGITS, &TSLocale::intlCurrencyDigits, vlx::kIntlCurrencyDigits},
};

struct PositionItem {
    std::int32_t item;
    std::uint8_t TSLocale::*field;
    std::uint32_t bit;
};
constexpr PositionItem kPositionItems[] = {
    {TS_LI_P_SIGN_POSN, &TSLocale::positiveSignPosition, vlx::kPositiveSignPosition},
    {TS_LI_N_SIGN_POSN, &TSLocale::negativeSignPosition, vlx::kNegativeSignPosition},
};

template <class Row, int Count>
const Row* rowOf(const Row (&rows)[Count], std::int32_t item)
{
    for (const Row& row : rows)
        if (row.item == item)
            return &row;
    return nullptr;
}

std::int32_t setObject(TSLocale& locale, std::uint16_t type, std::int32_t id)
{
    std::int32_t code = TS_ERR_NONE;
    TSObject* const object =
        TSGetObjFromID(tsGlobals->objectManager, type, static_cast<std::uint16_t>(id), 0, &code);
    const std::int32_t failure = vlx::lookupFailure(object, type, code);
    return failure != TS_ERR_NONE ? failure : vlx::replaceObject(locale, type, object);
}

std::int32_t setFlag(TSLocale& locale, int index, std::int32_t value)
{
    if (value != 0 && value != 1)
        return TS_ERR_NOT_FOUND;
    const auto flag = static_cast<std::uint16_t>(1u << index);
    locale.flags = static_cast<std::uint16_t>(value ? locale.flags | flag : locale.flags & ~flag);
    vlx::setModified(locale, vlx::kFirstFlag, index);
    return TS_ERR_NONE;
}

std::int32_t setNumber(TSLocale& locale, std::int32_t item, std::int32_t value)
{
    if (const ObjectItem* const row = rowOf(kObjectItems, item))
        return setObject(locale, row->type, value);
    if (const DigitsItem* const row = rowOf(kDigitsItems, item)) {
        locale.*row->field = static_cast<std::uint16_t>(value);
        vlx::setModified(locale, row->bit, 0);
        return TS_ERR_NONE;
    }
    if (const PositionItem* const row = rowOf(kPositionItems, item)) {
        if (value < 0 || value > kMaxSignPosition)
            return TS_ERR_NOT_FOUND;
        locale.*row->field = static_cast<std::uint8_t>(value);
        vlx::setModified(locale, row->bit, 0);
        return TS_ERR_NONE;
    }
    const int flag = vlx::placeOf(vlx::kFlagItems, item);
    return flag >= 0 ? setFlag(locale, flag, value) : TS_ERR_ITEM;
}

} // namespace

int32_t TSSetLocaleNumInfo(TSLocale* handle, int32_t item, int32_t value)
{
    TS_TRACE(TSSetLocaleNumInfo);
    TSLocale* const locale = tsLocale(handle);
    const int32_t code = setNumber(*locale, item, value);
    if (code != TS_ERR_NONE)
        TS_FAIL(locale->lastError, code, 0, "Unable to set item %d to %d, err = %d", item, value,
                code);
    locale->lastError = TS_ERR_NONE;
    TS_RETURN(1);
}
