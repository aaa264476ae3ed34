// The settings of locales that the memory host tells.
#include <cstring>
#include <map>
#include <mutex>
#include <utility>

#include "host/host.hpp"
#include "support/memory_host.hpp"

namespace vlx::test {

namespace {

struct Values {
    std::u16string changed;
    std::u16string original;
};

struct State {
    std::mutex lock;
    std::map<std::pair<std::uint32_t, std::uint32_t>, Values> values; // by locale and setting
    std::uint32_t narrowPage = 0;                                     // 0: as 16-bit text
    std::vector<MemoryHost::Reading> readings;
    int open = 0;
};

State& state()
{
    static State& only = *new State; // never destroyed
    return only;
}

// The state for one call.
struct Locked {
    State& settings = state();
    std::lock_guard<std::mutex> guard{settings.lock};
};

} // namespace

void MemoryHost::resetSettings()
{
    Locked locked;
    locked.settings.values.clear();
    locked.settings.narrowPage = 0;
    locked.settings.readings.clear();
    locked.settings.open = 0;
}

void MemoryHost::setSetting(std::uint32_t locale, std::uint32_t setting,
                            std::u16string_view changed, std::u16string_view original)
{
    Locked().settings.values.insert_or_assign(
        {locale, setting}, Values{std::u16string(changed), std::u16string(original)});
}

void MemoryHost::makeNarrow(std::uint32_t codePage)
{
    Locked().settings.narrowPage = codePage;
}

int MemoryHost::openSettings()
{
    return Locked().settings.open;
}

std::vector<MemoryHost::Reading> MemoryHost::readings()
{
    return Locked().settings.readings;
}

} // namespace vlx::test

namespace vlx::host {

using test::Locked;

namespace {

// Copies a setting into elements of some width, with its terminator, if it fits.
template <class Element>
bool copySetting(const Settings& settings, Setting setting, bool wide, Element* text,
                 std::uint32_t size)
{
    Locked locked;
    const auto number = static_cast<std::uint32_t>(setting);
    locked.settings.readings.push_back({settings.locale, number, settings.changedByUser, wide});
    const auto found = locked.settings.values.find({settings.locale, number});
    if (found == locked.settings.values.end())
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
    ++Locked().settings.open;
    return {locale, changedByUser, nullptr};
}

void closeSettings(const Settings&)
{
    --Locked().settings.open;
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
    return Locked().settings.narrowPage == 0;
}

bool toUnicode(std::uint32_t codePage, const char* text, TSChar16* unicode, std::uint32_t size)
{
    const std::size_t length = std::strlen(text);
    if (codePage != Locked().settings.narrowPage || length >= size)
        return false;
    for (std::size_t i = 0; i <= length; ++i) {
        const auto byte = static_cast<std::uint8_t>(text[i]);
        unicode[i] = static_cast<TSChar16>(byte < 0x80 ? byte : 0x2000 + byte);
    }
    return true;
}

} // namespace vlx::host
