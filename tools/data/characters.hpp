// What the compiler knows of every 16-bit Unicode value: type word and case, read once from the
// sources under data/unicode. The library's own tables know Unicode 2.0; code pages have some
// characters that are younger.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "object.hpp"

namespace vlx::data {

class CharacterData {
  public:
    enum Repertoire {
        kLibrary,     // as the library's own tables have them
        kWithYounger, // and what Unicode got later
    };

    static std::optional<CharacterData> load(const std::string& directory, Repertoire repertoire,
                                             Diagnostics& diagnostics);

    std::uint32_t typeWord(std::uint16_t value) const { return words_[value]; }
    std::uint16_t toLower(std::uint16_t value) const { return lower_[value]; }
    std::uint16_t toUpper(std::uint16_t value) const { return upper_[value]; }

  private:
    CharacterData();
    void loadProperties(const std::string& path, Repertoire repertoire, Diagnostics& diagnostics);
    void loadCase(const std::string& path, Diagnostics& diagnostics);

    std::vector<std::uint32_t> words_;
    std::vector<std::uint16_t> lower_;
    std::vector<std::uint16_t> upper_;
};

} // namespace vlx::data
