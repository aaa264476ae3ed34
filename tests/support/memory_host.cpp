// The memory host: its settings first, then the contract.
#include "support/memory_host.hpp"

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <mutex>
#include <set>

#include "host/host.hpp"
#include "support/viewblock.hpp"

namespace vlx::test {

namespace {

using Bytes = std::vector<std::uint8_t>;
using Content = std::shared_ptr<Bytes>;

struct OpenFile {
    Content content;
    host::Access access;
    std::int64_t position;
    int era;
};

struct OpenMapping {
    Content content;
    int era;
};

struct OpenView {
    std::size_t length;
    int era;
};

struct Block {
    int era;
};

struct Setting {
    std::u16string changed;
    std::u16string original;
};

// Everything that is open carries the era in which it was opened: a reset begins a new one.
struct State {
    std::mutex lock;
    int era = 0;
    std::map<std::string, Content, std::less<>> files;
    std::set<std::string, std::less<>> denied;
    std::map<std::string, std::string, std::less<>> environment;
    std::uint32_t userLocaleId = 0;
    std::uint32_t threadLocaleId = 0;
    std::map<std::pair<std::uint32_t, std::uint32_t>, Setting> settings;
    std::uint32_t narrowPage = 0; // 0: settings come as 16-bit text
    std::vector<MemoryHost::Reading> readings;
    int openSettings = 0;
    std::uint32_t calls = 0;
    std::uint32_t failing = 0;
    std::intptr_t lastId = 0;
    std::map<host::File, OpenFile> openFiles;
    std::map<host::Mapping, OpenMapping> openMappings;
    std::map<const void*, OpenView> openViews;
    std::map<void*, Block> blocks;
};

State& state()
{
    // Never destroyed, since the library may give things back at the end of the process.
    static State& only = *new State;
    return only;
}

// The state for one call.
struct Locked {
    State& host = state();
    std::lock_guard<std::mutex> guard{host.lock};

    // Counts a call that can fail; true if it is to fail.
    bool fails()
    {
        ++host.calls;
        return host.failing != 0 && --host.failing == 0;
    }

    OpenFile* file(host::File id)
    {
        const auto found = host.openFiles.find(id);
        return found == host.openFiles.end() ? nullptr : &found->second;
    }

