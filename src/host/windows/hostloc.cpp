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

LCTYPE typeOf(const SettingName& name)
{
    const auto type = static_cast<LCTYPE>(name.setting);
    return name.changedByUser ? type : type | LOCALE_NOUSEROVERRIDE;
}

} // namespace

std::uint32_t userLocaleId()
{
    return GetUserDefaultLCID();
}

bool readSetting(const SettingName& name, char* text, std::uint32_t size)
{
    return GetLocaleInfoA(name.locale, typeOf(name), text, static_cast<int>(size)) != 0;
}

bool readSetting16(const SettingName& name, TSChar16* text, std::uint32_t size)
{
    return GetLocaleInfoW(name.locale, typeOf(name), wide(text), static_cast<int>(size)) != 0;
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
