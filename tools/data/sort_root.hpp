// The root table of sorts, data/sorts/root.keys: the order of all characters before a language
// changes it. docs/format-sort.md describes the file.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "object.hpp"

namespace vlx::data {

// The weights of one collation element as the root table numbers them; 0 is none.
struct RootElement {
    std::uint32_t primary = 0;
    std::uint16_t secondary = 0;
    std::uint16_t tertiary = 0;
};

inline constexpr std::uint16_t kCommonSecondary = 0x20;
inline constexpr std::uint16_t kCommonTertiary = 0x02;

// Level 1 weights of characters that the table does not list, by their code: unified ideographs,
// those of extension A, all else. Listed characters may refer to them.
inline constexpr std::uint32_t kIdeographs = 0x10000;
inline constexpr std::uint32_t kExtensionA = 0x20000;
inline constexpr std::uint32_t kUnlisted = 0x30000;

// Characters that move together under [reorder]: a script, or one of the kinds ahead of scripts.
struct RootGroup {
    std::string name;
    std::uint32_t first = 0; // its smallest level 1 weight
};

using PageSet = std::array<bool, 256>; // by high byte

// "00-06 0E 10"; nothing if the text is not of that form.
std::optional<PageSet> parsePages(std::string_view text);

class RootTable {
  public:
    static std::optional<RootTable> load(const std::string& path, Diagnostics& diagnostics);

    // By characters and, where it takes several, contractions; all canonically decomposed or with
    // weights of their own.
    const std::map<std::u16string, std::vector<RootElement>>& entries() const { return entries_; }
    const std::vector<RootGroup>& groups() const { return groups_; } // ascending
    // Those that get a record for every character; the others go by rule.
    const PageSet& pages() const { return pages_; }

    // The text with every character taken apart and its marks in canonical order.
    std::u16string decomposed(std::u16string_view text) const;
    // The character that this is the whole decomposition of.
    std::optional<char16_t> composed(std::u16string_view decomposition) const;
    // 0 for all but combining marks.
    int combiningClass(char16_t character) const;

  private:
    friend class RootReader;

    std::map<std::u16string, std::vector<RootElement>> entries_;
    std::vector<RootGroup> groups_;
    PageSet pages_{};
    std::map<char16_t, std::u16string> decompositions_;
    std::map<std::u16string, char16_t, std::less<>> compositions_;
    std::map<char16_t, int> classes_;
};

} // namespace vlx::data