    template <class Map>
    int count(Map State::*opened) const
    {
        int open = 0;
        for (const auto& [id, each] : host.*opened)
            open += each.era == host.era;
        return open;
    }
};

} // namespace

void MemoryHost::reset()
{
    Locked locked;
    State& host = locked.host;
    ++host.era;
    host.files.clear();
    host.denied.clear();
    host.environment.clear();
    host.userLocaleId = 0;
    host.threadLocaleId = 0;
    host.settings.clear();
    host.narrowPage = 0;
    host.readings.clear();
    host.openSettings = 0;
    host.calls = 0;
    host.failing = 0;
}

void MemoryHost::put(std::string_view path, std::span<const std::uint8_t> bytes)
{
    Locked locked;
    locked.host.files.insert_or_assign(std::string(path),
                                       std::make_shared<Bytes>(bytes.begin(), bytes.end()));
}

void MemoryHost::put(std::string_view path, std::string_view text)
{
    put(path, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

std::optional<std::vector<std::uint8_t>> MemoryHost::get(std::string_view path)
{
    Locked locked;
    const auto found = locked.host.files.find(path);
    if (found == locked.host.files.end())
        return std::nullopt;
    return *found->second;
}

void MemoryHost::erase(std::string_view path)
{
    Locked locked;
    if (const auto found = locked.host.files.find(path); found != locked.host.files.end())
        locked.host.files.erase(found);
}

void MemoryHost::deny(std::string_view path)
{
    Locked().host.denied.emplace(path);
}

void MemoryHost::failCall(std::uint32_t n)
{
    Locked().host.failing = n;
}

std::uint32_t MemoryHost::calls()
{
    return Locked().host.calls;
}

int MemoryHost::openFiles()
{
    return Locked().count(&State::openFiles);
}

int MemoryHost::openMappings()
{
    return Locked().count(&State::openMappings);
}

int MemoryHost::openViews()
{
    return Locked().count(&State::openViews);
}

int MemoryHost::liveBlocks()
{
    return Locked().count(&State::blocks);
}

void MemoryHost::setEnvironment(std::string_view name, std::string_view value)
{
    Locked().host.environment.insert_or_assign(std::string(name), std::string(value));
}

void MemoryHost::clearEnvironment()
{
    Locked().host.environment.clear();
}

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

using test::Bytes;
using test::Content;
using test::Locked;

const char* const kPathSeparator = "/";
const char* const kControlName = "/control.nls";
const char* const kDefaultDirectory = "/Vernique/locale";

File open(const char* path, Access access, OpenError& error)
{
    Locked locked;
    if (locked.fails()) {
        error = OpenError::kOther;
        return kNoFile;
    }
    if (locked.host.denied.contains(std::string_view(path))) {
        error = OpenError::kAccessDenied;
        return kNoFile;
    }
    auto found = locked.host.files.find(std::string_view(path));
    if (found == locked.host.files.end()) {
        if (access != Access::kWrite) {
            error = OpenError::kNotFound;
            return kNoFile;
        }
        found = locked.host.files.emplace(path, std::make_shared<Bytes>()).first;
    } else if (access == Access::kWrite) {
        found->second->clear();
    }
    error = OpenError::kNone;
    const File id = ++locked.host.lastId;
    locked.host.openFiles.emplace(id, test::OpenFile{found->second, access, 0, locked.host.era});
    return id;
}

bool close(File file)
{
    Locked locked;
    return !locked.fails() && locked.host.openFiles.erase(file) != 0;
}

bool exists(const char* path)
{
    return Locked().host.files.contains(std::string_view(path));
}

bool read(File id, void* buffer, std::uint32_t count, std::uint32_t& done)
{
    Locked locked;
    done = 0;
    test::OpenFile* const file = locked.file(id);
    if (locked.fails() || !file || file->access == Access::kWrite)
        return false;
    const auto size = static_cast<std::int64_t>(file->content->size());
    if (file->position >= size)
        return true;
    done = static_cast<std::uint32_t>(std::min<std::int64_t>(count, size - file->position));
    std::memcpy(buffer, file->content->data() + file->position, done);
    file->position += done;
    return true;
}

bool seek(File id, std::int32_t offset, Origin origin)
{
    Locked locked;
    test::OpenFile* const file = locked.file(id);
    if (locked.fails() || !file)
        return false;
    const std::int64_t base = origin == Origin::kBegin     ? 0
                              : origin == Origin::kCurrent ? file->position
                                                           : std::ssize(*file->content);
    if (base + offset < 0)
        return false;
    file->position = base + offset;
    return true;
}

bool size(File id, std::uint64_t& bytes)
{
    Locked locked;
    const test::OpenFile* const file = locked.file(id);
    if (locked.fails() || !file)
        return false;
    bytes = file->content->size();
    return true;
}

bool remove(const char* path)
{
    Locked locked;
    const auto found = locked.host.files.find(std::string_view(path));
    if (locked.fails() || found == locked.host.files.end() || locked.host.denied.contains(path))
        return false;
    locked.host.files.erase(found);
    return true;
}

std::uint32_t replace(const char* source, const char* target)
{
    Locked locked;
    if (locked.fails() || locked.host.denied.contains(target))
        return test::MemoryHost::kReplaceError;
    const auto found = locked.host.files.find(std::string_view(source));
    if (found == locked.host.files.end())
        return 2; // what both platforms call a missing file
    const Content content = found->second;
    locked.host.files.erase(found);
    locked.host.files.insert_or_assign(target, content);
    return 0;
}

std::size_t stemLength(const char* path)
{
    const std::string_view all(path);
    const std::size_t slash = all.rfind('/');
    const std::size_t name = slash == std::string_view::npos ? 0 : slash + 1;
    const std::size_t dot = all.rfind('.');
    return dot == std::string_view::npos || dot <= name ? all.size() : dot;
}

Mapping createMapping(File id)
{
    Locked locked;
    const test::OpenFile* const file = locked.file(id);
    if (locked.fails() || !file || file->access == Access::kWrite || file->content->empty())
        return 0;
    const Mapping mapping = ++locked.host.lastId;
    locked.host.openMappings.emplace(mapping, test::OpenMapping{file->content, locked.host.era});
    return mapping;
}

bool closeMapping(Mapping mapping)
{
    Locked locked;
    return !locked.fails() && locked.host.openMappings.erase(mapping) != 0;
}

std::uint32_t granularity()
{
    return test::kViewGranularity;
}

const void* mapView(Mapping mapping, std::uint32_t offset, std::uint32_t length)
{
    Locked locked;
    const auto found = locked.host.openMappings.find(mapping);
    if (locked.fails() || found == locked.host.openMappings.end())
        return nullptr;
    const Bytes& bytes = *found->second.content;
    if (length == 0 || offset % granularity() != 0 || std::uint64_t{offset} + length > bytes.size())
        return nullptr;
    const std::uint8_t* const view = test::createViewBlock(bytes.data() + offset, length);
    locked.host.openViews.emplace(view, test::OpenView{length, locked.host.era});
    return view;
}

bool unmapView(const void* view)
{
    Locked locked;
    const auto found = locked.host.openViews.find(view);
    if (locked.fails() || found == locked.host.openViews.end())
        return false;
    test::destroyViewBlock(static_cast<const std::uint8_t*>(view), found->second.length);
    locked.host.openViews.erase(found);
    return true;
}

void* allocate(TSContext, std::uint32_t bytes)
{
    Locked locked;
    if (locked.fails())
        return nullptr;
    void* const memory = ::operator new(bytes);
    locked.host.blocks.emplace(memory, test::Block{locked.host.era});
    return memory;
}

std::int32_t free(TSContext, void* memory)
{
    Locked locked;
    if (locked.fails() || (memory && locked.host.blocks.erase(memory) == 0))
        return 0;
    ::operator delete(memory);
    return 1;
}

std::int32_t environment(const char* name, char* buffer, std::uint32_t size)
{
    Locked locked;
    const auto found = locked.host.environment.find(std::string_view(name));
    if (found == locked.host.environment.end())
        return -1;
    const std::string& value = found->second;
    if (value.size() >= size)
        return static_cast<std::int32_t>(value.size() + 1);
    std::memcpy(buffer, value.c_str(), value.size() + 1);
    return static_cast<std::int32_t>(value.size());
}

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

bool equalIgnoringCase(const char* left, const char* right, std::size_t length)
{
    const auto lower = [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
    };
    return std::equal(left, left + length, right,
                      [&](char one, char other) { return lower(one) == lower(other); });
}

} // namespace vlx::host
