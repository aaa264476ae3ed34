// The user's locale and the settings of locales of a POSIX host, as its own locale data has them.
// The locale of the process is neither asked nor changed.
#include "host/host.hpp"

#include <climits>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <langinfo.h>
#include <locale.h>
#include <mutex>

#include "host/posix/hostname.hpp"
#include "host/posix/hostpict.hpp"

namespace vlx::host {

namespace {

// localeconv() answers in a place that all threads share.
constinit std::mutex conventionsLock;

// The value of the setting that rules this host's messages.
const char* userLocaleName()
{
    for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* const value = secure_getenv(variable); value && *value)
            return value;
    return "C";
}

constexpr int kCategories = LC_CTYPE_MASK | LC_NUMERIC_MASK | LC_MONETARY_MASK | LC_TIME_MASK;

// A locale of the host, and the locale of this thread while it lives.
class HostLocale {
  public:
    explicit HostLocale(const SettingName& name)
    {
        if (name.changedByUser && name.locale == userLocaleId())
            locale_ = newlocale(kCategories, "", nullptr);
        else
            openById(name.locale);
        if (locale_)
            before_ = uselocale(locale_);
    }
    ~HostLocale()
    {
        if (!locale_)
            return;
        uselocale(before_);
        freelocale(locale_);
    }
    HostLocale(const HostLocale&) = delete;
    HostLocale& operator=(const HostLocale&) = delete;

    explicit operator bool() const { return locale_ != nullptr; }
    const char* info(nl_item item) const { return nl_langinfo_l(item, locale_); }

  private:
    void openById(std::uint32_t id)
    {
        char base[16];
        localeNameOf(id, base, sizeof base);
        for (const char* const codePage : {".UTF-8", ""}) {
            char name[32];
            std::snprintf(name, sizeof name, "%s%s", base, codePage);
            if (*base && !locale_)
                locale_ = newlocale(kCategories, name, nullptr);
        }
    }

