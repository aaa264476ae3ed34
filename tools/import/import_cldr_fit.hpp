// Texts against the code page that they will be written in.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "import_cldr_pattern.hpp"

struct UConverter;

namespace vlx::import {

// What stands for a character that a code page lacks; an empty text drops it.
struct Substitute {
    std::string character;
    std::string instead;
};

// Without U+200E, U+200F and U+061C, which order text on a screen and are no part of a sign.
std::string withoutMarks(std::string text);

class CodePageFit {
  public:
    // By the name of a code page object, "MS1252" or "UTF-8".
    explicit CodePageFit(const std::string& codePage);
    ~CodePageFit();
    CodePageFit(const CodePageFit&) = delete;
    CodePageFit& operator=(const CodePageFit&) = delete;

    bool known() const { return converter_ != nullptr; }
    bool holds(const std::string& text) const;
    bool isOneByte(const std::string& character) const;

    // The text with substitutes for what the page lacks, each noted; nothing if that is not enough.
    std::optional<std::string>
    fitted(const std::string& text, const std::vector<Substitute>& substitutes, Notes& notes) const;
    // A separator as one byte: U+202F becomes U+00A0, and a blank where the page has none.
    std::optional<std::string> separator(const std::string& character, const std::string& name,
                                         Notes& notes) const;

  private:
    std::string name_;
    UConverter* converter_ = nullptr;
};

} // namespace vlx::import
