#include "build.hpp"

#include <algorithm>
#include <filesystem>
#include <set>
#include <tuple>

#include "alias.hpp"
#include "characters.hpp"
#include "codepage_compile.hpp"
#include "container.hpp"
#include "content.hpp"
#include "directory.hpp"
#include "sort_compile.hpp"
#include "sourcefile.hpp"

#include "tsconst.h"

namespace vlx::data {

namespace {

namespace fs = std::filesystem;

// A kind of source: its folder, its file name extension and how its head is read.
struct SourceKind {
    std::uint8_t type;
    const char* folder;
    const char* extension;
    std::optional<SourceHead> (*readHead)(const std::string&, Diagnostics&);
};

constexpr SourceKind kKinds[] = {
    {TS_OBJ_LANGUAGE, "languages", ".toml", readLanguageHead},
    {TS_OBJ_TERRITORY, "territories", ".toml", readTerritoryHead},
    {TS_OBJ_CODEPAGE, "codepages", ".cp", readCodePageHead},
    {TS_OBJ_SORT, "sorts", ".toml", readSortHead},
};

struct Source {
    std::string path;
    SourceHead head;
};

// A head is read twice, and what is wrong in it is told once.
void dropRepeated(Diagnostics& diagnostics)
{
    std::set<std::tuple<std::string, int, std::string>> told;
    std::erase_if(diagnostics, [&told](const Diagnostic& one) {
        return !told.emplace(one.file, one.line, one.message).second;
    });
}

class Builder {
  public:
    Builder(const BuildOptions& options, Diagnostics& diagnostics)
        : options_(options), diagnostics_(diagnostics)
    {
    }
    bool build();

  private:
    void readHeads(const SourceKind& kind);
    void checkName(const Source& source);
    void checkOnly();
    bool wanted(const Source& source) const;
    std::optional<Object> compile(const Source& source);
    void readVersion();
    void readAliases();
    std::vector<TSObjDisk> entries();
    void write();

    std::string pathOf(const char* name) const { return options_.sourceDirectory + "/" + name; }
    void error(const std::string& file, const std::string& message)
    {
        diagnostics_.push_back({file, 0, message});
    }

