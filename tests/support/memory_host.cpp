// The memory host: what a test tells it first, then the contract.
#include "support/memory_host.hpp"

#include <algorithm>
#include <cstring>

#include "host/host.hpp"
#include "support/memory_state.hpp"
#include "support/viewblock.hpp"

namespace vlx::test {

using namespace memory;

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

} // namespace vlx::test

namespace vlx::host {

using test::memory::Bytes;
using test::memory::Content;
using test::memory::Locked;

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
    locked.host.openFiles.emplace(
        id, test::memory::OpenFile{found->second, access, 0, locked.host.era});
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
    test::memory::OpenFile* const file = locked.file(id);
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
    test::memory::OpenFile* const file = locked.file(id);
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
    const test::memory::OpenFile* const file = locked.file(id);
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
    const test::memory::OpenFile* const file = locked.file(id);
    if (locked.fails() || !file || file->access == Access::kWrite || file->content->empty())
        return 0;
    const Mapping mapping = ++locked.host.lastId;
    locked.host.openMappings.emplace(mapping,
                                     test::memory::OpenMapping{file->content, locked.host.era});
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
    locked.host.openViews.emplace(view, test::memory::OpenView{length, locked.host.era});
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
    locked.host.blocks.emplace(memory, test::memory::Block{locked.host.era});
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

bool equalIgnoringCase(const char* left, const char* right, std::size_t length)
{
    const auto lower = [](char byte) {
        return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : byte;
    };
    return std::equal(left, left + length, right,
                      [&](char one, char other) { return lower(one) == lower(other); });
}

} // namespace vlx::host
