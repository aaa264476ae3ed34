// The modifiable values of a locale record: filled from the territory, and kept in step when the
// territory or the code page of a live record is replaced.
#include <algorithm>
#include <cstring>
#include <type_traits>

#include "chars/recode.hpp"
#include "chars/runs.hpp"
#include "frame/globals.hpp"
#include "frame/trace.hpp"
#include "locale/content.hpp"
#include "locale/locale.hpp"

TS_TRACE_UNIT("tslocmod");

namespace {

using vlx::CodePageWriter;
using vlx::Le16;

const TSTerritoryContent& territoryOf(const TSLocale& locale)
{
    return *reinterpret_cast<const TSTerritoryContent*>(locale.territory->sections[0]);
}

bool followsTerritory(const TSLocale& locale, std::uint32_t firstBit, int index)
{
    return (locale.modifiedMask & firstBit << index) == 0;
}

constexpr Le16 TSTerritoryContent::*kSeparatorSource[vlx::kSeparators] = {
    &TSTerritoryContent::decimalPoint,
    &TSTerritoryContent::thousandsSeparator,
    &TSTerritoryContent::listSeparator,
    &TSTerritoryContent::monetaryDecimalPoint,
    &TSTerritoryContent::monetaryThousandsSeparator,
};

// A text's offset and the header word behind it, from which its length follows.
struct TextSource {
    Le16 TSTerritoryContent::*begin;
    Le16 TSTerritoryContent::*end;
};
constexpr TextSource kTextSource[vlx::kLocaleTexts] = {
    {&TSTerritoryContent::grouping, &TSTerritoryContent::monetaryGrouping},
    {&TSTerritoryContent::currencySymbol, &TSTerritoryContent::intlCurrencySymbol},
    {&TSTerritoryContent::monetaryGrouping, &TSTerritoryContent::currencySymbol},
    {&TSTerritoryContent::positiveSign, &TSTerritoryContent::negativeSign},
    {&TSTerritoryContent::negativeSign, &TSTerritoryContent::timeFormat},
    {&TSTerritoryContent::timeFormat, &TSTerritoryContent::dateFormat},
    {&TSTerritoryContent::dateFormat, &TSTerritoryContent::longDateFormat},
    {&TSTerritoryContent::longDateFormat, &TSTerritoryContent::end},
};
constexpr int kFirstTextIndex = 0;
constexpr int kCurrencyIndex = 1;

void setNumbers(TSLocale& locale, const TSTerritoryContent& territory)
{
    if (followsTerritory(locale, vlx::kFractionDigits, 0))
        locale.fractionDigits = territory.fractionDigits;
    if (followsTerritory(locale, vlx::kCurrencyDigits, 0))
        locale.currencyDigits = territory.currencyDigits;
    if (followsTerritory(locale, vlx::kIntlCurrencyDigits, 0))
        locale.intlCurrencyDigits = territory.intlCurrencyDigits;
    for (int i = 0; i < vlx::kLocaleFlags; ++i) {
        if (!followsTerritory(locale, vlx::kFirstFlag, i))
            continue;
        // The record has the territory's flags 1 to 6 as its flags 0 to 5.
        const auto flag = static_cast<std::uint16_t>(1u << i);
        const bool set = (territory.flags >> (i + 1) & 1u) != 0;
        locale.flags = static_cast<std::uint16_t>(set ? locale.flags | flag : locale.flags & ~flag);
    }
    if (followsTerritory(locale, vlx::kPositiveSignPosition, 0))
        locale.positiveSignPosition = territory.positiveSignPosition;
    if (followsTerritory(locale, vlx::kNegativeSignPosition, 0))
        locale.negativeSignPosition = territory.negativeSignPosition;
}

void setSeparators(TSLocale& locale, const TSTerritoryContent& territory)
{
    for (int i = 0; i < vlx::kSeparators; ++i) {
        if (!followsTerritory(locale, vlx::kFirstSeparator, i))
            continue;
        const TSChar16 unicode = territory.*kSeparatorSource[i];
        const TSChar32 packed = TSCpUnicodeToWide(locale.codePage, unicode);
        if (packed < 0x100) // else the byte stays as it was
            locale.*vlx::kLocaleSeparator[i].byte = static_cast<std::uint8_t>(packed);
        locale.*vlx::kLocaleSeparator[i].unicode = unicode;
    }
}

// 16-bit text as it stands in an object, on any address.
struct StoredForm {
    using Unit = Le16;

