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

#include "host/posix/hostlock.hpp"
#include "host/posix/hostname.hpp"
#include "host/posix/hostpict.hpp"

namespace vlx::host {

namespace {

// localeconv() answers in a place that all threads share.
constinit Lock conventionsLock;

// The value of the setting that rules this host's messages.
const char* userLocaleName()
{
    for (const char* const variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* const value = secure_getenv(variable); value && *value)
            return value;
    return "C";
}

constexpr int kCategories = LC_CTYPE_MASK | LC_NUMERIC_MASK | LC_MONETARY_MASK | LC_TIME_MASK;

locale_t openById(std::uint32_t id)
{
    char base[16];
    localeNameOf(id, base, sizeof base);
    locale_t locale = nullptr;
    for (const char* const codePage : {".UTF-8", ""}) {
        char name[32];
        std::snprintf(name, sizeof name, "%s%s", base, codePage);
        if (*base && !locale)
            locale = newlocale(kCategories, name, nullptr);
    }
    return locale;
}

locale_t localeOf(const Settings& settings)
{
    return static_cast<locale_t>(settings.data);
}

// Makes a locale that of this thread for a while.
class ThreadLocale {
  public:
    explicit ThreadLocale(locale_t locale) : before_(uselocale(locale)) {}
    ~ThreadLocale() { uselocale(before_); }
    ThreadLocale(const ThreadLocale&) = delete;
    ThreadLocale& operator=(const ThreadLocale&) = delete;

  private:
    const locale_t before_;
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
    const int value = static_cast<signed char>(number); // whatever a char is on this machine
    if (value < 0 || number == CHAR_MAX)                // not told
        return false;
    const int length = std::snprintf(text, size, "%d", value);
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

// The bytes of a setting in the code page of the locale, which is this thread's.
bool readBytes(locale_t locale, Setting setting, char* text, std::uint32_t size)
{
    const auto picture = [&](nl_item format) {
        return pictureOf(nl_langinfo_l(format, locale), nl_langinfo_l(T_FMT_AMPM, locale), text,
                         size);
    };
    if (setting == Setting::kDate)
        return picture(D_FMT);
    if (setting == Setting::kTime)
        return picture(T_FMT);
    const std::lock_guard guard(conventionsLock);
    // NOLINTNEXTLINE(concurrency-mt-unsafe): under our lock
    return readConvention(*std::localeconv(), setting, text, size);
}

// Older code pages have no narrow no-break space; the ordinary one says the same.
std::uint32_t usualSpace(std::uint32_t character)
{
    constexpr std::uint32_t kNarrowNoBreakSpace = 0x202F;
    constexpr std::uint32_t kNoBreakSpace = 0x00A0;
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
            // NOLINTNEXTLINE(concurrency-mt-unsafe): with a state of its own
            std::mbrtowc(&character, bytes, static_cast<std::size_t>(end - bytes), &state);
        if (length == 0 || length > static_cast<std::size_t>(end - bytes))
            return false; // the two error values are above it, too
        if (character > 0xFFFF || done + 1 >= size)
            return false;
        text[done++] = static_cast<TSChar16>(usualSpace(static_cast<std::uint32_t>(character)));
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

Settings openSettings(std::uint32_t locale, bool changedByUser)
{
    const bool users = changedByUser && locale == userLocaleId();
    return {locale, changedByUser, users ? newlocale(kCategories, "", nullptr) : openById(locale)};
}

void closeSettings(const Settings& settings)
{
    if (settings.data)
        freelocale(localeOf(settings));
}

bool readSetting(const Settings& settings, Setting setting, char* text, std::uint32_t size)
{
    if (!settings.data)
        return false;
    const ThreadLocale thread(localeOf(settings));
    return readBytes(localeOf(settings), setting, text, size);
}

bool readSetting16(const Settings& settings, Setting setting, TSChar16* text, std::uint32_t size)
{
    constexpr std::uint32_t kMaxBytes = 256;
    char bytes[kMaxBytes];
    if (!settings.data)
        return false;
    const ThreadLocale thread(localeOf(settings));
    return readBytes(localeOf(settings), setting, bytes, kMaxBytes) && widen(bytes, text, size);
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
