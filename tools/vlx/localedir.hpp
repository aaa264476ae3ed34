// The files of a locale directory, read beside the library for what no exported function tells:
// which directory it is, the ids of objects, and the sections of an object. Everything is read with
// bounds checks; what is not there or not sound is nothing.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/objfile.hpp"

namespace vlx::cli {

using Bytes = std::vector<std::uint8_t>;

// An object file as its header and its sections, of which one that is absent is empty.
struct ObjectFile {
    TSObjHeader header;
    Bytes sections[TSObjHeader::kMaxSections];
};

std::optional<ObjectFile> readObjectFile(const std::filesystem::path& path);

// An object as the control file lists it.
struct ListedObject {
    std::uint8_t type;
    std::uint16_t id;
    std::string name;
};

class LocaleDirectory {
  public:
    // The first directory with a control file that can be opened: `given`, unless it is empty, the
    // value of TS_LOCALEDIR, the built-in default. This is the order of TSInit.
    static std::optional<LocaleDirectory> find(const std::string& given);

    const std::filesystem::path& path() const { return path_; }

    // The code page that a locale name asks for, by the rules of TSGetLocale.
    std::optional<ListedObject> codePageOf(std::string_view localeName) const;

    // A code page by its name, by another name that alias.txt has for it, or by its id.
    std::optional<ListedObject> codePageNamed(const std::string& name) const;

    std::optional<ObjectFile> object(int type, std::uint16_t id) const;

  private:
    explicit LocaleDirectory(std::filesystem::path path);

    std::optional<ListedObject> byName(int type, std::string_view name) const;
    std::optional<ListedObject> byId(int type, std::uint16_t id) const;
    std::optional<ListedObject> byAlias(std::string_view alias) const;

    std::filesystem::path path_;
    std::vector<ListedObject> objects_;
};

} // namespace vlx::cli
