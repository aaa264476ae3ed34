// The memory host's locales: settings of the user and of other locales.
#include <cstring>

#include "support/memory_state.hpp"

namespace vlx::test {

using namespace memory;

void MemoryHost::setUserLocaleId(std::uint32_t id)
{
    Locked().host.userLocaleId = id;
}

std::uint32_t MemoryHost::threadLocaleId()
{
    return Locked().host.threadLocaleId;
}

void MemoryHost::setSetting(std::uint32_t locale, std::uint32_t setting,
                            std::u16string_view changed, std::u16string_view original)
{
    Locked().host.settings.insert_or_assign(
        {locale, setting}, Setting{std::u16string(changed), std::u16string(original)});
}

void MemoryHost::makeNarrow(std::uint32_t codePage)
{
    Locked().host.narrowPage = codePage;
}

int MemoryHost::openSettings()
{
    return Locked().host.openSettings;
}

std::vector<MemoryHost::Reading> MemoryHost::readings()
{
    return Locked().host.readings;
}

} // namespace vlx::test

namespace vlx::host {

using test::memory::Locked;

std::uint32_t userLocaleId()
{
    return Locked().host.userLocaleId;
}

bool setThreadLocale(std::uint32_t id)
{
    Locked locked;
    if (locked.fails())
        return false;
    locked.host.threadLocaleId = id;
    return true;
}

namespace {

// Copies a setting into elements of some width, with its terminator, if it fits.
template <class Element>
bool copySetting(const Settings& settings, Setting setting, bool wide, Element* text,
                 std::uint32_t size)
{
    Locked locked;
    const auto number = static_cast<std::uint32_t>(setting);
    locked.host.readings.push_back({settings.locale, number, settings.changedByUser, wide});
    const auto found = locked.host.settings.find({settings.locale, number});
    if (found == locked.host.settings.end())
        return false;
    const std::u16string& value =
        settings.changedByUser ? found->second.changed : found->second.original;
    if (value.size() >= size)
        return false;
    for (std::size_t i = 0; i <= value.size(); ++i)
        text[i] = static_cast<Element>(value.c_str()[i]);
    return true;
}

} // namespace

Settings openSettings(std::uint32_t locale, bool changedByUser)
{
    ++Locked().host.openSettings;
    return {locale, changedByUser, nullptr};
}

void closeSettings(const Settings&)
{
    --Locked().host.openSettings;
}

bool readSetting(const Settings& settings, Setting setting, char* text, std::uint32_t size)
{
    return copySetting(settings, setting, false, text, size);
}

bool readSetting16(const Settings& settings, Setting setting, TSChar16* text, std::uint32_t size)
{
    return hasSettings16() && copySetting(settings, setting, true, text, size);
}

bool hasSettings16()
{
    return Locked().host.narrowPage == 0;
}

bool toUnicode(std::uint32_t codePage, const char* text, TSChar16* unicode, std::uint32_t size)
{
    const std::size_t length = std::strlen(text);
    if (codePage != Locked().host.narrowPage || length >= size)
        return false;
    for (std::size_t i = 0; i <= length; ++i) {
        const auto byte = static_cast<std::uint8_t>(text[i]);
        unicode[i] = static_cast<TSChar16>(byte < 0x80 ? byte : 0x2000 + byte);
    }
    return true;
}

} // namespace vlx::host
