// A host that keeps its files in memory, with a granularity of its own and failures on demand. It
// fulfils the contract of host/host.hpp in place of the real one.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace vlx::test {

struct MemoryHost {
    // Forgets all files, settings, pending failures and counts. What the library still holds
    // (files, mappings, views, blocks) stays valid and can be given back, but isn't counted any
    // more.
    static void reset();

    // Files. A path is compared as it stands. `put` replaces a file as a rename would: views and
    // open files keep the old one.
    static void put(std::string_view path, std::span<const std::uint8_t> bytes);
    static void put(std::string_view path, std::string_view text);
    static std::optional<std::vector<std::uint8_t>> get(std::string_view path);
    static void erase(std::string_view path);

    // Every open of the path, and its removal and replacement, is denied from now on.
    static void deny(std::string_view path);

    // The nth call from now that can fail (open, close, read, seek, size, remove, replace,
    // createMapping, closeMapping, mapView, unmapView, allocate, free) fails once; 0 takes the
    // order back.
    static void failCall(std::uint32_t n);

    // The error number of a replacement that failed.
    static constexpr std::uint32_t kReplaceError = 4711;

    // The number of such calls since the reset.
    static std::uint32_t calls();

    // What is open since the reset.
    static int openFiles();
    static int openMappings();
    static int openViews();
    static int liveBlocks();
    static int openSettings();

    static void setEnvironment(std::string_view name, std::string_view value);
    static void clearEnvironment();
    static void setUserLocaleId(std::uint32_t id);

    // What setThreadLocale was last told, by any thread; 0 at first. It can fail, too.
    static std::uint32_t threadLocaleId();

    // A setting of a locale, by its number in host::Setting: as the user has changed it, and as the
    // locale comes. Narrow text is its low bytes.
    static void setSetting(std::uint32_t locale, std::uint32_t setting, std::u16string_view changed,
                           std::u16string_view original);

    // From now on settings come in a code page alone, whose bytes from 0x80 on are U+2080 and so
    // on. 0 takes it back.
    static void makeNarrow(std::uint32_t codePage);

    // The settings that were read since the reset, whether they were there or not, in order.
    struct Reading {
        std::uint32_t locale;
        std::uint32_t setting;
        bool changedByUser;
        bool wide;

        bool operator==(const Reading&) const = default;
    };
    static std::vector<Reading> readings();
};

} // namespace vlx::test
