#include "text/values.hpp"

#include <cstring>

#include "chars/form.hpp"
#include "locale/content.hpp"

namespace vlx {

namespace {

const TSTerritoryContent& territoryOf(const TSLocale& locale)
{
    return *reinterpret_cast<const TSTerritoryContent*>(locale.territory->sections[0]);
}

// A word of the head of a language or territory object.
std::uint16_t wordOf(const TSObject* object, int index)
{
    return reinterpret_cast<const Le16*>(object->sections[0])[index];
}

// The index among the five separators, or -1.
int separatorIndex(int item)
{
    switch (item) {
    case TS_LI_DECIMAL_POINT:
    case TS_LI_THOUSANDS_SEP:
    case TS_LI_LIST_SEPARATOR:
        return item - TS_LI_DECIMAL_POINT;
    case TS_LI_MON_DECIMAL_POINT:
    case TS_LI_MON_THOUSANDS_SEP:
        return item - TS_LI_MON_DECIMAL_POINT + 3;
    default:
        return -1;
    }
}

// Where a text of the territory stands: its word in the head, and its place among the record's
// texts, -1 if the record has none.
struct TerritoryText {
    int word;
    int recordText;
};
TerritoryText territoryText(int item)
{
    switch (item) {
    case TS_LI_GROUPING:
        return {13, 0};
    case TS_LI_CURRENCY_SYMBOL:
        return {15, 1};
    case TS_LI_INT_CURRENCY_SYMBOL:
        return {16, -1};
    case TS_LI_MON_GROUPING:
        return {14, 2};
    case TS_LI_POSITIVE_SIGN:
        return {17, 3};
    case TS_LI_NEGATIVE_SIGN:
        return {18, 4};
    default: // the time pattern and the two of the date
        return {item - TS_LI_TIME_FORMAT + 19, item - TS_LI_TIME_FORMAT + 5};
    }
}

bool isOfLanguage(int item)
{
    return item >= TS_LI_DAY_1 && item <= TS_LI_PM;
}

// The Unicode text of an object, terminated.
const Le16* objectText(const TSLocale& locale, int item)
{
    const TSObject* const object = isOfLanguage(item) ? locale.language : locale.territory;
    // The texts of the language stand in the order of their items.
    const int word = isOfLanguage(item) ? item - 9 : territoryText(item).word;
    return reinterpret_cast<const Le16*>(object->sections[0] + wordOf(object, word));
}

// Whether the record has a value of its own for a text, which it then has in both forms.
bool isOfRecord(int item, bool ofObject)
{
    return !ofObject && !isOfLanguage(item) && territoryText(item).recordText >= 0;
}

const char* recordText(const TSLocale& locale, int item)
{
    return locale.*kLocaleText[territoryText(item).recordText].bytes;
}

// The units of a text, at most `limit`.
std::int32_t boundedLength(const char* text, std::int32_t limit)
{
    const void* const end = std::memchr(text, 0, static_cast<std::size_t>(limit));
    return end ? static_cast<std::int32_t>(static_cast<const char*>(end) - text) : limit;
}

// The separator of the territory, or of a record in Unicode.
TSChar16 unicodeSeparator(const TSLocale& locale, int index, bool ofObject)
{
    return ofObject ? wordOf(locale.territory, index) : locale.*kLocaleSeparator[index].unicode;
}

// Appends characters of `bytes` while they fit, with a shift byte before a character of the other
// state, and room kept for the shift byte behind the last one and for the terminator.
class ShiftItemWriter {
  public:
    ShiftItemWriter(const TSCodePageHeader& page, std::int32_t state, char* buffer,
                    std::int32_t size)
        : page_(page), state_(state), at_(buffer), left_(size)
    {
    }

    bool put(const char* bytes, std::int32_t count)
    {
        const bool isLong = count >= 2;
        const bool shifts = isLong == (state_ == 0);
        if (left_ < 2 || count + shifts + isLong >= left_)
            return false;
        if (shifts) {
            state_ = isLong;
            *at_++ = static_cast<char>(isLong ? page_.shiftIn : page_.shiftOut);
            --left_;
        }
        std::memcpy(at_, bytes, static_cast<std::size_t>(count));
        at_ += count;
        left_ -= count;
        return true;
    }

    char* close()
    {
        if (state_)
            *at_++ = static_cast<char>(page_.shiftOut);
        return at_;
    }