    bool settle(const vlx::Text<StoredForm>& text) const { return text.at != text.end; }
    std::int32_t length(const vlx::Text<StoredForm>&) const { return 1; }
    TSChar16 unicode(const vlx::Text<StoredForm>& text) const { return *text.at; }
};

// Fills both forms of one text; false without memory.
bool setText(TSLocale& locale, const TSTerritoryContent& territory, int index,
             vlx::TraceGuard& tsTrace)
{
    const std::uint32_t begin = territory.*kTextSource[index].begin;
    const std::uint32_t units = (territory.*kTextSource[index].end - begin) / sizeof(Le16);
    const auto* const source =
        reinterpret_cast<const Le16*>(reinterpret_cast<const std::uint8_t*>(&territory) + begin);
    const vlx::Text<StoredForm> text{source, source + units};

    // Shift bytes may need more than the ordinary room.
    const int charBytes = tsCodePage(locale.codePage).maxCharBytes;
    const std::uint32_t room =
        std::max(units * static_cast<std::uint32_t>(charBytes),
                 recode(StoredForm{}, text, CodePageWriter(locale.codePage, nullptr)));
    auto* const bytes = static_cast<char*>(vlx::allocate(room));
    if (!bytes) {
        if (index == kFirstTextIndex)
            TS_PRINT(TRC1_ERRORS, "Unable to allocate %d bytes, (%d * %d)", static_cast<int>(room),
                     static_cast<int>(units), charBytes);
        return false;
    }
    auto* const unicode = static_cast<TSChar16*>(vlx::allocate(units * sizeof(TSChar16)));
    if (!unicode) {
        vlx::release(bytes);
        return false;
    }
    if (index == kCurrencyIndex)
        TS_PRINT(TRC1_DETAIL, "Setting currency for locale %p to %p", static_cast<void*>(&locale),
                 static_cast<void*>(bytes));
    recode(StoredForm{}, text, CodePageWriter(locale.codePage, bytes));
    std::copy(text.at, text.end, unicode);
    locale.*vlx::kLocaleText[index].bytes = bytes;
    locale.*vlx::kLocaleText[index].unicode = unicode;
    return true;
}

// Frees each 16-bit text of `other` that is not the one of `kept`.
void freeReplacedUnicode(const TSLocale& kept, const TSLocale& other)
{
    for (const vlx::LocaleText& text : vlx::kLocaleText)
        if (other.*text.unicode && other.*text.unicode != kept.*text.unicode)
            vlx::release(other.*text.unicode);
}

bool recodeSeparators(TSLocale& locale, const TSObject* from)
{
    for (const vlx::LocaleSeparator& separator : vlx::kLocaleSeparator) {
        const TSChar16 unicode = tsCodePage(from).toUnicode[locale.*separator.byte];
        const TSChar32 packed = TSCpUnicodeToWide(locale.codePage, unicode);
        if (packed >= 0x100)
            return false;
        locale.*separator.byte = static_cast<std::uint8_t>(packed);
    }
    return true;
}

// A text in a block of its exact size: made in a large one first, which stays if the exact one
// cannot be had. Null without memory.
char* recodedText(const TSObject* from, const TSObject* to, const char* text)
{
    const std::uint32_t room =
        static_cast<std::uint32_t>(std::strlen(text)) * tsCodePage(to).maxCharBytes + 1;
    const auto needed = static_cast<std::uint32_t>(TSRecodeString(from, to, text, nullptr));
    auto* const large = static_cast<char*>(vlx::allocate(std::max(room, needed)));
    if (!large)
        return nullptr;
    TSRecodeString(from, to, text, large);
    auto* const exact = static_cast<char*>(vlx::allocateObject(needed));
    if (!exact)
        return large;
    std::memcpy(exact, large, needed);
    vlx::releaseObject(large);
    return exact;
}

} // namespace