    const BuildOptions& options_;
    Diagnostics& diagnostics_;
    Catalogue catalogue_;
    std::vector<Source> sources_;
    std::vector<Object> objects_;
    std::optional<CharacterData> characters_;
    std::optional<CharacterData> library_; // the page that has all characters is as the library is
    std::optional<RootTable> root_;        // only read if there are sorts
    std::uint32_t version_ = 0;
    std::string aliases_;
};

void Builder::readHeads(const SourceKind& kind)
{
    std::error_code none;
    std::vector<std::string> paths;
    for (const fs::directory_entry& entry : fs::directory_iterator(pathOf(kind.folder), none))
        if (entry.path().extension() == kind.extension)
            paths.push_back(entry.path().string());
    std::sort(paths.begin(), paths.end());
    for (const std::string& path : paths) {
        const auto head = kind.readHead(path, diagnostics_);
        // One that cannot be named is compiled all the same, for the sake of its other errors.
        sources_.push_back({path, head.value_or(SourceHead{kind.type, 0, {}})});
        if (!head)
            continue;
        checkName(sources_.back());
        if (!catalogue_.add(head->type, head->id, head->name))
            error(path, "the id " + std::to_string(head->id) + " or the name '" + head->name +
                            "' is that of another object of its type");
    }
}

// Names are parted from each other by blanks in alias.txt and typed by users.
void Builder::checkName(const Source& source)
{
    const std::string& name = source.head.name;
    if (name.empty() || name.size() > kMaxNameLength)
        error(source.path, "the name must have 1 to 33 bytes");
    if (std::any_of(name.begin(), name.end(), [](char c) { return c <= ' ' || c > '~'; }))
        error(source.path, "the name may hold printable ASCII only, and no blank");
}

bool Builder::wanted(const Source& source) const
{
    const auto& only = options_.only;
    return only.empty() || std::find(only.begin(), only.end(), source.head.name) != only.end();
}

void Builder::checkOnly()
{
    for (const std::string& name : options_.only)
        if (std::none_of(sources_.begin(), sources_.end(),
                         [&](const Source& source) { return source.head.name == name; }))
            error(options_.sourceDirectory, "has no object '" + name + "'");
}

std::optional<Object> Builder::compile(const Source& source)
{
    switch (source.head.type) {
    case TS_OBJ_LANGUAGE:
        return compileLanguage(source.path, catalogue_, diagnostics_);
    case TS_OBJ_TERRITORY:
        return compileTerritory(source.path, catalogue_, diagnostics_);
    case TS_OBJ_SORT:
        return root_ ? compileSort(source.path, *root_, diagnostics_) : std::nullopt;
    default:
        break;
    }
    const auto page = readCodePageSource(source.path, diagnostics_);
    if (!page || !characters_ || !library_)
        return std::nullopt;
    return compileCodePage(*page, source.path, page->utf8 ? *library_ : *characters_, diagnostics_);
}

void Builder::readVersion()
{
    const auto text = readText(pathOf("version"), diagnostics_);
    if (!text)
        return;
    const auto version = parseDecimal(trimmed(*text), 0xFFFFFFFF);
    if (!version)
        diagnostics_.push_back({pathOf("version"), 1, "is no number"});
    version_ = version.value_or(0);
}

void Builder::readAliases()
{
    const auto text = readText(pathOf("alias.txt"), diagnostics_);
    if (!text)
        return;
    checkAliases(*text, pathOf("alias.txt"), catalogue_, diagnostics_);
    aliases_ = *text;
}

// What the control file lists: the objects of this build and, where only some were asked for, the
// others of the directory that they are added to.
std::vector<TSObjDisk> Builder::entries()
{
    std::vector<TSObjDisk> listed;
    for (const Object& object : objects_)
        listed.push_back(controlEntry(object.type, object.id, object.name));
    const std::string path = options_.outputDirectory + "/control.nls";
    if (options_.only.empty() || !fs::exists(path))
        return listed;
    const auto control = readContainer(path, diagnostics_);
    if (!control)
        return listed;
    const auto replaced = [built = listed](const TSObjDisk& old) {
        return std::any_of(built.begin(), built.end(), [&old](const TSObjDisk& entry) {
            return entry.type == old.type && (entry.id == old.id || nameOf(entry) == nameOf(old));
        });
    };
    for (const TSObjDisk& entry : controlEntries(*control))
        if (!replaced(entry))
            listed.push_back(entry);
    if (listed.size() > TSObjDisk::kMaxEntries)
        error(path, "would list more than 1,092 objects");
    return listed;
}

void Builder::write()
{
    const std::vector<TSObjDisk> listed = entries();
    if (hasErrors(diagnostics_))
        return;
    std::error_code failed;
    const fs::path directory = options_.outputDirectory;
    fs::create_directories(directory, failed);
    for (const Object& object : objects_)
        writeFile(directory / objectFileName(object.type, object.id),
                  containerFile(object.sections, version_), diagnostics_);
    writeFile(directory / "alias.txt", Bytes(aliases_.begin(), aliases_.end()), diagnostics_);
    // Last, so that a directory with a control file has the objects that it lists.
    writeFile(directory / "control.nls", controlFile(listed, version_), diagnostics_);
}

bool Builder::build()
{
    readVersion();
    for (const SourceKind& kind : kKinds)
        readHeads(kind);
    if (sources_.empty())
        error(options_.sourceDirectory, "holds no sources");
    if (sources_.size() > TSObjDisk::kMaxEntries)
        error(options_.sourceDirectory, "holds more than 1,092 objects");
    checkOnly();
    readAliases();
    characters_ = CharacterData::load(pathOf("unicode"), CharacterData::kWithYounger, diagnostics_);
    library_ = CharacterData::load(pathOf("unicode"), CharacterData::kLibrary, diagnostics_);
    if (std::any_of(sources_.begin(), sources_.end(), [this](const Source& source) {
            return source.head.type == TS_OBJ_SORT && wanted(source);
        }))
        root_ = RootTable::load(pathOf("sorts/root.keys"), diagnostics_);
    for (const Source& source : sources_) {
        if (!wanted(source))
            continue;
        if (auto object = compile(source))
            objects_.push_back(std::move(*object));
    }
    dropRepeated(diagnostics_);
    if (hasErrors(diagnostics_))
        return false;
    write();
    return !hasErrors(diagnostics_);
}

} // namespace

bool build(const BuildOptions& options, Diagnostics& diagnostics)
{
    return Builder(options, diagnostics).build();
}

} // namespace vlx::data