  private:
    const TSCodePageHeader& page_;
    std::int32_t state_;
    char* at_;
    std::int32_t left_;
};

// Copies a text into another form, character by character, while there is room.
template <class Form>
ValueText<TSChar32> packed(const Form& form, Text<Form> text, TSChar32* buffer, std::int32_t size)
{
    std::int32_t count = 0;
    while (count + 1 < size && form.settle(text) && form.length(text) <= text.left()) {
        buffer[count++] = form.value(text);
        text.at += form.length(text);
    }
    return {buffer, count};
}

} // namespace

std::int32_t numberItem(const TSLocale& locale, int item, bool ofObject)
{
    const TSTerritoryContent& territory = territoryOf(locale);
    switch (item) {
    case TS_LI_FRAC_DIGITS:
        return ofObject ? std::uint16_t{territory.fractionDigits} : locale.fractionDigits;
    case TS_LI_MON_FRAC_DIGITS:
        return ofObject ? std::uint16_t{territory.currencyDigits} : locale.currencyDigits;
    case TS_LI_INT_FRAC_DIGITS:
        return ofObject ? std::uint16_t{territory.intlCurrencyDigits} : locale.intlCurrencyDigits;
    case TS_LI_P_SIGN_POSN:
        return ofObject ? territory.positiveSignPosition : locale.positiveSignPosition;
    case TS_LI_N_SIGN_POSN:
        return ofObject ? territory.negativeSignPosition : locale.negativeSignPosition;
    default: { // the flags of the currency symbol
        const int bit = item - TS_LI_P_CS_PRECEDES;
        return ofObject ? territory.flags >> (bit + 1) & 1 : locale.flags >> bit & 1;
    }
    }
}

std::uint8_t byteSeparator(const TSLocale& locale, int item, bool ofObject)
{
    const int index = separatorIndex(item);
    if (!ofObject) {
        const std::uint8_t byte = locale.*kLocaleSeparator[index].byte;
        const bool isWhole =
            (locale.flags & kLocaleSingleByte) || tsCodePage(locale.codePage).charLength[byte] == 1;
        return isWhole ? byte : 0;
    }
    const TSChar16 unicode = wordOf(locale.territory, index);
    char bytes[4];
    if (unicode == 0 || TSCpUnicodeToMb(locale.codePage, unicode, bytes) != 1)
        return 0;
    return static_cast<std::uint8_t>(bytes[0]);
}

ValueText<char> plainItem(const TSLocale& locale, int item, bool ofObject, char* buffer,
                          std::int32_t size)
{
    if (isOfRecord(item, ofObject)) {
        const char* const text = recordText(locale, item);
        const std::int32_t length = boundedLength(text, size - 1);
        if (locale.flags & kLocaleSingleByte)
            return {text, length};
        const MultiForm form{locale.codePage};
        Text<MultiForm> rest{text, text + length};
        while (form.settle(rest) && form.length(rest) <= rest.left())
            rest.at += form.length(rest);
        return {text, static_cast<std::int32_t>(rest.at - text)};
    }
    std::int32_t length = 0;
    for (const Le16* from = objectText(locale, item); *from; ++from) {
        char bytes[4];
        const std::int32_t count = TSCpUnicodeToMb(locale.codePage, *from, bytes);
        if (count >= size - length)
            break;
        for (std::int32_t i = 0; i < count; ++i)
            buffer[length++] = bytes[i];
    }
    return {buffer, length};
}

ValueText<char> shiftItem(const TSLocale& locale, int item, bool ofObject, std::int32_t state,
                          char* buffer, std::int32_t size)
{
    ShiftItemWriter writer(tsCodePage(locale.codePage), state, buffer, size);
    if (isOfRecord(item, ofObject)) {
        const char* const text = recordText(locale, item);
        const ShiftForm form{locale.codePage};
        Text<ShiftForm> from{text, text + std::strlen(text)};
        while (form.settle(from) && form.length(from) <= from.left() &&
               writer.put(from.at, form.length(from)))
            from.at += form.length(from);
    } else {
        for (const Le16* from = objectText(locale, item); *from; ++from) {
            char bytes[4];
            if (!writer.put(bytes, TSCpUnicodeToMb(locale.codePage, *from, bytes)))
                break;
        }
    }
    return {buffer, static_cast<std::int32_t>(writer.close() - buffer)};
}

ValueText<TSChar16> unicodeItem(const TSLocale& locale, int item, bool ofObject, TSChar16* buffer,
                                std::int32_t size)
{
    if (const int index = separatorIndex(item); index >= 0) {
        buffer[0] = unicodeSeparator(locale, index, ofObject);
        return {buffer, buffer[0] != 0};
    }
    std::int32_t length = 0;
    if (isOfRecord(item, ofObject)) {
        const TSChar16* const text = locale.*kLocaleText[territoryText(item).recordText].unicode;
        while (length < size - 1 && text[length])
            ++length;
        return {text, length};
    }
    for (const Le16* from = objectText(locale, item); length < size - 1 && *from; ++from)
        buffer[length++] = *from;
    return {buffer, length};
}

ValueText<TSChar32> packedItem(const TSLocale& locale, int item, bool ofObject, TSChar32* buffer,
                               std::int32_t size)
{
    if (const int index = separatorIndex(item); index >= 0) {
        buffer[0] = ofObject ? TSCpUnicodeToWide(locale.codePage, wordOf(locale.territory, index))
                             : locale.*kLocaleSeparator[index].byte;
        if (ofObject && wordOf(locale.territory, index) == 0)
            buffer[0] = 0;
        return {buffer, buffer[0] != 0};
    }
    if (isOfRecord(item, ofObject)) {
        const char* const text = recordText(locale, item);
        return withByteForm(locale.codePage, [&](const auto& form) {
            return packed(form, {text, text + std::strlen(text)}, buffer, size);
        });
    }
    std::int32_t length = 0;
    for (const Le16* from = objectText(locale, item); length < size - 1 && *from; ++from)
        buffer[length++] = TSCpUnicodeToWide(locale.codePage, *from);
    return {buffer, length};
}

} // namespace vlx
