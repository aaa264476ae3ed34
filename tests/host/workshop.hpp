// What the tests of the host contract do behind the host's back: they make and look at its files
// and its environment.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vlx::test {

using Bytes = std::vector<std::uint8_t>;

class Workshop {
  public:
    Workshop(); // an empty directory
    ~Workshop();
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;

    // The path of a name in the directory.
    std::string path(std::string_view name) const;

    // Makes a file and returns its path.
    std::string make(std::string_view name, const Bytes& bytes) const;
    std::optional<Bytes> look(const std::string& path) const;

    static void setVariable(const std::string& name, const std::string& value);
    static void clearVariable(const std::string& name);

  private:
    std::string directory_;
};

} // namespace vlx::test
