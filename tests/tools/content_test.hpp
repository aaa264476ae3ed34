// What the tests of language and territory objects share: sources in a temporary directory, the
// objects they name, and a literal reader of contents that knows the format from its description
// alone and shares nothing with the compiler.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <unistd.h>

#include "data/content.hpp"
#include "data/object.hpp"
#include "tsconst.h"

namespace content_test {

using vlx::data::Bytes;
using vlx::data::Catalogue;
using vlx::data::Diagnostics;
using vlx::data::Object;

inline const std::filesystem::path& root()
{
    static const std::filesystem::path path =
        std::filesystem::path(VLX_DATA_DIRECTORY).parent_path();
    return path;
}

inline const std::vector<std::string> kLanguages = {
    "English", "German", "French", "Japanese", "TraditionalChinese", "Russian", "Turkish"};
inline const std::vector<std::string> kTerritories = {"UnitedStates", "Germany", "France", "Japan",
                                                      "Taiwan",       "Russia",  "Turkey"};

inline std::string languagePath(const std::string& name)
{
    return (root() / "data/languages" / (name + ".toml")).string();
}

inline std::string territoryPath(const std::string& name)
{
    return (root() / "data/territories" / (name + ".toml")).string();
}

// The objects that the sources refer to.
inline Catalogue catalogue()
{
    Catalogue all;
    all.add(TS_OBJ_TERRITORY, 840, "UnitedStates");
    all.add(TS_OBJ_TERRITORY, 276, "Germany");
    all.add(TS_OBJ_TERRITORY, 250, "France");
    all.add(TS_OBJ_TERRITORY, 392, "Japan");
    all.add(TS_OBJ_TERRITORY, 158, "Taiwan");
    all.add(TS_OBJ_TERRITORY, 643, "Russia");
    all.add(TS_OBJ_TERRITORY, 792, "Turkey");
    all.add(TS_OBJ_SORT, 1, "General");
    all.add(TS_OBJ_SORT, 17, "Turkish");
    for (const int page : {1251, 1252, 1254, 932, 950})
        all.add(TS_OBJ_CODEPAGE, static_cast<std::uint16_t>(page), "MS" + std::to_string(page));
    return all;
}

inline std::string readFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    EXPECT_TRUE(in) << path;
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// A directory that goes with the test.
class TemporaryDirectory {
  public:
    TemporaryDirectory()
    {
        std::string name = (std::filesystem::temp_directory_path() / "contentXXXXXX").string();
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        path_ = name;
    }
    ~TemporaryDirectory()
    {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TemporaryDirectory(const TemporaryDirectory&) = delete;
    TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

    const std::filesystem::path& path() const { return path_; }
    std::string write(const std::string& name, const std::string& text) const
    {
        std::ofstream(path_ / name, std::ios::binary) << text;
        return (path_ / name).string();
    }

  private:
    std::filesystem::path path_;
};

inline std::string shown(const Diagnostics& diagnostics)
{
    std::ostringstream out;
    for (const auto& [file, line, message, warning] : diagnostics)
        out << file << ":" << line << ": " << (warning ? "warning: " : "") << message << "\n";
    return out.str();
}

inline unsigned wordAt(const Bytes& content, std::size_t offset)
{
    return content.at(offset) | static_cast<unsigned>(content.at(offset + 1)) << 8;
}

// The text of header word `word`; it throws where the content ends too early.
inline std::u16string textOf(const Bytes& content, std::size_t word)
{
    std::u16string text;
    for (std::size_t at = wordAt(content, 2 * word); wordAt(content, at) != 0; at += 2)
        text += static_cast<char16_t>(wordAt(content, at));
    return text;
}

inline void setWord(Bytes& content, std::size_t offset, unsigned value)
{
    content.at(offset) = static_cast<std::uint8_t>(value);
    content.at(offset + 1) = static_cast<std::uint8_t>(value >> 8);
}

inline Bytes compiledLanguage(const std::string& name)
{
    Diagnostics diagnostics;
    const auto object = vlx::data::compileLanguage(languagePath(name), catalogue(), diagnostics);
    EXPECT_TRUE(object) << shown(diagnostics);
    return object ? object->sections.at(0) : Bytes();
}

inline Bytes compiledTerritory(const std::string& name)
{
    Diagnostics diagnostics;
    const auto object = vlx::data::compileTerritory(territoryPath(name), catalogue(), diagnostics);
    EXPECT_TRUE(object) << shown(diagnostics);
    return object ? object->sections.at(0) : Bytes();
}

} // namespace content_test
