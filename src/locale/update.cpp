// The updates of a record: objects by name, separators, texts in both forms.
#include "locale/update.hpp"

#include <algorithm>
#include <cstring>

#include "chars/cptext.hpp"
#include "chars/form.hpp"
#include "frame/globals.hpp"

namespace vlx {
namespace {

constexpr std::int32_t kMaxObjectName = 32;
constexpr std::int32_t kMaxCharacter = 4; // bytes of a character in any code page

bool isAsciiFamily(const TSLocale& locale)
{
    return (tsCodePage(locale.codePage).cpFlags & kAsciiFamily) != 0;
}

// The name in ASCII; false if a character of it is longer than a byte, or without the code page
// object of names.
bool nameToAscii(const TSLocale& locale, const UpdateText& name, char* ascii, std::int32_t& length,
                 std::int32_t& code)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    const TSObject* const target = asciiPage(&code);
    length = 0;
    for (std::int32_t i = 0; target && i < name.length; ++i) {
        const auto byte = static_cast<std::uint8_t>(name.text[i]);
        if (page.charLength[byte] != 1)
            return false;
        length += TSCpUnicodeToMb(target, page.toUnicode[byte], ascii + length);
    }
    return target != nullptr;
}

std::int32_t updateObject(TSLocale& locale, std::uint16_t type, UpdateText name)
{
    name.length = std::min(name.length, kMaxObjectName);
    char ascii[kMaxObjectName * kMaxCharacter];
    std::int32_t code = TS_ERR_NONE;
    if (!isAsciiFamily(locale)) {
        std::int32_t length = 0;
        if (!nameToAscii(locale, name, ascii, length, code))
            return code == TS_ERR_MEMORY ? TS_ERR_MEMORY : TS_ERR_NOT_FOUND;
        name = {ascii, length, kPlainText};
    }
    TSObject* const object =
        TSGetObjFromName(tsGlobals->objectManager, type, name.text, name.length, 0, &code);
    const std::int32_t failure = lookupFailure(object, type, code);
    return failure != TS_ERR_NONE ? failure : replaceObject(locale, type, object);
}

bool isDigit(const TSLocale& locale, std::uint8_t byte)
{
    const std::uint8_t zero = isAsciiFamily(locale) ? 0x30 : 0xF0;
    return byte >= zero && byte <= zero + 9;
}

// The separator that this one may not equal; null where there is none.
const std::uint8_t* counterpart(const TSLocale& locale, std::int32_t item)
{
    switch (item) {
    case TS_LI_DECIMAL_POINT:
        return &locale.thousandsSeparator;
    case TS_LI_THOUSANDS_SEP:
        return &locale.decimalPoint;
    case TS_LI_MON_DECIMAL_POINT:
        return &locale.monetaryThousandsSeparator;
    case TS_LI_MON_THOUSANDS_SEP:
        return &locale.monetaryDecimalPoint;
    default: // the list separator
        return nullptr;
    }
}

// A thousands separator may be a NUL, which is none.
bool separatorIsGood(const TSLocale& locale, std::int32_t item, std::uint8_t byte)
{
    if (tsCodePage(locale.codePage).charLength[byte] != 1)
        return false;
    const std::uint8_t* const other = counterpart(locale, item);
    if (!other)
        return true;
    const bool isPoint = item == TS_LI_DECIMAL_POINT || item == TS_LI_MON_DECIMAL_POINT;
    return byte != *other && !isDigit(locale, byte) && !(isPoint && byte == 0);
}

std::int32_t updateSeparator(TSLocale& locale, int index, const UpdateText& text)
{
    const auto byte = static_cast<std::uint8_t>(*text.text);
    if (text.state > 0 || !separatorIsGood(locale, kSeparatorItems[index], byte))
        return TS_ERR_NOT_FOUND;
    locale.*kLocaleSeparator[index].byte = byte;
    locale.*kLocaleSeparator[index].unicode = tsCodePage(locale.codePage).toUnicode[byte];
    setModified(locale, kFirstSeparator, index);
    setModifiedU(locale, index);
    return TS_ERR_NONE;
}

// A text as a record stores it: whole characters, in a stateful form with the shift bytes by which
// it begins and ends in the single-byte state.
struct StoredText {
    const char* body;
    std::int32_t length;
    bool leads = false;  // a shift byte stands before the body
    bool closes = false; // and one behind it

    std::uint32_t size() const
    {
        return static_cast<std::uint32_t>(length) + (leads ? 1 : 0) + (closes ? 1 : 0);
    }

    // The body may lie in the target.
    void write(const TSCodePageHeader& page, char* target) const
    {
        char* at = target + (leads ? 1 : 0);
        std::memmove(at, body, static_cast<std::size_t>(length));
        at += length;
        if (leads)
            *target = static_cast<char>(page.shiftIn);
        if (closes)
            *at++ = static_cast<char>(page.shiftOut);
        *at = 0;
    }
};

StoredText plainText(const TSLocale& locale, const UpdateText& text)
{
    if (locale.flags & kLocaleSingleByte)
        return {text.text, text.length};
    const MultiForm form{locale.codePage};
    Text<MultiForm> at{text.text, text.text + text.length};
    while (form.settle(at) && form.length(at) <= at.left())
        at.at += form.length(at);
    return {text.text, static_cast<std::int32_t>(at.at - text.text)};
}

StoredText shiftText(const TSLocale& locale, const UpdateText& text)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    std::int32_t at = 0;
    std::int32_t state = text.state;
    bool endsOnShift = false;
    while (at < text.length) {
        const char byte = text.text[at];
        const bool isShift = isShiftIn(page, byte) || isShiftOut(page, byte);
        const std::int32_t step = state && !isShift ? page.maxCharBytes : 1;
        if (step > text.length - at)
            break;
        if (isShift)
            state = isShiftIn(page, byte);
        endsOnShift = isShift;
        at += step;
    }
    StoredText stored{text.text, at, text.state > 0};
    if (!state)
        return stored;
    if (at > 0 && endsOnShift)
        --stored.length; // it has become pointless
    else if (at == 0)
        stored.leads = false;
    else
        stored.closes = true;
    return stored;
}

