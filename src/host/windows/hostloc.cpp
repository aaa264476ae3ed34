// The user's locale and the settings of locales of a Windows host.
#include "host/host.hpp"

#include <windows.h>

namespace vlx::host {

namespace {

static_assert(sizeof(WCHAR) == sizeof(TSChar16));

WCHAR* wide(TSChar16* text)
{
    return reinterpret_cast<WCHAR*>(text);
}

LCTYPE typeOf(const Settings& settings, Setting setting)
{
    const auto type = static_cast<LCTYPE>(setting);
    return settings.changedByUser ? type : type | LOCALE_NOUSEROVERRIDE;
}

} // namespace

std::uint32_t userLocaleId()
{
    return GetUserDefaultLCID();
}

Settings openSettings(std::uint32_t locale, bool changedByUser)
{
    return {locale, changedByUser, nullptr};
}

void closeSettings(const Settings&) {}

bool readSetting(const Settings& settings, Setting setting, char* text, std::uint32_t size)
{
    return GetLocaleInfoA(settings.locale, typeOf(settings, setting), text,
                          static_cast<int>(size)) != 0;
}

bool readSetting16(const Settings& settings, Setting setting, TSChar16* text, std::uint32_t size)
{
    return GetLocaleInfoW(settings.locale, typeOf(settings, setting), wide(text),
                          static_cast<int>(size)) != 0;
}

// The older hosts of this family set the top bit.
bool hasSettings16()
{
    constexpr DWORD kOlderHost = 0x80000000;
    return (GetVersion() & kOlderHost) == 0;
}

bool toUnicode(std::uint32_t codePage, const char* text, TSChar16* unicode, std::uint32_t size)
{
    return MultiByteToWideChar(codePage, 0, text, -1, wide(unicode), static_cast<int>(size)) != 0;
}

} // namespace vlx::host