void vlx::setCodePageFlags(TSLocale& locale)
{
    const TSCodePageHeader& page = tsCodePage(locale.codePage);
    const auto set = [&locale](std::uint16_t flag, bool on) {
        locale.flags = static_cast<std::uint16_t>(on ? locale.flags | flag : locale.flags & ~flag);
    };
    set(vlx::kLocaleSingleByte, page.maxCharBytes == 1);
    set(vlx::kLocaleStateful, (page.cpFlags & vlx::kStateful) != 0);
    locale.pageTraits = vlx::pageTraitsOf(locale.codePage);
}

std::int32_t TSLocaleSetModifiable(TSLocale* locale)
{
    TS_TRACE(TSLocaleSetModifiable);
    const TSTerritoryContent& territory = territoryOf(*locale);
    setNumbers(*locale, territory);
    setSeparators(*locale, territory);
    for (int i = 0; i < vlx::kLocaleTexts; ++i)
        if (followsTerritory(*locale, vlx::kFirstText, i) &&
            !setText(*locale, territory, i, tsTrace))
            TS_RETURN(TS_ERR_MEMORY);
    TS_RETURN(TS_ERR_NONE);
}

std::int32_t TSChangeTerritory(TSLocale* locale, TSObject* territory)
{
    TS_TRACE(TSChangeTerritory);
    const TSLocale before = *locale;
    locale->territory = territory;
    const std::int32_t code = TSLocaleSetModifiable(locale);
    const TSLocale& kept = code == TS_ERR_NONE ? *locale : before;
    const TSLocale& other = code == TS_ERR_NONE ? before : *locale;
    TSFreeReplacedStrings(&kept, &other);
    freeReplacedUnicode(kept, other);
    if (code != TS_ERR_NONE)
        *locale = before;
    TS_RETURN(code);
}

std::int32_t TSChangeCodePage(TSLocale* locale, TSObject* codePage)
{
    TS_TRACE(TSChangeCodePage);
    const TSLocale before = *locale;
    locale->codePage = codePage;
    vlx::setCodePageFlags(*locale);
    std::int32_t code = recodeSeparators(*locale, before.codePage) ? TS_ERR_NONE : TS_ERR_SEPARATOR;
    for (int i = 0; i < vlx::kLocaleTexts && code == TS_ERR_NONE; ++i) {
        char* TSLocale::*const field = vlx::kLocaleText[i].bytes;
        char* const text = recodedText(before.codePage, codePage, before.*field);
        if (text)
            locale->*field = text;
        else
            code = TS_ERR_MEMORY;
    }
    if (code == TS_ERR_NONE) {
        TSFreeReplacedStrings(locale, &before);
    } else {
        TSFreeReplacedStrings(&before, locale);
        *locale = before;
    }
    TS_RETURN(code);
}

void TSFreeReplacedStrings(const TSLocale* kept, const TSLocale* other)
{
    for (const vlx::LocaleText& text : vlx::kLocaleText)
        if (other->*text.bytes && other->*text.bytes != kept->*text.bytes)
            vlx::release(other->*text.bytes);
}

std::int32_t TSRecodeString(const TSObject* from, const TSObject* to, const char* text,
                            char* destination)
{
    const char* const end = text + std::strlen(text);
    return static_cast<std::int32_t>(vlx::withByteForm(from, [&](const auto& form) {
        using Form = std::decay_t<decltype(form)>;
        return recode(form, vlx::Text<Form>{text, end}, CodePageWriter(to, destination));
    }));
}