std::int32_t elementsOf(const TSChar16* text)
{
    std::int32_t count = 0;
    while (text[count] != 0)
        ++count;
    return count;
}

// Room for `count` elements and a zero in the 16-bit form: what is there, or a new block, which
// then has to go into the record. Null without memory.
TSChar16* twinRoom(const TSLocale& locale, int index, std::int32_t count)
{
    TSChar16* const own = locale.*kLocaleText[index].unicode;
    if (count <= elementsOf(own))
        return own;
    const std::uint64_t bytes = (static_cast<std::uint64_t>(count) + 1) * sizeof(TSChar16);
    return bytes > UINT32_MAX ? nullptr
                              : static_cast<TSChar16*>(allocate(static_cast<std::uint32_t>(bytes)));
}

void keepTwin(TSLocale& locale, int index, TSChar16* room, std::int32_t count)
{
    TSChar16*& own = locale.*kLocaleText[index].unicode;
    room[count] = 0;
    if (room != own) {
        release(own);
        own = room;
    }
    setModifiedU(locale, kSeparators + index);
}

// The 16-bit form is that of the text as it was stored, so that the two always agree.
std::int32_t convertTwin(TSLocale& locale, int index)
{
    const char* const text = locale.*kLocaleText[index].bytes;
    const std::int32_t count =
        std::max(TSCpTextToUnicode(locale.codePage, text, -1, nullptr), std::int32_t{0});
    TSChar16* const room = twinRoom(locale, index, count);
    if (!room)
        return TS_ERR_MEMORY;
    TSCpTextToUnicode(locale.codePage, text, -1, room);
    keepTwin(locale, index, room, count);
    return TS_ERR_NONE;
}

std::int32_t updateText(TSLocale& locale, int index, const UpdateText& text)
{
    const StoredText stored =
        text.state == kPlainText ? plainText(locale, text) : shiftText(locale, text);
    char*& own = locale.*kLocaleText[index].bytes;
    char* room = own;
    if (stored.size() > std::strlen(own)) {
        room = static_cast<char*>(allocate(stored.size() + 1));
        if (!room)
            return TS_ERR_MEMORY;
    }
    stored.write(tsCodePage(locale.codePage), room);
    if (room != own) {
        release(own);
        own = room;
    }
    setModified(locale, kFirstText, index);
    return convertTwin(locale, index);
}

} // namespace

std::int32_t updateLength(const TSLocale& locale, const char* text, std::int32_t state,
                          std::int32_t length, std::uint32_t options)
{
    if (length < 0)
        return static_cast<std::int32_t>(std::strlen(text));
    if (length > 0 && (options & TS_OPT_CHAR_COUNT))
        return TSCpCharsToBytes(locale.codePage, text, state, length);
    return length;
}

std::int32_t lookupFailure(const TSObject* object, std::uint16_t type, std::int32_t code)
{
    if (object && object->type == type)
        return TS_ERR_NONE;
    if (!object && type == TS_OBJ_SORT && code == TS_ERR_NONE)
        return TS_ERR_NONE;
    return code == TS_ERR_MEMORY ? TS_ERR_MEMORY : TS_ERR_NOT_FOUND;
}

std::int32_t replaceObject(TSLocale& locale, std::uint16_t type, TSObject* object)
{
    std::int32_t code = TS_ERR_NONE;
    switch (type) {
    case TS_OBJ_LANGUAGE:
        locale.language = object;
        break;
    case TS_OBJ_TERRITORY:
        code = TSChangeTerritory(&locale, object);
        break;
    case TS_OBJ_CODEPAGE:
        if (object != locale.codePage)
            code = TSChangeCodePage(&locale, object);
        break;
    default:
        locale.sort = object;
        locale.flags = static_cast<std::uint16_t>(object ? locale.flags & ~kLocaleBinarySort
                                                         : locale.flags | kLocaleBinarySort);
        break;
    }
    if (code == TS_ERR_NONE)
        setFullName(locale);
    return code;
}

std::int32_t updateItem(TSLocale& locale, std::int32_t item, const UpdateText& text)
{
    if (const int type = typeOfNameItem(item); type >= 0)
        return updateObject(locale, static_cast<std::uint16_t>(type), text);
    if (const int index = placeOf(kSeparatorItems, item); index >= 0)
        return updateSeparator(locale, index, text);
    if (const int index = placeOf(kTextItems, item); index >= 0)
        return updateText(locale, index, text);
    return TS_ERR_ITEM;
}

std::int32_t updateTwin(TSLocale& locale, int index, const TSChar16* elements, std::int32_t count)
{
    TSChar16* const room = twinRoom(locale, index, count);
    if (!room)
        return TS_ERR_MEMORY;
    std::memmove(room, elements, static_cast<std::size_t>(count) * sizeof(TSChar16));
    keepTwin(locale, index, room, count);
    return TS_ERR_NONE;
}

} // namespace vlx