    locale_t locale_ = nullptr;
    locale_t before_ = nullptr;
};

// Copies text that fits; an empty one is what the locale does not tell.
bool copyText(const char* from, char* text, std::uint32_t size)
{
    const std::size_t length = std::strlen(from);
    if (length == 0 || length >= size)
        return false;
    std::memcpy(text, from, length + 1);
    return true;
}

bool putNumber(char number, char* text, std::uint32_t size)
{
    if (number < 0 || number == CHAR_MAX) // not told
        return false;
    const int length = std::snprintf(text, size, "%d", number);
    return length > 0 && static_cast<std::uint32_t>(length) < size;
}

// Group sizes, one a byte: the end repeats the last one for ever, and CHAR_MAX is no more groups.
bool putGrouping(const char* groups, char* text, std::uint32_t size)
{
    int count = 0;
    while (groups[count] > 0 && groups[count] != CHAR_MAX)
        ++count;
    const bool repeats = groups[count] == 0;
    while (repeats && count > 1 && groups[count - 1] == groups[count - 2])
        --count; // the end says so
    std::uint32_t used = 0;
    for (int i = 0; i < count + (repeats ? 1 : 0) && used < size; ++i) {
        const int group = i < count ? groups[i] : 0;
        used += static_cast<std::uint32_t>(
            std::snprintf(text + used, size - used, "%s%d", i > 0 ? ";" : "", group));
    }
    return count > 0 && used < size;
}

bool readConvention(const lconv& values, Setting setting, char* text, std::uint32_t size)
{
    switch (setting) {
    case Setting::kDecimalPoint:
        return copyText(values.decimal_point, text, size);
    case Setting::kThousandsSeparator:
        return copyText(values.thousands_sep, text, size);
    case Setting::kGrouping:
        return putGrouping(values.grouping, text, size);
    case Setting::kCurrencySymbol:
        return copyText(values.currency_symbol, text, size);
    case Setting::kMonetaryDecimalPoint:
        return copyText(values.mon_decimal_point, text, size);
    case Setting::kMonetaryThousandsSeparator:
        return copyText(values.mon_thousands_sep, text, size);
    case Setting::kMonetaryGrouping:
        return putGrouping(values.mon_grouping, text, size);
    case Setting::kCurrencyDigits:
        return putNumber(values.frac_digits, text, size);
    case Setting::kIntlCurrencyDigits:
        return putNumber(values.int_frac_digits, text, size);
    case Setting::kPositiveSign:
        return copyText(values.positive_sign, text, size);
    case Setting::kNegativeSign:
        return copyText(values.negative_sign, text, size);
    case Setting::kPositiveSignPosition:
        return putNumber(values.p_sign_posn, text, size);
    case Setting::kNegativeSignPosition:
        return putNumber(values.n_sign_posn, text, size);
    case Setting::kPositiveSymbolPrecedes:
        return putNumber(values.p_cs_precedes, text, size);
    case Setting::kPositiveSymbolSpaced:
        return putNumber(values.p_sep_by_space, text, size);
    case Setting::kNegativeSymbolPrecedes:
        return putNumber(values.n_cs_precedes, text, size);
    case Setting::kNegativeSymbolSpaced:
        return putNumber(values.n_sep_by_space, text, size);
    default: // this host has none
        return false;
    }
}

// The bytes of a setting in the code page of the locale.
bool readBytes(const HostLocale& locale, Setting setting, char* text, std::uint32_t size)
{
    switch (setting) {
    case Setting::kDate:
        return pictureOf(locale.info(D_FMT), locale.info(T_FMT_AMPM), text, size);
    case Setting::kTime:
        return pictureOf(locale.info(T_FMT), locale.info(T_FMT_AMPM), text, size);
    default:
        const std::lock_guard<std::mutex> guard(conventionsLock);
        return readConvention(*std::localeconv(), setting, text, size);
    }
}

// Older code pages have no narrow no-break space; the ordinary one says the same.
wchar_t usualSpace(wchar_t character)
{
    constexpr wchar_t kNarrowNoBreakSpace = 0x202F;
    constexpr wchar_t kNoBreakSpace = 0x00A0;
    return character == kNarrowNoBreakSpace ? kNoBreakSpace : character;
}

// From the code page of this thread's locale. False where a character has no 16-bit value.
bool widen(const char* bytes, TSChar16* text, std::uint32_t size)
{
    const char* const end = bytes + std::strlen(bytes);
    std::mbstate_t state{};
    std::uint32_t done = 0;
    while (bytes != end) {
        wchar_t character = 0;
        const std::size_t length =
            std::mbrtowc(&character, bytes, static_cast<std::size_t>(end - bytes), &state);
        if (length == 0 || length > static_cast<std::size_t>(end - bytes))
            return false; // the two error values are above it, too
        if (character > 0xFFFF || done + 1 >= size)
            return false;
        text[done++] = static_cast<TSChar16>(usualSpace(character));
        bytes += length;
    }
    text[done] = 0;
    return true;
}

} // namespace

std::uint32_t userLocaleId()
{
    return localeIdOf(userLocaleName());
}

bool readSetting(const SettingName& name, char* text, std::uint32_t size)
{
    const HostLocale locale(name);
    return locale && readBytes(locale, name.setting, text, size);
}

bool readSetting16(const SettingName& name, TSChar16* text, std::uint32_t size)
{
    constexpr std::uint32_t kMaxBytes = 256;
    char bytes[kMaxBytes];
    const HostLocale locale(name);
    return locale && readBytes(locale, name.setting, bytes, kMaxBytes) && widen(bytes, text, size);
}

bool hasSettings16()
{
    return true;
}

// Every setting of this host has 16-bit text.
bool toUnicode(std::uint32_t, const char*, TSChar16*, std::uint32_t)
{
    return false;
}

} // namespace vlx::host
