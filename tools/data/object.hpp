// What the data compiler works on: one locale object in memory, and the words that its parts share.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vlx::data {

using Bytes = std::vector<std::uint8_t>;

// One object of the locale directory: what its file holds. A page of one section has one element.
struct Object {
    std::uint8_t type = 0; // TS_OBJ_LANGUAGE and so on
    std::uint16_t id = 0;
    std::string name;
    std::vector<Bytes> sections;
};

// An error or a warning with its place. Line 0 is the file as a whole.
struct Diagnostic {
    std::string file;
    int line = 0;
    std::string message;
    bool warning = false;
};
using Diagnostics = std::vector<Diagnostic>;

// The objects that a set of sources defines, by type and name, before any of them is compiled.
// Names are compared without regard to the case of ASCII letters.
class Catalogue {
  public:
    // False if the name or the id is taken within its type.
    bool add(std::uint8_t type, std::uint16_t id, const std::string& name);
    std::optional<std::uint16_t> idOf(std::uint8_t type, const std::string& name) const;

  private:
    std::map<std::pair<std::uint8_t, std::string>, std::uint16_t> ids_;
    std::map<std::pair<std::uint8_t, std::uint16_t>, std::string> names_;
};

} // namespace vlx::data
