// The key of a line: bytes that order lines as memcmp() orders them, whatever fields, directions
// and numbers the user asked for.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fields.hpp"

namespace vlx::cli {

// What counts of a line, and how.
struct KeyPart {
    enum class Kind : std::uint8_t { kText, kNumber };

    std::optional<FieldRange> range = {}; // else the whole line
    Kind kind = Kind::kText;
    std::uint32_t options = 0; // of TSStrxfrm
    bool isReversed = false;
};

struct MadeKey {
    std::string bytes;
    bool hasLevels; // no number, and no text in the order of codes
};

class KeyBuilder {
  public:
    // The first part that differs decides.
    KeyBuilder(TSLocale* locale, std::vector<KeyPart> parts, std::optional<std::string> separator);

    // The key of a whole line, good until the next call. Fails if the line is too long for one.
    std::string_view keyOf(std::string_view whole);

    // The keys of the parts as the library makes them; a number as its eight bytes.
    std::vector<MadeKey> partsOf(std::string_view whole);

  private:
    std::string_view settled(std::string_view line);
    std::string_view partKey(const KeyPart& part, std::string_view line);
    std::string_view textKey(const Slice& piece, std::uint32_t options);
    std::string_view numberKey(const Slice& text);
    Slice withState(const Slice& text);

    TSLocale* const locale_;
    const PageFacts page_;
    const std::vector<KeyPart> parts_;
    std::optional<FieldCutter> cutter_; // where a part is of fields
    bool isBinary_;
    std::vector<char> made_;
    std::string settled_;
    std::string shifted_;
    std::string key_;
};

} // namespace vlx::cli
