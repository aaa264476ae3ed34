// What the memory host keeps, for its two units alone.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "host/host.hpp"
#include "support/memory_host.hpp"

namespace vlx::test::memory {

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

inline State& state()
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

} // namespace vlx::test::memory
